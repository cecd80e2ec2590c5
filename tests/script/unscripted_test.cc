// A process without a script engine, and one without memory.

#include <gtest/gtest.h>

#include "parser/YcluiParser.h"
#include "script/YcluiFieldBinding.h"
#include "tests/script/TestField.h"
#include "tests/support/allocations.h"

TEST(Unscripted, FormatsAreNotRun) {
  TestField field;
  YcluiParser parser;
  auto* binding = YcluiFieldBinding::Attach(&field, &parser, "E %s", "S %s");
  binding->setKeyAction('k', "key");
  EXPECT_EQ(1U, field.key("a"));
  EXPECT_EQ(0U, field.key("k"));
  EXPECT_EQ(0U, field.key(" ")) << "the parser has no syntax yet";
  EXPECT_EQ("a", field.shown) << "with an echo format the binding does not set the field";
  EXPECT_STREQ("a ", binding->text().buffer);
  delete binding;
}

TEST(Unscripted, NoMemoryGivesNoBinding) {
  TestField field;
  YcluiParser parser;
  FailAllocation();
  EXPECT_EQ(nullptr, YcluiFieldBinding::Attach(&field, &parser, "", ""));
  EXPECT_TRUE(FailAllocation(-1));
  EXPECT_EQ(1U, field.key("a"));
}
