#include "terminal/YcluiEditBuffer.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <sstream>
#include <utility>
#include <vector>

#include "foundation/YCharacters.h"

namespace {

using Operation = bool (YcluiEditBuffer::*)();

const std::map<std::string, Operation> Operations = {
    {"left", &YcluiEditBuffer::left},
    {"right", &YcluiEditBuffer::right},
    {"home", &YcluiEditBuffer::home},
    {"end", &YcluiEditBuffer::end},
    {"word-left", &YcluiEditBuffer::wordLeft},
    {"word-right", &YcluiEditBuffer::wordRight},
    {"erase-left", &YcluiEditBuffer::eraseLeft},
    {"erase-right", &YcluiEditBuffer::eraseRight},
    {"K-end", &YcluiEditBuffer::killToEnd},
    {"K-beginning", &YcluiEditBuffer::killToBeginning},
    {"K-space", &YcluiEditBuffer::killToSpace},
    {"K-word-left", &YcluiEditBuffer::killWordLeft},
    {"K-word-right", &YcluiEditBuffer::killWordRight},
    {"yank", &YcluiEditBuffer::yank},
    {"yank-pop", &YcluiEditBuffer::yankPop},
    {"transpose", &YcluiEditBuffer::transpose},
    {"undo", &YcluiEditBuffer::undo},
    {"redo", &YcluiEditBuffer::redo},
};

// "+ab" types a and b, with "_" for a blank; "=a b" inserts at once.
bool Do(YcluiEditBuffer& buffer, std::string step) {
  const auto named = Operations.find(step);
  if (named != Operations.end()) return (buffer.*named->second)();
  for (char& c : step) c = c == '_' ? ' ' : c;
  const std::string bytes = YCharacters::BytesFromUtf8(step.substr(1));
  if (step[0] == '=') return buffer.insert(bytes);
  for (const YcluiCell& cell : YcluiCells(std::string_view(bytes))) {
    buffer.insert(bytes.substr(cell.begin, cell.end - cell.begin));
  }
  return true;
}

std::string Shown(const YcluiEditBuffer& buffer) {
  const std::string& text = buffer.text();
  return YCharacters::Utf8FromBytes(text.substr(0, buffer.cursor())) + "|" +
         YCharacters::Utf8FromBytes(text.substr(buffer.cursor()));
}

// What the reference below does not know: characters of other classes and combining marks. The bar
// is the cursor. A "!" after a step: it can change nothing. Rows with a combining mark need an
// encoding that has it.
const struct {
  const char *before, *steps, *after;
} Rows[] = {
    {"表ｱ食|", "left left erase-left", "|ｱ食"},
    {"|表ｱ食", "right erase-right erase-right erase-right!", "表|"},
    {"\U0010FEFF\U0010FEFF|", "left erase-left +a", "a|\U0010FEFF"},  // lone bytes
    {"a:  b_c, 表ｱ|", "word-left word-left", "a:  |b_c, 表ｱ"},
    {"|a:  b_c, 表。食", "word-right word-right word-right", "a:  b_c, 表|。食"},
    {"a: 3.5, |", "K-word-left", "a: 3.|"},
    {"a　b|", "K-space", "a　|"},
    {"|", "+one__two_3 undo undo undo redo redo", "one  two |"},
    {"|", "+ab =cd +e undo undo undo", "|"},
    {"e\u0301x|", "left left erase-right", "|x"},
    {"xe\u0301|", "transpose home right erase-right", "e\u0301|"},
    {"e|x", "=\u0301 erase-left", "|x"},
    {"a\U0001F469\u200D\U0001F4BB|", "erase-left +\u00DF", "a\u00DF|"},
    {"\U0001F44B\U0001F3FD|", "left erase-right undo", "|\U0001F44B\U0001F3FD"},
};

bool CanHold(std::string_view utf8) {
  return YCharacters::Utf8FromBytes(YCharacters::BytesFromUtf8(utf8)) == utf8;
}

TEST(EditBuffer, DoesWhatKeysMean) {
  for (const auto& row : Rows) {
    const std::string before = row.before;
    if (!CanHold(before + row.steps)) continue;
    const std::size_t bar = before.find('|');
    const std::string left = YCharacters::BytesFromUtf8(before.substr(0, bar));
    YcluiEditBuffer buffer;
    buffer.set(left + YCharacters::BytesFromUtf8(before.substr(bar + 1)));
    buffer.moveTo(left.size());
    std::istringstream steps(row.steps);
    for (std::string step; steps >> step;) {
      const bool fails = step.back() == '!';
      if (fails) step.pop_back();
      EXPECT_EQ(Do(buffer, step), !fails) << row.before << ": " << row.steps << ": " << step;
    }
    EXPECT_EQ(Shown(buffer), row.after) << row.before << ": " << row.steps;
  }
}

// Bytes that meet can become one character, and the cursor never is inside one.
TEST(EditBuffer, KeepsTheCursorOutOfCharacters) {
  const std::string wide = YCharacters::BytesFromUtf8("表");
  YcluiEditBuffer buffer;
  for (const char byte : wide) buffer.insert(std::string(1, byte));
  EXPECT_EQ(buffer.cells().size(), 1U);
  EXPECT_TRUE(buffer.eraseLeft());
  EXPECT_EQ(buffer.text(), "");
  buffer.set(wide.substr(1));
  buffer.home();
  buffer.insert(wide.substr(0, 1));
  EXPECT_EQ(buffer.cursor(), wide.size());
  EXPECT_FALSE(buffer.moveTo(99));
  EXPECT_TRUE(buffer.moveTo(1));
  EXPECT_EQ(buffer.cursor(), 0U);
}

TEST(EditBuffer, ReplacesWhatIsCompleted) {
  const std::string wide = YCharacters::BytesFromUtf8("表");
  YcluiEditBuffer buffer;
  buffer.insert("go " + wide + " x");
  EXPECT_TRUE(buffer.replace(4, 4, "there"));  // inside the character, which goes
  EXPECT_EQ(Shown(buffer), "go there| x");
  EXPECT_FALSE(buffer.replace(3, 8, "there"));
  EXPECT_TRUE(buffer.replace(50, 99, "!"));
  EXPECT_EQ(Shown(buffer), "go there x!|");
  EXPECT_TRUE(buffer.undo());
  EXPECT_TRUE(buffer.undo());
  EXPECT_EQ(Shown(buffer), "go 表 x|");
  EXPECT_TRUE(buffer.set("a"));
  EXPECT_TRUE(buffer.undo());
  EXPECT_TRUE(buffer.killToBeginning());
  buffer.clear();
  EXPECT_FALSE(buffer.undo());
  EXPECT_TRUE(buffer.yank());
  EXPECT_EQ(Shown(buffer), "go 表 x|");
}

// --- A buffer that is as simple as can be

// Units and a cursor among them, with a copy of both for each step back.
class Reference {
 public:
  struct State {
    std::vector<std::string> units;
    std::size_t cursor = 0;
  };
  State now;

