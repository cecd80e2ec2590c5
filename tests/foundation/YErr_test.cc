#include "foundation/YErr.h"

#include <gtest/gtest.h>

#include <csignal>

#include "foundation/YAttribValue.h"
#include "foundation/YMemory.h"

namespace {

TEST(YErr, KeepsTheLatestAndCountsAll) {
  YErrManager m;
  EXPECT_TRUE(m.code(0) == YErrNothing && m.severity(0) == YErrNote);
  m.pushError(YErrNotOpened, YErrError);
  m.pushError(YErrNotOpened, YErrWarning);
  EXPECT_TRUE(m.severity(0) == YErrWarning && m.severity(1) == YErrError);
  EXPECT_TRUE(m.code(2) == 0 && m.code(-1) == 0);
  for (unsigned int i = 0; i < 300; ++i) m.pushError(i, YErrFatal);
  EXPECT_EQ(m.count(), 302U);
  EXPECT_TRUE(m.code(0) == 299 && m.code(255) == 44 && m.code(256) == 0);
}

TEST(YErr, CallsTheListenerOnce) {
  static YErrManager m;
  int calls = 0;
  const auto listen = [](void* data, unsigned int, YErrSeverity severity) {
    ++*static_cast<int*>(data);
    if (severity == YErrWarning) m.pushError(YErrNoText, YErrError);
  };
  m.setListener(listen, &calls);
  m.pushError(YErrNotOpened, YErrWarning);
  EXPECT_TRUE(calls == 1 && m.code(0) == YErrNoText);
  m.pushError(YErrBadPoint, YErrNote);
  EXPECT_EQ(calls, 2);
  m.setListener(nullptr, nullptr);
  m.pushError(YErrBadPoint, YErrNote);
  EXPECT_EQ(calls, 2);
}

TEST(YMemory, EndsTheProcessWithOneLine) {
  const testing::Matcher<const std::string&> line(std::string("yqrtClui: out of memory\n"));
  const auto aborted = testing::KilledBySignal(SIGABRT);
  EXPECT_EXIT(YString("x").expand(1UL << 32), aborted, line);
  EXPECT_EXIT(YString("x").expandDelta(~0UL), aborted, line);
  EXPECT_EXIT(YString("x").concat("y", ~0UL), aborted, line);
  EXPECT_EXIT(YString("x").assign("y", ~0UL), aborted, line);
  EXPECT_EXIT(YAllocator<int>().allocate(~0UL), aborted, line);
}

TEST(YAttribValue, ReturnsTheValueOfItsTagOnly) {
  YStatus status = {0};
  YAttribValue v;
  EXPECT_TRUE(v.tag == YAttribNull && v.GetLong() == 0 && *v.GetString() == '\0');
  v.SetPoint(3, -4);
  EXPECT_TRUE(YAttribValue(v).GetPointY(status) == -4 && YStatusIsGood(status));
  EXPECT_TRUE(*v.GetString(status) == '\0' && !YStatusIsGood(status));
  v.SetLong(-7);
  EXPECT_TRUE(v.GetLong(status) == -7 && YStatusIsGood(status));
  EXPECT_TRUE(v.GetDouble(status) == 0 && !YStatusIsGood(status));
  v.SetDouble(1.5);
  EXPECT_TRUE(v.GetPointX(status) == 0 && !YStatusIsGood(status));
}

TEST(YAttribValue, OwnsItsText) {
  YAttribValue whole("abc", 0);
  YAttribValue copy(whole);
  const char* buffer = copy.GetString();
  whole.SetString(whole.GetString() + 1);  // a part of its own text
  EXPECT_STREQ(whole.GetString(), "bc");
  EXPECT_STREQ(copy.GetString(), "abc");
  copy.SetNull();
  const YAttribValue part("abc", 2);
  copy = part;
  EXPECT_STREQ(copy.GetString(), "ab");
  EXPECT_EQ(copy.GetString(), buffer);  // the memory is reused
  copy = std::move(whole);
  EXPECT_STREQ(copy.GetString(), "bc");
  EXPECT_STREQ(YAttribValue(nullptr, 0).GetString(), "");
}

}  // namespace
