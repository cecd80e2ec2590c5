// Conversion of file names, which are in the encoding of the locale (YEncoding::OfLocale). Internal
// to the system.

#ifndef FOUNDATION_YFILENAME_H_
#define FOUNDATION_YFILENAME_H_

#include <string>
#include <string_view>

#include "foundation/YTypes.h"

// All conversions accept any bytes.
class YQRT_API YFileName {
 public:
  // The file name for a text. The bytes of a character that cannot be converted are copied.
  static std::string FromText(std::string_view text);
  // The text for a file name. Returns false and leaves `text` unchanged when the name has a
  // character that the encoding inside does not have.
  static bool ToText(std::string_view name, std::string& text);

  // The same in UTF-8, for scripts. Any name can be converted to UTF-8 and back without loss: bytes
  // that are invalid in the locale become the private-use characters of YCharacters.
  static std::string FromUtf8(std::string_view utf8);
  static std::string ToUtf8(std::string_view name);
};

#endif  // FOUNDATION_YFILENAME_H_
