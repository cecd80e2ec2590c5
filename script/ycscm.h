// The face of the library towards a script engine: the five entry points that the engine finds by
// name, and the table of primitives.
//
// A script holds a parser as a long, its address; a syntax fragment and an indefinite node as a
// handle without a finaliser. Every one that a script passes is looked up among the live ones
// before it is used: anything else is refused with YErrNotAlive and bit 0 of the status cleared.
//
// A primitive pops its arguments last first, ends at the first pop that fails, enters the parser
// only when all arguments are off the stack, and pushes one result. One that fails leaves bit 0 of
// the status clear.

#ifndef SCRIPT_YCSCM_H_
#define SCRIPT_YCSCM_H_

#include <cstdint>

#include "foundation/YTypes.h"
#include "platform/engine/ScmVMExternal.h"

extern "C" {

// "lib-CLUI".
YQRT_API const char* CluiLibraryName();

// The first row of the table, and the number of its rows. Fixed data.
YQRT_API const YScmProc* CluiLibraryProcs();
YQRT_API std::uint32_t CluiLibraryNProcs();

// Make and destroy the parser mortuary. The engine calls the first before any primitive and the
// second after the last one; parsers that stand in the mortuary by then are not destroyed.
YQRT_API void CluiLibInitialize();
YQRT_API void CluiLibCleanup();

}  // extern "C"

#endif  // SCRIPT_YCSCM_H_
