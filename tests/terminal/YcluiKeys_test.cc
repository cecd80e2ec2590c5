#include "terminal/YcluiKeys.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include "foundation/YCharacters.h"

namespace {

using Name = YcluiKeyName;

const char* const Names[] = {"None",   "Left",   "Right",  "Up",       "Down",     "Home",
                             "End",    "Delete", "Insert", "Erase",    "Tab",      "BackTab",
                             "Return", "Escape", "PageUp", "PageDown", "WordLeft", "WordRight"};

std::string Shown(const YcluiKey& key) {
  switch (key.kind) {
    case YcluiKey::Text:
      return YCharacters::Utf8FromBytes(key.bytes) + " ";
    case YcluiKey::Named:
      return std::string(Names[static_cast<int>(key.name)]) + " ";
    case YcluiKey::Control:
      return std::string("C-") + key.letter + " ";
    case YcluiKey::Alt:
      return key.letter == '\x7F' ? "M-Erase " : std::string("M-") + key.letter + " ";
    case YcluiKey::Paste:
      return "<" + YCharacters::Utf8FromBytes(key.bytes) + ">";
    case YcluiKey::PasteEnd:
      return "/ ";
    case YcluiKey::Invalid:
      return "{" + key.bytes + "} ";
  }
  return "";
}

std::string KeysOf(YcluiKeys& keys, std::string_view bytes) {
  std::string shown;
  YcluiKey key;
  keys.feed(bytes);
  while (keys.next(key)) shown += Shown(key);
  return shown;
}

std::string WithoutCuts(std::string shown) {
  for (std::size_t cut; (cut = shown.find("><")) != shown.npos;) shown.erase(cut, 2);
  return shown;
}

YcluiKeyTable Table() {
  YcluiKeyTable table;
  table.add("\033\t", Name::BackTab);
  table.add("\033D", Name::Left);
  table.add("\033[M", Name::None);
  table.add("\b", Name::Left);  // not added
  table.add("\033", Name::Left);
  return table;
}

const struct {
  const char* encoding;
  std::string bytes;
  const char* keys;
} Rows[] = {
    {"UTF-8", "a \r\n\t", "a   Return Return Tab "},
    {"UTF-8", "\x7F\b#", "Erase Erase Erase "},
    {"UTF-8", std::string("\0\1\x1A\x1C\x1D\x1E\x1F", 7), "C-  C-a C-z C-\\ C-] C-^ C-_ "},
    {"UTF-8", "\033[A\033OB\033[C\033OD", "Up Down Right Left "},
    {"UTF-8", "\033[H\033OF\033[1~\033[4~\033[7~\033[8~", "Home End Home End Home End "},
    {"UTF-8", "\033[2~\033[3~\033[5~\033[6~", "Insert Delete PageUp PageDown "},
    {"UTF-8", "\033[Z\033\t\033OM", "BackTab BackTab Return "},
    {"UTF-8", "\033[1;5C\033[1;3D\033[1;6D\033[1;10D\033[1;9C",
     "WordRight WordLeft WordLeft WordLeft WordRight "},
    {"UTF-8", "\033[1;2C\033[1;2H\033[3;5~\033[3$\033[8^", "Right Home Delete Delete End "},
    {"UTF-8", "\033Oc\033Od\033[5C\033O5D", "WordRight WordLeft WordRight WordLeft "},
    {"UTF-8", "\033\033[D\033\033OC\033\033[3~", "WordLeft WordRight Delete "},
    {"UTF-8", "\033b\033F\033.\033\x7F\033\b\033#", "M-b M-f M-. M-Erase M-Erase M-Erase "},
    {"UTF-8", "\033D", "Left "},  // terminfo is right
    {"UTF-8", "\033", "Escape "},
    {"UTF-8", "\033\033", "Escape Escape "},
    {"UTF-8", "\033\033x\033\r\033\003", "Escape M-x Escape Return Escape C-c "},
    {"UTF-8", "\033[", "M-[ "},
    {"UTF-8", "\033O", "M-o "},
    {"UTF-8", "\033]\r\033P\r", "M-] Return M-p Return "},
    // Whole and without a key
    {"UTF-8", "\033OQ\033[15~\033[[A\033[1;5P\033[?1;2$y\033[24;80R\033[9;5$a", "a "},
    {"UTF-8", "\033]11;rgb:0/0/0\033\\\033]2;x\007\033P1+r43\033\\\033\033[15~a", "a "},
    {"UTF-8", "\033[201~\033[Mx", "x "},
    {"UTF-8", "\033\350\241\250a", "a "},
    {"UTF-8", "\033[1;\r\033]1x\r\033[2\350\241\250", "Return Return 表 "},  // broken off
    {"UTF-8", "\033[12", ""},
    {"UTF-8", "表ｱ", "表 ｱ "},
    {"UTF-8", "\350a\377b\350\241\003",
     "{the byte E8 is not a character of UTF-8} a {the byte FF is not a character of UTF-8} b "
     "{the bytes E8 A1 are not a character of UTF-8} C-c "},
    {"UTF-8", "\355\240\200a", "{the bytes ED A0 80 are not a character of UTF-8} a "},
    {"CP932", "\x95\x5C\xB1\\", "表 ｱ \\ "},
    {"EUC-JP", "\xC9\xBD\x8E\xB1q", "表 ｱ q "},
    {"EUC-JP", "\xC9\r", "{the byte C9 is not a character of EUC-JP} Return "},
    {"none", "表", "表 "},
    {"UTF-8", "\033[200~a表\033[A\r\nb\rc\n\n\td\003\x7F\033\033[201~e",
     "<a表[A\nb\nc\n\n\td>/ e "},
    {"UTF-8", "\033[200~\033[201~\033[200~\r\033[201~\n", "/ <\n>/ Return "},
    {"UTF-8", "\033[200~a\377\nb\033[201~", "<a>{the byte FF is not a character of UTF-8} <\nb>/ "},
    {"CP932", "\033[200~\x95\x5C\033[201~", "<表>/ "},
};

// Whatever the pieces in which they come, bytes make the same keys; when time has passed, what may
// be the beginning of a key is one.
TEST(Keys, AreMadeOfBytesInAnyPieces) {
  for (const auto& row : Rows) {
    for (std::size_t cut = 0; cut <= row.bytes.size(); ++cut) {
      YcluiKeys keys(Table(), '#', row.encoding);
      std::string shown = KeysOf(keys, row.bytes.substr(0, cut));
      shown += KeysOf(keys, row.bytes.substr(cut));
      keys.settle();
      EXPECT_EQ(WithoutCuts(shown + KeysOf(keys, "")), row.keys) << "cut at " << cut;
      EXPECT_FALSE(keys.waits());
    }
    YcluiKeys keys(Table(), '#', row.encoding);
    std::string shown;
    for (const char byte : row.bytes) shown += KeysOf(keys, {&byte, 1});
    keys.settle();
    EXPECT_EQ(WithoutCuts(shown + KeysOf(keys, "")), row.keys) << "byte by byte";
  }
}

// Bytes that come later never complete what has settled, except for a character.
TEST(Keys, WaitOnlyForSequences) {
  YcluiKeys keys(Table(), '\0', "UTF-8");
  EXPECT_EQ(KeysOf(keys, "a\033"), "a ");
  EXPECT_TRUE(keys.waits());
  keys.settle();
  EXPECT_FALSE(keys.waits());
  EXPECT_EQ(KeysOf(keys, "[A"), "Escape [ A ");
  EXPECT_EQ(KeysOf(keys, "\350\241"), "");
  EXPECT_FALSE(keys.waits());
  keys.settle();
  EXPECT_EQ(KeysOf(keys, std::string("\250\0", 2)), "表 C-  ");  // 0 is no erase byte
  EXPECT_EQ(KeysOf(keys, "\033[200~\033[20"), "");
  EXPECT_FALSE(keys.waits());
  keys.settle();
  EXPECT_EQ(KeysOf(keys, "1~"), "/ ");
  EXPECT_EQ(KeysOf(keys, "\033[" + std::string(4094, '1') + "ab"), "a b ");  // too long
}

// What is dropped ends where the paste does.
TEST(Keys, AreDroppedButForTheEndOfAPaste) {
  YcluiKeys keys(Table(), '\0', "UTF-8");
  keys.feed("ab\033");
  keys.drop();
  EXPECT_EQ(KeysOf(keys, "[\033[200~x"), "[ <x>");
  keys.feed("y\033[201");
  keys.drop();
  EXPECT_EQ(KeysOf(keys, "~x\033[200~"), "/ x ");
  keys.feed("z\033[201~\033[A");
  keys.drop();
  EXPECT_EQ(KeysOf(keys, "a"), "/ a ");
}

// A character that the encoding inside lacks, and one that would pass for a lone byte.
TEST(Keys, ReportCharactersThatDoNotExistInside) {
  YcluiKeys keys(Table(), '\0', "UTF-8");
  for (const char* text : {"\U0001F600", "\uF795", "\U0010FE95"}) {
    const std::string keyed = KeysOf(keys, text);
    const bool isRefused = keyed.find(" does not exist in code page 932") != keyed.npos;
    EXPECT_EQ(isRefused, YEncoding::IsDoubleByte()) << keyed;
  }
}

TEST(KeyTable, KnowsTheTerminal) {
  const struct {
    const char *terminal, *sequence;
    Name name;
  } rows[] = {
      {"linux", "\033\t", Name::BackTab},
      {"vt52", "\033D", Name::Left},
      {"xterm-256color", "\033[4~", Name::End},  // there the Select key
      {"no-such-terminal", "\033[D", Name::Left},
  };
  for (const auto& row : rows) {
    setenv("TERM", row.terminal, 1);
    const YcluiKeyTable::Match match = YcluiKeyTable::OfTerminal().find(row.sequence);
    EXPECT_EQ(match.name, row.name) << row.terminal;
    EXPECT_EQ(match.length, std::string(row.sequence).size()) << row.terminal;
  }
}

}  // namespace
