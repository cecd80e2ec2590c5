#include "program/CluiTextEnd.h"

#include "foundation/YAscii.h"

bool CluiMayEndInComma(const std::string& text) {
  for (std::size_t i = text.rfind(','); i != std::string::npos; i = text.rfind(',', i - 1)) {
    const std::size_t next = text.find_first_not_of(" \t\r\v\f", i + 1);
    if (next == std::string::npos || text[next] == '\n' || text[next] == '#') return true;
    if (i == 0) return false;
  }
  return false;
}

bool CluiIsBlank(const std::string& text) {
  std::size_t offset = 0;
  while (offset < text.size() && (YIsWhiteSpace(text[offset]) || text[offset] == '#')) {
    offset = text[offset] == '#' ? text.find('\n', offset) : offset + 1;
  }
  return offset >= text.size();
}
