// The walker.
//
// Taken by its word, a step pops nodes off one list, to which structural nodes add their successors
// at the other end, and behind every match walks all ways to the end of the graph. On a graph whose
// ways part and meet again, the number of ways, of matches and of entries in nextNodes then doubles
// with every parting. Three things keep a step linear and its answers what they would be:
//
// Each structural node is opened the first time that it comes up (walkMatches).
//
// Of a node that comes up several times among the matches, or stands several times in nextNodes,
// only the first and the last place are kept (KeepFirstAndLast). Nothing else can be seen:
//   - The node answered is the one that came up last of all.
//   - A structural node is opened where it comes up first. nextNodes are read from the top, so that
//     is its last place there.
//   - Two matches of one node with a way to the end are more than one way, as any number above.
//   - The places left out change nothing in later steps either. What is popped in a step are
//     nextNodes, reversed, and a queue that depends on the order of the first openings only; the
//     matches are picked from these, and the new nextNodes are their successor lists in a row. The
//     first and the last place of a node in such a row lie in the first and the last occurrence of
//     some matched node, which are kept, and in the order of those.
//
// Ways are counted up to 2, once for each node (waysBehind).
//
// What comes up in a step does not depend on the token, so a step can be looked up: the matches of
// each id, in the order of their coming up, and the number of ways that are open behind them. One
// or two matches stand in the node at which the step begins, more in an index of it
// (YcluiNodeIndex). That is made for places that are one node: a structural node that stands alone
// in nextNodes, or a token node whose successors they are. With several matches the ways behind
// them are counted in one walk, in which what was counted before counts; they are remembered for
// the matches of an id together, or else for one node by itself. A node whose successors were read
// carries a mark, by which it knows that their changes matter.
//
// A step at random in a large graph waits for memory more than it computes. So a known step reads
// one line of a node, in an index not even that, and what the next word may lead to is fetched
// while it is being read.

#include "syntax/YcluiNfa.h"

#include <algorithm>
#include <iterator>
#include <new>

#include "foundation/YErr.h"
#include "syntax/YcluiNodeIndex.h"

namespace {

// A node's note while its ways are being counted: it stands on the way that is looked at.
constexpr std::int32_t Counting = -1;
// One way more than this makes no difference.
constexpr int MostWays = 2;
// Older than that of every walk.
constexpr std::uint64_t OldestSerial = 1;
// So many links are looked at in no more time than it takes to look something up.
constexpr int FewLinks = 16;
// In how many indexes what follows a structural node may stand.
constexpr std::uint32_t MostCovers = 4;
// Every node begins at a line of memory.
constexpr std::intptr_t Line = alignof(YcluiSyntaxNode);

// The successor of a node with one link, null of any other.
YcluiSyntaxNode* OnlySuccessor(const YcluiSyntaxNode& node) {
  const YRing* first = node.first();
  if (first == nullptr || first->next() != nullptr) return nullptr;
  return static_cast<YcluiSyntaxNode*>(first->item());
}

std::intptr_t AddressOf(const YcluiSyntaxNode* node) {
  return reinterpret_cast<std::intptr_t>(node);
}

// How far from one node another one lies, in lines of memory, and the node that lies so far away.
std::intptr_t LinesBetween(const YcluiSyntaxNode* from, const YcluiSyntaxNode* to) {
  return (AddressOf(to) - AddressOf(from)) / Line;
}
YcluiSyntaxNode* NodeAt(const YcluiSyntaxNode* from, std::intptr_t lines) {
  return reinterpret_cast<YcluiSyntaxNode*>(AddressOf(from) + lines * Line);
}

// Whether the walk to the end of the graph passes the node.
bool IsPassable(const YcluiSyntaxNode& node) {
  return node.tokenId == 0 && node.kind != YcluiNodeClosure;
}

}  // namespace

YWord YcluiNfa::syntaxGraph(YcluiSyntaxGraph* walked) {
  graph = walked;
  return reset();
}

