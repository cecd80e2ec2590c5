#include "foundation/YCharacters.h"

#include <gtest/gtest.h>

#include <random>

#include "foundation/YEncoding.h"
#include "foundation/YErr.h"
#include "foundation/YKanji.h"

namespace {

// No lexer fixes the setting in this program, so each test has its own.
class Characters : public testing::TestWithParam<YEncoding::Kind> {
 protected:
  void SetUp() override { ASSERT_EQ(YEncoding::SetInside(GetParam()), 1U); }
  void TearDown() override { YEncoding::SetInside(YEncoding::ShiftJis); }
};
INSTANTIATE_TEST_SUITE_P(Inside, Characters, testing::Values(YEncoding::ShiftJis, YEncoding::Utf8));

std::u32string Of(const std::string& bytes) {
  std::u32string characters;
  YCharacters::AppendFromBytes(bytes, characters);
  return characters;
}

// Bytes that decide about others, complete characters, and some that mean lone bytes.
std::string RandomBytes(std::mt19937& random) {
  static const char* const parts[] = {"\x83",     "\x5C",     "\xE3",         "\x81", "\xF4",
                                      "\u8868",   "\u00E9",   "\uF795",       "a",    "\U0001F600",
                                      "\xED\xA0", "\xC0\x80", "\U0010FE95",   "\xFF", "\x95\x5C",
                                      "\xF4\x90", "\u0301",   "\xE0\x80\x80", "\xB1", "\U0010FFFF"};
  std::string bytes;
  for (std::size_t i = random() % 12; i > 0; --i) {
    bytes += random() % 4 == 0 ? std::string(1, static_cast<char>(random()))
                               : parts[random() % std::size(parts)];
  }
  return bytes;
}

TEST_P(Characters, AnyBytesComeBackAndAreCutBetweenCharacters) {
  std::mt19937 random(16);
  for (int i = 0; i < 20000; ++i) {
    const std::string bytes = RandomBytes(random);
    const std::u32string characters = Of(bytes);
    std::string back;
    ASSERT_TRUE(YCharacters::AppendBytes(characters, back));
    ASSERT_EQ(back, bytes);
    ASSERT_EQ(YCharacters::BytesFromUtf8(YCharacters::Utf8FromBytes(bytes)), bytes);
    std::size_t end = 0;  // of the last character that fits
    for (std::size_t room = 0; room <= bytes.size(); ++room) {
      if (end < bytes.size() && end + YCharacters::LengthAt(bytes.substr(end)) <= room) end = room;
      ASSERT_EQ(YCharacters::CutBetween(bytes, room), end) << bytes;
    }
  }
}

// Private-use characters that users have are kept; what means a lone byte is none of them.
TEST_P(Characters, AllCharactersOfTheEncodingComeBack) {
  int kept = 0;
  for (char32_t c = 1; c < 0x110000; ++c) {
    std::string bytes;
    const bool isCharacter = c < 0xD800 || c >= 0xE000;
    if (!isCharacter || !YCharacters::AppendBytes({&c, 1}, bytes)) continue;
    if (GetParam() == YEncoding::ShiftJis && Of(bytes) != std::u32string(1, c)) continue;
    ASSERT_EQ(Of(bytes), std::u32string(1, c)) << std::hex << unsigned(c);
    ASSERT_EQ(YCharacters::LengthAt(bytes), bytes.size());
    ++kept;
  }
  EXPECT_GE(kept, GetParam() == YEncoding::Utf8 ? 0x110000 - 0x800 - 1 : 9000);
}

TEST_P(Characters, CodesAreTheBytes) {
  const bool isUtf8 = GetParam() == YEncoding::Utf8;
  EXPECT_EQ(YCharacters::CodeOf(U'\\'), '\\');
  EXPECT_EQ(YCharacters::CodeOf(U'\u8868'), isUtf8 ? 0xE8A1A8 : 0x955C);
  EXPECT_EQ(YCharacters::CodeOf(U'\U0001F600'), isUtf8 ? 0xF09F9880L : -1);
  EXPECT_EQ(YCharacters::CodeOf(YCharacters::LoneByte + 0x95), 0x95);
  EXPECT_EQ(YCharacters::BytesFromUtf8("\u00DF"), isUtf8 ? "\u00DF" : "?");
}

TEST(Encoding, IsFixedByWhatDependsOnIt) {
  EXPECT_EQ(YEncoding::SetInside(YEncoding::Utf8), 1U);
  EXPECT_EQ(YCheckKanji("\x83\x5C", 0), 0);
  EXPECT_EQ(IsKanjiStart("\x83"), 0U);
  std::string text = "\xC3\x89\x83\x41";
  YFoldCase(text.data());
  EXPECT_EQ(text, "\xC3\x89\x83\x61");
  EXPECT_EXIT(
      {
        YEncoding::Fix();
        const bool isKept = YEncoding::SetInside(YEncoding::Utf8) == 1 && YErr.count() == 0;
        const bool isRefused = YEncoding::SetInside(YEncoding::ShiftJis) == 0;
        const bool isSame = YEncoding::InsideKind() == YEncoding::Utf8;
        const bool isRecorded = YErr.code(0) == YErrEncodingIsFixed;
        std::exit(isKept && isRefused && isSame && isRecorded ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
  YEncoding::SetInside(YEncoding::ShiftJis);
}

}  // namespace
