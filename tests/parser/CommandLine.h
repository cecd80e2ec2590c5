// A parser that tells what it does, with its words and its syntax in one line each.

#ifndef TESTS_PARSER_COMMANDLINE_H_
#define TESTS_PARSER_COMMANDLINE_H_

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "parser/YcluiParser.h"

using Texts = std::vector<std::string>;

// The callbacks, the commands and, on request, the texts leave a trace, one entry each:
//   tok(a)  echo(a b)  field(a b)  syn(a|p a)  refuse(x 0)  run(text of the command)  text(line)
// Only the entries of the kinds that are asked for with `trace` are kept. `at` gives an entry
// something to do, once, when it comes up.
class CommandLine final : public YcluiParser {
 public:
  // Declares words: "go box/ii say/s" are one without arguments, one with two integers and one with
  // a string (f a float, p a point); "move=mo" can be shortened to "mo".
  explicit CommandLine(const std::string& words, const std::string& syntax = "");

  // Sets a syntax: words in sequence, "( a | b c )" alternatives, a "*" behind the parenthesis for
  // repetition, "{command}" behind a word, "^120,126" behind a word its priority and limit.
  void setSyntax(const std::string& syntax);
  YcluiSyntaxNode* node(const std::string& word, const char* command = nullptr);
  void addIndefinite(const std::string& word, const char* command = nullptr);

  // Keeps the entries of these kinds, "tok echo run" for instance.
  void trace(const std::string& kinds);
  // What has been traced since the last call, separated by blanks.
  std::string told();
  // The trace of one text.
  std::string feed(const std::string& text);
  // The words of the frame's tokens, and "!" where the lines do not agree with them.
  std::string tokens() const;

  std::map<std::string, std::function<void()>> at;
  Texts lines;  // what interpret was given, when the trace has "text"

  int interpret(const char* text) override;

 private:
  std::string kinds_;
  std::string told_;

  YWord evaluate(const char* text) override;
  void tell(const std::string& kind, const std::string& text);
};

// A file of the test's own folder, written and read whole.
std::string PathOf(const std::string& name);
void WriteFile(const std::string& path, const std::string& text);
std::string ReadFile(const std::string& path);

// The codes that the error manager has taken on since the last call, oldest first: "2079/3 2079/2".
std::string NewErrors();

#endif  // TESTS_PARSER_COMMANDLINE_H_