YcluiSyntaxNode* YcluiNfa::indefiniteNode(const unsigned long& tokenId) const {
  if (indefiniteRoot == nullptr) return nullptr;
  int links = 0;
  for (YcluiSuccessorIterator i(*indefiniteRoot); i.ring != nullptr; ++i) {
    if (i.node()->tokenId == tokenId) return i.node();
    if (++links > FewLinks) return indexedIndefiniteNode(tokenId);
  }
  return nullptr;
}

// Successors are added behind those that were read.
YcluiSyntaxNode* YcluiNfa::indexedIndefiniteNode(unsigned long tokenId) const {
  YcluiNodeIndex& index = IndexOf(indefiniteRoot);
  while (index.read != indefiniteRoot->last()) {
    index.read = index.read == nullptr ? indefiniteRoot->first() : index.read->next();
    index.indefinites.add(static_cast<YcluiSyntaxNode*>(index.read->item()));
  }
  const YcluiNodeRow* row = index.indefinites.find(tokenId);
  return row == nullptr ? nullptr : row->node;
}

YWord YcluiNfa::reset() {
  clearPlaces();
  if (graph == nullptr || graph->start == nullptr) return 0;
  currentNode = graph->start;
  nextNodes.push(graph->start);
  if (graph->start->tokenId == 0) onlyPlace = graph->start;
  terminated = 0;
  return 1;
}

YcluiSyntaxNode* YcluiNfa::stepNext(const unsigned long& tokenId) {
  YcluiSyntaxNode* indefinite = indefiniteNode(tokenId);
  if (indefinite != nullptr) return indefinite;

  const int ends = findMatches(tokenId);
  if (matchedNodes.isEmpty() != 0) return nullptr;

  YcluiSyntaxNode* answer = matchedNodes.top();
  currentNode = answer;
  standBehindMatches();
  if (ends > 0) terminated = 1;
  // Last of all: the host's listener may use this walker.
  if (ends > 1) cluiNote(YErrAmbiguous);
  return answer;
}

YcluiSyntaxNode* YcluiNfa::goBack(YcluiSyntaxNode* node) {
  clearPlaces();
  currentNode = node;
  terminated = 0;
  if (node == nullptr) return nullptr;
  if (node->tokenId != 0) {
    behind = node;
  } else {
    nextNodes.pushSuccessors(*node);
    onlyPlace = PlaceBehind(node);
  }
  const bool isStart = graph != nullptr && node == graph->start;
  if (!isStart && endsBehind(node) > 0) terminated = 1;
  return node;
}

// The order is that of one list whose top is popped and under which structural nodes put their
// successors: first what is pushed here, then nextNodes, then the queue.
YWord YcluiNfa::possibleNodes(YcluiSyntaxNodeP_Array& nodes) const {
  if (graph == nullptr || terminated != 0) return 0;
  const std::uint64_t serial = NewSerial();
  YcluiSyntaxNodeStk found;
  YcluiSyntaxNodeStk pushed;
  YcluiSyntaxNodeStk queue;
  if (behind != nullptr) {
    NoteReading(behind);  // its own successors decide, and the answer may be kept
    pushed.pushSuccessors(*behind);
  }
  int waiting = behind != nullptr ? 0 : nextNodes.count();
  int taken = 0;
  while (pushed.isEmpty() == 0 || waiting > 0 || taken < queue.count()) {
    YcluiSyntaxNode* node = pushed.isEmpty() == 0 ? pushed.pop()
                            : waiting > 0         ? nextNodes.at(--waiting)
                                                  : queue.at(taken++);
    if (!Mark(node, serial)) continue;
    if (node->tokenId == 0) {
      queue.pushSuccessors(*node);
      continue;
    }
    found.push(node);
    if (node->kind == YcluiNodeClosure) pushed.pushSuccessors(*node);
  }
  nodes.resize(found.count());
  for (int i = 0; i < found.count(); ++i) nodes[i] = found.at(i);
  return 1;
}

void YcluiNfa::clearPlaces() {
  nextNodes.clear();
  onlyPlace = nullptr;
  behind = nullptr;
}

void YcluiNfa::listNext() {
  if (behind == nullptr || nextNodes.isEmpty() == 0) return;
  nextNodes.pushSuccessors(*behind);
  KeepFirstAndLast(nextNodes);
}

