// Runs `clui --lint` on the languages of lint.txt; its beginning describes the format.

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "tests/support/Rows.h"
#include "tests/support/WorkingFolder.h"

namespace {

class Lint : public testing::TestWithParam<Row> {};

// "line:column: kind subject" of each finding, without the file and the sentence.
std::string Findings(const std::string& output) {
  std::istringstream lines(output);
  std::string findings;
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("a.scm:")) continue;
    line.erase(0, line.find(':') + 1);
    const std::size_t quote = line.find_first_of("\"'");
    if (quote == std::string::npos) return output;
    findings += line.substr(0, line.find(line[quote], quote + 1) + 1) + "\n";
  }
  return findings;
}

TEST_P(Lint, FindsWhatItsCaseExpects) {
  const WorkingFolder folder;
  std::string script = "(define p (clui-parser-new 0))\n";
  std::string expected;
  for (const auto& [mark, text] : GetParam().lines) {
    if (mark == '>') script += text + "\n";
    if (mark == '|') expected += text + "\n";
  }
  WriteFile("a.scm", script);
  const int result =
      std::system("ASAN_OPTIONS=detect_leaks=0:detect_stack_use_after_return=0 '" CLUI_PROGRAM
                  "' --lint a.scm >out 2>errors");
  EXPECT_EQ(Findings(ReadFile("out")), expected) << ReadFile("out") << ReadFile("errors");
  EXPECT_EQ(WIFEXITED(result) ? WEXITSTATUS(result) : -1, expected.empty() ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(Languages, Lint, testing::ValuesIn(RowsOf({LANGUAGES "/lint.txt"})),
                         NameOfRow);

}  // namespace
