// The filter of the words that are suggested for an unknown one.

#include <gtest/gtest.h>

#include <random>

#include "program/CluiNearest.h"
#include "tests/program/OpenEncoding.h"

namespace {

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
