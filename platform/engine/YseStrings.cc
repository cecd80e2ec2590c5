// Conversion of strings between Scheme and C++.

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "foundation/YCharacters.h"
#include "foundation/YEncoding.h"
#include "platform/engine/YseEngine.h"

namespace yse {

namespace {

// Strings up to this length are read character by character, without the copy that Guile makes of a
// whole string.
constexpr std::size_t ShortString = 64;

constexpr const char* WithNul = "a string without NUL characters";

// Guile raises an error when there is no memory for its copy, which would skip C++ destructors
// here.
void InsistOnMemory(std::size_t bytes) {
  void* const probe = std::malloc(bytes);
  if (probe == nullptr) {
    std::fputs("out of memory\n", stderr);
    std::abort();
  }
  std::free(probe);
}

SCM FromCharacters(const std::u32string& characters) {
  return scm_from_utf32_stringn(reinterpret_cast<const scm_t_wchar*>(characters.data()),
                                characters.size());
}

// Copies the string into the engine's `characters`.
void ToCharacters(SCM string) {
  std::u32string& characters = TheEngine().characters;
  characters.clear();
  const std::size_t length = scm_c_string_length(string);
  if (length <= ShortString) {
    for (std::size_t i = 0; i < length; ++i) {
      characters.push_back(SCM_CHAR(scm_c_string_ref(string, i)));
    }
    return;
  }
  InsistOnMemory(length * 8);
  std::size_t copied = 0;
  scm_t_wchar* const copy = scm_to_utf32_stringn(string, &copied);
  characters.assign(reinterpret_cast<const char32_t*>(copy), copied);
  std::free(copy);
}

const char* Keep(const std::string& bytes) {
  char* const copy = static_cast<char*>(std::malloc(bytes.size() + 1));
  if (copy == nullptr) std::abort();
  std::memcpy(copy, bytes.c_str(), bytes.size() + 1);
  TheEngine().strings.push_back(copy);
  return copy;
}

}  // namespace

SCM FromUtf8(std::string_view utf8) {
  if (YCharacters::IsAscii(utf8)) return scm_from_latin1_stringn(utf8.data(), utf8.size());
  std::u32string& characters = TheEngine().characters;
  characters.clear();
  YCharacters::AppendFromUtf8(utf8, characters);
  return FromCharacters(characters);
}

void ToUtf8(SCM string, std::string& utf8) {
  utf8.clear();
  ToCharacters(string);
  YCharacters::AppendUtf8(TheEngine().characters, utf8);
}

SCM FromBytes(std::string_view bytes) {
  if (YCharacters::IsAscii(bytes)) return scm_from_latin1_stringn(bytes.data(), bytes.size());
  std::u32string& characters = TheEngine().characters;
  characters.clear();
  YCharacters::AppendFromBytes(bytes, characters);
  return FromCharacters(characters);
}

const char* ToBytes(SCM string, const char*& expected) {
  Engine& engine = TheEngine();
  ToCharacters(string);
  if (engine.characters.find(U'\0') != std::u32string::npos) {
    expected = WithNul;
    return nullptr;
  }
  engine.bytes.clear();
  if (!YCharacters::AppendBytes(engine.characters, engine.bytes)) {
    static const std::string inEncoding =
        std::string("a string of characters of ") + YEncoding::InsideInWords();
    expected = inEncoding.c_str();
    return nullptr;
  }
  return Keep(engine.bytes);
}

void FreeStrings(std::size_t first) {
  std::vector<char*>& strings = TheEngine().strings;
  while (strings.size() > first) {
    std::free(strings.back());
    strings.pop_back();
  }
}

}  // namespace yse
