// Primitives as Scheme procedures: the call into C++ and the errors it can raise.

#include <array>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <exception>
#include <utility>

#include "platform/engine/YseEngine.h"

namespace yse {

namespace {

// A C function of Guile receives no data, so each bound procedure needs a function of its own that
// knows the number of its row. This is the maximum number of procedures in a process.
constexpr unsigned MostRows = 1024;

std::deque<Row>& Rows() {
  static std::deque<Row>* const rows = new std::deque<Row>;
  return *rows;
}

struct Outcome {
  bool good;
  SCM value;
  Report report;
};

// The result is what the primitive left on the stack; of several values, the last.
Outcome Finish(const Level& level, const YStatus& status) {
  const Engine& engine = TheEngine();
  Outcome outcome{YStatusIsGood(status), SCM_UNSPECIFIED, level.report};
  if (outcome.good && engine.height > level.base) outcome.value = engine.slots[engine.height - 1];
  return outcome;
}

void CallProcedure(const Row& row, std::uint32_t count, YStatus& status, Report& report) {
  try {
    row.procedure(count, status);
  } catch (const std::exception& thrown) {
    YStatusClear(status);
    report.kind = Report::Thrown;
    TheEngine().bytes = thrown.what();
  } catch (...) {
    YStatusClear(status);
    report.kind = Report::Thrown;
    TheEngine().bytes = "an exception of an unknown type";
  }
}

// Calls the primitive. Always returns and never raises a Scheme error.
Outcome CallNative(const Row& row, SCM args, std::uint32_t count) {
  Engine& engine = TheEngine();
  engine.native = true;
  Level level;
  level.outer = engine.level;
  level.base = engine.height;
  level.untouched = count;
  level.firstString = engine.strings.size();
  for (; scm_is_pair(args); args = SCM_CDR(args)) Push(SCM_CAR(args));
  engine.level = &level;
  YStatus status{1};
  CallProcedure(row, count, status, level.report);
  const Outcome outcome = Finish(level, status);
  DropTo(level.base);
  FreeStrings(level.firstString);
  engine.level = level.outer;
  std::fflush(stdout);
  engine.native = false;
  return outcome;
}

// The functions from here on are called from Scheme and may raise.

SCM SchemeText(const char* text) {
  return scm_from_utf8_string(text);
}

[[noreturn]] void Raise(const char* key, const Row& row, SCM message, SCM values) {
  scm_apply_0(TheEngine().refuse,
              scm_cons2(scm_from_latin1_symbol(key), SchemeText(row.name.c_str()),
                        scm_cons(message, values)));
  std::abort();
}

[[noreturn]] void RaiseWrongNumber(const Row& row, YWord given, YWord least, YWord most) {
  char text[160];
  const char* const plural = (least == most ? least : most) == 1 ? "" : "s";
  if (least == most) {
    std::snprintf(text, sizeof text, "takes %u argument%s, %u given", least, plural, given);
  } else if (most == UINT32_MAX) {
    std::snprintf(text, sizeof text, "takes at least %u argument%s, %u given", least,
                  least == 1 ? "" : "s", given);
  } else {
    std::snprintf(text, sizeof text, "takes %u to %u arguments, %u given", least, most, given);
  }
  Raise("wrong-number-of-args", row, SchemeText(text), SCM_EOL);
}

[[noreturn]] void RaiseBadType(const Row& row, const Report& report) {
  char text[200];
  if (report.argNum > 0) {
    std::snprintf(text, sizeof text, "argument %ld must be %s, not ~S", report.argNum,
                  report.expected);
  } else {
    std::snprintf(text, sizeof text, "an argument must be %s, not ~S", report.expected);
  }
  Raise("wrong-type-arg", row, SchemeText(text), scm_list_1(report.value));
}

[[noreturn]] void RaiseRefused(const Row& row, long argNum, SCM args) {
  const SCM index = scm_from_long(argNum - 1);
  const bool isThere = argNum > 0 && argNum <= scm_to_long(scm_length(args));
  if (!isThere) Raise("misc-error", row, SchemeText("refused its arguments"), SCM_EOL);
  char text[80];
  std::snprintf(text, sizeof text, "argument %ld is invalid: ~S", argNum);
  Raise("wrong-type-arg", row, SchemeText(text), scm_list_1(scm_list_ref(args, index)));
}

[[noreturn]] void RaiseReport(const Row& row, const Report& report, SCM args) {
  switch (report.kind) {
    case Report::BadType:
      RaiseBadType(row, report);
    case Report::Refused:
      RaiseRefused(row, report.argNum, args);
    case Report::WrongNumber:
      RaiseWrongNumber(row, report.given, report.least, report.most);
    case Report::Missing:
      Raise("misc-error", row, SchemeText("found too few arguments"), SCM_EOL);
    case Report::Thrown:
      Raise("misc-error", row, SchemeText("failed: ~A"), scm_list_1(FromUtf8(TheEngine().bytes)));
    case Report::None:
      break;
  }
  Raise("misc-error", row, SchemeText("refused its arguments"), SCM_EOL);
}

SCM CallRow(unsigned index, SCM args) {
  const Row& row = Rows()[index];
  if (!MayRun()) Raise("misc-error", row, SchemeText("runs in the engine's thread only"), SCM_EOL);
  std::uint32_t count = 0;
  for (SCM rest = args; scm_is_pair(rest); rest = SCM_CDR(rest)) ++count;
  if (count < row.required || (row.rest == 0 && count > row.required)) {
    RaiseWrongNumber(row, count, row.required, row.rest == 0 ? row.required : UINT32_MAX);
  }
  FlushScheme();
  const Outcome outcome = CallNative(row, args, count);
  StopIfAsked();
  if (!outcome.good) RaiseReport(row, outcome.report, args);
  return outcome.value;
}

template <unsigned Index>
SCM Stub(SCM args) {
  return CallRow(Index, args);
}

template <std::size_t... Index>
constexpr auto MakeStubs(std::index_sequence<Index...>) {
  return std::array<SCM (*)(SCM), sizeof...(Index)>{&Stub<Index>...};
}

constexpr auto Stubs = MakeStubs(std::make_index_sequence<MostRows>());

}  // namespace

bool Bind(const Row& row) {
  if (Rows().size() == MostRows) return false;
  Rows().push_back(row);
  const Row& bound = Rows().back();
  const SCM procedure = scm_c_make_gsubr(bound.name.c_str(), 0, 0, 1,
                                         reinterpret_cast<void*>(Stubs[Rows().size() - 1]));
  scm_module_define(TheEngine().module, scm_from_utf8_symbol(bound.name.c_str()), procedure);
  return true;
}

std::size_t RoomForRows() {
  return MostRows - Rows().size();
}

}  // namespace yse
