// An opened CluiEncoding.

#ifndef TESTS_PROGRAM_OPENENCODING_H_
#define TESTS_PROGRAM_OPENENCODING_H_

#include <gtest/gtest.h>

#include "program/text/CluiEncoding.h"

struct OpenEncoding : CluiEncoding {
  explicit OpenEncoding(const std::string& name = "UTF-8") {
    std::string problem;
    EXPECT_TRUE(open(name, problem)) << problem;
  }
};

#endif  // TESTS_PROGRAM_OPENENCODING_H_
