// Reads texts with a lexer as a parser does, and returns the tokens as text.

#ifndef TESTS_SUPPORT_LEX_READER_H_
#define TESTS_SUPPORT_LEX_READER_H_

#include <string>

#include "lex/YcluiLex.h"

// A case of a table: a text and the expected result.
struct LexCase {
  const char* text;
  const char* shown;
};

// A lexer with these words, and one token, which is used for all texts:
//   now, del(ete), line: (two integers), name (a string), scale (a float), at (a point),
//   odd (an argument of no type), mix (integer, string, point, float), ";" (a delimiter),
//   go and Nothing (aliases of "now ;" and of the empty text)
class LexReader {
 public:
  YcluiLex lex;
  YcluiToken token;

  LexReader();

  // Appends the text to what the lexer has not read yet, and reads until nothing is left or a token
  // is under construction. Returns an item for each token, with blanks between them:
  //   now                 a word
  //   line:(i5,d7,p1;2)   arguments: i long, d double, p point, s string, ~ null
  //   line:(i5)...        under construction
  //   free:x:(sa)         an unknown word that announced arguments
  //   {text}              text to be read in place of the token
  //   set                 a variable was set
  //   ?word               refused without a code
  //   !number!point/warning   refused, with the codes in their order; see tests/support/codes.h
  // followed by |rest when text is left.
  std::string read(const std::string& text);

 private:
  std::string given_;

  std::string readToken();
};

// The values of a token's or a variable's, as above.
std::string Shown(const YAttribValue& value);

#endif  // TESTS_SUPPORT_LEX_READER_H_
