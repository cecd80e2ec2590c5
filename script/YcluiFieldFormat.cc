#include "script/YcluiFieldFormat.h"

#include <cstring>

#include "foundation/YKanji.h"

// No byte of a double-byte character has the value of "%", so formats can be scanned bytewise.

bool YcluiFormatIsValid(const char* format, int most) {
  for (const char* p = std::strchr(format, '%'); p != nullptr; p = std::strchr(p + 2, '%')) {
    if (p[1] != '%' && (p[1] != 's' || --most < 0)) return false;
  }
  return true;
}

void YcluiFillFormat(const char* format, const char* first, const char* second, YString& out) {
  const char* next = first;
  const char* rest = format;
  for (const char* p = std::strchr(rest, '%'); p != nullptr; p = std::strchr(rest, '%')) {
    out.concat(rest, static_cast<unsigned long>(p - rest));
    if (p[1] == 's') {
      out << next;
      next = second;
    } else {
      out << '%';
    }
    rest = p + 2;
  }
  out << rest;
}

void YcluiAppendEscaped(const char* text, YString& out) {
  const bool isDoubleByte = YEncoding::IsDoubleByte();
  YKanjiWalk walk;
  bool followsOpenLead = false;
  for (const char* p = text; *p != '\0'; ++p) {
    const bool isSingle = walk.next(p) == 0;
    if (isSingle && (*p == '"' || *p == '\\')) {
      if (followsOpenLead) out.buffer[out.length - 1] = '?';
      out << '\\';
    }
    out << *p;
    followsOpenLead = isDoubleByte && isSingle && YIsKanjiLead(static_cast<unsigned char>(*p));
  }
}