  std::string text(std::size_t begin = 0, std::size_t end = -1) const {
    std::string text;
    for (std::size_t i = begin; i < std::min(end, now.units.size()); ++i) text += now.units[i];
    return text;
  }
  bool run(const std::string& step) {
    const bool kills = step[0] == 'K';
    const std::string before = text();
    const std::size_t cursor = now.cursor;
    const bool done = kills ? kill(step) : other(step);
    if (!done) return false;
    EXPECT_TRUE(before != text() || cursor != now.cursor || step == "transpose" || step == "undo" ||
                step == "redo" || step == "yank-pop");
    last_ = step;
    return true;
  }
  bool type(const std::string& bytes) {
    const bool isBlank = bytes == " ";
    const bool afterBlank = now.cursor > 0 && now.units[now.cursor - 1] == " ";
    if (last_ != "type" || joined_ || (afterBlank && !isBlank)) keep();
    joined_ = splice(now.cursor, now.cursor, bytes);
    last_ = "type";
    return true;
  }

 private:
  struct Change {
    State before, after;
  };
  std::vector<Change> back_, forth_;
  std::vector<std::string> kills_;
  std::string last_;
  bool joined_ = false;  // bytes met when the last character was typed
  std::size_t yanked_ = 0, yankBytes_ = 0;

