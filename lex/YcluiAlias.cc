#include "lex/YcluiAlias.h"

YcluiAlias::YcluiAlias(const char* name, const char* text)
    : YcluiKeyword(name, YcluiIdAlias, YcluiTokenAlias), text_(text) {}

const char* YcluiAlias::aliasText() const {
  return text_.length == 0 ? nullptr : text_.buffer;
}
