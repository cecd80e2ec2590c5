#include "workshop/server/CluiChangingWords.h"

#include <vector>

#include "parser/YcluiParser.h"
#include "syntax/YcluiSyntaxGraph.h"
#include "workshop/CluiEffects.h"

namespace {

constexpr unsigned Changes = CluiChangesWords | CluiChangesSyntax | CluiChangesVariables;

}  // namespace

CluiChangingWords::CluiChangingWords(const YcluiParser& parser, const std::string& script) {
  if (parser.syntaxGraph() == nullptr) return;
  CluiEffects effects;
  effects.readScript(script);
  std::unordered_set<const YcluiSyntaxNode*> seen = {parser.syntaxGraph()->start};
  std::vector<const YcluiSyntaxNode*> nodes(seen.begin(), seen.end());
  if (parser.indefiniteRoot() != nullptr) nodes.push_back(parser.indefiniteRoot());
  while (!nodes.empty()) {
    const YcluiSyntaxNode& node = *nodes.back();
    nodes.pop_back();
    if (node.action != nullptr && (effects.of(node.action->buffer) & Changes) != 0) {
      ids_.insert(node.tokenId);
    }
    for (YcluiSuccessorIterator i(node); i.ring != nullptr; ++i) {
      if (seen.insert(i.node()).second) nodes.push_back(i.node());
    }
  }
}
