// The cases of steps.txt, which describes their form.

#include <map>

#include "tests/parser/CommandLine.h"
#include "tests/support/Rows.h"

namespace {

class Steps : public testing::TestWithParam<Row> {};

TEST_P(Steps, LeaveTheExpectedTrace) {
  std::map<char, std::string> given;  // the latest line of each mark
  std::map<std::string, std::string> files;
  for (const auto& [mark, text] : GetParam().lines) {
    given[mark] = text;
    if (mark == '@') files[text];
    if (mark == '>') files[given['@']] += text + "\n";
    if (mark != '|') continue;
    for (const auto& [name, content] : files) WriteFile(name, content);
    CommandLine line(given['w'], given['s']);
    line.trace(given['k']);
    line.perform(given['<']);
    EXPECT_EQ(line.traced(), text) << given['<'];
    EXPECT_EQ(line.tokens().find('!'), std::string::npos) << given['<'];
  }
}

INSTANTIATE_TEST_SUITE_P(, Steps, testing::ValuesIn(RowsOf({STEPS})), NameOfRow);

}  // namespace
