#include "tests/syntax/syntax_script.h"

#include <set>

std::unique_ptr<YcluiSyntaxGraph> Build(const std::string& script) {
  std::vector<std::unique_ptr<YcluiSyntaxGraph>> stack;
  stack.push_back(std::make_unique<YcluiSyntaxGraph>());
  const auto join = [&stack](bool sequence) {
    YcluiSyntaxGraph* top = stack.back().get();
    YcluiSyntaxGraph& below = *stack[stack.size() - 2];
    sequence ? below.insertAnd(top) : below.insertOr(top);
    stack.pop_back();
  };
  bool alternative = false;
  for (const char sign : script) {
    if (sign == '(') stack.push_back(std::make_unique<YcluiSyntaxGraph>());
    if (sign == '*') stack.back()->makeClosure();
    if (sign >= '1' && sign <= '9') {
      auto* node = new YcluiSyntaxNode(static_cast<unsigned long>(sign - '0'));
      alternative ? stack.back()->insertOr(node) : stack.back()->insertAnd(node);
    }
    if ((sign == '&' || sign == '/') && stack.size() > 1) join(sign == '&');
    alternative = sign == '|';
  }
  while (stack.size() > 1) join(true);
  return std::move(stack.front());
}

std::vector<YcluiSyntaxNode*> SuccessorsOf(const YcluiSyntaxNode& node) {
  std::vector<YcluiSyntaxNode*> all;
  for (YcluiSuccessorIterator i(node); i.ring != nullptr; ++i) all.push_back(i.node());
  return all;
}

std::vector<YcluiSyntaxNode*> NodesOf(const YcluiSyntaxGraph& graph) {
  std::vector<YcluiSyntaxNode*> all = {graph.start};
  std::set<const YcluiSyntaxNode*> seen = {graph.start};
  for (std::size_t i = 0; i < all.size(); ++i) {
    for (YcluiSyntaxNode* next : SuccessorsOf(*all[i])) {
      if (seen.insert(next).second) all.push_back(next);
    }
  }
  return all;
}

Names NamesOf(const YcluiSyntaxGraph& graph) {
  Names names = {{graph.start, "s"}, {graph.end, "e"}};
  std::set<std::string> used;
  char letter = 'A';
  for (const YcluiSyntaxNode* node : NodesOf(graph)) {
    if (names.count(node) != 0) continue;
    std::string name =
        node->tokenId == 0 ? std::string(1, letter++) : "t" + std::to_string(node->tokenId);
    while (!used.insert(name).second) name += "'";
    names[node] = name;
  }
  return names;
}

std::string Listed(const std::vector<YcluiSyntaxNode*>& nodes, const Names& names) {
  std::string text;
  for (const YcluiSyntaxNode* node : nodes) text += (text.empty() ? "" : " ") + names.at(node);
  return text;
}

std::string Dump(const YcluiSyntaxGraph& graph) {
  const Names names = NamesOf(graph);
  std::string text;
  for (const YcluiSyntaxNode* node : NodesOf(graph)) {
    text += (text.empty() ? "" : "; ") + names.at(node);
    if (node->kind == YcluiNodeClosure) text += "*";
    text += ">" + Listed(SuccessorsOf(*node), names);
  }
  return text;
}
