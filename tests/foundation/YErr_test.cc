#include "foundation/YErr.h"

#include <gtest/gtest.h>

#include <csignal>

#include "foundation/YAttribValue.h"
#include "foundation/YMemory.h"

namespace {

struct Told {
  YErrManager* manager;
  int calls;
  unsigned int code;
  YErrSeverity severity;
};

void Listen(void* word, unsigned int code, YErrSeverity severity) {
  Told& told = *static_cast<Told*>(word);
  told = {told.manager, told.calls + 1, code, severity};
  if (code == YErrNotOpened) told.manager->pushError(YErrNoText, YErrError);
}

TEST(YErr, KeepsTheLatestAndCountsAll) {
  YErrManager m;
  EXPECT_EQ(m.code(0), YErrNothing);
  EXPECT_EQ(m.severity(0), YErrNote);
  m.pushError(YErrNotOpened, YErrError);
  m.pushError(YErrNotOpened, YErrWarning);
  EXPECT_EQ(m.severity(0), YErrWarning);
  EXPECT_EQ(m.severity(1), YErrError);
  EXPECT_EQ(m.code(2), 0U);
  EXPECT_EQ(m.code(-1), 0U);
  for (unsigned int i = 0; i < 300; ++i) m.pushError(i, YErrFatal);
  EXPECT_EQ(m.count(), 302U);
  EXPECT_EQ(m.code(0), 299U);
  EXPECT_EQ(m.code(255), 44U);
  EXPECT_EQ(m.code(256), 0U);
}

TEST(YErr, TellsTheListenerOnce) {
  YErrManager m;
  Told told = {&m, 0, 0, YErrNote};
  m.setListener(Listen, &told);
  m.pushError(YErrNotOpened, YErrWarning);
  EXPECT_TRUE(told.calls == 1 && told.code == YErrNotOpened && told.severity == YErrWarning);
  EXPECT_EQ(m.code(0), YErrNoText);  // recorded by the listener, and not told to it
  m.pushError(YErrBadPoint, YErrNote);
  EXPECT_EQ(told.calls, 2);
  m.setListener(nullptr, nullptr);
  m.pushError(YErrBadPoint, YErrNote);
  EXPECT_EQ(told.calls, 2);
}

TEST(YErr, WrappersAnswerNothingAndRecordTheirSeverity) {
  const std::uint64_t before = YErr.count();
  EXPECT_EQ(cluiNote(1) + cluiWarning(2) + cluiError(3) + cluiFatal(4), 0U);
  EXPECT_EQ(YErr.count(), before + 4);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(YErr.severity(i), YErr.code(i));
}

TEST(YMemory, EndsTheProcessWithOneLine) {
  const testing::Matcher<const std::string&> line(std::string("yqrtClui: out of memory\n"));
  EXPECT_EXIT(YOutOfMemory(), testing::KilledBySignal(SIGABRT), line);
  EXPECT_EXIT(YString("x").expand(1UL << 32), testing::KilledBySignal(SIGABRT), line);
  EXPECT_EXIT(YString("x").expandDelta(~0UL), testing::KilledBySignal(SIGABRT), line);
  EXPECT_EXIT(YString("x").concat("y", ~0UL), testing::KilledBySignal(SIGABRT), line);
  EXPECT_EXIT(YString("x").assign("y", ~0UL), testing::KilledBySignal(SIGABRT), line);
  EXPECT_EXIT(YChecked<int>(nullptr), testing::KilledBySignal(SIGABRT), line);
}

TEST(YAttribValue, AnswersTheValueOfItsTagOnly) {
  YStatus status = {0};
  YAttribValue v;
  EXPECT_EQ(v.tag, YAttribNull);
  EXPECT_TRUE(v.GetLong() == 0 && v.GetDouble() == 0 && *v.GetString() == '\0');
  v.SetLong(-7);
  EXPECT_EQ(v.GetLong(status), -7);
  EXPECT_TRUE(YStatusIsGood(status));
  EXPECT_EQ(v.GetDouble(status), 0);
  EXPECT_FALSE(YStatusIsGood(status));
  v.SetPoint(3, -4);
  EXPECT_EQ(v.GetPointX(status), 3);
  EXPECT_TRUE(YStatusIsGood(status));
  EXPECT_EQ(v.GetPointY(status), -4);
  EXPECT_STREQ(v.GetString(status), "");
  EXPECT_FALSE(YStatusIsGood(status));
  v.SetDouble(1.5);
  EXPECT_EQ(v.GetPointX(status), 0);
  EXPECT_EQ(v.GetDouble(status), 1.5);
  EXPECT_TRUE(YStatusIsGood(status));
}

TEST(YAttribValue, OwnsItsText) {
  char text[] = "abc";
  YAttribValue whole(text, 0);
  const YAttribValue part(text, 2);
  text[0] = 'x';
  EXPECT_STREQ(whole.GetString(), "abc");
  EXPECT_STREQ(part.GetString(), "ab");
  EXPECT_STREQ(YAttribValue(nullptr, 0).GetString(), "");
  YAttribValue copy(whole);
  const char* room = copy.GetString();
  whole.SetString(whole.GetString() + 1);  // out of its own text
  EXPECT_STREQ(whole.GetString(), "bc");
  EXPECT_STREQ(copy.GetString(), "abc");
  copy.SetNull();
  copy = part;
  EXPECT_STREQ(copy.GetString(), "ab");
  EXPECT_EQ(copy.GetString(), room);  // in the room that it had
  const YAttribValue& itself = copy;
  copy = itself;
  EXPECT_STREQ(copy.GetString(), "ab");
  YAttribValue point;
  point.SetPoint(1, 2);
  copy = point;
  YStatus status = {0};
  EXPECT_EQ(copy.GetPointY(status), 2);
  copy = std::move(whole);
  EXPECT_STREQ(copy.GetString(), "bc");
}

}  // namespace
