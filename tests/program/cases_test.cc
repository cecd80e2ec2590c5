// Runs the program on the cases of cases.txt; its beginning describes the format.

#include <sys/wait.h>

#include <csignal>
#include <cstdlib>
#include <map>

#include "tests/support/Rows.h"
#include "tests/support/WorkingFolder.h"

namespace {

class Program : public testing::TestWithParam<Row> {};

TEST_P(Program, PrintsWhatItsCaseExpects) {
  const char* const inside = std::getenv("CLUI_INSIDE");
  const bool isUtf8 = inside == nullptr || std::string(inside) == "utf-8";
  if (IsOfOtherEncoding(GetParam(), isUtf8)) GTEST_SKIP();
  const WorkingFolder folder;
  std::filesystem::copy(CASES "/tiny.scm", folder.path);
  std::map<char, std::string> given;  // the lines of each mark
  std::map<std::string, std::string> files;
  std::string file;
  for (const auto& [mark, text] : GetParam().lines) {
    if (mark == '@') files[file = text];
    (mark == '>' ? files[file] : given[mark]) += text + "\n";
  }
  for (const auto& [name, text] : files) WriteFile(name, text);
  WriteFile("in", given['<']);
  // For a sanitized build: the garbage collector scans the real stack, and memory is not freed at
  // the end of the process.
  const std::string shell =
      "export ASAN_OPTIONS=detect_leaks=0:detect_stack_use_after_return=0 "
      "examples='" EXAMPLES "' faults='" FAULTS
      "' CLUI_INSIDE=${CLUI_INSIDE:-utf-8}; "
      "clui() { '" CLUI_PROGRAM
      "' --inside $CLUI_INSIDE \"$@\"; }; "
      "unmarked() { sed '/^# encoding: UTF-8$/,+1d'; } && { " +
      given['$'] + "} <in >out 2>errors";
  std::signal(SIGINT, SIG_DFL);  // it is ignored if the tests run in the background
  const int result = std::system(shell.c_str());
  EXPECT_EQ(ReadFile("out"), given['|']);
  EXPECT_EQ(ReadFile("errors"), given['!']);
  EXPECT_EQ(WIFEXITED(result) ? WEXITSTATUS(result) : -1, std::atoi(given['='].c_str()));
}

INSTANTIATE_TEST_SUITE_P(Cases, Program, testing::ValuesIn(RowsOf({CASES "/cases.txt"})),
                         NameOfRow);

}  // namespace
