// A parser that is driven by short scripts and records what it does, in a working folder of its
// own.

#ifndef TESTS_PARSER_COMMANDLINE_H_
#define TESTS_PARSER_COMMANDLINE_H_

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "foundation/YErr.h"
#include "parser/YcluiParser.h"
#include "tests/support/WorkingFolder.h"

// What happens leaves a trace, one entry each, of which those of the kinds asked for are kept:
//   tok(a)  echo(a b)  field(a b)  syn(a|p a)  refuse(x)  run(command)   callbacks and commands
//   err(not-opened)   a code, with its severity when it is no error; see tests/support/codes.h
//   push(1)       the kind "answer": what a step of a script answered
//   tokens(a b)   the tokens, at a step ^tokens; followed by "!" when the line does not agree
class CommandLine final : public YcluiParser {
 public:
  // Words as Declare reads them, and "help!" for one that is accepted anywhere and runs "help"
  // followed by its number in the frame. A syntax as SyntaxOf reads it.
  explicit CommandLine(const std::string& words, const std::string& syntax = "");
  ~CommandLine() { YErr.setListener(nullptr, nullptr); }

  void setSyntax(const std::string& syntax);

  // Takes steps, with "; " between them: texts for interpret, and operations under the names of
  // tests/support/steps.cc, such as "^push" or "^remove 1", or of this class: "^on run(a) ^reset &
  // b" performs the steps after the entry once, when the entry is made; "^syntax" and "^tokens".
  void perform(const std::string& steps, char separator = ';');
  // Keeps the entries of these kinds.
  void trace(const std::string& kinds) { kinds_ = " " + kinds + " "; }
  // What has been traced since the last call, with blanks between the entries.
  std::string traced();
  std::string tokens() const;
  void record(const std::string& kind, const std::string& text, const std::string& name = "");

  std::map<std::string, std::function<void()>> at;  // what to do, once, at an entry

  std::string texts;  // what interpret was given, in brackets

  int interpret(const char* text) override;

 private:
  std::vector<std::string> anywhere_;
  std::string kinds_;
  std::string trace_;

  YWord evaluate(const char* text) override;
};

#endif  // TESTS_PARSER_COMMANDLINE_H_
