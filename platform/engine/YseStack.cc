// The argument stack for script libraries. Nothing here raises: types are tested before Guile's
// conversions are called.

#include <gc/gc.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "foundation/YCharacters.h"
#include "foundation/YEncoding.h"
#include "platform/engine/YseEngine.h"

namespace yse {

namespace {

constexpr std::size_t FirstCapacity = 256;

// The memory is scanned by the collector but never freed by it.
void Grow() {
  Engine& engine = TheEngine();
  const std::size_t capacity = engine.capacity == 0 ? FirstCapacity : engine.capacity * 2;
  auto* const slots = static_cast<SCM*>(GC_MALLOC_UNCOLLECTABLE(capacity * sizeof(SCM)));
  if (slots == nullptr) std::abort();
  if (engine.height > 0) std::memcpy(slots, engine.slots, engine.height * sizeof(SCM));
  if (engine.slots != nullptr) GC_FREE(engine.slots);
  engine.slots = slots;
  engine.capacity = capacity;
}

// Null outside calls of primitives, and in another thread than the engine's.
Level* LevelHere() {
  return MayRun() ? TheEngine().level : nullptr;
}

std::size_t Floor() {
  const Level* const level = LevelHere();
  return level != nullptr ? level->base : 0;
}

// In another thread than the engine's the stack is empty and stays so.
bool IsEmpty() {
  return !MayRun() || TheEngine().height <= Floor();
}

// SCM_UNDEFINED on an empty stack.
SCM Top() {
  return IsEmpty() ? SCM_UNDEFINED : TheEngine().slots[TheEngine().height - 1];
}

bool IsLong(SCM value) {
  return SCM_I_INUMP(value) ||
         (SCM_BIGP(value) && scm_is_signed_integer(value, INT64_MIN, INT64_MAX));
}

const char* NameOfType(YScmArgType type) {
  switch (type) {
    case YScmArgLong:
      return "an integer";
    case YScmArgDouble:
      return "a real number with a point";
    case YScmArgChar:
      return "a character";
    case YScmArgString:
      return "a string";
    case YScmArgHandle:
      return "a handle";
    case YScmArgBoolean:
      return "#t or #f";
    case YScmArgPair:
      return "a pair";
    case YScmArgSyntaxElement:
      return "a token id, a string, a fragment or a priority pair";
  }
  return "of another type";
}

// Only the first failure is kept, since it may be the cause of later ones. Null for those.
Report* NewReport(YStatus& status, Report::Kind kind) {
  Level* const level = LevelHere();
  const bool first = YStatusIsGood(status);
  YStatusClear(status);
  if (level == nullptr || !first) return nullptr;
  level->report = Report{};
  level->report.kind = kind;
  return &level->report;
}

void ReportBadType(YStatus& status, long argNum, const char* expected, SCM value) {
  Report* const report = NewReport(status, Report::BadType);
  if (report == nullptr) return;
  report->argNum = argNum;
  report->expected = expected;
  report->value = value;
}

// A popped value, with the position of the argument that it is or is part of.
struct Popped {
  SCM value = SCM_UNDEFINED;
  long argNum = 0;

