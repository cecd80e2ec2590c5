// Path names that can be compared.

#ifndef PLATFORM_CONTAINERS_YPATHNAME_H_
#define PLATFORM_CONTAINERS_YPATHNAME_H_

#include "foundation/YString.h"

// A path in the encoding of the system's texts. After expand and pack, two spellings of one file
// compare equal, also when the last part does not exist yet.
class YQRT_API YPathName {
 public:
  YString path;

  explicit YPathName(const char* text) : path(text) {}

  // Makes the path absolute, from the working folder of this moment. An empty path stays empty, and
  // a relative one relative while the working folder has no name in the encoding of texts.
  void expand();
  // Resolves the folder of an absolute path (links, dots, doubled slashes) and a link in the last
  // part, also one that leads to a file that is still to be made. Where the folder cannot be
  // resolved, or has no name in the encoding of texts, the path is tidied as text: doubled slashes
  // and single dots go, and it means what it meant before. There is no "~".
  void pack();
};

// A path as the file system knows it: converted from the encoding of the system's texts to that of
// the locale, byte for byte where a character has no counterpart there.
YQRT_API YString YFileSystemName(const char* path);

#endif  // PLATFORM_CONTAINERS_YPATHNAME_H_
