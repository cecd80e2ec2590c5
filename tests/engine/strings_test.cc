// Conversion between bytes and Scheme strings.

#include <random>
#include <span>

#include "foundation/YEncoding.h"
#include "tests/engine/engine_fixture.h"

namespace {

using StringsTest = EngineTest;

std::vector<std::string> Given;
std::size_t Next = 0;

void Give(std::uint32_t, YStatus&) {
  ScmVMExternal::StackPushString(Given[Next].c_str());
}

// Pushes #t until all strings were given.
void Take(std::uint32_t, YStatus& status) {
  const char* const text = ScmVMExternal::StackPopString(status);
  EXPECT_TRUE(text != nullptr && text == Given[Next]) << Given[Next];
  YStatusSetGood(status);
  ScmVMExternal::StackPushBoolean(++Next < Given.size() ? 1 : 0);
}

TEST_F(StringsTest, AllBytesReturnUnchanged) {
  ScmVM::bindProcedure("give", &Give, 0, 0);
  ScmVM::bindProcedure("take", &Take, 1, 0);
  for (int first = 1; first < 256; ++first) {
    Given.emplace_back(1, static_cast<char>(first));
    for (int second = 1; second < 256; ++second) {
      Given.push_back({static_cast<char>(first), static_cast<char>(second)});
    }
  }
  std::mt19937 random(4711);
  for (int i = 0; i < 2000; ++i) {
    std::string text;
    for (std::size_t length = random() % 200; text.size() < length;) {
      // Mostly bytes near the first lead byte, since a lead byte decides about the next byte.
      text.push_back(
          static_cast<char>(random() % 4 == 0 ? 1 + random() % 255 : 0x81 + random() % 8));
    }
    Given.push_back(text);
  }
  Given.emplace_back(3000000, '\x81');
  EXPECT_EQ(Eval("(let loop () (if (take (string-append (give))) (loop)))").front(), '+');
  EXPECT_EQ(Next, Given.size());
}

TEST_F(StringsTest, BytesAreCharactersOfTheEncoding) {
  const char* const cases[][2] = {
      {"(map char->integer (string->list \"\\\\~\x82\xA0\xB1\x87\x40\x81\x5F\"))",
       "+(92 126 12354 65393 9312 65340)"},
      // A lead byte alone, and a pair whose character has another pair too.
      {"(map char->integer (string->list \"\x87\x90\"))", "+(1113735 1113744)"},
      {"(t-join \"\" (string #\\x301C) \"\")", "+\"\x81\x60\""},
      {"(string-length \"\x95\\\")", "+1"},
  };
  // A private-use character, bytes that are none, and the bytes of what means one.
  const char* const inUtf8[][2] = {
      {"(map char->integer (string->list \"\\\\~\u00E9\u3042\U0001F600\uF795\xE8\xA1\"))",
       "+(92 126 233 12354 128512 63381 1113832 1113761)"},
      {"(string-length \"\U0010FE95\")", "+4"},
      {"(t-join \"\" (string #\\xDF #\\xF795 #\\x10FE95) \"\")", "+\"\u00DF\\uf795\\U10fe95\""},
  };
  for (const auto& [text, ending] : YEncoding::IsDoubleByte()
                                        ? std::span<const char* const[2]>(cases)
                                        : std::span<const char* const[2]>(inUtf8))
    EXPECT_EQ(Eval(text), ending) << text;
}

}  // namespace
