// Unicode characters, between text inside the process, UTF-8 and those of a script engine. Internal
// to the system.

#ifndef FOUNDATION_YCHARACTERS_H_
#define FOUNDATION_YCHARACTERS_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "foundation/YTypes.h"

// "Bytes" are text in the encoding inside (YEncoding::Inside). A byte that is part of no character,
// or of a pair that would come back as another pair, is a character alone, the private-use one of
// U+F700 plus its value: any bytes come back as they were. Double-byte text is converted through
// tables that are made at first use.
class YQRT_API YCharacters {
 public:
  // The private-use character of byte 0; those of the other bytes follow.
  static constexpr char32_t LoneByte = 0xF700;

  // Whether this machine can convert the encoding inside. Without that nothing here works.
  static bool CanConvert();

  // Whether every byte is below 128: such text is the same in all forms.
  static bool IsAscii(std::string_view text);

  // Appends the characters of the bytes. Never fails.
  static void AppendFromBytes(std::string_view bytes, std::u32string& characters);

  // The bytes of a character as a number: one byte, or lead * 256 + trail; -1 when the encoding has
  // no such character. A character that has a double-byte look-alike in the encoding (the wave dash
  // of other systems) becomes that; none becomes another single byte.
  static int CodeOf(char32_t character);

  // Appends the bytes of the characters. False, at the first character outside the encoding.
  static bool AppendBytes(std::u32string_view characters, std::string& bytes);

  // Appends the characters of a UTF-8 text. Returns how many of its bytes were read: less than all
  // when the text is no UTF-8 from there on.
  static std::size_t AppendFromUtf8(std::string_view utf8, std::u32string& characters);
  static void AppendUtf8(std::u32string_view characters, std::string& utf8);

  static std::string Utf8FromBytes(std::string_view bytes);
  // A character outside the encoding becomes a question mark.
  static std::string BytesFromUtf8(std::string_view utf8);

  // The length of the longest part of the bytes that has at most `room` of them and ends between
  // two characters.
  static std::size_t CutBetween(std::string_view bytes, std::size_t room);
};

#endif  // FOUNDATION_YCHARACTERS_H_
