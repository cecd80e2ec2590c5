// File names between text and the file system, which has them in the encoding of the locale
// (YEncoding::OfLocale). Internal to the system.

#ifndef FOUNDATION_YFILENAME_H_
#define FOUNDATION_YFILENAME_H_

#include <string>
#include <string_view>

#include "foundation/YTypes.h"

// Every conversion accepts any bytes.
class YQRT_API YFileName {
 public:
  // The name of the file that a text means. A character without a counterpart passes byte for byte.
  static std::string FromText(std::string_view text);
  // The text that means the file of that name. False, and `text` is left alone, when there is none:
  // the name has a character that the encoding inside lacks.
  static bool ToText(std::string_view name, std::string& text);

  // The same in UTF-8, for scripts: any name has a text, from which it comes back as it was. Bytes
  // that are no text of the locale become the private-use characters of YCharacters.
  static std::string FromUtf8(std::string_view utf8);
  static std::string ToUtf8(std::string_view name);
};

#endif  // FOUNDATION_YFILENAME_H_
