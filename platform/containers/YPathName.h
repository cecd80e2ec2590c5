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

  // Makes the path absolute, from the present working folder. An empty path stays empty, and a
  // relative one relative while the working folder has no name in the encoding of texts.
  void expand();
  // Resolves the folder of an absolute path (links, dots, doubled slashes) and a link in the last
  // part, even to a file that does not exist yet. Where the folder cannot be resolved, or has no
  // name in the encoding of texts, doubled slashes and single dots are removed, which does not
  // change which file is meant. "~" has no meaning.
  void pack();
};

#endif  // PLATFORM_CONTAINERS_YPATHNAME_H_
