// Conversion between text inside the process, Unicode characters and UTF-8. Internal to the system.

#ifndef FOUNDATION_YCHARACTERS_H_
#define FOUNDATION_YCHARACTERS_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "foundation/YTypes.h"

// "Bytes" are text in the encoding inside the process (YEncoding). A byte that is in no character,
// or in one that would be converted back to other bytes, becomes a private-use character near the
// end of Unicode, U+10FE00 plus its value: a "lone byte". So any bytes can be converted to
// characters and back without loss, and all other characters of the encoding to bytes and back,
// those of the private use areas included. Double-byte text is converted with tables that are made
// at first use.
class YQRT_API YCharacters {
 public:
  // The private-use character of byte 0; those of the other bytes follow.
  static constexpr char32_t LoneByte = 0x10FE00;
  // Only bytes of 128 and above are ever lone.
  static constexpr bool IsLoneByte(char32_t character) {
    return character >= LoneByte + 128 && character < LoneByte + 256;
  }

  // Whether this machine can convert the encoding inside. Otherwise nothing else here may be
  // called.
  static bool CanConvert();

  // Whether every byte is below 128. Such text is the same in all encodings used here.
  static bool IsAscii(std::string_view text);

  // Appends the characters of the bytes. Never fails.
  static void AppendFromBytes(std::string_view bytes, std::u32string& characters);

  // The bytes of a character as a number, the first byte being the highest; -1 when the encoding
  // does not have the character. In Shift_JIS a character for which other systems use another code
  // point (the wave dash) is converted to its double-byte equivalent; no character is converted to
  // the single byte of another one.
  static long CodeOf(char32_t character);

  // Appends the bytes of the characters, of a lone byte that byte. Stops at the first character
  // that the encoding does not have, and returns false. Lone bytes that make a character together
  // are that character when they are converted back.
  static bool AppendBytes(std::u32string_view characters, std::string& bytes);

  // Appends the characters of a UTF-8 text. Returns the number of bytes read, which is the offset
  // of the first invalid sequence if there is one.
  static std::size_t AppendFromUtf8(std::string_view utf8, std::u32string& characters);
  static void AppendUtf8(std::u32string_view characters, std::string& utf8);

  // The same as AppendFromBytes and AppendBytes when the encoding inside is UTF-8, at any time.
  static void AppendFromAnyUtf8(std::string_view bytes, std::u32string& characters);
  static void AppendAnyUtf8(std::u32string_view characters, std::string& bytes);

  static std::string Utf8FromBytes(std::string_view bytes);
  // A character that the encoding does not have becomes a question mark.
  static std::string BytesFromUtf8(std::string_view utf8);

  // The number of bytes of the first character; 1 for a byte that is in none, and for a NUL.
  // REQUIRES: the text is not empty.
  static std::size_t LengthAt(std::string_view bytes);
  // The length of the longest prefix of at most `room` bytes that ends between two characters.
  static std::size_t CutBetween(std::string_view bytes, std::size_t room);
};

#endif  // FOUNDATION_YCHARACTERS_H_
