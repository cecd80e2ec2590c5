// Checks of the syntax.

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "syntax/YcluiNfa.h"
#include "workshop/CluiLintChecks.h"

namespace {

// Priorities in the order in which they are compared with each other; more are unlikely.
constexpr std::size_t MostPriorities = 256;

std::string NamesOf(const CluiLintedLanguage& language, const std::vector<std::uint32_t>& ids) {
  std::string names;
  for (const std::uint32_t id : ids) names += (names.empty() ? "" : " ") + language.nameOf(id);
  return names;
}

// The node that accepts the last of the words.
int AcceptingNode(CluiLintedLanguage& language, const std::vector<std::uint32_t>& words) {
  YcluiNfa walker;
  walker.syntaxGraph(&language.model.graph());
  const YcluiSyntaxNode* node = nullptr;
  for (const std::uint32_t id : words) node = walker.stepNext(id);
  return node == nullptr ? -1 : language.model.numberOf(node);
}

std::uint32_t FirstWordOf(const CluiFragment& fragment) {
  if (fragment.kind == CluiFragment::Kind::Word) return fragment.tokenId;
  for (const CluiFragment& part : fragment.parts) {
    const std::uint32_t id = FirstWordOf(part);
    if (id != 0) return id;
  }
  return 0;
}

// The first word of the call after the part, or else of the call.
std::uint32_t WordAfter(const CluiFragment& call, const CluiFragment* part) {
  std::uint32_t id = 0;
  for (const CluiFragment& each : call.parts) {
    if (&each > part && id == 0) id = FirstWordOf(each);
  }
  return id != 0 ? id : FirstWordOf(call);
}

// For each node whether a word there or after it has code that resets the parser, which ends a
// command too.
std::vector<bool> NodesBeforeReset(const CluiSyntaxModel& model) {
  std::vector<std::vector<std::size_t>> previous(model.nodes().size());
  std::vector<bool> isBefore(model.nodes().size());
  std::vector<std::size_t> work;
  for (std::size_t i = 0; i < model.nodes().size(); ++i) {
    const CluiModelNode& node = model.nodes()[i];
    for (const int next : node.next) previous[static_cast<std::size_t>(next)].push_back(i);
    if (node.code == nullptr || node.code->code.find("(clui-reset") == std::string::npos) continue;
    isBefore[i] = true;
    work.push_back(i);
  }
  while (!work.empty()) {
    const std::size_t node = work.back();
    work.pop_back();
    for (const std::size_t before : previous[node]) {
      if (!isBefore[before]) work.push_back(before);
      isBefore[before] = true;
    }
  }
  return isBefore;
}

}  // namespace

void CluiCheckSize(CluiLintedLanguage& language) {
  const CluiFragment& syntax = language.grammar.syntax;
  const std::string name = language.nameOf(FirstWordOf(syntax));
  if (!language.model.isComplete()) {
    if (syntax.place.line == 0) return;  // there is none
    language.add(syntax.place, "too-large", name,
                 "the syntax is nested too deeply, so it was not examined; nest it less");
  } else if (!language.paths.isComplete()) {
    language.add(syntax.place, "too-large", name,
                 "too many states are possible, so it was not examined which words are reached; "
                 "let fewer alternatives begin with the same words");
  }
}

void CluiCheckSharedEnds(CluiLintedLanguage& language) {
  for (const CluiSyntaxPaths::SharedEnd& shared : language.paths.sharedEnds()) {
    std::vector<std::uint32_t> words = shared.before;
    words.push_back(language.nodeAt(shared.nodes.front()).tokenId);
    const int runs = AcceptingNode(language, words);
    for (const int node : shared.nodes) {
      if (node == runs) continue;
      const std::string after =
          shared.before.empty() ? "" : " after " + NamesOf(language, shared.before);
      language.add(language.nodeAt(node).call->place, "same-end", language.nameOfNode(node),
                   "two alternatives end with this word" + after +
                       ", and only the code of the one" +
                       CluiAtPlace(language.nodeAt(runs).call->place) +
                       " runs; use different words, or remove one");
    }
  }
}