// What waits is read from the top, and then the queue that grows behind it. Without a match the
// walker stands where it stood.
void YcluiNfa::walkMatches(unsigned long tokenId) {
  matchedNodes.clear();
  YcluiSyntaxNode* next = behind == nullptr ? nullptr : OnlySuccessor(*behind);
  if (next != nullptr && next->tokenId != 0) {
    if (next->tokenId == tokenId) matchedNodes.push(next);
    return;
  }
  listNext();
  savedNodes.swap(nextNodes);
  workNodes.clear();
  looked = savedNodes.count();
  const std::uint64_t serial = NewSerial();
  for (int i = savedNodes.count(); i > 0; --i) meet(savedNodes.at(i - 1), tokenId, serial);
  for (int i = 0; i < workNodes.count(); ++i) meet(workNodes.at(i), tokenId, serial);
  KeepFirstAndLast(matchedNodes);
  nextNodes.swap(savedNodes);
  noteStep();
}

// A step that looks at much is known for all nodes that lead to the same place, one that looks at
// little for the token node behind which it begins.
void YcluiNfa::noteStep() {
  const bool isWide = looked > FewLinks;
  YcluiSyntaxNode* from = isWide || behind == nullptr ? onlyPlace : behind;
  if (from == nullptr || looked < 2 || !renew(*from)) return;
  using Step = YcluiSyntaxNode::Step;
  if (from->step_ == Step::Unknown) from->step_ = isWide ? Step::Wide : Step::Narrow;
}

void YcluiNfa::meet(YcluiSyntaxNode* node, unsigned long tokenId, std::uint64_t serial) {
  if (node->tokenId == 0) {
    if (Mark(node, serial)) open(*node, tokenId);
  } else if (node->tokenId == tokenId) {
    matchedNodes.push(node);
  }
}

// Nodes of other ids would be dropped when they come up; among thousands of alternatives it pays to
// leave them out at once.
void YcluiNfa::open(const YcluiSyntaxNode& node, unsigned long tokenId) {
  for (YcluiSuccessorIterator i(node); i.ring != nullptr; ++i) {
    ++looked;
    const std::uint32_t id = i.node()->tokenId;
    if (id == 0 || id == tokenId) workNodes.push(i.node());
  }
}

// Puts the matches of a step into matchedNodes, and answers the ways behind them.
int YcluiNfa::findMatches(unsigned long tokenId) {
  if (knowsPairAhead()) return takeOfPair(told.ahead, told.aheadEnds, tokenId);
  YcluiSyntaxNode* from = knownStep();
  return from != nullptr ? takeKnown(from, tokenId) : takeWalking(tokenId);
}

// What is remembered of the step that comes; null when it has to be walked.
YcluiSyntaxNode* YcluiNfa::knownStep() {
  if (behind != nullptr) {
    if (knowsStepFrom(behind)) return behind;
    onlyPlace = PlaceBehind(behind);
  }
  return onlyPlace != nullptr && knowsStepFrom(onlyPlace) ? onlyPlace : nullptr;
}

bool YcluiNfa::knowsStepFrom(YcluiSyntaxNode* from) {
  using Step = YcluiSyntaxNode::Step;
  if (!holds(*from)) return false;
  if (from->step_ == Step::Narrow || from->step_ == Step::Wide) learnStepFrom(from);
  return from->step_ == Step::Pair || from->step_ == Step::Indexed;
}

// Puts the matches of a step that is known into matchedNodes, and answers the ways behind them.
int YcluiNfa::takeKnown(YcluiSyntaxNode* from, unsigned long tokenId) {
  return from->step_ == YcluiSyntaxNode::Step::Pair
             ? takeOfPair(from->pair_, from->pairEnds_, tokenId)
             : takeIndexed(from->index_->matches, tokenId);
}

