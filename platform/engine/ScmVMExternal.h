// The interface of the script engine for script libraries.
//
// The engine is a stack machine. It calls a primitive of a library with the arguments on its stack,
// the last one on top. The primitive pops them last first, tests bit 0 of the status after each
// pop, and pushes one result. A host may link another engine that implements this interface.
//
// All of it belongs to the thread that started the engine. In another thread the stack is empty:
// pops clear the status, pushes do nothing, and ExecuteString fails.
//
// A library that imports these operations defines YSCM_IMPORT before including this file. It can
// then be loaded into a process without an engine, and calls YScmIsThere before it runs script
// text.

#ifndef PLATFORM_ENGINE_SCMVMEXTERNAL_H_
#define PLATFORM_ENGINE_SCMVMEXTERNAL_H_

#include "foundation/YStatus.h"
#include "foundation/YTypes.h"

#ifdef YSCM_IMPORT
#define YSCM_API __attribute__((visibility("default"), weak))
#else
#define YSCM_API __attribute__((visibility("default")))
#endif

// The position of an argument in the call, counted from 1.
using YArgNum = std::int32_t;

// The expected type of an argument, for error reports.
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

// A row of a library's table of primitives. The layout is part of the binary interface.
struct YScmProc {
  const char* name;                            // of the procedure in scripts
  void (*procedure)(std::uint32_t, YStatus&);  // argc, status
  std::uint32_t required;                      // minimum number of arguments
  std::uint32_t rest;                          // 1: more may follow; 0: none may
};

class ScmVMExternal {
 public:
  // Test the type of the top of the stack. Return non-zero for true, and 0 on an empty stack. An
  // integer that does not fit a C++ long is no long.
  YSCM_API static YWord StackLongP();
  YSCM_API static YWord StackSmallLongP();
  YSCM_API static YWord StackDoubleP();
  YSCM_API static YWord StackFloatP();
  YSCM_API static YWord StackCharP();
  YSCM_API static YWord StackStringP();
  YSCM_API static YWord StackHandleP();
  YSCM_API static YWord StackPairP();
  YSCM_API static YWord StackNullP();

  // Pop the top of the stack. When it has another type, or the stack is empty, bit 0 of the status
  // is cleared and 0 or null is returned; a pop never sets the bit. The engine owns a popped
  // string, which is valid until the primitive returns. A string with a NUL, or with a character
  // outside the encoding, has the wrong type. Every string of bytes can be pushed and popped
  // unchanged: a byte that is no character of the encoding is U+10FE00 plus the byte in Scheme.
  YSCM_API static long StackPopLong(YStatus& status);
  YSCM_API static double StackPopDouble(YStatus& status);  // a float too
  // The character's bytes in the encoding inside as a number: a byte, or lead * 256 + trail; in
  // UTF-8 up to four bytes, the first being the highest.
  YSCM_API static long StackPopChar(YStatus& status);
  YSCM_API static const char* StackPopString(YStatus& status);
  YSCM_API static void* StackPopHandle(YStatus& status);  // the handle's first pointer
  YSCM_API static void StackPop(YStatus& status);
  YSCM_API static void StackPopN(long n, YStatus& status);

  YSCM_API static void StackPushLong(long value);
  YSCM_API static void StackPushDouble(double value);
  YSCM_API static void StackPushBoolean(YWord value);
  YSCM_API static void StackPushString(const char* text);  // copies
  YSCM_API static void StackPushNull();
  YSCM_API static void StackPushHandle(void* first, void* second, void (*finaliser)(void*));

  YSCM_API static void StackDuplicate();  // a second reference to the top
  YSCM_API static YWord StackCar();       // the pair on top becomes its car; 0 when it is no pair
  YSCM_API static YWord StackCdr();       // the pair on top becomes its cdr; 0 when it is no pair
  YSCM_API static void StackCons();       // the two on top become (deeper . upper)

  // Pop and test in one step: for a wrong type, bit 0 is cleared, and the position and the expected
  // type are recorded for the error message. `detail` is -1 in every call.
  YSCM_API static long VMEAssertIsALong(YArgNum argNum, YStatus& status, long detail);
  YSCM_API static const char* VMEAssertIsAString(YArgNum argNum, YStatus& status, long detail);
  YSCM_API static void* VMEAssertIsAHandle(YArgNum argNum, YStatus& status, long detail);
  YSCM_API static YWord VMEAssertIsABoolean(YArgNum argNum, YStatus& status, long detail);

  // Returns non-zero when least <= given <= most; otherwise calls VMESetWrongNumArgs and returns 0.
  YSCM_API static YWord VMECheckArgCount(YWord given, YWord least, YWord most, YStatus& status);
  YSCM_API static void VMESetWrongNumArgs(YWord given, YWord least, YWord most, YStatus& status);
  // Records the argument to which the next error refers.
  YSCM_API static void VMESetErrorArgNum(YArgNum argNum, YStatus& status);
  YSCM_API static void VMESetErrorBadType(YScmArgType type, YStatus& status, long detail);

  // Evaluates the expressions of a NUL-terminated text one after the other. Sets bit 0 of the
  // status when all succeeded and clears it otherwise. Writes the printed value of the last
  // expression, or the error message, to `buffer`, cut between two characters to `size` bytes
  // including the NUL, and returns its length. Writes nothing to a null buffer or one of size 0.
  // Can be called from inside a primitive; when nested calls have nearly used up the C++ stack, the
  // innermost text fails. Nothing that the text does unwinds the caller.
  YSCM_API static long ExecuteString(const char* text, char* buffer, long size, YStatus& status);
};

#ifdef YSCM_IMPORT
// Whether this process has a script engine.
inline bool YScmIsThere() {
  return &ScmVMExternal::ExecuteString != nullptr;
}
#endif

#endif  // PLATFORM_ENGINE_SCMVMEXTERNAL_H_
