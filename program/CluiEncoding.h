// Text of the user and text of the system.
//
// Files, streams and messages are in an encoding of the user's choice; the system's text is code
// page 932. Between the two stand wide characters, one element a character.

#ifndef PROGRAM_CLUIENCODING_H_
#define PROGRAM_CLUIENCODING_H_

#include <iconv.h>

#include <string>
#include <string_view>

// One direction of iconv.
class CluiConverter {
 public:
  CluiConverter() = default;
  ~CluiConverter();
  CluiConverter(const CluiConverter&) = delete;
  CluiConverter& operator=(const CluiConverter&) = delete;

  // False when there is no such conversion.
  bool open(const char* from, const char* to);
  // Appends the conversion of `bytes`, from the initial shift state back to it, and answers how
  // many bytes were converted: all of them, or those in front of the first fault.
  std::size_t convert(std::string_view bytes, std::string& to);

 private:
  iconv_t handle_ = nullptr;

  void close();
};

// Why a line cannot be given to the system.
struct CluiFault {
  enum Kind {
    BadBytes,  // bytes that are no character of the user's encoding
    Lacking,   // a character that the system's encoding does not have
    Nul,       // a NUL byte
  };
  Kind kind = BadBytes;
  std::size_t character = 0;  // how many characters stand in front of it
  wchar_t code = 0;           // of Lacking: which one
};

class CluiEncoding {
 public:
  // False, with a reason in `error`, for a name that iconv does not know and for an encoding in
  // which a line's end is not the one byte 10.
  bool open(const std::string& name, std::string& error);

  // The user's bytes as text of the system, or false and what is wrong. A character counts as
  // lacking, too, when it would come back as another one.
  bool toSystem(std::string_view bytes, std::string& system, CluiFault& fault);

  // For showing: what is no character becomes U+FFFD, one for each byte.
  std::wstring fromUser(std::string_view bytes);
  std::wstring fromSystem(std::string_view text);
  std::wstring fromUtf8(std::string_view text);
  // Back into the user's bytes, with "?" for a character that they cannot hold.
  std::string toUser(std::wstring_view text);

  // Whether the encoding is UTF-8, in which a file may begin with a mark of byte order.
  bool isUtf8() const { return isUtf8_; }

 private:
  CluiConverter userToWide_;
  CluiConverter wideToUser_;
  CluiConverter systemToWide_;
  CluiConverter wideToSystem_;
  CluiConverter utf8ToWide_;
  bool keepsAscii_ = false;  // every byte from 1 to 127 is that character and nothing else
  bool isUtf8_ = false;

  bool readsAs(char byte);
};

#endif  // PROGRAM_CLUIENCODING_H_