int YcluiNfa::takeOfPair(YcluiSyntaxNode* const* pair, const std::int8_t* ends,
                         unsigned long tokenId) {
  matchedNodes.clear();
  for (int i = 0; i < YcluiSyntaxNode::InPair; ++i) {
    YcluiSyntaxNode* node = pair[i];
    if (node == nullptr || node->tokenId != tokenId) continue;
    matchedNodes.push(node);
    // What may follow it comes from memory while the next word is read. Not in a function of its
    // own: a compiler drops the calls of one that has no other effect.
    if (node->step_ == YcluiSyntaxNode::Step::Pair && holds(*node)) {
      for (const YcluiSyntaxNode* next : node->pair_) {
        if (next != nullptr) __builtin_prefetch(&next->tokenId);
      }
    }
    return ends[i];
  }
  return 0;
}

int YcluiNfa::takeIndexed(YcluiIdIndex& matches, unsigned long tokenId) {
  matchedNodes.clear();
  YcluiNodeRow* row = matches.find(tokenId);
  if (row == nullptr) return 0;
  matchedNodes.push(row->node);
  if (row->others != YcluiNodeRow::None) matches.pushOthers(*row, matchedNodes);
  if (row->ends < 0) noteRow(*row);
  if (row->ahead[0].lines == 0) noteAhead(*row);
  take(*row);
  for (const YcluiSyntaxNode* next : told.ahead) {
    if (next != nullptr) __builtin_prefetch(&next->tokenId);
  }
  return row->ends;
}

// The mask is for the compiler, which does not know how few there are.
void YcluiNfa::noteRow(YcluiNodeRow& row) {
  row.ends = endsBehindMatches() & 3;
  row.isSilent = row.node->action == nullptr;
}

// What lies too far away is not noted.
void YcluiNfa::noteAhead(YcluiNodeRow& row) const {
  if (row.node->step_ != YcluiSyntaxNode::Step::Pair || !holds(*row.node)) return;
  YcluiNodeRow::Ahead noted[YcluiSyntaxNode::InPair];
  for (int i = 0; i < YcluiSyntaxNode::InPair; ++i) {
    if (row.node->pair_[i] == nullptr) continue;
    const std::intptr_t lines = LinesBetween(row.node, row.node->pair_[i]);
    noted[i].lines = lines & 0x3FFF;
    noted[i].ends = row.node->pairEnds_[i] & 3;
    if (noted[i].lines != lines || lines == 0) return;
  }
  std::copy(std::begin(noted), std::end(noted), row.ahead);
}

// The row tells all that the next step needs, so that neither waits for the node.
void YcluiNfa::take(const YcluiNodeRow& row) {
  told.node = row.node;
  told.era = graph->era();
  told.isSilent = row.isSilent;
  for (int i = 0; i < YcluiSyntaxNode::InPair; ++i) {
    told.ahead[i] = row.ahead[i].lines == 0 ? nullptr : NodeAt(row.node, row.ahead[i].lines);
    told.aheadEnds[i] = static_cast<std::int8_t>(row.ahead[i].ends);
  }
}

bool YcluiNfa::knowsPairAhead() const {
  return behind != nullptr && behind == told.node && told.ahead[0] != nullptr && holdsTold();
}

int YcluiNfa::takeWalking(unsigned long tokenId) {
  walkMatches(tokenId);
  return matchedNodes.isEmpty() != 0 ? 0 : endsBehindMatches();
}

// The start of the graph gets a mark, since it tells when all of it becomes a repeated part.
void YcluiNfa::learnStepFrom(YcluiSyntaxNode* from) {
  using Step = YcluiSyntaxNode::Step;
  const bool isWide = from->step_ == Step::Wide;
  from->step_ = Step::Covered;
  if (graph->start != nullptr) NoteReading(graph->start);
  if (!collectMatches(from, isWide)) return;
  if (ArePair(matchedNodes)) {
    learnPair(from);
    return;
  }
  YcluiIdIndex& index = IndexOf(from).matches;
  for (int i = 0; i < matchedNodes.count(); ++i) index.add(matchedNodes.at(i));
  from->step_ = Step::Indexed;
}

// Whether these are no more than a pair of different ids.
bool YcluiNfa::ArePair(const YcluiSyntaxNodeStk& nodes) {
  if (nodes.count() > YcluiSyntaxNode::InPair) return false;
  return nodes.count() < 2 || nodes.at(0)->tokenId != nodes.at(1)->tokenId;
}

