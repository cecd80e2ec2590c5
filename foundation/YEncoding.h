// The encodings of the process. Internal to the system.

#ifndef FOUNDATION_YENCODING_H_
#define FOUNDATION_YENCODING_H_

#include "foundation/YTypes.h"

// Names of encodings for iconv.
class YQRT_API YEncoding {
 public:
  // The encoding of text inside the process: Shift_JIS as CP932, because iconv's SHIFT_JIS converts
  // a backslash to a yen sign.
  static const char* Inside() { return "CP932"; }
  // Its name in messages.
  static const char* InsideInWords() { return "code page 932"; }

  // The encoding of the locale: of file names and of the files that scripts read and write. A
  // locale with ASCII only, as in a process that never calls setlocale, is treated as UTF-8,
  // because file names with other characters are made by programs that use UTF-8.
  static const char* OfLocale();
};

#endif  // FOUNDATION_YENCODING_H_
