// A syntax from a short text.

#ifndef TESTS_SUPPORT_SYNTAX_H_
#define TESTS_SUPPORT_SYNTAX_H_

#include <string>

#include "lex/YcluiLex.h"
#include "syntax/YcluiSyntaxGraph.h"

// Words in sequence, "( a | b c )" alternatives, "*" behind the parenthesis repetition, "{command}"
// behind a word, "^120,126" behind a word its priority and limit.
YcluiSyntaxGraph* SyntaxOf(const YcluiLex& lex, const std::string& text);

// A node of a word.
YcluiSyntaxNode* NodeOf(const YcluiLex& lex, const std::string& word, const char* command);

#endif  // TESTS_SUPPORT_SYNTAX_H_
