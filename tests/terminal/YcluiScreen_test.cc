#include "terminal/YcluiScreen.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string_view>

#include "foundation/YCharacters.h"
#include "terminal/YcluiCells.h"
#include "tests/terminal/Emulator.h"

namespace {

YcluiCapabilities Capabilities() {
  YcluiCapabilities to;
  to.wraps = to.wrapsLate = true;
  to.up = "\x1B[A";
  to.left = "\b";
  to.right = "\x1B[C";
  to.upBy = "\x1B[%p1%dA";
  to.leftBy = "\x1B[%p1%dD";
  to.rightBy = "\x1B[%p1%dC";
  to.toColumn = "\x1B[%i%p1%dG";
  to.clearToLineEnd = "\x1B[K";
  to.clearToEnd = "\x1B[J";
  to.clearScreen = "\x1B[H\x1B[J";
  to.ring = "\x07";
  to.bold = "\x1B[1m";
  to.dim = "\x1B[2m";
  to.underline = "\x1B[4m";
  to.plain = "\x1B[m";
  for (int i = 0; i < 8; ++i) to.colours.push_back("\x1B[3" + std::to_string(i) + "m");
  return to;
}

// What real terminals lack, one after another.
enum class Lack { Nothing, Conveniences, LateWrap, Wrap, Everything };

YcluiCapabilities CapabilitiesWithout(Lack lack) {
  YcluiCapabilities to = Capabilities();
  if (lack == Lack::LateWrap) to.wrapsLate = false;
  if (lack == Lack::Wrap) to.wraps = to.wrapsLate = false;
  if (lack == Lack::Conveniences) {
    to.left = to.leftBy = to.right = to.rightBy = to.upBy = to.toColumn = to.clearToLineEnd = "";
  }
  if (lack == Lack::Everything) {
    to = {};
    to.wraps = true;
  }
  return to;
}

class RandomPictures {
 public:
  explicit RandomPictures(unsigned seed) : random_(seed) {}

  std::size_t below(std::size_t count) { return random_() % count; }
  // Mostly a small change of the one before, as typing makes it.
  const YcluiPicture& next(std::size_t columns) {
    const std::size_t what = below(12);
    std::string line = picture_.line.text();
    if (what == 0) line = text(below(columns + 3));
    if (what == 1) line.resize(below(line.size() + 1));
    if (what == 2) line = text(below(3)) + line;
    if (what >= 3 && what < 9) line += text(1 + below(3));
    if (what == 9) line.assign(below(columns), 'x');
    picture_.line = styled(line);
    const YcluiCells cells{std::string_view(line)};
    const std::size_t unit = below(cells.size() + 1);
    picture_.cursor = what < 8 || unit == cells.size() ? line.size() : cells[unit].begin;
    picture_.prompt =
        below(4) == 0 ? styled(text(below(4))) : YcluiStyledText("> ", {.bold = true});
    picture_.hint = YcluiStyledText(below(3) == 0 ? text(below(8)) : "", {.dim = true});
    if (below(3) == 0) picture_.rows.resize(below(5));
    for (YcluiStyledText& row : picture_.rows) row = styled(below(4) > 0 ? text(below(12)) : "");
    return picture_;
  }

 private:
  std::mt19937 random_;
  YcluiPicture picture_;

