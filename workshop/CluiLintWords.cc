// Checks of the words.

#include <algorithm>
#include <set>

#include "foundation/YAscii.h"
#include "lex/YcluiToken.h"
#include "workshop/CluiLintChecks.h"

namespace {

bool IsType(int type) {
  return type >= 1 && type <= 4;
}

bool HasTypes(const CluiWord& word) {
  return std::all_of(word.types.begin(), word.types.end(), IsType);
}

std::string InLowerCase(std::string text) {
  for (char& c : text) c = YLowerCase(c);
  return text;
}

// The declaration of a word of the dictionary, null when it was not recorded.
const CluiWord* DeclarationOf(const CluiGrammar& grammar, const YcluiKeyword& keyword) {
  for (const CluiWord& word : grammar.words) {
    if (word.id == keyword.id() && InLowerCase(word.name) == keyword.name()) return &word;
  }
  return nullptr;
}

// The word with an argument for each of its types, as a recording contains it.
std::string RecordedText(const CluiWord& word) {
  std::string text = word.name;
  for (std::size_t i = 0; i < word.types.size(); ++i) {
    if (i > 0) text += ",";
    constexpr const char* Samples[] = {"", "\"a\"", "1.5", "1", "1,2"};
    text += Samples[word.types[i]];
  }
  return text;
}

bool ReadsBack(YcluiLex& lexer, const CluiWord& word) {
  lexer.setString(RecordedText(word).c_str());
  YcluiToken token;
  const bool isRead = lexer.more() != 0 && lexer.getNextToken(token) != 0 && lexer.more() == 0;
  lexer.reset();
  return isRead && token.id() == word.id && token.underConstruction() == 0 &&
         token.argc() == static_cast<int>(word.types.size()) + 1;
}

void CollectIds(const CluiFragment& fragment, std::set<std::uint32_t>& ids) {
  if (fragment.kind == CluiFragment::Kind::Word) ids.insert(fragment.tokenId);
  for (const CluiFragment& part : fragment.parts) CollectIds(part, ids);
}

}  // namespace

void CluiCheckTypes(CluiLintedLanguage& language) {
  for (const CluiWord& word : language.grammar.words) {
    for (std::size_t i = 0; i < word.types.size(); ++i) {
      if (IsType(word.types[i])) continue;
      language.add(word.place, "argument-type", CluiInQuotes(word.name),
                   "argument " + std::to_string(i + 1) + " has the type " +
                       std::to_string(word.types[i]) +
                       ", which does not exist; use 1 string, 2 float, 3 integer or 4 point");
    }
  }
}

void CluiCheckRepeatedWords(CluiLintedLanguage& language) {
  for (const CluiWord& word : language.grammar.refusedWords) {
    const YcluiKeyword* const keyword = language.lexer.keyword(word.name.c_str());
    if (keyword == nullptr) continue;
    const CluiWord* const other = DeclarationOf(language.grammar, *keyword);
    std::string text;
    if (keyword->type() == YcluiTokenAlias) {
      text = "there is an alias of that name; give one of them another name";
    } else if (InLowerCase(word.name) != keyword->name()) {
      text = "the name is a short form of " + CluiInQuotes(keyword->name()) +
             (other != nullptr ? CluiAtPlace(other->place) : "") +
             "; declare it before that word, or give that one a longer short form";
    } else {
      const bool isSame = other != nullptr && other->name == word.name;
      text =
          std::string(isSame ? "it is declared already" : "it is declared in other capitals") +
          (other != nullptr ? CluiAtPlace(other->place) : "") +
          (isSame ? "; remove one of the two" : ", which are no difference; remove one of the two");
    }
    language.add(word.place, "repeated-word", CluiInQuotes(word.name), text);
  }
}

void CluiCheckHiddenWords(CluiLintedLanguage& language) {
  for (const CluiWord& word : language.grammar.words) {
    const YcluiKeyword* const found = language.lexer.keyword(word.name.c_str());
    if (found == nullptr || found->id() == word.id) continue;
    const CluiWord* const hiding = DeclarationOf(language.grammar, *found);
    if (hiding == nullptr) {
      language.add(
          word.place, "hidden-word", CluiInQuotes(word.name),
          "its name is read as " + CluiInQuotes(found->name()) + "; give one of them another name");
      continue;
    }
    language.add(hiding->place, "hidden-word", CluiInQuotes(word.name),
                 CluiInQuotes(hiding->name) + " hides it by the short form " +
                     CluiInQuotes(hiding->abbreviation) + "; use a longer short form, or declare " +
                     CluiInQuotes(word.name) + " before");
  }
}

void CluiCheckRecordings(CluiLintedLanguage& language) {
  for (const CluiWord& word : language.grammar.words) {
    const YcluiKeyword* const found = language.lexer.keyword(word.name.c_str());
    const bool isHidden = found != nullptr && found->id() != word.id;
    if (isHidden || !HasTypes(word) || ReadsBack(language.lexer, word)) continue;
    const std::string shown = "a recording writes " + CluiInQuotes(RecordedText(word)) +
                              ", which is not read as this word; ";
    std::string mend = "use another name";
    if (!word.types.empty()) mend = "end its name with a colon";
    if (!word.abbreviation.empty() && found == nullptr) {
      mend = "use a short form that is a beginning of the name";
    }
    language.add(word.place, "unrecorded-word", CluiInQuotes(word.name), shown + mend);
  }
}

void CluiCheckUnusedWords(CluiLintedLanguage& language) {
  if (language.recorder.maySetSyntax()) return;
  std::set<std::uint32_t> used;
  CollectIds(language.grammar.syntax, used);
  for (const CluiFragment& syntax : language.grammar.formerSyntaxes) CollectIds(syntax, used);
  for (const CluiFragment* fragment : language.recorder.unusedFragments()) {
    CollectIds(*fragment, used);
  }
  for (const CluiAnywhereWord& word : language.grammar.anywhere) used.insert(word.tokenId);
  for (const CluiWord& word : language.grammar.words) {
    if (used.contains(word.id)) continue;
    language.add(word.place, "unused-word", CluiInQuotes(word.name),
                 "it is in no syntax, so it is always refused; use it in one, or remove it");
  }
}
