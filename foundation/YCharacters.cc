#include "foundation/YCharacters.h"

#include <array>
#include <cstdint>
#include <memory>

#include "foundation/YEncoding.h"
#include "foundation/YKanji.h"
#include "foundation/YTextConverter.h"

namespace {

constexpr std::size_t Plane = 0x10000;  // all characters of code page 932 are below
constexpr char Wide[] = "UTF-16BE";     // all characters of code page 932 are two bytes of it

// Of code page 932. NUL is never converted, so 0 means "none" in all three tables.
struct Tables {
  std::array<std::uint16_t, 256> single{};
  std::array<std::uint16_t, Plane> pair{};
  std::array<std::uint16_t, Plane> code{};

  Tables();
  void addCharacter(YTextConverter& decode, YTextConverter& encode, std::string_view bytes);
  void addLookAlikes(YTextConverter& encode);
};

// Replaces `out` by the conversion of `in`; makes it empty when `in` is not a complete character.
void ConvertOne(YTextConverter& converter, std::string_view in, std::string& out) {
  out.clear();
  if (converter.convert(in, out) < in.size()) out.clear();
}

unsigned Number(std::string_view bytes) {
  unsigned number = 0;
  for (const char byte : bytes) number = number * 256 + static_cast<unsigned char>(byte);
  return number;
}

Tables::Tables() {
  YTextConverter decode(YEncoding::Inside(), Wide);
  YTextConverter encode(Wide, YEncoding::Inside());
  for (unsigned first = 1; first < 256; ++first) {
    const char bytes[2] = {static_cast<char>(first), 0};
    addCharacter(decode, encode, {bytes, 1});
    if (!YIsKanjiLead(static_cast<unsigned char>(first))) continue;
    for (unsigned second = 0x40; second <= 0xFC; ++second) {
      const char both[2] = {static_cast<char>(first), static_cast<char>(second)};
      if (!YIsKanjiTrail(static_cast<unsigned char>(second))) continue;
      addCharacter(decode, encode, {both, 2});
    }
  }
  addLookAlikes(encode);
}

// Only codes that are converted back to themselves are characters.
void Tables::addCharacter(YTextConverter& decode, YTextConverter& encode, std::string_view bytes) {
  std::string wide;
  std::string back;
  ConvertOne(decode, bytes, wide);
  if (wide.size() != 2) return;
  ConvertOne(encode, wide, back);
  if (back != bytes) return;
  const unsigned character = Number(wide);
  (bytes.size() == 1 ? single[Number(bytes)] : pair[Number(bytes)]) =
      static_cast<std::uint16_t>(character);
  code[character] = static_cast<std::uint16_t>(Number(bytes));
}

void Tables::addLookAlikes(YTextConverter& encode) {
  std::string bytes;
  for (unsigned character = 128; character < Plane; ++character) {
    if (code[character] != 0) continue;
    const char wide[2] = {static_cast<char>(character >> 8), static_cast<char>(character)};
    ConvertOne(encode, {wide, 2}, bytes);
    if (bytes.size() == 2) code[character] = static_cast<std::uint16_t>(Number(bytes));
  }
}

const Tables& TheTables() {
  static const std::unique_ptr<Tables> tables = std::make_unique<Tables>();
  return *tables;
}

char32_t CharacterOfByte(const Tables& tables, unsigned char byte) {
  if (byte < 128) return byte;
  const char32_t character = tables.single[byte];
  return character != 0 ? character : YCharacters::LoneByte + byte;
}

bool IsPair(char first, char second) {
  return YIsKanjiLead(static_cast<unsigned char>(first)) &&
         YIsKanjiTrail(static_cast<unsigned char>(second));
}

// 0 when code page 932 does not have the character.
unsigned CodeInTables(char32_t character) {
  return character < Plane ? TheTables().code[character] : 0;
}

// Appends the bytes of code page 932. Returns false when it does not have the character.
bool AppendPair(char32_t character, std::string& bytes) {
  const unsigned code = CodeInTables(character);
  if (code > 255) bytes.push_back(static_cast<char>(code >> 8));
  if (code != 0) bytes.push_back(static_cast<char>(code));
  return code != 0;
}

void AppendUtf8Character(char32_t c, std::string& utf8) {
  const auto tail = [&utf8, c](int shift) {
    utf8.push_back(static_cast<char>(0x80 | ((c >> shift) & 0x3F)));
  };
  if (c < 0x80) {
    utf8.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    utf8.push_back(static_cast<char>(0xC0 | (c >> 6)));
    tail(0);
  } else if (c < 0x10000) {
    utf8.push_back(static_cast<char>(0xE0 | (c >> 12)));
    tail(6);
    tail(0);
  } else {
    utf8.push_back(static_cast<char>(0xF0 | (c >> 18)));
    tail(12);
    tail(6);
    tail(0);
  }
}

// The length of a UTF-8 character by its first byte; 0 when the byte starts no character.
std::size_t Utf8Length(unsigned char first) {
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first < 0xE0) return 2;
  if (first >= 0xE0 && first < 0xF0) return 3;
  if (first >= 0xF0 && first < 0xF5) return 4;
  return 0;
}

