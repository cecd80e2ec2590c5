// The messages of refusals. Internal to the language.

#ifndef LANGUAGE_LANGUAGEREFUSALS_H_
#define LANGUAGE_LANGUAGEREFUSALS_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "foundation/YAttribValue.h"
#include "language/Argument.h"
#include "language/Result.h"
#include "language/Syntax.h"
#include "lex/YcluiToken.h"

class YcluiLex;

namespace yqrtClui {

// "an integer"
std::string TypeInWords(ArgumentType type);

// A word that the lexer has read and the syntax refused, or that no word matches.
Refusal RefusedWord(const YcluiToken& token, unsigned int code);
// A word that the lexer could not read. `word` is its declaration, or null.
Refusal RefusedLiteral(const YcluiLex& lex, const YcluiToken& token, const WordDeclaration* word,
                       unsigned int code);
// An argument, counted from 1, that is not one of those that its word declares.
Refusal RefusedValue(const YcluiToken& token, const WordDeclaration& word, int index);

// Whether a value is in the declared range, and one of the declared values.
bool IsAccepted(const YAttribValue& value, const ArgumentDeclaration& argument);

// The number of characters of a text.
std::size_t CountCharacters(std::string_view text);

}  // namespace yqrtClui

#endif  // LANGUAGE_LANGUAGEREFUSALS_H_