void CluiCheckUnreached(CluiLintedLanguage& language) {
  if (!language.paths.isComplete()) return;
  for (const auto& [node, before] : language.paths.unreachedNodes()) {
    const CluiModelNode& unreached = language.nodeAt(node);
    std::string text;
    if (language.worksAnywhere(unreached.tokenId)) {
      text =
          "it is never reached here, since it works anywhere, which comes first; remove it from "
          "the syntax or from the words that work anywhere";
    } else if (before >= 0) {
      text = "it is never reached, since " + language.nameOfNode(before) +
             " ends the command before it; put it before the word that ends the command";
    } else {
      continue;
    }
    language.add(unreached.call->place, "unreached", language.nameOf(unreached.tokenId), text);
  }
}

void CluiCheckEndless(CluiLintedLanguage& language) {
  if (!language.paths.isComplete()) return;
  const std::string mend = "; put a word that ends it after the repeated part";
  const std::vector<bool> isReset = NodesBeforeReset(language.model);
  if (language.paths.isEndless()) {
    if (isReset[static_cast<std::size_t>(language.model.start())]) return;
    const CluiFragment& syntax = language.grammar.syntax;
    language.add(syntax.place, "endless", language.nameOf(FirstWordOf(syntax)),
                 "no command ends, since nothing follows a repeated part" + mend);
    return;
  }
  for (const int node : language.paths.endlessNodes()) {
    if (isReset[static_cast<std::size_t>(node)]) continue;
    const CluiModelNode& word = language.nodeAt(node);
    language.add(
        word.call->place, "endless", language.nameOf(word.tokenId),
        "a command with this word never ends, since nothing follows a repeated part" + mend);
  }
}

void CluiCheckLostCode(CluiLintedLanguage& language) {
  for (const CluiSyntaxModel::Part& lost : language.model.lostCode()) {
    language.add(lost.call->place, "lost-code", CluiInQuotes(lost.part->code),
                 "this code never runs, since no word of its own is before it; write it directly "
                 "after its word");
  }
  for (const CluiSyntaxModel::Displaced& displaced : language.model.displacedCode()) {
    language.add(displaced.code.call->place, "displaced-code",
                 CluiInQuotes(displaced.code.part->code),
                 "this code follows a fragment, so it runs at the earlier word " +
                     language.nameOf(displaced.tokenId) + "; write it directly after its word");
  }
}

void CluiCheckIdlePriorities(CluiLintedLanguage& language) {
  // The priorities that a word has, and whether one that begins a command has them.
  std::map<const CluiFragment*, bool> begins;
  for (const CluiModelNode& node : language.model.nodes()) begins.emplace(node.priority, false);
  for (const int node : language.paths.firstNodes()) begins[language.nodeAt(node).priority] = true;
  for (const auto& [part, call] : language.model.priorities()) {
    const auto found = begins.find(part);
    std::string reason;
    if (found == begins.end()) {
      reason = "no word follows it directly, or another priority does";
    } else if (part->priority == 127 && part->limit == 127) {
      reason = "127 and 127 are the usual priorities";
    } else if (!found->second) {
      reason = "the word after it does not begin a command";
    } else {
      continue;
    }
    language.add(part->place, "idle-priority", language.nameOf(WordAfter(*call, part)),
                 "the priority changes nothing, since " + reason +
                     "; put it before the first word of a command, or remove it");
  }
}

void CluiCheckExclusivePriorities(CluiLintedLanguage& language) {
  struct Level {
    int priority;
    int limit;
    int node;  // that has these priorities
  };
  std::vector<Level> levels;
  for (const int node : language.paths.firstNodes()) {
    const CluiFragment* const own = language.nodeAt(node).priority;
    const Level level = {own == nullptr ? 127 : own->priority, own == nullptr ? 127 : own->limit,
                         node};
    const bool isKnown = std::any_of(levels.begin(), levels.end(), [&](const Level& known) {
      return known.priority == level.priority && known.limit == level.limit;
    });
    if (!isKnown && levels.size() < MostPriorities) levels.push_back(level);
  }
  for (const Level& one : levels) {
    for (const Level& other : levels) {
      const CluiFragment* const own = language.nodeAt(one.node).priority;
      const CluiFragment* const its = language.nodeAt(other.node).priority;
      // Each pair once, at priorities that the script sets.
      if (own == nullptr || (its != nullptr && other.node <= one.node)) continue;
      if (one.limit >= other.priority || other.limit >= one.priority) continue;
      language.add(own->place, "exclusive-priorities", language.nameOfNode(one.node),
                   "neither this command nor " + language.nameOfNode(other.node) +
                       " can interrupt the other, since both priorities are above the limits; "
                       "raise a limit");
    }
  }
}
