// Parsing keys and drawing the line, tested without a terminal.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "program/terminal/CluiKeys.h"
#include "program/terminal/CluiScreen.h"
#include "program/text/CluiWidth.h"
#include "tests/program/OpenEncoding.h"

namespace {

CluiCapabilities Capabilities() {
  CluiCapabilities to;
  to.wraps = to.wrapsLate = true;
  to.up = "\x1B[A";
  to.clearToEnd = "\x1B[J";
  to.keys = {{"\x1BOA", CluiSequence::Up},     {"\x1BOB", CluiSequence::Down},
             {"\x1B[3~", CluiSequence::Other}, {"\x1B[200~", CluiSequence::PasteBegin},
             {"\x7F", CluiSequence::Erase},    {"\x1B[201~", CluiSequence::PasteEnd}};
  return to;
}

// --- Keys

// Each key as a letter for its kind and its bytes, control bytes as numbers.
std::string Shown(const CluiKey& key) {
  std::string shown(1, "ctx<p>"[key.kind]);
  if (key.kind == CluiKey::Control) shown += std::to_string(key.bytes.front());
  if (key.kind == CluiKey::Text || key.kind == CluiKey::Paste) shown += key.bytes;
  return shown + " ";
}

std::string KeysOf(CluiKeys& keys, std::string_view bytes) {
  std::string shown;
  CluiKey key;
  keys.feed(bytes);
  while (keys.next(key)) shown += Shown(key);
  return shown;
}

const struct {
  const char* encoding;
  std::string bytes;
  const char* keys;
} KeyRows[] = {
    {"UTF-8", "a \r\n\t", "ta t  c13 c13 c9 "},
    {"UTF-8", "\x1BOA\x1BOB\x10", "c16 c14 c16 "},
    {"UTF-8", "\x7F\b", "x x "},
    {"UTF-8", "\x1B[3~\x1B[1;5C\x1BOQa", "ta "},  // keys without a function
    {"UTF-8", "\033fa", "ta "},                   // a character with Alt
    {"UTF-8", "\x1B\r\x1B\x1B", "c27 c13 c27 c27 "},
    {"UTF-8", "\xE8\xA1\xA8\xC2\xA5", "t\xE8\xA1\xA8 t\xC2\xA5 "},
    {"UTF-8", "\350a\377b\xE8\xA1\x03", "t\xE8 ta t\xFF tb t\xE8\xA1 c3 "},
    {"CP932", "\x95\x5C\xB1", "t\x95\x5C t\xB1 "},
    {"EUC-JP", "\xC9\xBD\x8E\xB1q", "t\xC9\xBD t\x8E\xB1 tq "},
    {"UTF-8", "\x1B[200~a\x1B[A\rb\x03\x1B[201~c", "< pa\x1B[A\rb\x03 > tc "},
};

// The same bytes make the same keys however they are split. An Escape that may begin a longer key
// is a key after settle().
TEST(Keys, AreTheSameHoweverBytesAreSplit) {
  const CluiCapabilities capabilities = Capabilities();
  for (const auto& row : KeyRows) {
    SCOPED_TRACE(row.keys);
    OpenEncoding encoding(row.encoding);
    CluiKeys whole(capabilities, encoding, '\x7F');
    std::string shown = KeysOf(whole, row.bytes);
    whole.settle();
    EXPECT_EQ(shown + KeysOf(whole, ""), row.keys);
    CluiKeys single(capabilities, encoding, '\x7F');
    shown.clear();
    for (const char byte : row.bytes) shown += KeysOf(single, std::string(1, byte));
    single.settle();
    shown += KeysOf(single, "");
    // Joins the pieces of a paste.
    for (std::size_t cut; (cut = shown.find(" p", shown.find(" p") + 1)) != std::string::npos;) {
      shown.erase(cut, 2);
    }
    EXPECT_EQ(shown, row.keys);
  }
}

TEST(Keys, WaitOnlyForTheRestOfAKey) {
  const CluiCapabilities capabilities = Capabilities();
  OpenEncoding encoding;
  CluiKeys keys(capabilities, encoding, '\x7F');
  EXPECT_EQ(KeysOf(keys, "a\x1B"), "ta ");
  EXPECT_TRUE(keys.waits());
  keys.settle();
  EXPECT_EQ(KeysOf(keys, ""), "c27 ");
  EXPECT_FALSE(keys.waits());
  EXPECT_EQ(KeysOf(keys, "\x1B[200~x\x1B[20"), "< px ");
  EXPECT_EQ(KeysOf(keys, "2"), "p\x1B[202 ");
  // drop() keeps the end of the paste.
  keys.feed("\x1B[201");
  keys.drop();
  EXPECT_EQ(KeysOf(keys, "~x\x1B[200~y"), "> tx < py ");
  keys.feed("z\x1B[201~\x1B[A");
  keys.drop();
  EXPECT_EQ(KeysOf(keys, "\x1B[200~"), "> < ");
  EXPECT_EQ(KeysOf(keys, "y\x1B[201~\x1B"), "py > ");
}

// --- A screen

// A terminal with the capabilities above. Rows that have scrolled off are kept.
class Emulator {
 public:
  Emulator(std::size_t width, std::size_t height) : width_(width), height_(height), rows_(1) {}

