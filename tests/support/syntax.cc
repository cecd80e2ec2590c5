#include "tests/support/syntax.h"

#include <regex>
#include <vector>

namespace {

// Reads from the back, as fragments are built.
class Reader {
 public:
  Reader(const YcluiLex& lex, const std::string& text) : lex_(lex) {
    static const std::regex part(R"([{][^}]*[}]|[()|*]|[^ {()|*]+)");
    const std::sregex_iterator end;
    for (std::sregex_iterator i(text.begin(), text.end(), part); i != end; ++i) {
      parts_.push_back(i->str());
    }
  }

  // One level of parentheses.
  YcluiSyntaxGraph* read() {
    YcluiSyntaxGraph* one = sequence();
    auto* all = next() == "|" ? new YcluiSyntaxGraph : one;
    for (; all != one; one = sequence()) {
      all->insertOr(one);
      delete one;
      if (next() != "|") break;
      parts_.pop_back();
    }
    if (!parts_.empty()) parts_.pop_back();  // the parenthesis
    return all;
  }

 private:
  const YcluiLex& lex_;
  std::vector<std::string> parts_;

  std::string next() const { return parts_.empty() ? "(" : parts_.back(); }

  YcluiSyntaxGraph* sequence() {
    auto* graph = new YcluiSyntaxGraph;
    std::string command;
    while (next() != "|" && next() != "(") {
      const std::string part = next();
      parts_.pop_back();
      if (part[0] == '{') {
        command = part.substr(1, part.size() - 2);
      } else if (part == ")" || part == "*") {
        if (part == "*") parts_.pop_back();
        YcluiSyntaxGraph* inner = read();
        if (part == "*") inner->makeClosure();
        graph->insertAnd(inner);
        delete inner;
      } else {
        graph->insertAnd(node(part, command));
        command.clear();
      }
    }
    return graph;
  }

  YcluiSyntaxNode* node(const std::string& part, const std::string& command) {
    const std::size_t mark = part.find('^');
    const char* action = command.empty() ? nullptr : command.c_str();
    YcluiSyntaxNode* made = NodeOf(lex_, part.substr(0, mark), action);
    if (mark == std::string::npos) return made;
    made->priority = static_cast<std::uint8_t>(std::stoi(part.substr(mark + 1)));
    const std::string limit = part.substr(part.find(',', mark) + 1);
    made->interruptLimit = static_cast<std::uint8_t>(std::stoi(limit));
    return made;
  }
};

}  // namespace

YcluiSyntaxGraph* SyntaxOf(const YcluiLex& lex, const std::string& text) {
  return Reader(lex, text).read();
}

YcluiSyntaxNode* NodeOf(const YcluiLex& lex, const std::string& word, const char* command) {
  const YcluiKeyword* found = lex.keyword(word.c_str());
  return new YcluiSyntaxNode(found == nullptr ? 0 : found->id(), command);
}
