// Each allocation of a run fails in turn. The run continues and reports the failure, or it ends
// with one line of error, and never in the middle of a command.

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <iostream>
#include <regex>
#include <sstream>
#include <string>

#include "foundation/YErr.h"
#include "gtest/gtest.h"
#include "parser/YcluiPreview.h"
#include "tests/parser/CommandLine.h"
#include "tests/support/allocations.h"
#include "tests/support/words.h"

namespace {

// Writes each command as a line of the descriptor 1.
class Writer : public YcluiParser {
 public:
  static void write(const std::string& text) {
    const std::string line = text + '\n';
    if (::write(1, line.data(), line.size()) < 0) _exit(9);
  }

 private:
  YWord evaluate(const char* text) override {
    write(text);
    return 1;
  }
};

// Builds a language, reads commands, writes a log, completes words, and writes the results.
void Run() {
  YcluiParser::CreateMortuary();
  Writer parser;
  if (YcluiLex* lex = parser.lex(); lex != nullptr) {
    Declare(*lex, "put:/is go gone=gon ; twice->go;_go;");
    parser.setSyntaxGraph(
        SyntaxOf(*lex, "( go ( go )* ;{go $$} | put:{put $0[0] \"$0[1]\"} | gone{gone} )")
            .release());
  } else {
    parser.setSyntaxGraph(new YcluiSyntaxGraph);
  }
  parser.startLogging("log", 0);
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
  YcluiPreview preview(parser);
  preview.read("put: 5, \"a value\" twice ${v}=6 go put: ${v}, ");
  preview.at(3);
  preview.findCandidates();
  parser.completionString("", completed, unique);
  Writer::write(std::to_string(words.size()) + completed.buffer);
  parser.shutLogging();
  if (parser.setAlias("a", "b") + parser.tokenIsOpen() == 0) Writer::write("no lexer");
  parser.exhaust();
  YcluiParser::AddDeadBody(&parser);
  if (parser.isCondemned() == 0) Writer::write("no mortuary");
}

struct Outcome {
  std::string output;  // the lines of the descriptor 1
  std::string errors;  // the standard error stream
  std::string log;
  int status;
};

// Runs in a process of its own, with that allocation failing.
Outcome RunWithout(long allocation) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    dup2(creat("output", 0600), 1);
    dup2(creat("errors", 0600), 2);
    std::remove("log");
    const auto before = YErr.count();
    const long made = Allocations();
    FailAnyAllocation(allocation);
    Run();
    FailAnyAllocation(-1);
    WriteFile("made", std::to_string(Allocations() - made));
    for (auto i = YErr.count() - before; i > 0; --i) {
      const int at = static_cast<int>(i) - 1;
      Writer::write("code " + std::to_string(YErr.code(at) * 10 + YErr.severity(at)));
    }
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return {ReadFile("output"), ReadFile("errors"), ReadFile("log"), status};
}

// For a run that continued after the failure: its commands are those of the whole run in the same
// order, some possibly missing, and a code or a result reports the failure.
void ExpectReported(const std::string& whole, const std::string& output) {
  std::istringstream expected(whole);
  std::istringstream lines(output);
  bool isReported = false;
  for (std::string line; std::getline(lines, line);) {
    isReported |= std::regex_match(line, std::regex("no .*|code 20(49|61|83)4"));
    if (!line.starts_with("go ") && !line.starts_with("put ") && line != "gone") continue;
    std::string next;
    while (next != line)
      ASSERT_TRUE(std::getline(expected, next)) << line << " is not a command of the whole run";
  }
  EXPECT_TRUE(isReported);
}

TEST(Faults, EachFailedAllocationIsReportedOrEndsTheProcess) {
  const Outcome whole = RunWithout(-1);
  ASSERT_TRUE(whole.output.starts_with("put 1 \"a text of some length\"\ngo ;\nput 2"));
  const int all = std::stoi(ReadFile("made"));
  int aborted = 0;
  int reported = 0;
  for (int i = 0; i < all; ++i) {
    SCOPED_TRACE("allocation " + std::to_string(i));
    const Outcome one = RunWithout(i);
    if (WIFSIGNALED(one.status)) {
      ++aborted;
      EXPECT_EQ(WTERMSIG(one.status), SIGABRT);
      EXPECT_EQ(one.errors, "yqrtClui: out of memory\n");
      EXPECT_TRUE(whole.output.starts_with(one.output)) << one.output;
      EXPECT_TRUE(one.output.empty() || one.output.back() == '\n');
      EXPECT_TRUE(whole.log.starts_with(one.log)) << one.log;
      continue;
    }
    ASSERT_EQ(one.status, 0);
    EXPECT_EQ(one.errors, "");
    if (one.output == whole.output) continue;
    ++reported;
    ExpectReported(whole.output, one.output);
    ASSERT_FALSE(HasFailure()) << one.output;
  }
  std::cout << all << " allocations: " << aborted << " end the process, " << reported
            << " are reported\n";
  EXPECT_GT(aborted, 20);
  EXPECT_GT(reported, 10);
}

}  // namespace
