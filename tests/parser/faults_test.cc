// Each allocation of a run fails in turn: the run goes on as it is told, or ends with one line and
// never in the middle of a command.

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>

#include "foundation/YErr.h"
#include "gtest/gtest.h"
#include "tests/common/allocations.h"
#include "tests/common/syntax.h"
#include "tests/common/words.h"
#include "tests/parser/CommandLine.h"

namespace {

// Writes each command as a line of the descriptor 1.
class Teller : public YcluiParser {
 public:
  static void tell(const std::string& text) {
    const std::string line = text + '\n';
    if (::write(1, line.data(), line.size()) < 0) _exit(9);
  }

 private:
  YWord evaluate(const char* text) override {
    tell(text);
    return 1;
  }
};

// Builds a language, reads commands, writes a log, completes, and tells what came of it.
void Run(const char* log) {
  Teller parser;
  if (parser.lex() == nullptr) return Teller::tell("no lexer");
  Declare(*parser.lex(), "put:/is go gone=gon ; twice->go;_go;");
  parser.setSyntaxGraph(
      SyntaxOf(*parser.lex(), "( go ( go )* ;{go $$} | put:{put $0[0] \"$0[1]\"} | gone{gone} )"));
  parser.startLogging(log, 0);
  parser.interpret("put: 1, \"a text of some length\" go go go; ${v}=\"a value\" ");
  parser.interpret("put: 2, ${v} twice unknown gon put: ");
  parser.interpret("3, 'x' go ");
  parser.pushFrame();
  parser.interpret("gone put: 4, y\n");
  parser.popFrame();
  YString_Array words;
  YString completed;
  unsigned long unique = 0;
  parser.possibleWords(words);
  parser.completionString("", completed, unique);
  Teller::tell(std::to_string(words.size()) + completed.buffer);
  parser.shutLogging();
}

struct Outcome {
  std::string told;    // the lines of the descriptor 1
  std::string errors;  // what stands on the standard error stream
  std::string log;
  int status;
};

// Runs in a process of its own, with that allocation failing.
Outcome RunWithout(long allocation) {
  std::fflush(nullptr);
  const std::string files[] = {"told", "errors", "log"};
  const pid_t child = fork();
  if (child == 0) {
    for (int i = 0; i < 2; ++i) dup2(creat(files[i].c_str(), 0600), i + 1);
    std::remove(files[2].c_str());
    const std::uint64_t before = YErr.count();
    const long made = Allocations();
    FailAnyAllocation(allocation);
    Run(files[2].c_str());
    FailAnyAllocation(-1);
    WriteFile("made", std::to_string(Allocations() - made));
    for (auto i = YErr.count() - before; i > 0; --i) {
      Teller::tell("code " + std::to_string(YErr.code(static_cast<int>(i) - 1)));
    }
    _exit(0);
  }
  Outcome outcome{};
  waitpid(child, &outcome.status, 0);
  outcome.told = ReadFile("told");
  outcome.errors = ReadFile("errors");
  outcome.log = ReadFile("log");
  return outcome;
}

bool BeginsWith(const std::string& whole, const std::string& part) {
  return whole.compare(0, part.size(), part) == 0;
}

// The commands of a run that went on without what it did not get: whole ones, in their order, and
// a code or an answer that says so.
void ExpectTold(const std::string& whole, const std::string& told) {
  std::istringstream expected(whole);
  std::istringstream lines(told);
  bool isSaid = false;
  for (std::string line; std::getline(lines, line);) {
    isSaid |=
        line == "no lexer" || line == "code 2049" || line == "code 2061" || line == "code 2083";
    if (!BeginsWith(line, "go ") && !BeginsWith(line, "put ") && line != "gone") continue;
    std::string next;
    while (next != line) ASSERT_TRUE(std::getline(expected, next)) << line << " is no command";
  }
  EXPECT_TRUE(isSaid);
}

TEST(Faults, EachAllocationFails) {
  const Outcome whole = RunWithout(-1);
  ASSERT_TRUE(BeginsWith(whole.told, "put 1 \"a text of some length\"\ngo ;\nput 2"));
  const int all = std::stoi(ReadFile("made"));
  int aborted = 0;
  int told = 0;
  for (int i = 0; i < all; ++i) {
    SCOPED_TRACE("allocation " + std::to_string(i));
    const Outcome one = RunWithout(i);
    if (WIFSIGNALED(one.status)) {
      ++aborted;
      EXPECT_EQ(WTERMSIG(one.status), SIGABRT);
      EXPECT_EQ(one.errors, "yqrtClui: out of memory\n");
      EXPECT_TRUE(BeginsWith(whole.told, one.told)) << one.told;
      EXPECT_TRUE(one.told.empty() || one.told.back() == '\n');
      EXPECT_TRUE(BeginsWith(whole.log, one.log)) << one.log;
      continue;
    }
    ASSERT_EQ(one.status, 0);
    EXPECT_EQ(one.errors, "");
    if (one.told == whole.told) continue;
    ++told;
    ExpectTold(whole.told, one.told);
    ASSERT_FALSE(HasFailure()) << one.told;
  }
  std::cout << all << " allocations: " << aborted << " end the process, " << told << " are told\n";
  EXPECT_GT(aborted, 20);
  EXPECT_GT(told, 10);
}

}  // namespace