  std::string text(std::size_t count) {
    static const std::string units[] = {
        "a",    "b",    " ", YCharacters::BytesFromUtf8("表"), YCharacters::BytesFromUtf8("ｱ"),
        "\xFF", "\x01", "\n"};
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += units[below(below(9) == 0 ? 8 : 5)];
    return text;
  }
  YcluiStyledText styled(const std::string& text) {
    YcluiStyledText styled;
    for (std::size_t begin = 0; begin < text.size();) {
      const std::size_t length = 1 + below(6);
      YcluiStyle style;
      if (below(2) == 0) style.colour = static_cast<int>(below(8));
      style.underline = below(3) == 0;
      styled.add(std::string_view(text).substr(begin, length), style);
      begin += length;
    }
    return styled;
  }
};

// Writes prompt, line and hint as a program without an editor would, and checks text and cursor.
void ExpectPlainText(const YcluiPicture& picture, std::size_t width, const Emulator& terminal,
                     std::size_t origin) {
  Emulator plain(width, 10000);
  std::size_t row = 0;
  std::size_t column = 0;
  const auto add = [&](const YcluiStyledText& text, std::size_t cursor) {
    const YcluiCells cells{std::string_view(text.text())};
    for (std::size_t i = 0; i <= cells.size(); ++i) {
      const std::size_t needed = i < cells.size() ? cells[i].width : 1;
      const bool isNext = plain.column + needed > width;
      if ((i < cells.size() ? cells[i].begin : text.text().size()) == cursor) {
        row = plain.row + (isNext ? 1 : 0);
        column = isNext ? 0 : plain.column;
      }
      if (i == cells.size()) return;
      std::string utf8;
      YCharacters::AppendUtf8(cells[i].text, utf8);
      plain.write(utf8);
    }
  };
  add(picture.prompt, std::string::npos);
  add(picture.line, picture.cursor);
  add(picture.hint, std::string::npos);
  ASSERT_EQ(terminal.row - origin, row);
  ASSERT_EQ(terminal.column, column);
  for (std::size_t i = 0; i < plain.size(); ++i) {
    ASSERT_EQ(terminal.text(origin + i), plain.text(i));
  }
}

bool HasControls(const YcluiPicture& picture) {
  const std::string all = picture.prompt.text() + picture.line.text() + picture.hint.text();
  return all.find_first_of("\x01\n") != all.npos;
}

// A screen, its terminal, and whatever happens to them.
class Session {
 public:
  Session(Lack lack, std::size_t width, std::size_t height, unsigned seed)
      : lack_(lack),
        width_(width),
        height_(height),
        capabilities_(sized()),
        screen_(capabilities_, "UTF-8"),
        terminal_(blank()),
        pictures_(seed) {}

  void step(bool resizes) {
    const std::size_t what = pictures_.below(20);
    if (what == 0) print();
    if (what == 1) othersWrite(resizes);
    if (what == 2) screen_.hide();
    if (what == 3) screen_.clear(), above_.clear();
    if (what == 4) screen_.leave(), above_.clear();
    if (resizes && what > 16) resize();
    picture_ = pictures_.next(width_ * height_);
    screen_.show(picture_);
    if (what == 5) print();
    flush();
    check();
  }

 private:
  Lack lack_;
  std::size_t width_, height_;
  YcluiCapabilities capabilities_;
  YcluiScreen screen_;
  Emulator terminal_;
  RandomPictures pictures_;
  YcluiPicture picture_;
  std::string above_;  // what is in the row above the picture, where that is known
  std::size_t origin_ = 0;
  int printed_ = 0;

