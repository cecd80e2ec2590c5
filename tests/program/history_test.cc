// The history of a terminal, and the layout of listed words.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "program/terminal/CluiHistory.h"
#include "program/terminal/CluiListing.h"
#include "tests/program/OpenEncoding.h"
#include "tests/support/WorkingFolder.h"

namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

class History : public testing::Test {
 protected:
  WorkingFolder folder_;
  std::string file_ = folder_.path + "/state/clui/a.history";

  void put(const std::string& text) const {
    fs::create_directories(fs::path(file_).parent_path());
    WriteFile(file_, text);
  }
  // The lines that a new run reads, newest first.
  Lines loaded(std::size_t maximum = 1000) const {
    CluiHistory history(file_, maximum);
    history.load();
    Lines lines;
    while (const std::string* line = history.older("")) lines.push_back(*line);
    return lines;
  }
};

TEST_F(History, KeepsEveryByteAndNoRepetition) {
  const Lines lines = {"a\\n", "\x95\x5C\t\\x41", std::string("\0\x1B\x7F\r\n", 5) + "b\n\\", "\\"};
  CluiHistory history(file_);
  EXPECT_TRUE(history.load());
  for (const std::string& line : lines) {
    history.add(line);
    history.add(line);
  }
  history.add(" \n");
  CluiHistory("").add("kept in no file");
  history.add(std::string(CluiHistory::LongestLine + 1, 'x'));
  EXPECT_EQ(loaded(), Lines(lines.rbegin(), lines.rend()));
}

TEST_F(History, IsBoundedWhenTwoProgramsAdd) {
  CluiHistory one(file_, 3);
  CluiHistory other(file_, 3);
  for (int i = 0; i < 10; ++i) {
    one.add("one" + std::to_string(i));
    other.add("other" + std::to_string(i));
  }
  EXPECT_TRUE(one.save());
  EXPECT_EQ(ReadFile(file_), "other8\none9\nother9\n");
  other.add("z");
  EXPECT_EQ(loaded(2), (Lines{"z", "other9"}));
}

TEST_F(History, LosesNoLineWhenSeveralProgramsShortenTheFile) {
  std::string old;
  for (int i = 0; i < 400; ++i) old += "old\n";
  put(old);
  for (int program = 0; program < 4; ++program) {
    if (fork() != 0) continue;
    CluiHistory history(file_, program == 0 ? 400 : 5000);
    for (int i = 0; i < 60; ++i) {
      history.add(std::to_string(program) + "." + std::to_string(i));
      if (program == 0) history.save();
    }
    _exit(history.save() ? 0 : 1);
  }
  for (int status = 0; wait(&status) > 0;) EXPECT_EQ(status, 0);
  const Lines lines = loaded(5000);
  const auto left = std::count(lines.begin(), lines.end(), "old");
  EXPECT_EQ(static_cast<long>(lines.size()) - left, 240);
  EXPECT_LT(left, 400);  // or nothing was shortened
}

TEST_F(History, AcceptsAnyFile) {
  put("a\\q\\x4\n\n\\x41\xFF\nbroken");
  EXPECT_EQ(loaded(), (Lines{"broken", "A\xFF", "a\\q\\x4"}));
  CluiHistory(file_).add("b");
  EXPECT_EQ(loaded()[0] + loaded()[1], "bbroken");
  put(std::string(9 << 20, 'x') + "\nlast\n");
  EXPECT_EQ(loaded(), Lines{"last"});
  fs::remove(file_);
  mkfifo(file_.c_str(), 0600);
  CluiHistory history(file_);
  EXPECT_FALSE(history.load());
  history.add("kept");
  EXPECT_EQ(*history.older(""), "kept");
  EXPECT_FALSE(history.save());
}

TEST(Listing, FillsColumnsDownwards) {
  const struct {
    Lines words;
    int width;
    const wchar_t* text;
    int rows = 9;
    unsigned int more = 0;
  } rows[] = {
      {{}, 80, L""},
      {{"a", "bb", "c", "d", "e"}, 9, L"a   d\nbb  e\nc\n"},
      {{"a", "bb", "c", "d", "e"}, 11, L"a   c   e\nbb  d\n"},
      {{"\x95\x5C", "abc", "d"}, 11, L"\u8868   d\nabc\n"},
      {{"a", "b", "0123456789", "c", "d"}, 8, L"a  b\n0123456789\nc  d\n"},
      {{"a", "b"}, 0, L"a\nb\n"},
      {{"a", "bb", "c", "d", "e"}, 9, L"a   d\nbb  e\nc\n", 3},
      {{"a", "bb", "c", "d", "e"}, 9, L"a   c\nbb  d\nand 6 more; type a letter or two\n", 3, 5},
      {{"a", "b", "c"}, 1, L"a\nand 2 more; type a letter or two\n", 2},
      {{"a", "0123456789", "c"}, 8, L"a\nand 2 more; type a letter or two\n", 3},
      {{"a", "b"}, 9, L"and 3 more; type a letter or two\n", 1, 1},
  };
  OpenEncoding encoding;
  for (const auto& row : rows) {
    const CluiCandidates candidates{row.words, row.words.size() + row.more};
    EXPECT_EQ(CluiColumns(candidates, encoding, row.width, row.rows), row.text) << row.width;
  }
}

}  // namespace
