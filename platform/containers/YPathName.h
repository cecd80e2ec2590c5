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

  // Makes the path absolute. An empty path remains empty. A relative path remains relative when the
  // working folder has no name in the encoding of texts.
  void expand();
  // Resolves links, dots and doubled slashes in the folder of an absolute path, and a link in the
  // last part, even one to a file that does not exist yet. When the folder cannot be resolved, or
  // has no name in the encoding of texts, only doubled slashes and single dots are removed. "~" has
  // no special meaning.
  void pack();
};

#endif  // PLATFORM_CONTAINERS_YPATHNAME_H_
