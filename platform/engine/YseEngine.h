// The internals of the engine: its state, and the functions that its files share. Not for hosts.
//
// Scheme code may leave frames by non-local jumps, which would skip C++ destructors. So control
// passes between the two in two functions only: RunGuarded calls into Scheme and always returns,
// and CallRow calls a primitive from Scheme and raises its error after the primitive has returned.
// A function that is called from Scheme and may raise, as its comment says, has no local object
// with a destructor while it calls Guile; its C++ data is in the engine's state.

#ifndef PLATFORM_ENGINE_YSEENGINE_H_
#define PLATFORM_ENGINE_YSEENGINE_H_

#include <libguile.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"

namespace yse {

// A bound procedure of a library or of the host.
struct Row {
  std::string name;
  void (*procedure)(std::uint32_t, YStatus&);
  std::uint32_t required;
  std::uint32_t rest;
};

// Why a primitive failed, as far as it was reported to the engine.
struct Report {
  enum Kind { None, BadType, Refused, WrongNumber, Missing, Thrown };
  Kind kind = None;
  long argNum = 0;  // 0 when unknown
  const char* expected = nullptr;
  SCM value = SCM_BOOL_F;
  YWord given = 0;
  YWord least = 0;
  YWord most = 0;
};

// A primitive that is running. It can access the stack from `base` on.
struct Level {
  Level* outer = nullptr;
  std::size_t base = 0;
  std::size_t untouched = 0;      // number of arguments that have not been popped
  std::size_t firstString = 0;    // the strings from here on are freed when it returns
  YArgNum announcedArgument = 0;  // by VMESetErrorArgNum
  Report report;
};

// A text that is running, from ExecuteString or loadFile, and how it ended.
struct Text {
  enum Ending { Lost, Good, Failed, Interrupted, OutOfMemory };

  Text* outer = nullptr;
  const char* source = nullptr;  // the bytes to run, or
  const char* file = nullptr;    // the file to run
  std::size_t room = 0;          // the number of bytes of the printed value that are wanted
  Ending ending = Lost;
  bool running = false;  // while Scheme code runs that may be stopped
  std::size_t firstPlace = 0;
  SCM module = SCM_BOOL_F;  // the current module before the text
  SCM stop = SCM_BOOL_F;    // the continuation that ends the text
  std::string printed;      // the value, in the encoding inside (YEncoding)
  ScmVMError error;
};

// A script file that is being loaded, and the position of its current form.
struct Place {
  std::string file;
  int line = 0;
  int column = 0;
};

struct Engine {
  bool started = false;
  pthread_t thread{};
  std::size_t memoryLimit = 0;

  SCM* slots = nullptr;  // the argument stack, in memory that the collector scans but never frees
  std::size_t capacity = 0;
  std::size_t height = 0;
  std::vector<char*> strings;
  Level* level = nullptr;

  Text* text = nullptr;
  std::vector<Place> places;
  Place failurePlace;
  std::u32string characters;  // buffers for functions that may raise
  std::string bytes;

  // For the signal handler and the helper thread.
  std::atomic<int> depth{0};          // number of running texts
  std::atomic<bool> stopping{false};  // all of them are being interrupted
  std::atomic<bool> native{true};     // C++ code is running, not Scheme code
  bool exhausted = false;             // a text ran out of memory, and memory is still short
  bool stopReported = false;          // the reason for ending the texts has been reported

  SCM module = SCM_BOOL_F;   // scripts run in it
  SCM guarded = SCM_BOOL_F;  // procedures of the prelude
  SCM messageOf = SCM_BOOL_F;
  SCM written = SCM_BOOL_F;
  SCM loadScript = SCM_BOOL_F;
  SCM stackOverflow = SCM_BOOL_F;
  SCM failure = SCM_BOOL_F;  // the exception that was raised at `failurePlace`
  SCM refuse = SCM_BOOL_F;
  SCM quoteSymbol = SCM_BOOL_F;
  SCM quoteVariable = SCM_BOOL_F;
  SCM hashReaders = SCM_BOOL_F;  // the fluid with the readers that scripts install for "#"
  SCM output = SCM_BOOL_F;
  SCM errors = SCM_BOOL_F;

