// The inside of the engine: its one state, and what its rooms offer each other. Not for hosts.
//
// Two worlds meet here. Scheme code leaves frames by jumping, C++ code must be returned from. So
// control crosses at two places only: RunGuarded calls into Scheme and always comes back, and
// CallRow calls a primitive from Scheme and raises its error after the primitive has returned. A
// function that may raise (it is called from Scheme, its comment says so) holds nothing that has a
// destructor while it calls Guile; what it builds in C++ lives in the engine's state.

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

// A procedure of a library or of the host, as it was bound.
struct Row {
  std::string name;
  void (*procedure)(std::uint32_t, YStatus&);
  std::uint32_t required;
  std::uint32_t rest;
};

// Why a primitive failed, as far as the engine has been told.
struct Report {
  enum Kind { None, BadType, Refused, WrongNumber, Missing, Thrown };
  Kind kind = None;
  long argNum = 0;  // 0: not known
  const char* expected = nullptr;
  SCM value = SCM_BOOL_F;
  YWord given = 0;
  YWord least = 0;
  YWord most = 0;
};

// A primitive that is running. It sees the stack from `base` on.
struct Level {
  Level* outer = nullptr;
  std::size_t base = 0;
  std::size_t untouched = 0;      // the arguments below this count have not been popped
  std::size_t firstString = 0;    // of the strings that are freed when the primitive returns
  YArgNum announcedArgument = 0;  // by VMESetErrorArgNum
  Report report;
};

// A text that is running: what ExecuteString or loadFile was given, and how it ended.
struct Text {
  enum Ending { Lost, Good, Failed, Interrupted, OutOfMemory };

  Text* outer = nullptr;
  const char* source = nullptr;  // the bytes to run, or
  const char* file = nullptr;    // the file to run
  std::size_t room = 0;          // how many bytes of the printed value are wanted
  Ending ending = Lost;
  bool running = false;  // while Scheme code runs that may be stopped
  std::size_t firstPlace = 0;
  SCM module = SCM_BOOL_F;  // current before the text
  SCM stop = SCM_BOOL_F;    // the procedure that leaves the text
  std::string printed;      // the value, bytes
  ScmVMError error;
};

// A script file that is loading.
struct Place {
  std::string file;
  int line = 0;
  int column = 0;
};

struct Engine {
  bool started = false;
  pthread_t thread{};
  std::size_t memoryLimit = 0;

  SCM* slots = nullptr;  // the argument stack: collector's memory that is never collected
  std::size_t capacity = 0;
  std::size_t height = 0;
  std::vector<char*> strings;
  Level* level = nullptr;

  Text* text = nullptr;
  std::vector<Place> places;
  Place failurePlace;
  std::u32string characters;  // work room for functions that may raise
  std::string bytes;

  // For the signal handler and the helper thread.
  std::atomic<int> depth{0};          // texts that are running
  std::atomic<bool> stopping{false};  // all of them shall end
  std::atomic<bool> native{true};     // C++ code runs, not Scheme
  bool exhausted = false;  // a text ended for want of memory, and there still is too little
  bool stopTold = false;   // why they end

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
  SCM hashReaders = SCM_BOOL_F;  // the fluid of what scripts have read-hash-extend know
  SCM output = SCM_BOOL_F;
  SCM errors = SCM_BOOL_F;

  void (*errorListener)(void*, const ScmVMError&) = nullptr;
  void* errorWord = nullptr;
  void (*textListener)(void*, const char*) = nullptr;
  void* textWord = nullptr;
};

// Never destroyed, and looked through by the collector.
Engine& TheEngine();

// Whether the engine has been started and this is its thread.
bool MayRun();

// Whether this is the engine's thread and in it runs Scheme code of a text, which may be stopped.
bool ScriptRuns();

// Guards (YseGuard.cc). Runs the text and tells the listener when it failed; nothing that the text
// does unwinds the caller.
void RunGuarded(Text& text);
// Ends the innermost text when all shall end. Called from Scheme, may not return.
void StopIfAsked();
// Ends the innermost text, from Scheme. Does not return.
[[noreturn]] void StopText(Text::Ending ending);
void DefineGuards();

// Evaluates one expression in the current module. Called from Scheme, may raise.
SCM Evaluate(SCM form);
void DefineTexts();

// Plain calls (YsePlainCall.cc). The expression of a text that is one call of a name on constants,
// as Guile would read it; SCM_UNDEFINED for other texts and for what only Guile can tell. Called
// from Scheme, may raise.
SCM ReadPlainCall(const char* text);

// Binding (YseBinding.cc). Bind answers 0 when there is no room for another one.
YWord Bind(const Row& row);
std::size_t RoomForRows();

// The argument stack (YseStack.cc). Safe in a primitive.
void Push(SCM value);
void DropTo(std::size_t height);

// Strings. The first two are called from Scheme and may raise; FromBytes is safe in a primitive.
SCM FromUtf8(std::string_view utf8);
void ToUtf8(SCM string, std::string& utf8);
SCM FromBytes(std::string_view bytes);
// The bytes of a string, in memory that lives until the running primitive returns. Null, with the
// reason in `expected`, when the string cannot cross.
const char* ToBytes(SCM string, const char*& expected);
void FreeStrings(std::size_t first);

// Handles (YseHandle.cc).
void DefineHandles();
bool IsHandle(SCM value);
SCM MakeHandle(void* first, void* second, void (*finaliser)(void*));
void* HandleFirst(SCM handle);
// Calls the finalisers of the handles that were collected since the last call.
void RunFinalisers();

// Memory (YseMemory.cc). The second sets the collector's limit again after it had to be raised; the
// third tells, after a text that ended for want of memory, whether the others have to end too.
void StartMemoryLimit();
void RestoreMemoryLimit();
bool MemoryStaysShort();

// Recursion (YseRecursion.cc). StackIsShort tells whether too little of the C++ stack is left for
// another text. CallWithStackLimit calls the procedure of no arguments so that an endless recursion
// of it ends with an error; it is called from Scheme and may raise.
void StartStackLimits();
bool StackIsShort();
void CallWithStackLimit(SCM procedure);
void RaiseStackOverflow();
SCM OverflowAsked();

// Interrupts (YseInterrupt.cc). AskForOverflow has OverflowAsked called soon, at some point of the
// running text.
YWord StartInterrupts();
void AskForOverflow();

// Ports (YsePorts.cc): output of scripts and of C++ code through stdio, in the order of writing.
// May raise.
void OpenPorts();
void FlushScheme();

// The Scheme part.
extern const char* const Prelude;

}  // namespace yse

#endif  // PLATFORM_ENGINE_YSEENGINE_H_
