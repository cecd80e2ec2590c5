// Which encodings the process works in. Internal to the system.

#ifndef FOUNDATION_YENCODING_H_
#define FOUNDATION_YENCODING_H_

#include "foundation/YTypes.h"

// The names are those that iconv knows.
class YQRT_API YEncoding {
 public:
  // Of text inside the process. Shift_JIS is called CP932 here, since iconv's SHIFT_JIS turns a
  // backslash into a yen sign.
  static const char* Inside() { return "CP932"; }
  // The same for messages.
  static const char* InsideInWords() { return "code page 932"; }

  // Of the locale: file names, and what scripts read and write. A locale that has ASCII only, as in
  // a process that never calls setlocale, counts as UTF-8: ASCII is a part of it, and names with
  // other characters come from programs that use UTF-8.
  static const char* OfLocale();
};

#endif  // FOUNDATION_YENCODING_H_
