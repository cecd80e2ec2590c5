// Names of files, to complete them.

#ifndef TERMINAL_YCLUIFILENAMES_H_
#define TERMINAL_YCLUIFILENAMES_H_

#include <string>

#include "foundation/YString_Array.h"
#include "foundation/YTypes.h"

// Replaces `names` by the paths that begin with what is typed, as they would be typed, in order:
// those of the folder that it names, folders with a "/" at the end. Hidden files are left out
// unless their dot is typed, and so are names that have no form inside the process. Empty when the
// folder cannot be read.
YQRT_API void YcluiFindFileNames(const std::string& typed, YString_Array& names);

#endif  // TERMINAL_YCLUIFILENAMES_H_