// Reads the first character. Sets `length` to 0 when it is invalid.
char32_t FirstOfUtf8(std::string_view utf8, std::size_t& length) {
  static constexpr std::array<char32_t, 5> Least = {0, 0, 0x80, 0x800, 0x10000};
  const auto first = static_cast<unsigned char>(utf8.front());
  length = Utf8Length(first);
  if (length == 1) return first;
  if (length == 0 || length > utf8.size()) return length = 0, 0;
  char32_t character = first & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    if ((byte & 0xC0U) != 0x80U) return length = 0, 0;
    character = (character << 6) | (byte & 0x3FU);
  }
  const bool surrogate = character >= 0xD800 && character < 0xE000;
  if (character < Least[length] || character > 0x10FFFF || surrogate) length = 0;
  return character;
}

// The same, with a lone byte for what is invalid and for the bytes of a character that means a lone
// byte, since that would be converted back to one byte.
char32_t FirstOfAnyUtf8(std::string_view utf8, std::size_t& length) {
  const char32_t character = FirstOfUtf8(utf8, length);
  if (length > 0 && !YCharacters::IsLoneByte(character)) return character;
  length = 1;
  return YCharacters::LoneByte + static_cast<unsigned char>(utf8.front());
}

// The encoding inside must be UTF-8.
std::size_t CutBetweenUtf8(std::string_view bytes, std::size_t room) {
  for (std::size_t back = 1; back <= 3 && back <= room; ++back) {
    if (YCharacters::LengthAt(bytes.substr(room - back)) > back) return room - back;
  }
  return room;
}

}  // namespace

bool YCharacters::CanConvert() {
  return !YEncoding::IsDoubleByte() || (YTextConverter(YEncoding::Inside(), Wide).isOpen() &&
                                        YTextConverter(Wide, YEncoding::Inside()).isOpen());
}

bool YCharacters::IsAscii(std::string_view text) {
  for (const char c : text) {
    if (static_cast<unsigned char>(c) >= 128) return false;
  }
  return true;
}

void YCharacters::AppendFromBytes(std::string_view bytes, std::u32string& characters) {
  if (!YEncoding::IsDoubleByte()) return AppendFromAnyUtf8(bytes, characters);
  const Tables& tables = TheTables();
  characters.reserve(characters.size() + bytes.size());
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    const char32_t both =
        byte >= 128 && i + 1 < bytes.size() ? tables.pair[Number(bytes.substr(i, 2))] : 0;
    characters.push_back(both != 0 ? both : CharacterOfByte(tables, byte));
    if (both != 0) ++i;
  }
}

long YCharacters::CodeOf(char32_t character) {
  if (character < 128) return static_cast<long>(character);
  std::string bytes;
  if (!AppendBytes({&character, 1}, bytes)) return -1;
  return static_cast<long>(Number(bytes));
}

bool YCharacters::AppendBytes(std::u32string_view characters, std::string& bytes) {
  if (!YEncoding::IsDoubleByte()) {
    AppendAnyUtf8(characters, bytes);
    return true;
  }
  for (const char32_t character : characters) {
    if (character < 128 || IsLoneByte(character)) {
      bytes.push_back(static_cast<char>(character));
    } else if (!AppendPair(character, bytes)) {
      return false;
    }
  }
  return true;
}

void YCharacters::AppendFromAnyUtf8(std::string_view bytes, std::u32string& characters) {
  characters.reserve(characters.size() + bytes.size());
  for (std::size_t length = 0; !bytes.empty(); bytes.remove_prefix(length)) {
    characters.push_back(FirstOfAnyUtf8(bytes, length));
  }
}

void YCharacters::AppendAnyUtf8(std::u32string_view characters, std::string& bytes) {
  for (const char32_t character : characters) {
    if (IsLoneByte(character)) {
      bytes.push_back(static_cast<char>(character));
    } else {
      AppendUtf8Character(character, bytes);
    }
  }
}

std::size_t YCharacters::AppendFromUtf8(std::string_view utf8, std::u32string& characters) {
  std::size_t read = 0;
  while (read < utf8.size()) {
    std::size_t length = 0;
    const char32_t character = FirstOfUtf8(utf8.substr(read), length);
    if (length == 0) break;
    characters.push_back(character);
    read += length;
  }
  return read;
}

void YCharacters::AppendUtf8(std::u32string_view characters, std::string& utf8) {
  for (const char32_t character : characters) AppendUtf8Character(character, utf8);
}

std::string YCharacters::Utf8FromBytes(std::string_view bytes) {
  if (IsAscii(bytes)) return std::string(bytes);
  std::u32string characters;
  AppendFromBytes(bytes, characters);
  std::string utf8;
  AppendUtf8(characters, utf8);
  return utf8;
}

std::string YCharacters::BytesFromUtf8(std::string_view utf8) {
  if (IsAscii(utf8)) return std::string(utf8);
  std::u32string characters;
  AppendFromUtf8(utf8, characters);
  std::string bytes;
  for (const char32_t character : characters) {
    if (!AppendBytes({&character, 1}, bytes)) bytes.push_back('?');
  }
  return bytes;
}

std::size_t YCharacters::LengthAt(std::string_view bytes) {
  if (YEncoding::IsDoubleByte()) return bytes.size() > 1 && IsPair(bytes[0], bytes[1]) ? 2 : 1;
  std::size_t length = 1;
  FirstOfAnyUtf8(bytes, length);
  return length;
}

std::size_t YCharacters::CutBetween(std::string_view bytes, std::size_t room) {
  if (bytes.size() <= room) return bytes.size();
  if (!YEncoding::IsDoubleByte()) return CutBetweenUtf8(bytes, room);
  std::size_t end = 0;
  while (end < room) {
    const std::size_t next = end + LengthAt(bytes.substr(end, 2));
    if (next > room) break;
    end = next;
  }
  return end;
}
