// Suggestions for an unknown word.

#include <gtest/gtest.h>

#include <random>

#include "program/CluiNearest.h"
#include "tests/program/OpenEncoding.h"

namespace {

TEST(Nearest, SuggestsTheMostSimilarWord) {
  const std::vector<std::wstring> words = {L"lime",       L"a",    L"line:", L"lane:", L"radius:",
                                           L"rectangle:", L"rage", L"lanez", L"lens:"};
  const wchar_t* const rows[][2] = {
      {L"line", L"line:"},
      {L"lnie", L"line:"},
      {L"lien:", L"line:"},
      {L"lxne:", L"line:"},
      {L"b", L""},
      {L"lxyz", L""},
      {L"rdus:", L"radius:"},
      {L"rextnagl:", L"rectangle:"},
      {L"rafe", L"rage"},
      {L"lixe:", L"line:"},  // both end in a colon
      {L"lixe", L"lime"},
      {L"lanes:", L"lane:"},  // allowed here, unlike "lanez" and "lens:"
      {L"lens", L"lens:"},
  };
  for (const auto& [typed, nearest] : rows)
    EXPECT_EQ(CluiNearest(typed, words, 6), nearest) << typed;
}

// The filter rejects only words that CluiNearest would not return.
TEST(Nearest, FilterRejectsNoMatch) {
  std::mt19937 random(3);
  const auto word = [&] {
    std::string text(1 + random() % 10, ' ');
    for (char& c : text) c = "abABcd:\x95"[random() % (random() % 9 == 0 ? 8 : 6)];
    return text;
  };
  int rejected = 0;
  OpenEncoding encoding;
  for (int i = 0; i < 5000; ++i) {
    const std::string typed = word();
    const std::string other = word();
    if (CluiNearFilter(typed).mayMatch(other)) continue;
    ++rejected;
    EXPECT_EQ(CluiNearest(encoding.fromSystem(typed), {encoding.fromSystem(other)}, 1), L"");
  }
  EXPECT_GT(rejected, 1000);
}

}  // namespace
