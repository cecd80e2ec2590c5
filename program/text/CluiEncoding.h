// Text of the user and text of the system.
//
// Files, streams and messages are in an encoding of the user's choice; the system's text is in the
// one of YEncoding. Conversions use wide characters, one element per character, in between.

#ifndef PROGRAM_TEXT_CLUIENCODING_H_
#define PROGRAM_TEXT_CLUIENCODING_H_

#include <string>
#include <string_view>

#include "foundation/YTextConverter.h"

// Why a line cannot be given to the system.
struct CluiFault {
  enum Kind {
    BadBytes,  // bytes that are not a character in the user's encoding
    Lacking,   // a character that does not exist in the system's encoding
    Nul,       // a NUL byte
  };
  Kind kind = BadBytes;
  std::size_t character = 0;  // the number of characters before it
  wchar_t code = 0;           // for Lacking: the character
};

class CluiEncoding {
 public:
  // False, with a reason in `error`, for a name that iconv does not know and for an encoding that
  // does not end a line with the single byte 10. The encoding inside must have been chosen.
  bool open(const std::string& name, std::string& error);

  // The name that it was opened with.
  const std::string& name() const { return name_; }

  // Converts the user's bytes to text of the system. False, with the reason in `fault`, when they
  // cannot be converted. A character that does not convert back to itself is Lacking too.
  bool toSystem(std::string_view bytes, std::string& system, CluiFault& fault);

  // For display: each byte that is not part of a character becomes U+FFFD.
  std::wstring fromUser(std::string_view bytes);
  std::wstring fromSystem(std::string_view text);
  std::wstring fromUtf8(std::string_view text);
  // To the user's bytes, with "?" for a character that does not exist in that encoding.
  std::string toUser(std::wstring_view text);

  // Whether the encoding is UTF-8, in which a file may begin with a byte order mark.
  bool isUtf8() const { return isUtf8_; }

 private:
  std::string name_;
  YTextConverter userToWide_;
  YTextConverter wideToUser_;
  bool keepsAscii_ = false;  // each byte from 1 to 127 is the ASCII character
  bool isUtf8_ = false;

  bool readsAs(char byte);
};

#endif  // PROGRAM_TEXT_CLUIENCODING_H_
