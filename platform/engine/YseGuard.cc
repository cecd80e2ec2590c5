// Running a text so that control returns, however it ends.

#include <cstdio>
#include <cstdlib>

#include "foundation/YCharacters.h"
#include "foundation/YFileName.h"
#include "platform/engine/YseEngine.h"

namespace yse {

namespace {

// The functions from here to EnterText are called from Scheme and may raise.

// Writes the values that most commands return without a port, because a port costs as much time as
// the rest of a plain call. Returns false for any other value.
bool WriteCommon(SCM value, std::string& printed) {
  if (SCM_I_INUMP(value)) {
    printed = std::to_string(SCM_I_INUM(value));
  } else if (scm_is_bool(value)) {
    printed = scm_is_true(value) ? "#t" : "#f";
  } else if (scm_is_eq(value, SCM_UNSPECIFIED)) {
    printed = "#<unspecified>";
  } else {
    return false;
  }
  return true;
}

// Most values are small and need no limit on their printed size.
SCM Shown(SCM value, std::size_t room) {
  const bool small = SCM_IMP(value) || scm_is_real(value) || IsHandle(value) ||
                     (scm_is_string(value) && scm_c_string_length(value) < room);
  return small ? scm_object_to_string(value, SCM_UNDEFINED)
               : scm_call_2(TheEngine().written, value, scm_from_size_t(room));
}

void NoteGoodEnd(SCM value) {
  Engine& engine = TheEngine();
  Text& text = *engine.text;
  FlushScheme();
  if (text.room > 0 && !WriteCommon(value, text.printed)) {
    ToUtf8(Shown(value, text.room), engine.bytes);
    text.printed = YCharacters::BytesFromUtf8(engine.bytes);
  }
  text.ending = Text::Good;
}

SCM RunSource(const char* source) {
  const SCM call = ReadPlainCall(source);
  if (!SCM_UNBNDP(call)) return Evaluate(call);
  const SCM port = scm_open_input_string(FromBytes(source));
  SCM value = SCM_UNSPECIFIED;
  for (;;) {
    const SCM form = scm_read(port);
    if (SCM_EOF_OBJECT_P(form)) return value;
    value = Evaluate(form);
  }
}

SCM RunFile(const char* file) {
  Engine& engine = TheEngine();
  engine.bytes = YFileName::ToUtf8(file);
  return scm_call_1(engine.loadScript, FromUtf8(engine.bytes));
}

SCM Run() {
  const Text& text = *TheEngine().text;
  NoteGoodEnd(text.source != nullptr ? RunSource(text.source) : RunFile(text.file));
  return SCM_UNSPECIFIED;
}

bool IsCalmExit(SCM args) {
  if (!scm_is_pair(args)) return true;
  const SCM status = SCM_CAR(args);
  return scm_is_eq(status, SCM_BOOL_T) || scm_is_eq(status, SCM_INUM0);
}

// Whether the error was raised by `error`. An error of the engine has the name of a procedure as
// its first argument.
bool IsWorded(SCM key, SCM args) {
  return scm_is_eq(key, scm_from_utf8_symbol("misc-error")) && scm_is_pair(args) &&
         scm_is_false(SCM_CAR(args));
}

SCM Caught(SCM exception, SCM key, SCM args) {
  Engine& engine = TheEngine();
  Text& text = *engine.text;
  FlushScheme();
  const bool exit = scm_is_eq(key, scm_from_utf8_symbol("quit"));
  if (exit && IsCalmExit(args)) {
    text.ending = Text::Good;
    return SCM_UNSPECIFIED;
  }
  if (scm_is_eq(exception, engine.failure)) {
    text.error.file = engine.failurePlace.file;
    text.error.line = engine.failurePlace.line;
    text.error.column = engine.failurePlace.column;
  }
  ToUtf8(scm_call_2(engine.messageOf, key, args), text.error.message);
  text.error.worded = IsWorded(key, args);
  text.ending = Text::Failed;
  return SCM_UNSPECIFIED;
}

SCM SetStop(SCM stop) {
  TheEngine().text->stop = stop;
  return SCM_UNSPECIFIED;
}

SCM Enter() {
  Engine& engine = TheEngine();
  engine.text->module = scm_set_current_module(engine.module);
  engine.text->running = true;
  return SCM_UNSPECIFIED;
}

// True when the text did not reach its end. What it wrote until then is not lost.
SCM Leave() {
  Engine& engine = TheEngine();
  engine.text->running = false;
  scm_set_current_module(engine.text->module);
  const bool hasEnded = engine.text->ending == Text::Good || engine.text->ending == Text::Failed;
  if (!hasEnded) FlushScheme();
  return scm_from_bool(!hasEnded);
}

void* EnterText(void*) {
  Engine& engine = TheEngine();
  if (engine.depth == 1) {
    CallWithStackLimit(engine.guarded);
  } else {
    scm_call_0(engine.guarded);
  }
  return nullptr;
}

const char* MessageOfEnding(Text::Ending ending) {
  if (ending == Text::Interrupted) return "interrupted";
  if (ending == Text::OutOfMemory) return "out of memory: the scripts hold more than they may";
  return "the text tried to leave through the procedure that runs it";
}

void ReportError(const ScmVMError& error) {
  const Engine& engine = TheEngine();
  if (engine.errorListener != nullptr) {
    engine.errorListener(engine.errorData, error);
    return;
  }
  if (error.line > 0)
    std::fprintf(stderr, "%s:%d:%d: ", error.file.c_str(), error.line, error.column);
  std::fprintf(stderr, "%s\n", error.message.c_str());
}

void ReportFailure(Text& text) {
  Engine& engine = TheEngine();
  if (text.ending != Text::Failed) text.error.message = MessageOfEnding(text.ending);
  if (text.source != nullptr && text.error.file.empty()) {
    text.error.text = YCharacters::Utf8FromBytes(text.source);
  }
  text.error.interrupted = text.ending == Text::Interrupted;
  // Nested texts that are stopped end one after the other; only the first reports it.
  const bool stopped = text.error.interrupted || text.ending == Text::OutOfMemory;
  if (stopped && engine.stopReported) return;
  engine.stopReported = stopped && (engine.stopping || engine.exhausted);
  ReportError(text.error);
}

void BeginOutermost() {
  Engine& engine = TheEngine();
  engine.stopping = false;
  engine.exhausted = false;
  engine.stopReported = false;
  engine.failure = SCM_BOOL_F;
  RestoreMemoryLimit();
}

}  // namespace

void StopText(Text::Ending ending) {
  TheEngine().text->ending = ending;
  scm_call_0(TheEngine().text->stop);
  std::abort();
}

void StopIfAsked() {
  const Engine& engine = TheEngine();
  if (engine.stopping) StopText(Text::Interrupted);
  if (engine.exhausted) StopText(Text::OutOfMemory);
}

void RunGuarded(Text& text) {
  Engine& engine = TheEngine();
  text.outer = engine.text;
  text.firstPlace = engine.places.size();
  Level* const level = engine.level;
  const std::size_t height = engine.height;
  const bool native = engine.native;
  engine.text = &text;
  if (engine.depth == 0) BeginOutermost();
  ++engine.depth;
  std::fflush(stdout);
  if (engine.stopping || engine.exhausted) {
    text.ending = engine.stopping ? Text::Interrupted : Text::OutOfMemory;
  } else if (StackIsShort()) {
    text.ending = Text::Failed;
    text.error.message = "the recursion is too deep";
  } else {
    engine.native = false;
    scm_c_with_continuation_barrier(&EnterText, nullptr);
  }
  engine.native = native;
  --engine.depth;
  engine.text = text.outer;
  engine.level = level;
  DropTo(height);
  engine.places.resize(text.firstPlace);
  if (text.ending == Text::OutOfMemory) engine.exhausted = MemoryStaysShort();
  RunFinalisers();
  if (text.ending != Text::Good) ReportFailure(text);
}

void DefineGuards() {
  scm_c_define_gsubr("%run", 0, 0, 0, reinterpret_cast<void*>(&Run));
  scm_c_define_gsubr("%caught", 3, 0, 0, reinterpret_cast<void*>(&Caught));
  scm_c_define_gsubr("%set-stop", 1, 0, 0, reinterpret_cast<void*>(&SetStop));
  scm_c_define_gsubr("%enter", 0, 0, 0, reinterpret_cast<void*>(&Enter));
  scm_c_define_gsubr("%leave", 0, 0, 0, reinterpret_cast<void*>(&Leave));
}

}  // namespace yse
