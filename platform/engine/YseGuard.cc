// Running a text so that it comes back, however it ends.

#include <cstdio>
#include <cstring>

#include "platform/engine/YseEngine.h"
#include "platform/engine/YseFileName.h"
#include "platform/engine/YseText.h"

namespace yse {

namespace {

// The functions from here to EnterText are called from Scheme and may raise.

void NoteGoodEnd(SCM value) {
  Engine& engine = TheEngine();
  Text& text = *engine.text;
  FlushScheme();
  if (text.room > 0) {
    engine.characters.clear();
    const SCM shown = scm_call_2(engine.written, value, scm_from_size_t(text.room));
    ToUtf8(shown, engine.bytes);
    text.printed = BytesFromUtf8(engine.bytes);
  }
  text.ending = Text::Good;
}

SCM RunSource(const char* source) {
  const SCM port = scm_open_input_string(FromBytes(source));
  SCM value = SCM_UNSPECIFIED;
  for (;;) {
    const SCM form = scm_read(port);
    if (SCM_EOF_OBJECT_P(form)) return value;
    value = Evaluate(form);
  }
}

SCM Run() {
  Engine& engine = TheEngine();
  const Text& text = *engine.text;
  NoteGoodEnd(text.source != nullptr
                  ? RunSource(text.source)
                  : scm_call_1(engine.loadScript, FromUtf8(Utf8FromFileName(text.file))));
  return SCM_UNSPECIFIED;
}

// Called where the error happens, before anything is unwound.
SCM Thrown(SCM key, SCM args) {
  (void)key;
  (void)args;
  Engine& engine = TheEngine();
  Text& text = *engine.text;
  if (engine.places.size() <= text.firstPlace) return SCM_UNSPECIFIED;
  const Place& place = engine.places.back();
  text.error.file = place.file;
  text.error.line = place.line;
  text.error.column = place.column;
  return SCM_UNSPECIFIED;
}

bool IsCalmExit(SCM args) {
  if (!scm_is_pair(args)) return true;
  const SCM status = SCM_CAR(args);
  return scm_is_eq(status, SCM_BOOL_T) || scm_is_eq(status, SCM_INUM0);
}

SCM Caught(SCM key, SCM args) {
  Engine& engine = TheEngine();
  Text& text = *engine.text;
  FlushScheme();
  const bool exit = scm_is_eq(key, scm_from_utf8_symbol("quit"));
  if (exit && IsCalmExit(args)) {
    text.ending = Text::Good;
    return SCM_UNSPECIFIED;
  }
  ToUtf8(scm_call_2(engine.messageOf, key, args), text.error.message);
  text.ending = Text::Failed;
  return SCM_UNSPECIFIED;
}

SCM Enter() {
  Engine& engine = TheEngine();
  engine.text->module = scm_set_current_module(engine.module);
  engine.text->running = true;
  return SCM_UNSPECIFIED;
}

// True when the text has not come to its end.
SCM Leave() {
  Engine& engine = TheEngine();
  engine.text->running = false;
  scm_set_current_module(engine.text->module);
  return scm_from_bool(engine.text->ending != Text::Good && engine.text->ending != Text::Failed);
}

void* EnterText(void*) {
  Engine& engine = TheEngine();
  if (engine.depth == 1) {
    scm_call_with_stack_overflow_handler(scm_from_long(MaxStackWords), engine.guarded,
                                         engine.overflow);
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

void TellError(const ScmVMError& error) {
  const Engine& engine = TheEngine();
  if (engine.errorListener != nullptr) {
    engine.errorListener(engine.errorWord, error);
    return;
  }
  if (error.line > 0)
    std::fprintf(stderr, "%s:%d:%d: ", error.file.c_str(), error.line, error.column);
  std::fprintf(stderr, "%s\n", error.message.c_str());
}

void TellFailure(Text& text) {
  Engine& engine = TheEngine();
  if (text.ending != Text::Failed) text.error.message = MessageOfEnding(text.ending);
  if (text.source != nullptr && text.error.file.empty()) {
    text.error.text = Utf8FromBytes(text.source);
  }
  text.error.interrupted = text.ending == Text::Interrupted;
  // The levels of an interrupted nest end one after the other; it is one event.
  if (text.error.interrupted && engine.stopTold) return;
  if (text.error.interrupted) engine.stopTold = true;
  TellError(text.error);
}

void BeginOutermost() {
  Engine& engine = TheEngine();
  engine.stopping = false;
  engine.stopTold = false;
  RestoreMemoryLimit();
}

}  // namespace

void StopText(Text::Ending ending) {
  TheEngine().text->ending = ending;
  scm_call_0(TheEngine().abort);
  std::abort();
}

void RunGuarded(Text& text) {
  Engine& engine = TheEngine();
  text.outer = engine.text;
  text.firstPlace = engine.places.size();
  Level* const level = engine.level;
  const std::size_t height = engine.height;
  const bool native = engine.native;
  engine.text = &text;
  if (++engine.depth == 1) BeginOutermost();
  std::fflush(stdout);
  if (engine.stopping) {
    text.ending = Text::Interrupted;
  } else if (StackIsShort()) {
    text.ending = Text::Failed;
    text.error.message = "the texts are nested too deep";
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
  RunFinalisers();
  if (text.ending != Text::Good) TellFailure(text);
}

void DefineGuards() {
  scm_c_define_gsubr("%run", 0, 0, 0, reinterpret_cast<void*>(&Run));
  scm_c_define_gsubr("%caught", 1, 0, 1, reinterpret_cast<void*>(&Caught));
  scm_c_define_gsubr("%thrown", 1, 0, 1, reinterpret_cast<void*>(&Thrown));
  scm_c_define_gsubr("%enter", 0, 0, 0, reinterpret_cast<void*>(&Enter));
  scm_c_define_gsubr("%leave", 0, 0, 0, reinterpret_cast<void*>(&Leave));
}

}  // namespace yse
