#include "program/CluiEncoding.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

constexpr char System[] = "CP932";
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

// Converts as far as it goes; answers the number of bytes that were converted.
std::size_t ToWide(CluiConverter& converter, std::string_view bytes, std::wstring& to) {
  std::string converted;
  const std::size_t done = converter.convert(bytes, converted);
  AppendWide(converted, to);
  return done;
}

std::wstring ToWideWhole(CluiConverter& converter, std::string_view bytes) {
  std::wstring text;
  while (!bytes.empty()) {
    bytes.remove_prefix(ToWide(converter, bytes, text));
    if (bytes.empty()) break;
    text += Replacement;
    bytes.remove_prefix(1);
  }
  return text;
}

// Of bytes or of characters; a NUL is not taken for one.
template <typename Text>
bool IsAscii(const Text& text) {
  return std::all_of(text.begin(), text.end(), [](auto c) { return c > 0 && c < 0x80; });
}

}  // namespace

CluiConverter::~CluiConverter() {
  close();
}

void CluiConverter::close() {
  if (handle_ != nullptr) iconv_close(handle_);
  handle_ = nullptr;
}

bool CluiConverter::open(const char* from, const char* to) {
  close();
  iconv_t const handle = iconv_open(to, from);
  if (handle == reinterpret_cast<iconv_t>(-1)) return false;
  handle_ = handle;
  return true;
}

std::size_t CluiConverter::convert(std::string_view bytes, std::string& to) {
  char* from = const_cast<char*>(bytes.data());
  std::size_t left = bytes.size();
  char piece[4096];
  iconv(handle_, nullptr, nullptr, nullptr, nullptr);
  bool full = true;
  while (full) {
    char* out = piece;
    std::size_t room = sizeof piece;
    // With everything read, the call that flushes brings a stateful encoding back to its start.
    const std::size_t result = left > 0 ? iconv(handle_, &from, &left, &out, &room)
                                        : iconv(handle_, nullptr, nullptr, &out, &room);
    const int error = result == static_cast<std::size_t>(-1) ? errno : 0;
    to.append(piece, static_cast<std::size_t>(out - piece));
    if (error == 0 && left == 0 && out == piece) break;
    full = error == 0 || error == E2BIG;
  }
  return bytes.size() - left;
}

bool CluiEncoding::open(const std::string& name, std::string& error) {
  if (!userToWide_.open(name.c_str(), Wide) || !wideToUser_.open(Wide, name.c_str())) {
    error = "there is no encoding \"" + name + "\"";
    return false;
  }
  if (!systemToWide_.open(System, Wide) || !wideToSystem_.open(Wide, System) ||
      !utf8ToWide_.open("UTF-8", Wide)) {
    error = "this machine cannot convert to and from code page 932";
    return false;
  }
  if (!readsAs('\n')) {
    error = "lines cannot be told apart in the encoding \"" + name + "\"";
    return false;
  }
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
  wideToSystem_.convert(BytesOf(text), system);
  const std::wstring back = fromSystem(system);
  if (back == text) return true;
  const auto place = std::mismatch(text.begin(), text.end(), back.begin(), back.end()).first;
  fault = {CluiFault::Lacking, static_cast<std::size_t>(place - text.begin()), *place};
  return false;
}

std::wstring CluiEncoding::fromUser(std::string_view bytes) {
  return ToWideWhole(userToWide_, bytes);
}
std::wstring CluiEncoding::fromSystem(std::string_view text) {
  if (IsAscii(text)) return {text.begin(), text.end()};
  return ToWideWhole(systemToWide_, text);
}
std::wstring CluiEncoding::fromUtf8(std::string_view text) {
  if (IsAscii(text)) return {text.begin(), text.end()};
  return ToWideWhole(utf8ToWide_, text);
}

std::string CluiEncoding::toUser(std::wstring_view text) {
  if (keepsAscii_ && IsAscii(text)) return {text.begin(), text.end()};
  std::string bytes;
  while (!text.empty()) {
    text.remove_prefix(wideToUser_.convert(BytesOf(text), bytes) / sizeof(wchar_t));
    if (text.empty()) break;
    bytes += '?';
    text.remove_prefix(1);
  }
  return bytes;
}