  void write(const std::wstring& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] != L'\x1B') {
        put(text[i]);
      } else {
        i += 2;
        if (text[i] == L'A' && row > top()) --row;
        if (text[i] == L'J') erase();
      }
    }
  }
  std::vector<std::wstring> rows() const {
    std::vector<std::wstring> rows = rows_;
    for (std::wstring& one : rows) one.erase(one.find_last_not_of(L' ') + 1);
    while (!rows.empty() && rows.back().empty()) rows.pop_back();
    return rows;
  }
  std::size_t row = 0, column = 0;

 private:
  static constexpr wchar_t Half = L'\xFFFF';  // the right part of a wide character

  std::size_t width_, height_;
  std::vector<std::wstring> rows_;

  std::size_t top() const { return rows_.size() > height_ ? rows_.size() - height_ : 0; }
  void erase() {
    rows_[row].resize(std::min(rows_[row].size(), column));
    for (std::size_t i = row + 1; i < rows_.size(); ++i) rows_[i].clear();
  }
  void down() {
    if (++row == rows_.size()) rows_.emplace_back();
  }
  void put(wchar_t c) {
    if (c == L'\r') column = 0;
    if (c == L'\n') down();
    if (c < L' ') return;
    const auto width = static_cast<std::size_t>(CluiWidthOf(c));
    if (column + width > width_) {
      down();
      column = 0;
    }
    std::wstring& cells = rows_[row];
    cells.resize(std::max(cells.size(), column + width), L' ');
    cells[column] = c;
    if (width == 2) cells[column + 1] = Half;
    column += width;
  }
};

std::wstring Wide(const std::string& bytes) {
  return OpenEncoding().fromUser(bytes);
}

