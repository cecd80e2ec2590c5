// The parser of a language. Internal to the language.

#ifndef LANGUAGE_LANGUAGEPARSER_H_
#define LANGUAGE_LANGUAGEPARSER_H_

#include "parser/YcluiParser.h"

namespace yqrtClui {

class LanguageCore;

// Passes commands and refusals to the language. The text of a command is its number.
class LanguageParser final : public YcluiParser {
 public:
  explicit LanguageParser(LanguageCore& language);

 private:
  LanguageCore& core_;

  YWord evaluate(const char* command) override;
  YWord admits(const YcluiToken& token) override;
};

}  // namespace yqrtClui

#endif  // LANGUAGE_LANGUAGEPARSER_H_
