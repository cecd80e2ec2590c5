// A parser for tests: executes short scripts and records a trace, in a working folder of its own.

#ifndef TESTS_PARSER_COMMANDLINE_H_
#define TESTS_PARSER_COMMANDLINE_H_

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "foundation/YEncoding.h"
#include "foundation/YErr.h"
#include "parser/YcluiParser.h"
#include "tests/support/WorkingFolder.h"

// The trace has one entry for each event of the kinds that `trace` selects:
//   tok(a)  echo(a b)  field(a b)  syn(a|p a)  refuse(x)  run(command)   callbacks and commands
//   err(not-opened)   a code; a severity other than error follows it; see tests/support/codes.h
//   push(1)       of the kind "result": what an operation of a script returned
//   tokens(a b)   the tokens, at a step ^tokens; followed by "!" when the line differs from them
class CommandLine final : public YcluiParser {
 public:
  // Words as Declare reads them; "help!" is an indefinite word whose command is "help" and the
  // context. A syntax as SyntaxOf reads it.
  explicit CommandLine(const std::string& words, const std::string& syntax = "");
  ~CommandLine() { YErr.setListener(nullptr, nullptr); }

  void setSyntax(const std::string& syntax);

  // Performs steps that are separated by "; ": texts for interpret, and operations under the names
  // of tests/support/steps.cc, such as "^push" or "^remove 1", or of this class. "^on run(a) ^reset
  // & b" performs the steps after run(a) once, at that entry; "^syntax a b" sets a syntax;
  // "^tokens" records the tokens.
  void perform(const std::string& steps, char separator = ';');
  // Selects the kinds of entries.
  void trace(const std::string& kinds) { kinds_ = " " + kinds + " "; }
  // The entries since the last call, separated by blanks.
  std::string traced();
  std::string tokens() const;
  void record(const std::string& kind, const std::string& text, const std::string& name = "");

  std::map<std::string, std::function<void()>> at;  // called once at that entry

  std::string texts;  // the texts given to interpret, each in brackets

  int interpret(const char* text) override;

 private:
  std::vector<std::string> anywhere_;
  std::string kinds_;
  std::string trace_;

  YWord evaluate(const char* text) override;
};

#endif  // TESTS_PARSER_COMMANDLINE_H_
