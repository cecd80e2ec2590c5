// Aliases: words that are replaced by a text.

#ifndef LEX_YCLUIALIAS_H_
#define LEX_YCLUIALIAS_H_

#include "foundation/YString.h"
#include "lex/YcluiKeyword.h"

// The text keeps its case. Every alias has the id YcluiIdAlias.
class YcluiAlias : public YcluiKeyword {
 public:
  YcluiAlias(const char* name, const char* text);

  const char* aliasText() const override;
  std::uint32_t aliasTextLength() const { return text_.length; }

 private:
  YString text_;
};

#endif  // LEX_YCLUIALIAS_H_
