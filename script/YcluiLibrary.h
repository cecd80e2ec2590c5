// The names by which a script engine finds the library and checks that it has the right one:
//
//   ScmVM::openLibrary(YcluiLibraryFile, YcluiLibraryName, error);
//
// An engine that is linked with the library opens that very library in this way and no other one:
// for the soname of a loaded library the dynamic linker returns what is loaded, without a search.

#ifndef SCRIPT_YCLUILIBRARY_H_
#define SCRIPT_YCLUILIBRARY_H_

#include "foundation/YcluiVersion.h"

// The soname, for dlopen. Null where the library is static (YQRTCLUI_STATIC, which the CMake target
// and pkg-config define): dlopen of null finds the entry points in the program itself.
#ifdef YQRTCLUI_STATIC
inline constexpr const char* YcluiLibraryFile = nullptr;
#else
inline constexpr const char* YcluiLibraryFile = "libyqrtClui.so." YQRTCLUI_INTERFACE;
#endif

// What the entry point CluiLibraryName returns.
inline constexpr const char* YcluiLibraryName = "lib-CLUI";

#endif  // SCRIPT_YCLUILIBRARY_H_
