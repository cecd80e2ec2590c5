// Words from a short text, and a syntax of such words.

#ifndef TESTS_SUPPORT_WORDS_H_
#define TESTS_SUPPORT_WORDS_H_

#include <algorithm>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "lex/YcluiLex.h"
#include "tests/support/syntax.h"

// "go box/ii mo=m ; al->go_go" declares a word without arguments, one with two integers (s a
// string, f a float, p a point, ? no type), one that can be shortened, one of one byte, and an
// alias. Their ids come from `id` on, or from the lexer when it is 0.
inline void Declare(YcluiLex& lex, const std::string& words, std::uint32_t id = 0) {
  std::istringstream in(words);
  for (std::string word; in >> word; id += id == 0 ? 0 : 1) {
    const std::size_t mark = std::min(word.find_first_of("/=-", 1), word.size());
    const std::string name = word.substr(0, mark);
    std::string rest = word.substr(std::min(mark + 1, word.size()));
    if (word[mark] == '-') {
      std::replace(rest.begin(), rest.end(), '_', ' ');
      lex.addAlias(name.c_str(), rest.c_str() + 1);
    } else if (word[mark] == '/') {
      const char letters[] = "?sfip";
      std::vector<YcluiValueType> types;
      for (const char letter : rest) {
        types.push_back(YcluiValueType(std::strchr(letters, letter) - letters));
      }
      lex.addKeyword(name.c_str(), static_cast<int>(types.size()), types.data(), id);
    } else if (name == ";") {
      lex.addKeyword(';', id);
    } else {
      lex.addKeyword(name.c_str(), word[mark] == '=' ? rest.c_str() : nullptr, id);
    }
  }
}

// 0 for a word that the lexer does not know.
inline unsigned long IdOfWord(const YcluiLex& lex, const std::string& word) {
  const YcluiKeyword* found = lex.keyword(word.c_str());
  return found == nullptr ? 0 : found->id();
}

// See tests/support/syntax.h.
inline std::unique_ptr<YcluiSyntaxGraph> SyntaxOf(const YcluiLex& lex, const std::string& text) {
  return SyntaxOf(text, [&lex](const std::string& word) { return IdOfWord(lex, word); });
}

#endif  // TESTS_SUPPORT_WORDS_H_
