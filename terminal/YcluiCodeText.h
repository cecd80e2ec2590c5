// Codes and types in words.

#ifndef TERMINAL_YCLUICODETEXT_H_
#define TERMINAL_YCLUICODETEXT_H_

#include <string>

#include "foundation/YTypes.h"

// What a code of the error manager means, worded to follow a colon. In ASCII.
YQRT_API std::string YcluiCodeText(unsigned int code);

// "an integer" and the like for a type of argument.
YQRT_API const char* YcluiTypeText(unsigned int valueType);

#endif  // TERMINAL_YCLUICODETEXT_H_