  static bool isWord(const std::string& unit) {
    return unit != " " && unit != "." && unit != "\\" && !isLone(unit);
  }
  static bool isLone(const std::string& unit) { return unit.size() == 1 && unit[0] < 0; }
  std::size_t bytesBefore() const { return text(0, now.cursor).size(); }
  void keep() {
    back_.push_back({now, {}});
    forth_.clear();
  }
  // Replaces units; whether the bytes have made other units than the ones given.
  bool splice(std::size_t begin, std::size_t end, const std::string& bytes) {
    const std::string left = text(0, begin) + bytes;
    const std::size_t at = left.size();
    return set(left + text(end), at);
  }
  bool set(const std::string& all, std::size_t cursorBytes) {
    std::u32string characters;
    YCharacters::AppendFromBytes(all, characters);
    now = {};
    std::size_t size = 0;
    for (const char32_t c : characters) {
      std::string unit;
      YCharacters::AppendBytes({&c, 1}, unit);
      if (size < cursorBytes) now.cursor = now.units.size() + 1;
      size += unit.size();
      now.units.push_back(unit);
    }
    back_.back().after = now;
    return bytesBefore() != cursorBytes;
  }
  std::size_t back(bool (*skipped)(const std::string&), bool (*taken)(const std::string&)) const {
    std::size_t i = now.cursor;
    while (i > 0 && skipped(now.units[i - 1])) --i;
    while (i > 0 && taken(now.units[i - 1])) --i;
    return i;
  }
  std::size_t wordBegin() const {
    return back([](const std::string& u) { return !isWord(u); }, isWord);
  }
  std::size_t wordEnd() const {
    std::size_t i = now.cursor;
    while (i < now.units.size() && !isWord(now.units[i])) ++i;
    while (i < now.units.size() && isWord(now.units[i])) ++i;
    return i;
  }
  bool kill(const std::string& step) {
    std::size_t begin = now.cursor;
    std::size_t end = now.cursor;
    if (step == "K-end") end = now.units.size();
    if (step == "K-beginning") begin = 0;
    if (step == "K-word-right") end = wordEnd();
    if (step == "K-word-left") begin = wordBegin();
    if (step == "K-space") {
      begin = back([](const std::string& u) { return u == " "; },
                   [](const std::string& u) { return u != " "; });
    }
    if (begin == end) return false;
    const std::string killed = text(begin, end);
    if (last_.empty() || last_[0] != 'K') {
      kills_.insert(kills_.begin(), killed);
    } else {
      kills_[0] = end > now.cursor ? kills_[0] + killed : killed + kills_[0];
    }
    keep();
    splice(begin, end, "");
    return true;
  }
  bool go(std::size_t cursor) { return std::exchange(now.cursor, cursor) != cursor; }
  bool change(std::size_t begin, std::size_t end, const std::string& bytes) {
    keep();
    splice(begin, end, bytes);
    return true;
  }
  bool travel(std::vector<Change>& from, std::vector<Change>& to, State Change::*end) {
    if (from.empty()) return false;
    to.push_back(from.back());
    now = from.back().*end;
    from.pop_back();
    return true;
  }
  bool other(const std::string& step) {
    const std::size_t size = now.units.size();
    if (step == "left") return now.cursor > 0 && go(now.cursor - 1);
    if (step == "right") return now.cursor < size && go(now.cursor + 1);
    if (step == "home") return go(0);
    if (step == "end") return go(size);
    if (step == "word-left") return go(wordBegin());
    if (step == "word-right") return go(wordEnd());
    if (step == "erase-left") return now.cursor > 0 && change(now.cursor - 1, now.cursor, "");
    if (step == "erase-right") return now.cursor < size && change(now.cursor, now.cursor + 1, "");
    if (step == "undo") return travel(back_, forth_, &Change::before);
    if (step == "redo") return travel(forth_, back_, &Change::after);
    if (step == "transpose") {
      if (now.cursor == 0 || size < 2) return false;
      const std::size_t second = std::min(now.cursor, size - 1);
      return change(second - 1, second + 1, now.units[second] + now.units[second - 1]);
    }
    if (step == "yank") {
      if (kills_.empty()) return false;
      yanked_ = 0;
      yankBytes_ = bytesBefore();
      return change(now.cursor, now.cursor, kills_[0]);
    }
    if (last_.rfind("yank", 0) != 0 || kills_.size() < 2) return false;
    const std::string all = text();
    const std::string rest = all.substr(yankBytes_ + kills_[yanked_].size());
    yanked_ = (yanked_ + 1) % kills_.size();
    keep();
    const std::string left = all.substr(0, yankBytes_) + kills_[yanked_];
    set(left + rest, left.size());
    return true;
  }
};

// Every operation, thousands of times, on text in which bytes join to characters and fall apart.
TEST(EditBuffer, AgreesWithAPlainOne) {
  const std::vector<std::pair<std::string, Operation>> steps(Operations.begin(), Operations.end());
  const std::string wide = YCharacters::BytesFromUtf8("表");
  std::vector<std::string> units = {"a", "b", " ", " ", ".", wide, "\xFF"};
  for (const char byte : wide) units.emplace_back(1, byte);
  std::mt19937 random(11);
  for (int round = 0; round < 100; ++round) {
    YcluiEditBuffer buffer;
    Reference reference;
    for (int i = 0; i < 300; ++i) {
      std::string step = "type";
      if (random() % 2 == 0) {
        const std::string& unit = units[random() % units.size()];
        ASSERT_EQ(buffer.insert(unit), reference.type(unit));
      } else {
        const auto& chosen = steps[random() % steps.size()];
        step = chosen.first;
        ASSERT_EQ((buffer.*chosen.second)(), reference.run(step)) << step;
      }
      ASSERT_EQ(buffer.text(), reference.text()) << round << ": " << i << ": " << step;
      ASSERT_EQ(buffer.cursor(), reference.text(0, reference.now.cursor).size())
          << round << ": " << i << ": " << step;
      if (buffer.text().size() > 200) break;
    }
  }
}

TEST(EditBuffer, ForgetsTheOldestStep) {
  YcluiEditBuffer buffer;
  for (std::size_t i = 0; i <= YcluiEditBuffer::MostUndoSteps; ++i) {
    buffer.insert("xy");
    buffer.killToBeginning();
    buffer.left();
  }
  std::size_t steps = 0;
  while (buffer.undo()) ++steps;
  EXPECT_EQ(steps, YcluiEditBuffer::MostUndoSteps);
}

}  // namespace
