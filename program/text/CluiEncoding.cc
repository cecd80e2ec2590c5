#include "program/text/CluiEncoding.h"

#include <algorithm>
#include <cstring>

#include "foundation/YCharacters.h"
#include "foundation/YEncoding.h"

namespace {

constexpr char Wide[] = "WCHAR_T";
constexpr wchar_t Replacement = 0xFFFD;

std::string_view BytesOf(std::wstring_view text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)};
}

void AppendWide(std::string_view bytes, std::wstring& to) {
  const std::size_t old = to.size();
  to.resize(old + bytes.size() / sizeof(wchar_t));
  std::memcpy(to.data() + old, bytes.data(), bytes.size());
}

// Converts up to the first fault. Returns how many bytes were converted.
std::size_t ToWide(YTextConverter& converter, std::string_view bytes, std::wstring& to) {
  std::string converted;
  const std::size_t done = converter.convert(bytes, converted);
  AppendWide(converted, to);
  return done;
}

std::size_t ReplaceByte(std::string_view, std::string& wide) {
  wide += BytesOf({&Replacement, 1});
  return 1;
}

std::size_t ReplaceWide(std::string_view, std::string& bytes) {
  bytes += '?';
  return sizeof(wchar_t);
}

std::wstring ToWideWhole(YTextConverter& converter, std::string_view bytes) {
  std::string converted;
  converter.convertAll(bytes, converted, ReplaceByte);
  std::wstring text;
  AppendWide(converted, text);
  return text;
}

// A character that means a lone byte is none that exists.
bool IsSame(char32_t one, char32_t back) {
  return one == back && !YCharacters::IsLoneByte(one);
}

std::wstring Shown(std::u32string_view characters) {
  std::wstring text(characters.begin(), characters.end());
  std::replace_if(text.begin(), text.end(), YCharacters::IsLoneByte, Replacement);
  return text;
}

// Appends the bytes inside. Returns the number of characters before the first that does not exist
// there, or that would be converted back to another.
std::size_t AppendToSystem(const std::u32string& text, std::string& system) {
  if (!YEncoding::IsDoubleByte()) {
    YCharacters::AppendUtf8(text, system);
    return text.size();
  }
  YCharacters::AppendBytes(text, system);
  std::u32string back;
  YCharacters::AppendFromBytes(system, back);
  const auto lacking = std::mismatch(text.begin(), text.end(), back.begin(), back.end(), IsSame);
  return static_cast<std::size_t>(lacking.first - text.begin());
}

// For bytes and for characters; false for a NUL.
template <typename Text>
bool IsAscii(const Text& text) {
  return std::all_of(text.begin(), text.end(), [](auto c) { return c > 0 && c < 0x80; });
}

}  // namespace

bool CluiEncoding::open(const std::string& name, std::string& error) {
  if (!userToWide_.open(name.c_str(), Wide) || !wideToUser_.open(Wide, name.c_str())) {
    error = "unknown encoding \"" + name + "\"";
    return false;
  }
  if (!YCharacters::CanConvert()) {
    error = std::string("iconv cannot convert to and from ") + YEncoding::InsideInWords();
    return false;
  }
  if (!readsAs('\n')) {
    error = "unsupported encoding \"" + name + "\": a line must end with the single byte 10";
    return false;
  }
  name_ = name;
  keepsAscii_ = true;
  for (int c = 1; c < 128; ++c) keepsAscii_ = keepsAscii_ && readsAs(static_cast<char>(c));
  isUtf8_ = fromUser("\xEF\xBB\xBF").size() <= 1 && fromUser("\xC3\xA4") == L"\u00E4";
  return true;
}

bool CluiEncoding::readsAs(char byte) {
  std::wstring text;
  return ToWide(userToWide_, {&byte, 1}, text) == 1 && text.size() == 1 &&
         text[0] == static_cast<wchar_t>(byte);
}

bool CluiEncoding::toSystem(std::string_view bytes, std::string& system, CluiFault& fault) {
  system.clear();
  if (keepsAscii_ && IsAscii(bytes)) {
    system = bytes;
    return true;
  }
  std::wstring text;
  const std::size_t read = ToWide(userToWide_, bytes, text);
  const std::size_t nul = text.find(L'\0');
  if (nul != std::wstring::npos) {
    fault = {CluiFault::Nul, nul, 0};
    return false;
  }
  if (read < bytes.size()) {
    fault = {CluiFault::BadBytes, text.size(), 0};
    return false;
  }
  const std::size_t exist = AppendToSystem({text.begin(), text.end()}, system);
  if (exist == text.size()) return true;
  fault = {CluiFault::Lacking, exist, text[exist]};
  return false;
}

std::wstring CluiEncoding::fromUser(std::string_view bytes) {
  return ToWideWhole(userToWide_, bytes);
}
std::wstring CluiEncoding::fromSystem(std::string_view text) {
  if (IsAscii(text)) return {text.begin(), text.end()};
  std::u32string characters;
  YCharacters::AppendFromBytes(text, characters);
  return Shown(characters);
}
std::wstring CluiEncoding::fromUtf8(std::string_view text) {
  std::u32string characters;
  while (!text.empty()) {
    text.remove_prefix(YCharacters::AppendFromUtf8(text, characters));
    if (text.empty()) break;
    characters.push_back(Replacement);
    text.remove_prefix(1);
  }
  return Shown(characters);
}

std::string CluiEncoding::toUser(std::wstring_view text) {
  if (keepsAscii_ && IsAscii(text)) return {text.begin(), text.end()};
  std::string bytes;
  wideToUser_.convertAll(BytesOf(text), bytes, ReplaceWide);
  return bytes;
}