  YcluiCapabilities sized() const {
    YcluiCapabilities to = CapabilitiesWithout(lack_);
    to.width = static_cast<int>(width_);
    to.height = static_cast<int>(height_);
    return to;
  }
  Emulator blank() const { return {width_, height_, capabilities_.wraps, capabilities_.wrapsLate}; }
  void flush() { terminal_.write(screen_.takeOutput()); }
  std::string newText() {
    above_ = std::to_string(++printed_ % 10);
    return above_;
  }
  void print() {
    screen_.print(YcluiStyledText(newText() + (pictures_.below(2) == 0 ? "\n" : "")));
  }
  void othersWrite(bool resizes) {
    const bool endsLine = resizes || !screen_.showsRows() || lack_ == Lack::Wrap;
    screen_.giveWay();
    flush();
    terminal_.write(newText() + (endsLine || pictures_.below(2) == 0 ? "\r\n" : ""));
    if (pictures_.below(2) == 0) screen_.forget();
  }
  void resize() {
    flush();
    width_ = 1 + pictures_.below(40);
    height_ = 1 + pictures_.below(10);
    const std::size_t first = terminal_.resize(width_, height_, pictures_.below(10), origin_);
    if (first < terminal_.top()) above_.clear();
    screen_.resize(static_cast<int>(width_), static_cast<int>(height_));
  }
  void check() {
    YcluiCapabilities capabilities = sized();
    YcluiScreen screen(capabilities, "UTF-8");
    Emulator fresh = blank();
    screen.show(picture_);
    fresh.write(screen.takeOutput());
    ASSERT_EQ(terminal_.column, fresh.column);
    ASSERT_FALSE(terminal_.isBehindEdge());
    ASSERT_GE(terminal_.row, fresh.row);
    origin_ = terminal_.row - fresh.row;
    ASSERT_GE(origin_, terminal_.top());
    ASSERT_EQ(fresh.top(), 0U);
    for (std::size_t i = 0; origin_ + i < terminal_.size() || i < fresh.size(); ++i) {
      ASSERT_EQ(terminal_.text(origin_ + i), fresh.text(i)) << "row " << i;
      ASSERT_EQ(terminal_.cells(origin_ + i), fresh.cells(i)) << "row " << i;
    }
    if (!above_.empty() && lack_ != Lack::LateWrap && origin_ > 0) {
      ASSERT_EQ(terminal_.text(origin_ - 1), above_);
    }
    const bool fits = YcluiLayout::Of(picture_, width_).rows.size() <= height_;
    if (lack_ == Lack::Nothing && fits && width_ > 1 && !HasControls(picture_)) {
      ExpectPlainText(picture_, width_, terminal_, origin_);
    }
  }
};

void RunSessions(Lack lack, bool resizes) {
  const std::size_t least = lack == Lack::LateWrap || lack == Lack::Everything ? 2 : 1;
  for (std::size_t width = least; width <= 40; ++width) {
    for (std::size_t height = 1; height <= 10; ++height) {
      Session session(lack, width, height, static_cast<unsigned>(width * 100 + height));
      for (int i = 0; i < 40; ++i) {
        session.step(resizes);
        ASSERT_FALSE(testing::Test::HasFatalFailure())
            << "width " << width << ", height " << height << ", step " << i;
      }
    }
  }
}

// However the screen has come to a picture, it shows what a new one would.
TEST(Screen, ShowsThePictureWhateverHappens) {
  RunSessions(Lack::Nothing, false);
}
TEST(Screen, ShowsThePictureAfterResizes) {
  RunSessions(Lack::Nothing, true);
}
TEST(Screen, ShowsThePictureWithUpAndEraseAlone) {
  RunSessions(Lack::Conveniences, false);
}
TEST(Screen, ShowsThePictureWhereTheEdgeWrapsAtOnce) {
  RunSessions(Lack::LateWrap, false);
}
TEST(Screen, ShowsThePictureWhereTheEdgeStays) {
  RunSessions(Lack::Wrap, false);
}
TEST(Screen, ShowsTheLineInOneRow) {
  RunSessions(Lack::Everything, false);
}

YcluiPicture Picture(const std::string& line, std::size_t cursor, const std::string& hint = "") {
  YcluiPicture picture;
  picture.prompt = YcluiStyledText("> ");
  picture.line = YcluiStyledText(line);
  picture.cursor = cursor;
  picture.hint = YcluiStyledText(hint, {.dim = true});
  return picture;
}

TEST(Screen, WritesNoMoreThanItMust) {
  YcluiCapabilities none;
  none.width = 11;
  const struct {
    YcluiCapabilities to;
    YcluiPicture before, after;
    const char* output;
  } rows[] = {
      {Capabilities(), Picture("abc", 3), Picture("abc", 3), ""},
      {Capabilities(), Picture("abc", 3), Picture("abcd", 4), "d"},
      {Capabilities(), Picture("abcd", 4), Picture("abc", 3), "\b\x1B[K"},
      {Capabilities(), Picture("abc", 3), Picture("abc", 2), "\b"},
      {Capabilities(), Picture("abcdefgh", 8), Picture("abcdefgh", 0), "\r> "},
      {Capabilities(), Picture("abcdefgh", 8), Picture("xbcdefgh", 8), "\r> x\x1B[7C"},
      {Capabilities(), Picture("ab", 2, "cd"), Picture("abc", 3, "d"), "c"},
      {none, Picture("abc", 3), Picture("abcd", 4), "d"},
      {none, Picture("abc", 3), Picture("ab", 2), "\r> ab \r> ab"},
      {none, Picture("abcdefg", 7), Picture("abcdefgh", 8), "\rdefgh    \rdefgh"},
  };
  for (const auto& row : rows) {
    YcluiScreen screen(row.to, "UTF-8");
    screen.show(row.before);
    screen.takeOutput();
    screen.show(row.after);
    EXPECT_EQ(screen.takeOutput(), row.output) << row.output;
  }
}

// A message is seen even where the line alone fills the window. Of a line that is sent all of it
// stays on the screen, and nothing that was shown with it.
TEST(Screen, ShowsAMessageAndLeavesTheWholeLine) {
  YcluiCapabilities capabilities = Capabilities();
  capabilities.width = 5;
  capabilities.height = 3;
  YcluiScreen screen(capabilities, "UTF-8");
  Emulator terminal(5, 3);
  YcluiPicture picture = Picture("abcdefghijklmnopq", 2, "hint");
  picture.rows = {YcluiStyledText("list")};
  screen.show(picture);
  terminal.write(screen.takeOutput());
  EXPECT_EQ(screen.rowsBeside(picture), 1U);
  const char* const shown[] = {"> abc", "defgh", "list"};
  for (std::size_t i = 0; i < std::size(shown); ++i) EXPECT_EQ(terminal.text(i), shown[i]);
  screen.leave();
  EXPECT_TRUE(screen.isHidden());
  screen.print("done");
  terminal.write(screen.takeOutput());
  const char* const rows[] = {"> abc", "defgh", "ijklm", "nopq", "done", ""};
  for (std::size_t i = 0; i < std::size(rows); ++i) EXPECT_EQ(terminal.text(i), rows[i]);
}

TEST(Screen, WritesInTheEncodingOfTheTerminal) {
  const YcluiCapabilities capabilities = Capabilities();
  YcluiScreen screen(capabilities, "EUC-JP");
  screen.print(YCharacters::BytesFromUtf8("表") + "\xFF");
  const std::string output = screen.takeOutput();
  EXPECT_NE(output.find("\xC9\xBD?\r\n"), output.npos);
}

TEST(Capabilities, AreThoseOfTheTerminal) {
  unsetenv("NO_COLOR");
  setenv("TERM", "xterm", 1);
  YcluiCapabilities to = YcluiCapabilities::Read();
  EXPECT_TRUE(to.wraps && to.wrapsLate);
  EXPECT_EQ(to.up + to.clearToEnd + to.clearToLineEnd, "\x1B[A\x1B[J\x1B[K");
  EXPECT_EQ(YcluiCapabilities::With(to.leftBy, 12), "\x1B[12D");
  EXPECT_EQ(to.underline, "\x1B[4m");
  ASSERT_EQ(to.colours.size(), 8U);
  EXPECT_EQ(to.colours[1], "\x1B[31m");
  setenv("NO_COLOR", "1", 1);
  to = YcluiCapabilities::Read();
  EXPECT_TRUE(to.colours.empty());
  EXPECT_EQ(to.underline, "\x1B[4m");
  setenv("TERM", "dumb", 1);
  EXPECT_TRUE(YcluiCapabilities::Read().up.empty());
  unsetenv("NO_COLOR");
}

}  // namespace
