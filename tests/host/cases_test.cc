// Runs the program on the rows of cases.txt, whose head tells their form.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/common/WorkingFolder.h"

namespace {

struct Case {
  std::string name;
  std::string shell;
  std::vector<std::pair<std::string, std::string>> files;
  std::string input, output, errors;
  int status = 0;
};

// Rows are also printed by gtest when they fail.
void PrintTo(const Case& row, std::ostream* out) {
  *out << row.name << ": " << row.shell;
}

std::vector<Case> ReadCases() {
  std::vector<Case> rows;
  std::ifstream file(CASES "/cases.txt");
  for (std::string line; std::getline(file, line);) {
    const std::string mark = line.substr(0, line.find(' '));
    const std::string rest = line.size() > mark.size() ? line.substr(mark.size() + 1) : "";
    if (mark == "==") {
      rows.emplace_back();
      rows.back().name = rest;
    }
    if (rows.empty()) continue;
    Case& row = rows.back();
    if (mark == "$") row.shell = rest;
    if (mark == "@") row.files.emplace_back(rest, "");
    if (mark == ">") row.files.back().second += rest + "\n";
    if (mark == "<") row.input += rest + "\n";
    if (mark == "|") row.output += rest + "\n";
    if (mark == "!") row.errors += rest + "\n";
    if (mark == "=") row.status = std::atoi(rest.c_str());
  }
  return rows;
}

class Program : public testing::TestWithParam<Case> {};

TEST_P(Program, DoesAsItsRowSays) {
  const Case& row = GetParam();
  const WorkingFolder folder;
  std::filesystem::copy(CASES "/tiny.scm", folder.path);
  for (const auto& [name, text] : row.files) WriteFile(name, text);
  WriteFile("in", row.input);
  // In a sanitized build: the collector of the engine reads the real stack and frees nothing.
  const std::string shell =
      "export ASAN_OPTIONS=detect_leaks=0:detect_stack_use_after_return=0 "
      "examples='" EXAMPLES "' faults='" FAULTS "'; clui() { '" CLUI_PROGRAM "' \"$@\"; } && { " +
      row.shell + "; } <in >out 2>errors";
  const int result = std::system(shell.c_str());
  EXPECT_EQ(ReadFile("out"), row.output);
  EXPECT_EQ(ReadFile("errors"), row.errors);
  EXPECT_EQ(WIFEXITED(result) ? WEXITSTATUS(result) : -1, row.status);
}

std::string NameOf(const testing::TestParamInfo<Case>& info) {
  std::string name;
  for (const char c : info.param.name)
    name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
  return name;
}

INSTANTIATE_TEST_SUITE_P(Cases, Program, testing::ValuesIn(ReadCases()), NameOf);

}  // namespace
