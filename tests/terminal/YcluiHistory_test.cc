#include "terminal/YcluiHistory.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "foundation/YCharacters.h"
#include "foundation/YEncoding.h"
#include "tests/support/WorkingFolder.h"

namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;
using Direction = YcluiHistory::Direction;

Lines LinesOf(const YcluiHistory& history) {
  Lines lines;
  for (std::size_t i = 0; i < history.size(); ++i) lines.push_back(history[i]);
  return lines;
}

class History : public testing::Test {
 protected:
  WorkingFolder folder_;
  std::string file_ = folder_.path + "/state/clui/a.history";

  void put(const std::string& text) const {
    fs::create_directories(fs::path(file_).parent_path());
    WriteFile(file_, text);
  }
  // What a new session finds.
  Lines loaded(std::size_t maximum = 1000) const {
    YcluiHistory history(file_, maximum);
    history.refresh();
    return LinesOf(history);
  }
};

TEST_F(History, KeepsEveryByte) {
  const Lines lines = {"a\\n", "\x95\x5C\t\\x41", std::string("\0\x1B\x7F\r\n", 5) + "b\n\\", "\\"};
  YcluiHistory history(file_);
  EXPECT_TRUE(history.refresh());
  for (const std::string& line : lines) history.add(line);
  EXPECT_EQ(LinesOf(history), lines);
  EXPECT_EQ(loaded(), lines);
}

TEST_F(History, KeepsNothingTwiceAndNotEverything) {
  YcluiHistory history(file_, 3);
  for (const char* line : {"a", "b", "a", "a", "", " \n", " secret", "\tx", "c", "b"}) {
    history.add(line);
  }
  history.add(std::string(YcluiHistory::LongestLine + 1, 'x'));
  EXPECT_EQ(LinesOf(history), (Lines{"a", "c", "b"}));
  EXPECT_EQ(ReadFile(file_), "a\nb\na\nc\nb\n");
  EXPECT_EQ(loaded(), (Lines{"a", "c", "b"}));
  EXPECT_TRUE(history.save());
  EXPECT_EQ(ReadFile(file_), "a\nc\nb\n");
  YcluiHistory none("");
  none.add("kept in no file");
  EXPECT_TRUE(none.save());
  EXPECT_EQ(none.size(), 1U);
}

TEST_F(History, MovesToLinesThatBeginAsTyped) {
  YcluiHistory history("");
  for (const char* line : {"line: 1", "box: 1", "line: 2", "line:", "move"}) history.add(line);
  const struct {
    bool isOlder;
    const char *text, *expected;
  } steps[] = {
      {false, "line:", nullptr},     {true, "line:", "line: 2"},  // and not the same once more
      {true, "line: 2", "line: 1"},  {true, "line: 1", nullptr}, {true, "line:", nullptr},
      {false, "line: 1", "line: 2"}, {true, "line:", "line: 1"}, {false, "line: 1", "line: 2"},
      {false, "line: 2", "line:"},   {false, "line:", nullptr},  {true, "", "move"},
      {true, "move", "line:"},       {true, "b", "box: 1"},  // edited
      {false, "box: 12", nullptr},   {true, "x", nullptr},       {false, "x", nullptr},
      {true, "b", "box: 1"},         {false, "box: 1", "b"},
  };
  for (const auto& step : steps) {
    const std::string* line = step.isOlder ? history.older(step.text) : history.newer(step.text);
    EXPECT_EQ(line == nullptr ? "null" : *line, step.expected == nullptr ? "null" : step.expected)
        << step.text;
  }
  history.older("");
  history.reset();
  EXPECT_EQ(*history.older(""), "move");
}

TEST_F(History, SearchesLinesThatContainAText) {
  YcluiHistory history("");
  for (const char* line : {"line: 1", "box: 1", "line: 2"}) history.add(line);
  EXPECT_EQ(history.search("ne: ", history.size(), Direction::Older), 2U);
  EXPECT_EQ(history.search("ne: ", 2, Direction::Older), 0U);
  EXPECT_EQ(history.search("ne: ", 0, Direction::Older), YcluiHistory::None);
  EXPECT_EQ(history.search("1", 0, Direction::Newer), 1U);
  EXPECT_EQ(history.search("1", 1, Direction::Newer), YcluiHistory::None);
  EXPECT_EQ(history.search("1", history.size(), Direction::Newer), YcluiHistory::None);
  // The second byte of a character is not one.
  const std::string line = YCharacters::BytesFromUtf8("アアbaA");
  EXPECT_EQ(YcluiHistory::Find(line, "A"), line.size() - 1);
  EXPECT_EQ(YcluiHistory::Find(line, YCharacters::BytesFromUtf8("アb")), (line.size() - 3) / 2);
  EXPECT_EQ(YcluiHistory::Find(line, ""), 0U);
  EXPECT_EQ(YcluiHistory::Find("", "A"), YcluiHistory::None);
}