  bool isThere() const { return !SCM_UNBNDP(value); }
};

Popped Pop(YStatus& status) {
  Engine& engine = TheEngine();
  if (IsEmpty()) {
    NewReport(status, Report::Missing);
    return {};
  }
  SCM& slot = engine.slots[--engine.height];
  const SCM value = slot;
  slot = SCM_BOOL_F;
  Level* const level = engine.level;
  if (level == nullptr) return {value, 0};
  const long argNum = static_cast<long>(level->untouched);
  level->untouched = std::min(level->untouched, engine.height - level->base);
  return {value, argNum};
}

// An argument number of 0 means the one that the engine has counted.
long PopLong(YStatus& status, long argNum) {
  const Popped popped = Pop(status);
  if (!popped.isThere()) return 0;
  if (IsLong(popped.value)) return scm_to_long(popped.value);
  const bool tooLarge = scm_is_true(scm_exact_integer_p(popped.value));
  ReportBadType(status, argNum != 0 ? argNum : popped.argNum,
                tooLarge ? "an integer of 64 bits" : NameOfType(YScmArgLong), popped.value);
  return 0;
}

const char* PopString(YStatus& status, long argNum) {
  const Popped popped = Pop(status);
  if (!popped.isThere()) return nullptr;
  const char* expected = NameOfType(YScmArgString);
  if (scm_is_string(popped.value)) {
    const char* const bytes = ToBytes(popped.value, expected);
    if (bytes != nullptr) return bytes;
  }
  ReportBadType(status, argNum != 0 ? argNum : popped.argNum, expected, popped.value);
  return nullptr;
}

void* PopHandle(YStatus& status, long argNum) {
  const Popped popped = Pop(status);
  if (!popped.isThere()) return nullptr;
  if (IsHandle(popped.value)) return HandleFirst(popped.value);
  ReportBadType(status, argNum != 0 ? argNum : popped.argNum, NameOfType(YScmArgHandle),
                popped.value);
  return nullptr;
}

bool ReplaceTop(SCM (*part)(SCM)) {
  const SCM top = Top();
  if (SCM_UNBNDP(top) || !scm_is_pair(top)) return false;
  TheEngine().slots[TheEngine().height - 1] = part(top);
  return true;
}

}  // namespace

void Push(SCM value) {
  Engine& engine = TheEngine();
  if (engine.height == engine.capacity) Grow();
  engine.slots[engine.height++] = value;
}

void DropTo(std::size_t height) {
  Engine& engine = TheEngine();
  while (engine.height > height) engine.slots[--engine.height] = SCM_BOOL_F;
}

}  // namespace yse

using namespace yse;

YWord ScmVMExternal::StackLongP() {
  const SCM top = Top();
  return !SCM_UNBNDP(top) && IsLong(top) ? 1 : 0;
}

YWord ScmVMExternal::StackSmallLongP() {
  return SCM_I_INUMP(Top()) ? 1 : 0;
}

YWord ScmVMExternal::StackDoubleP() {
  return SCM_REALP(Top()) ? 1 : 0;
}

YWord ScmVMExternal::StackFloatP() {
  return 0;
}

YWord ScmVMExternal::StackCharP() {
  return SCM_CHARP(Top()) ? 1 : 0;
}

YWord ScmVMExternal::StackStringP() {
  return scm_is_string(Top()) ? 1 : 0;
}

YWord ScmVMExternal::StackHandleP() {
  return IsHandle(Top()) ? 1 : 0;
}

YWord ScmVMExternal::StackPairP() {
  return scm_is_pair(Top()) ? 1 : 0;
}

YWord ScmVMExternal::StackNullP() {
  return scm_is_null(Top()) ? 1 : 0;
}

long ScmVMExternal::StackPopLong(YStatus& status) {
  return PopLong(status, 0);
}

double ScmVMExternal::StackPopDouble(YStatus& status) {
  const Popped popped = Pop(status);
  if (!popped.isThere()) return 0;
  if (SCM_REALP(popped.value)) return scm_to_double(popped.value);
  ReportBadType(status, popped.argNum, NameOfType(YScmArgDouble), popped.value);
  return 0;
}

long ScmVMExternal::StackPopChar(YStatus& status) {
  const Popped popped = Pop(status);
  if (!popped.isThere()) return 0;
  static const std::string inEncoding = std::string("a character of ") + YEncoding::InsideInWords();
  const bool isChar = SCM_CHARP(popped.value);
  const long code = isChar ? YCharacters::CodeOf(SCM_CHAR(popped.value)) : -1;
  if (code >= 0) return code;
  ReportBadType(status, popped.argNum, isChar ? inEncoding.c_str() : NameOfType(YScmArgChar),
                popped.value);
  return 0;
}

const char* ScmVMExternal::StackPopString(YStatus& status) {
  return PopString(status, 0);
}

void* ScmVMExternal::StackPopHandle(YStatus& status) {
  return PopHandle(status, 0);
}

