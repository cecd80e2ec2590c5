// One state of a syntax graph.

#ifndef SYNTAX_YCLUISYNTAXNODE_H_
#define SYNTAX_YCLUISYNTAXNODE_H_

#include <cstddef>
#include <cstdint>
#include <new>

#include "foundation/YString.h"
#include "foundation/YTypes.h"
#include "platform/general/YLinkList.h"

enum YcluiNodeKind : std::uint16_t {
  YcluiNodePlain = 0,       // an ordinary node
  YcluiNodeClosure = 1,     // belongs to a repeated part
  YcluiNodeIndefinite = 2,  // stands outside the graph and is accepted anywhere in a line
};

struct YcluiNodeIndex;

// The list that a node inherits holds its successors, in the order of their `append`. It does not
// own them: a node may follow any number of nodes, itself included, and a graph owns all its nodes.
//
// A node with a `tokenId` of 0 is structural: it accepts nothing and only leads on to its
// successors. Any other node accepts the token of that id, and only such a node fires its `action`.
//
// Walkers remember what they have read of a graph. They notice when successors change through the
// operations of this class and when a node goes; who writes another `tokenId`, `kind` or `action`
// into a node that a walker may have come by calls NoteChange.
class YQRT_API YcluiSyntaxNode : public YLinkList {
 public:
  YcluiNodeKind kind = YcluiNodePlain;
  std::uint8_t priority = 127;        // what its command brings when it interrupts another
  std::uint8_t interruptLimit = 127;  // the highest priority that may interrupt its command

 private:
  friend class YcluiNfa;
  // A walk over a graph writes its serial number into the nodes that it has come by, with a note of
  // its own, and so needs no set of them. What an earlier walk left here has an older number; 0 is
  // that of a node that no walk has come by.
  std::int32_t note_ = 0;
  std::uint64_t mark_ = 0;
  std::uint32_t coverRound_ : 24;  // see YcluiNfa::cover
  std::uint32_t covers_ : 8;
  YcluiNodeIndex* index_ = nullptr;  // of steps with many matches; owned, mostly null

 public:
  // From here to `action` lies one line of memory. A known step reads no more than this of the node
  // that it leads from or to, nor does the parser.
  alignas(64) std::uint32_t tokenId;

 private:
  // What walkers remember of a step that begins at this node, if it is structural, or behind it,
  // and nowhere else: the token nodes that come up in it; and the ways behind the node to the end
  // of the graph. It holds as long as the era of the graph.
  enum class Step : std::uint8_t {
    Unknown,
    Narrow,   // one step has looked at a few links, so the next one collects what comes up
    Wide,     // one step has looked at many, so the next one makes the index
    Pair,     // all that comes up are `pair_`, of different ids
    Indexed,  // it stands in the index
    Covered,  // it stands in too many indexes already
  };
  static constexpr std::int8_t UnknownWays = -1;
  static constexpr int InPair = 2;
  static constexpr std::size_t TextRoom = 24;
  Step step_ = Step::Unknown;
  std::int8_t ways_ = UnknownWays;
  std::int8_t pairEnds_[InPair] = {};  // the ways behind each of the pair: 0 to 2
  std::uint64_t era_ = 0;              // that of the graph, when this was remembered
  union {
    YcluiSyntaxNode* pair_[InPair] = {};  // null where there are fewer
    char room_[TextRoom];                 // a short text of the action, while there is no pair
  };
  YString text_;  // that of the action

 public:
  // The command template; owned, null when there is none; see setAction. Its text may move when a
  // walker comes by.
  YString* action = nullptr;

  // The id is cut to 32 bits. A null action leaves the node without one.
  explicit YcluiSyntaxNode(unsigned long id = 0, const char* actionText = nullptr);
  // A copy without successors, and with an action of its own.
  YcluiSyntaxNode(const YcluiSyntaxNode& other);
  YcluiSyntaxNode& operator=(const YcluiSyntaxNode&) = delete;
  // Leaves the successors alone.
  ~YcluiSyntaxNode();

  // Nodes lie side by side in memory of their own.
  static void* operator new(std::size_t size);
  static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
  static void operator delete(void* node, std::size_t size);

  // The operations of the list of successors.
  void* append(void* node) {
    noteGain();
    return YLinkList::append(node);
  }
  YRing* attach(YRing* ring) {
    noteGain();
    return YLinkList::attach(ring);
  }
  YRing* detach(YRing* ring) {
    noteLoss();
    return YLinkList::detach(ring);
  }
  void* detach(void* node) {
    noteLoss();
    return YLinkList::detach(node);
  }
  // Takes over all successors of another node, in their order, behind those that are here. Costs
  // the same however many they are.
  void takeSuccessors(YcluiSyntaxNode& from) {
    noteGain();
    from.noteLoss();
    attachAll(from);
  }

  // Makes `text` the action; null makes it an empty text. 0 when there was no action yet and no
  // memory for its text: YErrNoMemory is recorded as YErrFatal, and the node stays without one.
  YWord setAction(const char* text);

  // 1 when a command that begins with `other` may interrupt one that began with this node. Two
  // nodes with the priorities that they were made with always admit each other.
  YWord admitsInterruptBy(const YcluiSyntaxNode& other) const {
    return interruptLimit >= other.priority ? 1 : 0;
  }

  // Makes walkers forget what they remember.
  static void NoteChange() { ++ChangeCount; }
  // How often walkers were made to forget. While it stays the same, all nodes that a walker has
  // come by are alive and lead where they led.
  static std::uint64_t Changes() { return ChangeCount; }

 private:
  static std::uint64_t ChangeCount;

  void makeRoomFor(const char* text);
  void keepPair(YcluiSyntaxNode* first, YcluiSyntaxNode* second);

  // Before the successors or the action change; what no walker has read, none remembers.
  friend class YcluiSyntaxGraph;
  void noteGain() {
    if (mark_ != 0) NoteChange();
  }
  void noteLoss();

  // Whether the set of the nodes to be destroyed, into which it goes, does not hold it yet.
  friend class YcluiNodeSet;
  bool collect();
};

// Walks the successors of a node, in the order of its list:
//   for (YcluiSuccessorIterator i(node); i.ring != nullptr; ++i) use(i.node());
class YcluiSuccessorIterator : public YLinkListIterator {
 public:
  explicit YcluiSuccessorIterator(const YcluiSyntaxNode& of) : YLinkListIterator(of) {}
  YcluiSyntaxNode* node() const { return static_cast<YcluiSyntaxNode*>(current()); }
};

#endif  // SYNTAX_YCLUISYNTAXNODE_H_
