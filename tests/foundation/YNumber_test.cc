#include "foundation/YNumber.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

std::string Printed(double value) {
  char room[YNumberRoom];
  const std::size_t n = YPrintDouble(value, room);
  EXPECT_EQ(n, std::string(room).size());
  return room;
}

// In this locale the C library reads decimal forms in the same way, and other forms too.
TEST(YNumber, ReadsDecimalForms) {
  const std::string zeros(400, '0');
  std::vector<std::string> pieces = {zeros, "." + zeros};
  std::istringstream others(
      "0|1|25|.|-|+|e|E|e-|e+40|e309|e-400|9.9e-3| \t\n\v\f\r|,|99999999999999999999|4.9e-324");
  for (std::string piece; std::getline(others, piece, '|');) pieces.push_back(piece);
  std::mt19937 random(5);
  int read = 0;
  for (int round = 0; round < 50000; ++round) {
    std::string text = random() % 4 == 0 ? " " : "";
    for (auto i = random() % 6; i > 0; --i) text += pieces[random() % pieces.size()];
    char* wantedEnd = nullptr;
    const double wanted = std::strtod(text.c_str(), &wantedEnd);
    double value = 77;
    const char* end = YReadDecimal(text.c_str(), value);
    ASSERT_EQ(end, wantedEnd == text.c_str() ? nullptr : wantedEnd) << text;
    ASSERT_EQ(value, end == nullptr ? 77 : wanted) << text;
    if (end != nullptr) ++read;
  }
  EXPECT_GT(read, 15000);
  for (const char* text : {"0x10", "inf", "nan"}) {
    double value = 77;
    const char* end = YReadDecimal(text, value);
    EXPECT_EQ(end, *text == '0' ? text + 1 : nullptr) << text;
  }
}

TEST(YNumber, PrintsShortestDigits) {
  const std::pair<double, const char*> rows[] = {
      {0, "0"},           {-0.0, "-0"},        {0.00001, "0.00001"}, {0.000001, "1e-06"},
      {5e-324, "5e-324"}, {-HUGE_VAL, "-inf"},
  };
  for (const auto& [value, text] : rows) EXPECT_EQ(Printed(value), text);
  EXPECT_EQ(Printed(-std::nan("")), "nan");
}

TEST(YNumber, WhatIsPrintedReadsBack) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 100000; ++i) {
    // Random bits, and every other time an exponent near those at which the notation changes.
    const std::uint64_t bits = random();
    const std::uint64_t near = (bits & ~(0x7FFULL << 52)) | ((1023 - 25 + bits % 85) << 52);
    const double value = std::bit_cast<double>(i % 2 == 0 ? bits : near);
    if (!std::isfinite(value)) continue;
    const std::string text = Printed(value);
    double read = 0;
    const char* end = YReadDecimal(text.c_str(), read);
    ASSERT_TRUE(end != nullptr && *end == '\0') << text;
    ASSERT_EQ(std::bit_cast<std::uint64_t>(read), std::bit_cast<std::uint64_t>(value)) << text;
    const bool fixed = std::fabs(value) >= 1e-5 && std::fabs(value) < 1e16;
    ASSERT_EQ(text.find('e') == std::string::npos, fixed || value == 0) << text;
  }
}

}  // namespace