void YcluiNfa::learnPair(YcluiSyntaxNode* from) {
  YcluiSyntaxNode* pair[YcluiSyntaxNode::InPair] = {};
  for (int i = 0; i < matchedNodes.count(); ++i) {
    pair[i] = matchedNodes.at(i);
    from->pairEnds_[i] = endsBehind(pair[i]) & 3;
  }
  from->keepPair(pair[0], pair[1]);
}

// Collects what comes up in a step, whatever its id, in the order of a step.
bool YcluiNfa::collectMatches(YcluiSyntaxNode* from, bool isForIndex) {
  matchedNodes.clear();
  workNodes.clear();
  PushPlaces(from, workNodes);
  const std::uint64_t serial = NewSerial();
  NoteReading(from);
  for (int i = 0; i < workNodes.count(); ++i) {
    YcluiSyntaxNode* node = workNodes.at(i);
    if (node->tokenId != 0) {
      NoteReading(node);
      matchedNodes.push(node);
    } else if (Mark(node, serial)) {
      if (isForIndex && !cover(node)) return false;
      workNodes.pushSuccessors(*node);
    }
  }
  KeepFirstAndLast(matchedNodes);
  return true;
}

// The places from which a step behind a token node, or at a structural one, begins, from the top.
void YcluiNfa::PushPlaces(YcluiSyntaxNode* from, YcluiSyntaxNodeStk& nodes) {
  if (from->tokenId == 0) {
    nodes.push(from);
    return;
  }
  for (const YRing* ring = from->last(); ring != nullptr; ring = ring->previous()) {
    nodes.push(static_cast<YcluiSyntaxNode*>(ring->item()));
  }
}

// Counts the indexes in which the successors of the node stand. Of many places that lead on to one
// another only some get one: all of them together could be as large as the square of the graph.
bool YcluiNfa::cover(YcluiSyntaxNode* node) {
  const std::uint32_t round = YcluiSyntaxNode::Changes() & 0xFFFFFF;
  if (node->coverRound_ != round) node->covers_ = 0;
  node->coverRound_ = round;
  if (node->covers_ == MostCovers) return false;
  ++node->covers_;
  return true;
}

// Forgets what is remembered at the node if it does not hold any more. False without a graph: then
// nothing can be remembered.
bool YcluiNfa::renew(YcluiSyntaxNode& node) const {
  if (graph == nullptr) return false;
  if (holds(node)) return true;
  node.era_ = graph->era();
  node.step_ = YcluiSyntaxNode::Step::Unknown;
  node.ways_ = YcluiSyntaxNode::UnknownWays;
  if (node.index_ != nullptr) node.index_->matches.clear();
  return true;
}

YcluiNodeIndex& YcluiNfa::IndexOf(YcluiSyntaxNode* node) {
  if (node->index_ == nullptr) node->index_ = YChecked(new (std::nothrow) YcluiNodeIndex);
  return *node->index_;
}

void YcluiNfa::standBehindMatches() {
  clearPlaces();
  if (matchedNodes.count() == 1) {
    behind = matchedNodes.at(0);
    return;
  }
  for (int i = 0; i < matchedNodes.count(); ++i) nextNodes.pushSuccessors(*matchedNodes.at(i));
  KeepFirstAndLast(nextNodes);
}

// The node on which a step behind that one depends, or null. What leads to one structural node only
// shares what is known of that one with all others that do.
YcluiSyntaxNode* YcluiNfa::PlaceBehind(YcluiSyntaxNode* node) {
  YcluiSyntaxNode* next = OnlySuccessor(*node);
  if (next != nullptr) return next->tokenId == 0 ? next : nullptr;
  return node->tokenId != 0 ? node : nullptr;
}

int YcluiNfa::endsBehindMatches() {
  if (matchedNodes.count() == 1) return endsBehind(matchedNodes.at(0));
  const std::uint64_t serial = NewSerial();
  int ends = 0;
  for (int i = 0; i < matchedNodes.count(); ++i) ends += waysBehind(matchedNodes.at(i), serial);
  return std::min(ends, MostWays);
}