// After any operation the last rows and the cursor are those of a terminal into which only the
// prompt and the line were written, and the printed text is directly above.
TEST(Screen, ShowsTheLineAfterAnyOperation) {
  std::mt19937 random(7);
  const auto any = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
  for (int round = 0; round < 300; ++round) {
    const std::size_t width = 5 + any(12);
    const std::size_t height = 2 + any(5);
    CluiCapabilities capabilities = Capabilities();
    capabilities.width = static_cast<int>(width);
    capabilities.height = static_cast<int>(height);
    if (any(2) == 0) capabilities.colour = capabilities.plain = "\x1B[m";
    OpenEncoding encoding;
    CluiScreen screen(capabilities, encoding);
    Emulator terminal(width, height);
    std::wstring line;
    std::vector<std::wstring> printed;
    bool lost = false;  // rows of the line have scrolled away since something was printed
    for (int step = 0; step < 30; ++step) {
      const std::size_t what = any(8);
      if (what < 4) line += std::wstring(1 + any(4), L"ab\u8868\uFF71"[any(4)]);
      if (what == 4) line.resize(any(line.size() + 1));
      if (what == 5) line = std::wstring(any(width * height), L'x');
      if (what == 6) {
        printed.emplace_back(L"p" + std::to_wstring(any(100)));
        screen.print(printed.back());
      }
      if (what == 7) {  // other output, with or without an end of line
        printed.emplace_back(L"o" + std::to_wstring(any(100)));
        screen.hideForOthers();
        terminal.write(Wide(screen.takeOutput()) + printed.back() + (any(2) == 0 ? L"\r\n" : L""));
      }
      const std::wstring prompt = any(4) == 0 ? L"... " : L"> ";
      screen.show(prompt, line);
      std::wstring output = Wide(screen.takeOutput());
      for (std::size_t i = 0; (i = output.find(L'\n', i)) != std::wstring::npos; i += 2) {
        output.insert(i, 1, L'\r');  // like the terminal's driver
      }
      terminal.write(output);

      Emulator plain(width, 10000);
      plain.write(prompt + line);
      std::size_t row = plain.row;
      std::size_t column = plain.column;
      if (column == width) row += 1, column = 0;
      const std::vector<std::wstring> wanted = plain.rows();
      const std::vector<std::wstring> rows = terminal.rows();
      ASSERT_EQ(terminal.column, column);
      // Rows of the line that have scrolled off the screen are not drawn again.
      const std::size_t first = row + 1 > height ? row + 1 - height : 0;
      ASSERT_GE(terminal.row + first, row);
      for (std::size_t i = first; i < wanted.size(); ++i) {
        const std::size_t at = terminal.row + i - row;
        ASSERT_EQ(at < rows.size() ? rows[at] : L"", wanted[i]) << "round " << round;
      }
      ASSERT_LE(rows.size(), terminal.row + 1);
      lost = first > 0 || (lost && what < 6);
      if (lost || printed.empty()) continue;
      ASSERT_EQ(rows[terminal.row - row - 1], printed.back()) << "round " << round;
    }
  }
}

TEST(Screen, WrapsPrintedLines) {
  const wchar_t* const rows[][2] = {
      {L"abcd efghi", L"abcd efghi\n"},
      {L"abcd efghij k", L"abcd\nefghij k\n"},
      {L"  abcd   efghij\nk", L"  abcd\nefghij\nk\n"},
      {L"abcdefghijklm nop", L"abcdefghijklm\nnop\n"},
      {L"abc\tde f", L"abc\tde\nf\n"},
      {L"abcdefghij     ", L"abcdefghij     \n"},
      {L"\u8868\u8868\u8868\u8868\u8868\u8868", L"\u8868\u8868\u8868\u8868\u8868\n\u8868\n"},
      {L"a\u8868\u8868\u8868\u8868\u3002", L"a\u8868\u8868\u8868\n\u8868\u3002\n"},
      {L"\u8868\u8868\u8868\u8868\u300C\u8868\u300D",
       L"\u8868\u8868\u8868\u8868\n\u300C\u8868\u300D\n"},
      {L"abcdefg \uFF71\uFF72\uFF73", L"abcdefg\n\uFF71\uFF72\uFF73\n"},
  };
  CluiCapabilities capabilities = Capabilities();
  capabilities.wraps = false;
  capabilities.width = 10;
  OpenEncoding encoding;
  for (const auto& [text, printed] : rows) {
    CluiScreen screen(capabilities, encoding);
    screen.print(text);
    EXPECT_EQ(Wide(screen.takeOutput()), printed);
  }
}

// Unchanged text is not drawn again. A terminal without capabilities draws a change over the row or
// in a new one.
TEST(Screen, DrawsOnlyChanges) {
  CluiCapabilities none;
  none.width = 10;
  OpenEncoding encoding;
  const struct {
    CluiCapabilities to;
    const wchar_t *before, *after;
    const char* output;
  } rows[] = {
      {Capabilities(), L"abc", L"abcd", "d"},      {Capabilities(), L"abcd", L"abcd\x1B", "?"},
      {none, L"abc", L"ab", "\r> ab \r> ab"},      {none, L"abc", L"axyz", "\r> axyz"},
      {none, L"abcdefghijk", L"abc", "\r\n> abc"}, {none, L"abc", L"abc", ""},
  };
  for (const auto& row : rows) {
    CluiScreen screen(row.to, encoding);
    screen.show(L"> ", row.before);
    screen.takeOutput();
    screen.show(L"> ", row.after);
    EXPECT_EQ(screen.takeOutput(), row.output) << row.output;
  }
}

}  // namespace