TEST_F(History, SuggestsTheNewestLine) {
  YcluiHistory history("");
  EXPECT_EQ(history.suggestion(""), nullptr);
  for (const char* line : {"line: 1", "line: 2", "line"}) history.add(line);
  EXPECT_EQ(*history.suggestion("line"), "line: 2");
  EXPECT_EQ(history.suggestion("line: 1"), nullptr);
}

TEST_F(History, ReadsWhatOtherSessionsAdd) {
  YcluiHistory one(file_, 4);
  YcluiHistory other(file_, 4);
  one.add("a");
  other.add("b");
  EXPECT_EQ(*one.older(""), "b");
  other.add("a");
  one.add("c");  // after what has come meanwhile
  EXPECT_EQ(LinesOf(one), (Lines{"b", "a", "c"}));
  // Replaced by another session, twice: the file may get its old number again.
  for (int i = 0; i < 12; ++i) other.add("d" + std::to_string(i % 2));
  EXPECT_TRUE(other.save());
  other.add("e");
  EXPECT_TRUE(one.refresh());
  EXPECT_EQ(LinesOf(one), (Lines{"c", "d0", "d1", "e"}));
  WriteFile(file_, "f\n");  // cut by an editor
  EXPECT_TRUE(one.refresh());
  EXPECT_EQ(LinesOf(one), (Lines{"d0", "d1", "e", "f"}));
  fs::remove(file_);
  EXPECT_TRUE(one.refresh());
  one.add("g");
  EXPECT_EQ(ReadFile(file_), "g\n");
}

TEST_F(History, IsBoundedWhoeverAddsToIt) {
  YcluiHistory one(file_, 3);
  YcluiHistory other(file_, 3);
  for (int i = 0; i < 10; ++i) {
    one.add("one" + std::to_string(i));
    other.add("other" + std::to_string(i));
  }
  EXPECT_TRUE(one.save());
  EXPECT_EQ(ReadFile(file_), "other8\none9\nother9\n");
}

TEST_F(History, LosesNoLineOfSessionsThatShortenMeanwhile) {
  std::string old;
  for (int i = 0; i < 400; ++i) old += "old" + std::to_string(i) + "\n";
  put(old);
  for (int session = 0; session < 4; ++session) {
    if (fork() != 0) continue;
    YcluiHistory history(file_, session < 2 ? 400 : 5000);
    for (int i = 0; i < 60; ++i) {
      history.add(std::to_string(session) + "." + std::to_string(i));
      if (session < 2) history.save();
    }
    _exit(history.save() ? 0 : 1);
  }
  for (int status = 0; wait(&status) > 0;) EXPECT_EQ(status, 0);
  const Lines lines = loaded(5000);
  const auto left =
      std::ranges::count_if(lines, [](auto& line) { return line.starts_with("old"); });
  EXPECT_EQ(static_cast<long>(lines.size()) - left, 240);
  EXPECT_LT(left, 400);  // or nothing was shortened
}

TEST_F(History, AcceptsAnyFile) {
  put("a\\q\\x4\n\n\\x41\xFF\n" + std::string(YcluiHistory::LongestLine + 1, 'x') + "\nbroken");
  EXPECT_EQ(loaded(), (Lines{"a\\q\\x4", "A\xFF", "broken"}));
  YcluiHistory(file_).add("b");
  EXPECT_EQ(loaded().back(), "b");
  EXPECT_EQ(loaded().size(), 4U);
  put(std::string(9 << 20, 'x') + "\nlast\n");
  EXPECT_EQ(loaded(), Lines{"last"});
  chmod(file_.c_str(), 0644);
  loaded();
  struct stat state {};
  stat(file_.c_str(), &state);
  EXPECT_EQ(state.st_mode & 0777, 0600U);
}

TEST_F(History, GoesOnWithoutAFile) {
  put("");
  fs::remove(file_);
  mkfifo(file_.c_str(), 0600);
  YcluiHistory history(file_);
  EXPECT_FALSE(history.refresh());
  history.add("kept");
  EXPECT_EQ(*history.older(""), "kept");
  EXPECT_FALSE(history.save());
  YcluiHistory inFile(file_ + "/a.history");
  inFile.add("kept");
  EXPECT_EQ(*inFile.older(""), "kept");
  EXPECT_FALSE(inFile.save());
}

TEST(HistoryFile, IsWhereTheUserKeepsStates) {
  const char* const rows[][3] = {
      {"/s", "/h", "/s/clui/a.b"}, {"s", "/h", "/h/.local/state/clui/a.b"}, {"", "h", ""},
      {nullptr, nullptr, ""},      {"/s", nullptr, "/s/clui/a.b"},
  };
  const auto set = [](const char* name, const char* value) {
    value == nullptr ? unsetenv(name) : setenv(name, value, 1);
  };
  for (const auto& [state, home, file] : rows) {
    set("XDG_STATE_HOME", state);
    set("HOME", home);
    const std::string ending = YEncoding::IsDoubleByte() ? ".history" : ".utf-8.history";
    EXPECT_EQ(YcluiHistory::DefaultFile("x/a.b.scm"), *file == '\0' ? "" : file + ending);
  }
}

}  // namespace
