// The header of a host that declares its language in C++: #include <yqrtClui/Language.h>

#ifndef YQRTCLUI_LANGUAGE_H_
#define YQRTCLUI_LANGUAGE_H_

#include "language/Language.h"  // IWYU pragma: export

#endif  // YQRTCLUI_LANGUAGE_H_