// The ways behind a single match. What leads to one node only has the ways of that one, which it
// shares with all others that do.
int YcluiNfa::endsBehind(YcluiSyntaxNode* node) {
  if (node->kind == YcluiNodeClosure) return 0;
  YcluiSyntaxNode* next = OnlySuccessor(*node);
  if (node->tokenId == 0 || next == nullptr) return memorizedWaysBehind(node);
  if (!IsPassable(*next)) return 0;
  return std::min(memorizedWaysBehind(next) + (next == graphEnd() ? 1 : 0), MostWays);
}

// Whether there is nothing to count: the node is the end of the graph or leads there alone.
bool YcluiNfa::hasPlainWays(const YcluiSyntaxNode& node) const {
  const YcluiSyntaxNode* end = graphEnd();
  if (end == nullptr || end->first() != nullptr || !IsPassable(*end)) return false;
  const YRing* first = node.first();
  return first == nullptr ? &node == end : first->next() == nullptr && first->item() == end;
}

int YcluiNfa::memorizedWaysBehind(YcluiSyntaxNode* node) {
  if (hasPlainWays(*node)) {
    NoteReading(node);
    NoteReading(graph->end);
    return node == graph->end ? 0 : 1;
  }
  if (holds(*node) && node->ways_ >= 0) return node->ways_;
  looked = 0;
  const int ways = waysBehind(node, NewSerial());
  if (looked > FewLinks && renew(*node)) node->ways_ = static_cast<std::int8_t>(ways);
  return ways;
}

// The ways from behind the node to the end of the graph, up to MostWays. Depth first: a node stays
// on the list below its successors, and is counted when it is on top again. A successor that is
// still Counting then stands before the node on the same way.
int YcluiNfa::waysBehind(YcluiSyntaxNode* node, std::uint64_t serial) {
  if (node->kind == YcluiNodeClosure) return 0;
  workNodes.clear();
  workNodes.push(node);
  while (workNodes.isEmpty() == 0) {
    YcluiSyntaxNode* top = workNodes.top();
    if (Mark(top, serial)) {
      top->note_ = Counting;
      for (YcluiSuccessorIterator i(*top); i.ring != nullptr; ++i) {
        ++looked;
        if (IsPassable(*i.node()) && i.node()->mark_ != serial) workNodes.push(i.node());
      }
      continue;
    }
    if (top->note_ == Counting) top->note_ = sumOfWays(*top);
    workNodes.drop();
  }
  return node->note_;
}

int YcluiNfa::sumOfWays(const YcluiSyntaxNode& node) const {
  int ways = 0;
  for (YcluiSuccessorIterator i(node); i.ring != nullptr && ways < MostWays; ++i) {
    const YcluiSyntaxNode* next = i.node();
    if (!IsPassable(*next) || next->note_ == Counting) continue;
    ways += next->note_ + (next == graphEnd() ? 1 : 0);
  }
  return std::min(ways, MostWays);
}

std::uint64_t YcluiNfa::NewSerial() {
  static std::uint64_t last = OldestSerial;
  return ++last;
}

// Sees to it that a node has a mark when something is remembered that its successors decide.
void YcluiNfa::NoteReading(YcluiSyntaxNode* node) {
  if (node->mark_ == 0) node->mark_ = OldestSerial;
}

// Whether the walk of that number comes by the node for the first time.
bool YcluiNfa::Mark(YcluiSyntaxNode* node, std::uint64_t serial) {
  if (node->mark_ == serial) return false;
  node->mark_ = serial;
  return true;
}

void YcluiNfa::KeepFirstAndLast(YcluiSyntaxNodeStk& nodes) {
  const int all = nodes.count();
  if (all < 3) return;
  for (int i = 0; i < all; ++i) nodes.at(i)->note_ = i;
  const std::uint64_t serial = NewSerial();
  nodes.clear();
  for (int i = 0; i < all; ++i) {
    YcluiSyntaxNode* node = nodes.at(i);
    if (Mark(node, serial) || node->note_ == i) nodes.push(node);
  }
}
