// The version of the library: as macros, of the headers that a host is compiled against, and as
// functions, of the library that is loaded. Before 1.0 each minor version is an interface of its
// own, with a soname of its own; a patch version changes no interface.
//
// The build reads the three numbers from here.

#ifndef FOUNDATION_YCLUIVERSION_H_
#define FOUNDATION_YCLUIVERSION_H_

#include "foundation/YTypes.h"

#define YQRTCLUI_VERSION_MAJOR 0
#define YQRTCLUI_VERSION_MINOR 1
#define YQRTCLUI_VERSION_PATCH 0

#define YQRTCLUI_TEXT_OF_(number) #number
#define YQRTCLUI_TEXT_OF(number) YQRTCLUI_TEXT_OF_(number)

// "0.1", as in the soname.
#define YQRTCLUI_INTERFACE                 \
  YQRTCLUI_TEXT_OF(YQRTCLUI_VERSION_MAJOR) \
  "." YQRTCLUI_TEXT_OF(YQRTCLUI_VERSION_MINOR)

// "0.1.0".
#define YQRTCLUI_VERSION YQRTCLUI_INTERFACE "." YQRTCLUI_TEXT_OF(YQRTCLUI_VERSION_PATCH)

// One number that grows from version to version, for #if: 100 for 0.1.0, 10203 for 1.2.3.
#define YQRTCLUI_VERSION_NUMBER \
  (YQRTCLUI_VERSION_MAJOR * 10000 + YQRTCLUI_VERSION_MINOR * 100 + YQRTCLUI_VERSION_PATCH)

// YQRTCLUI_VERSION and YQRTCLUI_VERSION_NUMBER of the library that is loaded, which can have
// another patch version than the headers.
YQRT_API const char* YcluiVersion();
YQRT_API std::uint32_t YcluiVersionNumber();

#endif  // FOUNDATION_YCLUIVERSION_H_
