// A calculator with variables, in a terminal or over a file:
//
//   take: 3.5 times: 4 keep: area      computes and stores
//   take: area over: 2 minus: 1 show   computes and prints
//   list    forget: area    help    quit

#include <terminal/YcluiPrompt.h>
#include <yqrtClui/Language.h>

#include <cmath>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

using yqrtClui::Line;
using yqrtClui::Token;
using yqrtClui::word;

class Calculator {
 public:
  Calculator() {
    const auto names = [this] {
      std::vector<std::string> all;
      for (const auto& variable : variables_) all.push_back(variable.first);
      return all;
    };
    const auto value = yqrtClui::text("VALUE").help("a number or a variable").suggest(names);
    const auto name = yqrtClui::text("NAME").help("of a variable").suggest(names);

    const auto take = word("take:", value).help("begins a calculation");
    const auto operation =
        word("plus:", value).help("adds") | word("minus:", value).help("subtracts") |
        word("times:", value).help("multiplies") | word("over:", value).help("divides");
    const auto show = word("show").help("prints the result");
    const auto keep = word("keep:", name).help("stores the result");

    language_.command(take >> *operation >> show, [this](const Line& line) {
      const double result = compute(line);
      if (error_.empty()) std::cout << result << '\n';
      return error_;
    });
    language_.command(take >> *operation >> keep, [this](const Line& line) {
      const double result = compute(line);
      if (error_.empty()) variables_[std::string(line[line.count() - 1].text(1))] = result;
      return error_;
    });
    language_.command(word("list").help("prints all variables"), [this] {
      for (const auto& [variable, number] : variables_) {
        std::cout << variable << " = " << number << '\n';
      }
    });
    language_.command(word("forget:", name).help("removes a variable"), [this](std::string given) {
      return variables_.erase(given) > 0 ? "" : "there is no variable " + given;
    });
    language_.command(word("quit", "q").help("leaves"), [this] { language_.leave(); });
    language_.anywhere(word("help").help("lists what can be typed"), [this] {
      for (const auto& each : language_.complete("")) {
        std::cout << "  " << each.text << std::string(10 - each.text.size(), ' ') << each.help
                  << '\n';
      }
    });
  }

  // In a terminal, or from the standard input.
  bool run() {
    YcluiPrompt prompt(language_.parser(), "calculator");  // its history is kept under that name
    if (language_.run(prompt)) return true;
    reportTo(std::cerr);
    return language_.feed(std::cin).isGood();
  }

  bool readFile(const std::string& path) {
    reportTo(std::cerr);
    return language_.feedFile(path).isGood();
  }

 private:
  yqrtClui::Language language_;
  std::map<std::string, double> variables_;
  std::string error_;  // of the last calculation

  void reportTo(std::ostream& out) {
    language_.onRefusal(
        [&out](const yqrtClui::Refusal& refusal) { out << refusal.text() << '\n'; });
  }

  // The words of the line are "take:", operations and the word that ends it.
  double compute(const Line& line) {
    error_.clear();
    double result = valueOf(line[0]);
    for (int i = 1; i < line.count() - 1; ++i) {
      const double operand = valueOf(line[i]);
      if (line[i].name() == "plus:") result += operand;
      if (line[i].name() == "minus:") result -= operand;
      if (line[i].name() == "times:") result *= operand;
      if (line[i].name() == "over:") result /= operand;
    }
    if (error_.empty() && !std::isfinite(result)) error_ = "the result is no number";
    return result;
  }

  double valueOf(const Token& token) {
    const std::string given(token.text(1));
    const auto variable = variables_.find(given);
    if (variable != variables_.end()) return variable->second;
    double number = 0;
    std::istringstream digits(given);
    if (!(digits >> number) || !digits.eof()) error_ = "there is no variable " + given;
    return number;
  }
};

}  // namespace

int main(int argc, char** argv) {
  Calculator calculator;
  return (argc > 1 ? calculator.readFile(argv[1]) : calculator.run()) ? 0 : 1;
}
