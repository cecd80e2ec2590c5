// A host in one file: a calculator whose commands run in C++, without a script engine.
//
//   add:5,7            two integers: the command is complete with its arguments
//   from:10 less:4     two words: the command is complete with the second
//   total              the sum of all results

#include <yqrtClui.h>

#include <iostream>
#include <sstream>
#include <string>

namespace {

class Calculator : public YcluiParser {
 public:
  Calculator() {
    YcluiValueType two[] = {YcluiValueInteger, YcluiValueInteger};
    YcluiValueType one[] = {YcluiValueInteger};
    const auto add = lex()->addKeyword("add:", 2, two, 0);
    const auto from = lex()->addKeyword("from:", 1, one, 0);
    const auto less = lex()->addKeyword("less:", 1, one, 0);
    const auto total = lex()->addKeyword("total", "tot", 0);

    auto* subtraction = new YcluiSyntaxGraph;  // insertAnd inserts at the front
    subtraction->insertAnd(new YcluiSyntaxNode(less, "add $0[0] -$1[0]"));
    subtraction->insertAnd(new YcluiSyntaxNode(from));

    auto* commands = new YcluiSyntaxGraph;
    commands->insertOr(subtraction);  // moves the nodes and leaves `subtraction` empty
    delete subtraction;
    commands->insertOr(new YcluiSyntaxNode(add, "add $0[0] $0[1]"));
    commands->insertOr(new YcluiSyntaxNode(total, "total"));
    setSyntaxGraph(commands);  // the parser now owns it

    setTokRefuseCallback(refused, nullptr);
  }

 private:
  long total_ = 0;

  // Called with the text of each complete command, with its $ forms replaced.
  YWord evaluate(const char* command) override {
    std::istringstream words(command);
    std::string verb;
    std::string left;
    std::string right;
    words >> verb >> left >> right;
    if (verb == "add") {
      const long result = number(left) + number(right);
      total_ += result;
      std::cout << "result " << result << '\n';
    } else {
      std::cout << "total " << total_ << '\n';
    }
    return 1;
  }

  // A minus sign in a template before a negative argument gives "--5".
  static long number(const std::string& text) {
    return text.compare(0, 2, "--") == 0 ? std::stol(text.substr(2)) : std::stol(text);
  }

  static void refused(void*, const YcluiToken& token, std::uint32_t) {
    std::cout << "refused: " << token.string() << '\n';
  }
};

}  // namespace

int main() {
  Calculator calculator;
  std::string line;
  while (std::getline(std::cin, line)) {
    line += '\n';  // texts are joined with nothing between: the end of line ends the word
    calculator.interpret(line.c_str());
  }
  return 0;
}
