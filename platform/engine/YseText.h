// Text between the system's bytes (Shift_JIS, code page 932) and the script's characters.
//
// A byte that belongs to no character, or to one of the pairs that would come back as another pair,
// crosses alone as the private-use character U+F700 plus its value: any bytes come back as they
// were. Double-byte text is converted through tables that are made from iconv's CP932 at first use.

#ifndef PLATFORM_ENGINE_YSETEXT_H_
#define PLATFORM_ENGINE_YSETEXT_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace yse {

// The private-use character of byte 0; those of the other bytes follow.
constexpr char32_t LoneByte = 0xF700;

// Whether this machine's iconv knows the encoding. Without it nothing of the engine works.
bool EncodingIsThere();

// Whether every byte is below 128: such text is the same in both forms.
bool IsAscii(std::string_view text);

// Appends the characters of the bytes. Never fails.
void AppendCharacters(std::string_view bytes, std::u32string& characters);

// The bytes of a character as a number: one byte, or lead * 256 + trail; -1 when the encoding has
// no such character. A character that has a double-byte look-alike in the encoding (the wave dash
// of other systems) goes out as that; none becomes another single byte.
int CodeOf(char32_t character);

// Appends the bytes of the characters. False, at the first character outside the encoding.
bool AppendBytes(std::u32string_view characters, std::string& bytes);

// Appends the characters of a UTF-8 text. Answers the number of bytes that were read: less than
// all when the text is no UTF-8 from there on.
std::size_t AppendFromUtf8(std::string_view utf8, std::u32string& characters);
void AppendUtf8(std::u32string_view characters, std::string& utf8);

std::string Utf8FromBytes(std::string_view bytes);
// A character outside the encoding becomes a question mark.
std::string BytesFromUtf8(std::string_view utf8);

// The longest part of the bytes that has at most `room` of them and ends between two characters.
std::size_t CutBetweenCharacters(std::string_view bytes, std::size_t room);

}  // namespace yse

#endif  // PLATFORM_ENGINE_YSETEXT_H_
