// Text of the user and text of the system.
//
// Files, streams and messages are in an encoding of the user's choice; the system's text is in the
// one of YEncoding::Inside. The conversion goes through wide characters, one element a character.

#ifndef PROGRAM_TEXT_CLUIENCODING_H_
#define PROGRAM_TEXT_CLUIENCODING_H_

#include <string>
#include <string_view>

#include "foundation/YTextConverter.h"

// Why a line cannot be given to the system.
struct CluiFault {
  enum Kind {
    BadBytes,  // bytes that are no character of the user's encoding
    Lacking,   // a character that the system's encoding does not have
    Nul,       // a NUL byte
  };
  Kind kind = BadBytes;
  std::size_t character = 0;  // how many characters precede it
  wchar_t code = 0;           // of Lacking: which one
};

class CluiEncoding {
 public:
  // False, with a reason in `error`, for a name that iconv does not know and for an encoding in
  // which the end of a line is not the byte 10 alone.
  bool open(const std::string& name, std::string& error);

  // Converts the user's bytes to text of the system. False, with the reason in `fault`. A character
  // that would come back as another one counts as lacking too.
  bool toSystem(std::string_view bytes, std::string& system, CluiFault& fault);

  // For display: each byte that is part of no character becomes U+FFFD.
  std::wstring fromUser(std::string_view bytes);
  std::wstring fromSystem(std::string_view text);
  std::wstring fromUtf8(std::string_view text);
  // Back into the user's bytes, with "?" for a character that they cannot hold.
  std::string toUser(std::wstring_view text);

  // Whether the encoding is UTF-8, in which a file may begin with a byte order mark.
  bool isUtf8() const { return isUtf8_; }

 private:
  YTextConverter userToWide_;
  YTextConverter wideToUser_;
  YTextConverter systemToWide_;
  YTextConverter wideToSystem_;
  YTextConverter utf8ToWide_;
  bool keepsAscii_ = false;  // every byte from 1 to 127 is that character and nothing else
  bool isUtf8_ = false;

  bool readsAs(char byte);
};

#endif  // PROGRAM_TEXT_CLUIENCODING_H_
