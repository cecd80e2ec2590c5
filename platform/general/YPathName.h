// Path names that can be compared.

#ifndef PLATFORM_GENERAL_YPATHNAME_H_
#define PLATFORM_GENERAL_YPATHNAME_H_

#include "foundation/YString.h"

// A path in the encoding of the system's texts. After expand and pack, two spellings of one file
// compare equal, also when the last part does not exist yet.
class YQRT_API YPathName {
 public:
  YString path;

  explicit YPathName(const char* text) : path(text) {}

  // Makes the path absolute, from the working folder of this moment.
  void expand();
  // Resolves the folder of an absolute path (links, dots, doubled slashes) and, where the file
  // exists already, a link in the last part. A folder that cannot be resolved is tidied as text
  // instead: the name then fails where it is opened. There is no "~".
  void pack();
};

// A path as the file system knows it: converted from the encoding of the system's texts to that of
// the locale, byte for byte where a character has no counterpart there.
YQRT_API YString YFileSystemName(const char* path);

#endif  // PLATFORM_GENERAL_YPATHNAME_H_
