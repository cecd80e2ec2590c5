#include "foundation/YNumber.h"

#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <cmath>
#include <random>
#include <string>

namespace {

std::string Printed(double value) {
  char room[YNumberRoom];
  const std::size_t n = YPrintDouble(value, room);
  EXPECT_EQ(n, std::string(room).size());
  return room;
}

TEST(YNumber, ReadsDecimalForms) {
  const double huge = HUGE_VAL;
  const std::string zeros(400, '0');
  const struct {
    std::string text;
    double value;
    std::string rest;
  } rows[] = {
      {" \t\n\v\f\r+12x", 12, "x"},
      {"-.5.5", -0.5, ".5"},
      {"5.", 5, ""},
      {"5.e2", 500, ""},
      {"1e", 1, "e"},
      {"1e+", 1, "e+"},
      {"1E-2-", 0.01, "-"},
      {"0x10", 0, "x10"},
      {"1,5", 1, ",5"},
      {"1e309", huge, ""},
      {"1e+99999999999999999999", huge, ""},
      {"-1" + zeros, -huge, ""},
      {"1" + zeros + "e-400", 1, ""},
      {"1" + zeros + "e-800", 0, ""},
      {"0." + zeros + "1e401", 1, ""},
      {"0." + zeros + "1e900", huge, ""},
      {"0." + zeros + "1", 0, ""},
      {"0." + zeros + zeros + "1e401", 0, ""},
      {"1e-400", 0, ""},
      {"1e-99999999999999999999", 0, ""},
      {"0e99999999999999999999", 0, ""},
      {"4.9e-324", 5e-324, ""},
      {"1.7976931348623159e308", huge, ""},
  };
  for (const auto& row : rows) {
    double value = 77;
    const char* end = YReadDecimal(row.text.c_str(), value);
    ASSERT_NE(end, nullptr) << row.text;
    EXPECT_EQ(value, row.value) << row.text;
    EXPECT_EQ(end, row.rest) << row.text;
  }
  for (const char* text :
       {"", " ", ".", "-", "+.", "-.e1", "e5", "inf", "nan", "+-1", "- 1", "x1"}) {
    double value = 77;
    EXPECT_EQ(YReadDecimal(text, value), nullptr) << text;
    EXPECT_EQ(value, 77) << text;
  }
}

TEST(YNumber, PrintsShortestDigits) {
  const struct {
    double value;
    const char* text;
  } rows[] = {
      {0, "0"},
      {-0.0, "-0"},
      {-2.5, "-2.5"},
      {1e15, "1000000000000000"},
      {9.99e15, "9990000000000000"},
      {9999999999999998, "9999999999999998"},
      {1e16, "1e+16"},
      {0.00001, "0.00001"},
      {-0.000012345678901234567, "-0.000012345678901234568"},
      {0.0000099, "9.9e-06"},
      {0.000001, "1e-06"},
      {5e-324, "5e-324"},
      {-DBL_MAX, "-1.7976931348623157e+308"},
      {HUGE_VAL, "inf"},
      {-HUGE_VAL, "-inf"},
  };
  for (const auto& row : rows) EXPECT_EQ(Printed(row.value), row.text);
  EXPECT_EQ(Printed(-std::nan("")), "nan");
}

TEST(YNumber, WhatIsPrintedReadsBack) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 100000; ++i) {
    // Any bits, and every other time with an exponent near those where the notation changes.
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
