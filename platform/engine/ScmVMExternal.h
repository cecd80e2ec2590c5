// The script engine as a script library sees it.
//
// The engine is a stack machine. It calls a primitive of a library with the arguments on its stack,
// the first deepest and the last on top; the primitive pops them last first, tests bit 0 of the
// status after each pop, and pushes one result. This file is the contract alone: a host may link an
// engine of its own that serves it.
//
// A library that imports these operations defines YSCM_IMPORT before it includes this file: it then
// also loads into a process that has no engine, and asks YScmIsThere before it runs script text.

#ifndef PLATFORM_ENGINE_SCMVMEXTERNAL_H_
#define PLATFORM_ENGINE_SCMVMEXTERNAL_H_

#include "foundation/YStatus.h"
#include "foundation/YTypes.h"

#ifdef YSCM_IMPORT
#define YSCM_API __attribute__((visibility("default"), weak))
#else
#define YSCM_API __attribute__((visibility("default")))
#endif

// The position of an argument in the call, counted from 1 as the script wrote it.
using YArgNum = std::int32_t;

// What an argument was expected to be, for an error report.
enum YScmArgType : std::int32_t {
  YScmArgLong = 1,
  YScmArgDouble = 2,
  YScmArgChar = 3,
  YScmArgString = 4,
  YScmArgHandle = 5,
  YScmArgBoolean = 6,
  YScmArgPair = 7,
  YScmArgSyntaxElement = 18,  // a token id, a string, a fragment or a priority pair
};

// A row of a library's table of primitives. Laid out exactly so: the engine reads it.
struct YScmProc {
  const char* name;                            // what scripts call it
  void (*procedure)(std::uint32_t, YStatus&);  // argc, status
  std::uint32_t required;                      // the least number of arguments of a call
  std::uint32_t rest;                          // 0: exactly so many. 1: more may follow
};

class ScmVMExternal {
 public:
  // Each looks at the top of the stack, changes nothing, and answers non-zero for true; 0 on an
  // empty stack. An integer that does not fit a C++ long is no long.
  YSCM_API static YWord StackLongP();
  YSCM_API static YWord StackSmallLongP();
  YSCM_API static YWord StackDoubleP();
  YSCM_API static YWord StackFloatP();
  YSCM_API static YWord StackCharP();
  YSCM_API static YWord StackStringP();
  YSCM_API static YWord StackHandleP();
  YSCM_API static YWord StackPairP();
  YSCM_API static YWord StackNullP();

  // Each removes the top of the stack. With another type on top, or an empty stack, bit 0 of the
  // status is cleared and the answer is 0 or null; a pop never sets the bit. A string is the
  // engine's and stays until the primitive returns; one with a NUL, or with a character outside the
  // encoding, is of the wrong type. Any bytes that were pushed come back as they were: those that
  // are no character of the encoding are U+F700 plus the byte in between.
  YSCM_API static long StackPopLong(YStatus& status);
  YSCM_API static double StackPopDouble(YStatus& status);  // a float too
  // The character's code in the encoding: a byte, or lead * 256 + trail.
  YSCM_API static long StackPopChar(YStatus& status);
  YSCM_API static const char* StackPopString(YStatus& status);
  YSCM_API static void* StackPopHandle(YStatus& status);  // the handle's first word
  YSCM_API static void StackPop(YStatus& status);
  YSCM_API static void StackPopN(long n, YStatus& status);

  YSCM_API static void StackPushLong(long value);
  YSCM_API static void StackPushDouble(double value);
  YSCM_API static void StackPushBoolean(YWord value);
  YSCM_API static void StackPushString(const char* text);  // copied at once
  YSCM_API static void StackPushNull();
  YSCM_API static void StackPushHandle(void* first, void* second, void (*finaliser)(void*));

  YSCM_API static void StackDuplicate();  // a second reference to the top
  YSCM_API static YWord StackCar();       // the pair on top becomes its car; 0 when it is no pair
  YSCM_API static YWord StackCdr();       // the pair on top becomes its cdr; 0 when it is no pair
  YSCM_API static void StackCons();       // the two on top become (deeper . upper)

  // Pop and test in one step: on a wrong type bit 0 is cleared, and the position and the type that
  // was expected are noted for the engine's report. The last argument is -1 in every call.
  YSCM_API static long VMEAssertIsALong(YArgNum argNum, YStatus& status, long detail);
  YSCM_API static const char* VMEAssertIsAString(YArgNum argNum, YStatus& status, long detail);
  YSCM_API static void* VMEAssertIsAHandle(YArgNum argNum, YStatus& status, long detail);
  YSCM_API static YWord VMEAssertIsABoolean(YArgNum argNum, YStatus& status, long detail);

  // Non-zero when least <= given <= most; otherwise as VMESetWrongNumArgs.
  YSCM_API static YWord VMECheckArgCount(YWord given, YWord least, YWord most, YStatus& status);
  YSCM_API static void VMESetWrongNumArgs(YWord given, YWord least, YWord most, YStatus& status);
  // Notes which argument the next report speaks of.
  YSCM_API static void VMESetErrorArgNum(YArgNum argNum, YStatus& status);
  YSCM_API static void VMESetErrorBadType(YScmArgType type, YStatus& status, long detail);

  // Evaluates the expressions of a NUL-terminated text in the running engine, one after the other.
  // Sets bit 0 of the status when all went well and clears it otherwise. `buffer` takes the printed
  // value of the last one or the error message, cut between two characters to `size` bytes with the
  // NUL; the answer is the length of what it holds. A null buffer, or a size of 0, takes nothing.
  // May be called from inside a primitive; a nest that comes near the end of the C++ stack ends
  // with an error in the innermost text. Nothing that the text does unwinds the caller.
  YSCM_API static long ExecuteString(const char* text, char* buffer, long size, YStatus& status);
};

#ifdef YSCM_IMPORT
// Whether this process has a script engine.
inline bool YScmIsThere() {
  return &ScmVMExternal::ExecuteString != nullptr;
}
#endif

#endif  // PLATFORM_ENGINE_SCMVMEXTERNAL_H_
