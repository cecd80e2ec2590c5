// The interface of the library for a script engine: the five entry points that the engine finds by
// name, and the table of primitives.
//
// In scripts, a parser is a long, its address; a syntax fragment and an indefinite node are handles
// without a finaliser. Each one that a script passes is looked up among the existing ones; when it
// is not found, YErrNotAlive is recorded and bit 0 of the status is cleared.
//
// A primitive pops its arguments last first, returns at the first pop that fails, calls the parser
// only after all arguments are popped, and pushes one result. When it fails, bit 0 of the status is
// clear.

#ifndef SCRIPT_YCSCM_H_
#define SCRIPT_YCSCM_H_

#include <cstdint>

#include "foundation/YTypes.h"
#include "platform/engine/ScmVMExternal.h"

extern "C" {

// Returns YcluiLibraryName (script/YcluiLibrary.h).
YQRT_API const char* CluiLibraryName();

// The first row of the table and the number of its rows. They never change.
YQRT_API const YScmProc* CluiLibraryProcs();
YQRT_API std::uint32_t CluiLibraryNProcs();

// Create and destroy the parser mortuary. The engine calls the first before any primitive and the
// second after the last one; parsers that are still in the mortuary are then not destroyed.
YQRT_API void CluiLibInitialize();
YQRT_API void CluiLibCleanup();

}  // extern "C"

#endif  // SCRIPT_YCSCM_H_
