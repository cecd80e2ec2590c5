#include "tests/support/syntax.h"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <utility>

namespace {

using Graph = std::unique_ptr<YcluiSyntaxGraph>;

// A node or a fragment that is to be inserted.
struct Part {
  YcluiSyntaxNode* node = nullptr;
  Graph graph = nullptr;
  bool isBase = false;  // in square brackets
};

void InsertAnd(YcluiSyntaxGraph& graph, const Part& part) {
  part.node != nullptr ? graph.insertAnd(part.node) : graph.insertAnd(part.graph.get());
}
void InsertOr(YcluiSyntaxGraph& graph, const Part& part) {
  part.node != nullptr ? graph.insertOr(part.node) : graph.insertOr(part.graph.get());
}

class Reader {
 public:
  Reader(std::string text, const IdOf& idOf) : text_(std::move(text)), idOf_(idOf) {}

  // One level of brackets, the opening one included.
  Graph level() {
    Part last = sequence();
    const bool isFragment = last.node == nullptr && next() != '|';
    Graph graph = std::make_unique<YcluiSyntaxGraph>();
    if (last.isBase || isFragment) {
      graph = std::move(last.graph);
    } else {
      InsertOr(*graph, last);
    }
    while (next() == '|') {
      take();
      InsertOr(*graph, sequence());
    }
    take();
    return graph;
  }

 private:
  std::string text_;  // the rest of the text, which is read from the back
  const IdOf& idOf_;
  int depth_ = 0;

  // The last character that has a meaning, 0 when there is none.
  char next() {
    const char* const passed = depth_ == 0 ? " ([" : " ";
    text_.resize(text_.find_last_not_of(passed) + 1);
    return text_.empty() ? '\0' : text_.back();
  }
  void take() {
    if (next() != '\0') text_.pop_back();
  }
  // The text after the last of these characters.
  std::string takeAfter(const char* stops) {
    const std::size_t begin = text_.find_last_of(stops) + 1;
    std::string taken = text_.substr(begin);
    text_.resize(begin);
    return taken;
  }

  bool endsSequence() {
    const char c = next();
    return c == '\0' || c == '|' || c == '(' || c == '[';
  }

  Part sequence() {
    if (endsSequence()) return {.graph = std::make_unique<YcluiSyntaxGraph>()};
    Part last = part();
    if (endsSequence() && (last.node != nullptr || last.isBase)) return last;
    Graph graph = std::make_unique<YcluiSyntaxGraph>();
    last.isBase ? graph.swap(last.graph) : InsertAnd(*graph, last);
    while (!endsSequence()) InsertAnd(*graph, part());
    return {.graph = std::move(graph)};
  }

  Part part() {
    int closures = 0;
    for (; next() == '*'; take()) ++closures;
    if (next() != ')' && next() != ']') return {.node = node()};
    const bool isBase = next() == ']';
    take();
    ++depth_;
    Graph graph = level();
    --depth_;
    for (; closures > 0; --closures) graph->makeClosure();
    return {.graph = std::move(graph), .isBase = isBase};
  }

  YcluiSyntaxNode* node() {
    std::string action;
    const bool hasAction = next() == '}';
    if (hasAction) {
      take();
      action = takeAfter("{");
      take();
    }
    next();
    const std::string word = takeAfter(" ()[]|*}");
    const std::size_t mark = word.find('^');
    auto* made =
        new YcluiSyntaxNode(idOf_(word.substr(0, mark)), hasAction ? action.c_str() : nullptr);
    if (mark == std::string::npos) return made;
    const std::size_t comma = std::min(word.find(',', mark), word.size() - 1);
    made->priority = static_cast<std::uint8_t>(std::atoi(word.c_str() + mark + 1));
    made->interruptLimit = static_cast<std::uint8_t>(std::atoi(word.c_str() + comma + 1));
    return made;
  }
};

}  // namespace

unsigned long IdOfNumber(const std::string& word) {
  return std::strtoul(word.c_str(), nullptr, 10);
}

Graph SyntaxOf(const std::string& text, const IdOf& idOf) {
  return Reader(text, idOf).level();
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
