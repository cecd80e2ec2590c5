#include "platform/engine/YseText.h"

#include <iconv.h>

#include <array>
#include <cstdint>
#include <memory>

namespace yse {

namespace {

constexpr std::size_t Plane = 0x10000;  // all characters of the encoding are below

bool IsLead(unsigned char byte) {
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

bool IsTrail(unsigned char byte) {
  return byte >= 0x40 && byte <= 0xFC && byte != 0x7F;
}

// One direction of the machine's conversion, a character at a time.
class Converter {
 public:
  Converter(const char* to, const char* from) : descriptor_(iconv_open(to, from)) {}
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() {
    if (isThere()) iconv_close(descriptor_);
  }

  bool isThere() const { return descriptor_ != reinterpret_cast<iconv_t>(-1); }

  // The length of what `in` becomes, 0 when it is no whole character.
  std::size_t convert(std::string_view in, char* out, std::size_t room) const {
    char* source = const_cast<char*>(in.data());
    std::size_t sourceLeft = in.size();
    char* target = out;
    std::size_t targetLeft = room;
    iconv(descriptor_, nullptr, nullptr, nullptr, nullptr);
    const std::size_t answer = iconv(descriptor_, &source, &sourceLeft, &target, &targetLeft);
    if (answer == static_cast<std::size_t>(-1) || sourceLeft != 0) return 0;
    return room - targetLeft;
  }

 private:
  iconv_t descriptor_;
};

// 0 stands for "none" in all three tables: NUL never crosses.
struct Tables {
  std::array<std::uint16_t, 256> single{};
  std::array<std::uint16_t, Plane> pair{};
  std::array<std::uint16_t, Plane> code{};

  Tables();
  void addCharacter(const Converter& decode, const Converter& encode, std::string_view bytes);
  void addLookAlikes(const Converter& encode);
};

unsigned Number(std::string_view bytes) {
  unsigned number = 0;
  for (const char byte : bytes) number = number * 256 + static_cast<unsigned char>(byte);
  return number;
}

Tables::Tables() {
  const Converter decode("UTF-16BE", "CP932");
  const Converter encode("CP932", "UTF-16BE");
  for (unsigned first = 1; first < 256; ++first) {
    const char bytes[2] = {static_cast<char>(first), 0};
    addCharacter(decode, encode, {bytes, 1});
    if (!IsLead(static_cast<unsigned char>(first))) continue;
    for (unsigned second = 0x40; second <= 0xFC; ++second) {
      const char both[2] = {static_cast<char>(first), static_cast<char>(second)};
      if (IsTrail(static_cast<unsigned char>(second))) addCharacter(decode, encode, {both, 2});
    }
  }
  addLookAlikes(encode);
  for (unsigned byte = 0; byte < 256; ++byte) {
    code[LoneByte + byte] = static_cast<std::uint16_t>(byte);
  }
}

// Only what comes back as itself is a character.
void Tables::addCharacter(const Converter& decode, const Converter& encode,
                          std::string_view bytes) {
  char wide[8];
  char back[8];
  if (decode.convert(bytes, wide, sizeof wide) != 2) return;
  const std::size_t length = encode.convert({wide, 2}, back, sizeof back);
  if (std::string_view(back, length) != bytes) return;
  const unsigned character = Number({wide, 2});
  if (character >= LoneByte && character < LoneByte + 256) return;
  (bytes.size() == 1 ? single[Number(bytes)] : pair[Number(bytes)]) =
      static_cast<std::uint16_t>(character);
  code[character] = static_cast<std::uint16_t>(Number(bytes));
}

void Tables::addLookAlikes(const Converter& encode) {
  for (unsigned character = 128; character < Plane; ++character) {
    const char wide[2] = {static_cast<char>(character >> 8), static_cast<char>(character)};
    char bytes[8];
    if (code[character] != 0 || encode.convert({wide, 2}, bytes, sizeof bytes) != 2) continue;
    code[character] = static_cast<std::uint16_t>(Number({bytes, 2}));
  }
}

const Tables& TheTables() {
  static const std::unique_ptr<Tables> tables = std::make_unique<Tables>();
  return *tables;
}

char32_t CharacterOfByte(const Tables& tables, unsigned char byte) {
  if (byte < 128) return byte;
  const char32_t character = tables.single[byte];
  return character != 0 ? character : LoneByte + byte;
}

void AppendCode(int code, std::string& bytes) {
  if (code > 255) bytes.push_back(static_cast<char>(code >> 8));
  bytes.push_back(static_cast<char>(code));
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

// The length of the UTF-8 character that the text begins with, by its first byte; 0 for none.
std::size_t Utf8Length(unsigned char first) {
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first < 0xE0) return 2;
  if (first >= 0xE0 && first < 0xF0) return 3;
  if (first >= 0xF0 && first < 0xF5) return 4;
  return 0;
}

// Reads one character from the front; 0 in `length` when there is none.
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

}  // namespace

bool EncodingIsThere() {
  return Converter("UTF-16BE", "CP932").isThere() && Converter("CP932", "UTF-16BE").isThere();
}

bool IsAscii(std::string_view text) {
  for (const char c : text) {
    if (static_cast<unsigned char>(c) >= 128) return false;
  }
  return true;
}

void AppendCharacters(std::string_view bytes, std::u32string& characters) {
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

int CodeOf(char32_t character) {
  if (character < 128) return static_cast<int>(character);
  if (character >= Plane) return -1;
  const int code = TheTables().code[character];
  return code != 0 ? code : -1;
}

bool AppendBytes(std::u32string_view characters, std::string& bytes) {
  for (const char32_t character : characters) {
    const int code = CodeOf(character);
    if (code < 0) return false;
    AppendCode(code, bytes);
  }
  return true;
}

std::size_t AppendFromUtf8(std::string_view utf8, std::u32string& characters) {
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

void AppendUtf8(std::u32string_view characters, std::string& utf8) {
  for (const char32_t character : characters) AppendUtf8Character(character, utf8);
}

std::string Utf8FromBytes(std::string_view bytes) {
  if (IsAscii(bytes)) return std::string(bytes);
  std::u32string characters;
  AppendCharacters(bytes, characters);
  std::string utf8;
  AppendUtf8(characters, utf8);
  return utf8;
}

std::string BytesFromUtf8(std::string_view utf8) {
  if (IsAscii(utf8)) return std::string(utf8);
  std::u32string characters;
  AppendFromUtf8(utf8, characters);
  std::string bytes;
  for (const char32_t character : characters) {
    const int code = CodeOf(character);
    AppendCode(code < 0 ? '?' : code, bytes);
  }
  return bytes;
}

std::size_t CutBetweenCharacters(std::string_view bytes, std::size_t room) {
  if (bytes.size() <= room) return bytes.size();
  std::size_t end = 0;
  while (end < room) {
    const bool both = IsLead(static_cast<unsigned char>(bytes[end])) &&
                      IsTrail(static_cast<unsigned char>(bytes[end + 1]));
    const std::size_t next = end + (both ? 2 : 1);
    if (next > room) break;
    end = next;
  }
  return end;
}

}  // namespace yse
