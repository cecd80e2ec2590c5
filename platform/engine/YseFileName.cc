#include "platform/engine/YseFileName.h"

#include <iconv.h>
#include <langinfo.h>

#include <cstring>
#include <string_view>

#include "platform/engine/YseText.h"

namespace yse {

namespace {

bool IsUtf8(const char* encoding) {
  return std::strcmp(encoding, "UTF-8") == 0;
}

// The text itself when it cannot be converted.
std::string Convert(const char* to, const char* from, const std::string& text) {
  const iconv_t descriptor = iconv_open(to, from);
  if (descriptor == reinterpret_cast<iconv_t>(-1)) return text;
  std::string answer(text.size() * 4 + 8, '\0');
  char* source = const_cast<char*>(text.data());
  std::size_t sourceLeft = text.size();
  char* target = answer.data();
  std::size_t targetLeft = answer.size();
  const std::size_t failed = iconv(descriptor, &source, &sourceLeft, &target, &targetLeft);
  iconv_close(descriptor);
  if (failed == static_cast<std::size_t>(-1)) return text;
  answer.resize(answer.size() - targetLeft);
  return answer;
}

}  // namespace

const char* LocaleEncoding() {
  const char* const encoding = nl_langinfo(CODESET);
  const bool plain = std::strcmp(encoding, "ANSI_X3.4-1968") == 0 || encoding[0] == '\0';
  return plain ? "UTF-8" : encoding;
}

std::string Utf8FromFileName(const std::string& name) {
  const char* const encoding = LocaleEncoding();
  const std::string text = IsUtf8(encoding) ? name : Convert("UTF-8", encoding, name);
  std::u32string characters;
  for (std::string_view rest = text; !rest.empty();) {
    rest.remove_prefix(AppendFromUtf8(rest, characters));
    if (rest.empty()) break;
    characters.push_back(LoneByte + static_cast<unsigned char>(rest.front()));
    rest.remove_prefix(1);
  }
  std::string utf8;
  AppendUtf8(characters, utf8);
  return utf8;
}

std::string FileNameFromUtf8(const std::string& utf8) {
  std::u32string characters;
  AppendFromUtf8(utf8, characters);
  std::string text;
  for (const char32_t character : characters) {
    if (character > LoneByte && character < LoneByte + 256) {
      text.push_back(static_cast<char>(character - LoneByte));
    } else {
      AppendUtf8({&character, 1}, text);
    }
  }
  const char* const encoding = LocaleEncoding();
  return IsUtf8(encoding) ? text : Convert(encoding, "UTF-8", text);
}

}  // namespace yse