void ScmVMExternal::StackPop(YStatus& status) {
  Pop(status);
}

void ScmVMExternal::StackPopN(long n, YStatus& status) {
  if (n < 0) YStatusClear(status);
  for (; n > 0; --n) {
    if (!Pop(status).isThere()) return;
  }
}

void ScmVMExternal::StackPushLong(long value) {
  if (MayRun()) Push(scm_from_long(value));
}

void ScmVMExternal::StackPushDouble(double value) {
  if (MayRun()) Push(scm_from_double(value));
}

void ScmVMExternal::StackPushBoolean(YWord value) {
  if (MayRun()) Push(scm_from_bool(value != 0));
}

void ScmVMExternal::StackPushString(const char* text) {
  if (MayRun()) Push(FromBytes(text != nullptr ? text : ""));
}

void ScmVMExternal::StackPushNull() {
  if (MayRun()) Push(SCM_EOL);
}

void ScmVMExternal::StackPushHandle(void* first, void* second, void (*finaliser)(void*)) {
  if (MayRun()) Push(MakeHandle(first, second, finaliser));
}

void ScmVMExternal::StackDuplicate() {
  if (!IsEmpty()) Push(Top());
}

YWord ScmVMExternal::StackCar() {
  return ReplaceTop([](SCM pair) { return SCM_CAR(pair); }) ? 1 : 0;
}

YWord ScmVMExternal::StackCdr() {
  return ReplaceTop([](SCM pair) { return SCM_CDR(pair); }) ? 1 : 0;
}

void ScmVMExternal::StackCons() {
  Engine& engine = TheEngine();
  if (!MayRun() || engine.height < Floor() + 2) return;
  SCM* const deeper = &engine.slots[engine.height - 2];
  *deeper = scm_cons(deeper[0], deeper[1]);
  DropTo(engine.height - 1);
}

long ScmVMExternal::VMEAssertIsALong(YArgNum argNum, YStatus& status, long) {
  return PopLong(status, argNum);
}

const char* ScmVMExternal::VMEAssertIsAString(YArgNum argNum, YStatus& status, long) {
  return PopString(status, argNum);
}

void* ScmVMExternal::VMEAssertIsAHandle(YArgNum argNum, YStatus& status, long) {
  return PopHandle(status, argNum);
}

YWord ScmVMExternal::VMEAssertIsABoolean(YArgNum argNum, YStatus& status, long) {
  const Popped popped = Pop(status);
  if (!popped.isThere()) return 0;
  if (scm_is_bool(popped.value)) return scm_is_true(popped.value) ? 1 : 0;
  ReportBadType(status, argNum, NameOfType(YScmArgBoolean), popped.value);
  return 0;
}

YWord ScmVMExternal::VMECheckArgCount(YWord given, YWord least, YWord most, YStatus& status) {
  if (least <= given && given <= most) return 1;
  VMESetWrongNumArgs(given, least, most, status);
  return 0;
}

void ScmVMExternal::VMESetWrongNumArgs(YWord given, YWord least, YWord most, YStatus& status) {
  Report* const report = NewReport(status, Report::WrongNumber);
  if (report == nullptr) return;
  report->given = given;
  report->least = least;
  report->most = most;
}

void ScmVMExternal::VMESetErrorArgNum(YArgNum argNum, YStatus&) {
  if (Level* const level = LevelHere()) level->announcedArgument = argNum;
}

void ScmVMExternal::VMESetErrorBadType(YScmArgType type, YStatus& status, long) {
  const Level* const level = LevelHere();
  const long argNum = level != nullptr ? level->announcedArgument : 0;
  // An argument that was popped successfully has the right type, so its value is refused.
  if (level != nullptr && argNum > static_cast<long>(level->untouched)) {
    Report* const report = NewReport(status, Report::Refused);
    if (report != nullptr) report->argNum = argNum;
    return;
  }
  const SCM top = Top();
  ReportBadType(status, argNum, NameOfType(type), SCM_UNBNDP(top) ? SCM_UNSPECIFIED : top);
}