  void (*errorListener)(void*, const ScmVMError&) = nullptr;
  void* errorData = nullptr;
  void (*textListener)(void*, const char*) = nullptr;
  void* textData = nullptr;
  bool (*textGate)(void* data, const char* text) = nullptr;
  void* gateData = nullptr;
};

// Never destroyed, and scanned by the collector.
Engine& TheEngine();

// Whether the engine has been started and this is its thread.
bool MayRun();

// Whether this is the engine's thread and it is running Scheme code of a text, which may be
// stopped.
bool ScriptRuns();

// Guards (YseGuard.cc). Runs the text and reports a failure to the listener. Nothing that the text
// does unwinds the caller.
void RunGuarded(Text& text);
// Ends the innermost text when all texts are being ended. Called from Scheme, may not return.
void StopIfAsked();
// Ends the innermost text, from Scheme. Does not return.
[[noreturn]] void StopText(Text::Ending ending);
void DefineGuards();

// Evaluates one expression in the current module. Called from Scheme, may raise.
SCM Evaluate(SCM form);
// A line or column of Guile's, counted from 0, as one that counts from 1; 0 for anything else.
int FromZeroBased(SCM number);
void DefineTexts();

// Plain calls (YsePlainCall.cc). Reads a text that is one call of a name with constant arguments,
// as Guile would read it. Returns SCM_UNDEFINED for any other text, and where only Guile can
// decide. Called from Scheme, may raise.
SCM ReadPlainCall(const char* text);

// Binding (YseBinding.cc). Bind returns false when no more procedures can be bound.
bool Bind(const Row& row);
std::size_t RoomForRows();

// The argument stack (YseStack.cc). Safe in a primitive.
void Push(SCM value);
void DropTo(std::size_t height);

// Strings. The first two are called from Scheme and may raise; FromBytes is safe in a primitive.
SCM FromUtf8(std::string_view utf8);
void ToUtf8(SCM string, std::string& utf8);
SCM FromBytes(std::string_view bytes);
// The string in the encoding inside (YEncoding), valid until the running primitive returns. Null,
// with the expected type in `expected`, when the string cannot be converted.
const char* ToBytes(SCM string, const char*& expected);
void FreeStrings(std::size_t first);

// Handles (YseHandle.cc).
void DefineHandles();
bool IsHandle(SCM value);
SCM MakeHandle(void* first, void* second, void (*finaliser)(void*));
void* HandleFirst(SCM handle);
// Calls the finalisers of the handles that were collected since the last call.
void RunFinalisers();

// Memory (YseMemory.cc). RestoreMemoryLimit sets the collector's limit again after it was raised.
// MemoryStaysShort returns, after a text ran out of memory, whether the others have to end too.
void StartMemoryLimit();
void RestoreMemoryLimit();
bool MemoryStaysShort();

// Recursion (YseRecursion.cc). StackIsShort returns whether too little of the C++ stack is left for
// another text. CallWithStackLimit calls a procedure without arguments so that an endless recursion
// ends with an error; it is called from Scheme and may raise.
void StartStackLimits();
bool StackIsShort();
void CallWithStackLimit(SCM procedure);
void RaiseStackOverflow();
SCM OverflowAsked();

// Interrupts (YseInterrupt.cc). After AskForOverflow, OverflowAsked is soon called from the running
// text.
bool StartInterrupts();
void AskForOverflow();

// Ports (YsePorts.cc): keep output of scripts and of C++ code in the order of writing. May raise.
void OpenPorts();
void FlushScheme();

// The Scheme part. CompilePrelude (YseCompile.cc) finds the places of errors.
extern const char* const Prelude;
extern const char* const CompilePrelude;
void DefineCompiling();

}  // namespace yse

#endif  // PLATFORM_ENGINE_YSEENGINE_H_
