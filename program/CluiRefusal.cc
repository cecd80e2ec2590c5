#include "program/CluiRefusal.h"

#include <strings.h>

#include <cstring>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "foundation/YErrCodes.h"
#include "parser/YcluiParser.h"
#include "program/CluiLiteral.h"
#include "program/CluiNearest.h"
#include "program/text/CluiMessages.h"

namespace {

using NameSet = std::unordered_set<std::string_view>;
using NameMarks = std::unordered_map<std::string_view, bool>;

// Marks those of the names, views of the dictionary's, that can come next.
void MarkPossible(const YcluiParser& parser, NameMarks& marks) {
  if (marks.empty()) return;
  const auto mark = [](void* all, const char* name) {
    NameMarks& names = *static_cast<NameMarks*>(all);
    const auto found = names.find(name);
    if (found != names.end()) found->second = true;
  };
  parser.eachPossibleWord("", mark, &marks);
}

// By which a word stands in the syntax; empty when there is none.
std::string_view NameOf(YcluiParser& parser, const YcluiKeyword& word) {
  const char* name = parser.lex()->keyword(word.id());
  return name == nullptr ? "" : name;
}

const char* WordOf(const YcluiToken& token) {
  return token.string() == nullptr ? "" : token.string();
}

// Whether the word itself stands at the spot. It does not when it came out of a nested text, and
// when a variable form failed, for which the token still shows what was read before.
bool StandsAt(const CluiSpot& spot, const char* word) {
  const std::size_t length = std::strlen(word);
  return length > 0 && spot.text->size() - spot.offset >= length &&
         strncasecmp(spot.text->c_str() + spot.offset, word, length) == 0;
}

bool OpensVariable(const std::string& text, std::size_t place) {
  return text.compare(place, 2, "${") == 0;
}

bool IsQuote(const std::string& text, std::size_t place) {
  return place < text.size() && (text[place] == '"' || text[place] == '\'');
}

// What is wrong with the literal at a place of a text.
std::wstring LiteralFault(unsigned int code, const std::string& text, std::size_t place) {
  if (code == 0) return L"it is missing";
  if (code == YErrEndOfInput && IsQuote(text, place)) return L"the quote is not closed";
  if (code == YErrNotANumber && OpensVariable(text, place)) {
    return L"the value of the variable is no number";
  }
  return CluiCodeText(code);
}

std::wstring RestText(unsigned int code, const std::string& text, std::size_t place) {
  if (code == 0 || !CluiHasRest(text, place)) return std::wstring();
  const std::size_t next = text.find('\n', place);
  const bool isOneLine = next == std::string::npos || CluiIsBlank(text.substr(next));
  return isOneLine ? L"; the rest of the line is skipped" : L"; the rest of both lines is skipped";
}

}  // namespace

std::wstring CluiRefusal::explain(YcluiParser& parser, const CluiLine& line,
                                  const CluiRefused& refused, CluiSpot& spot) {
  line_ = &line;
  const YcluiToken& token = *refused.token;
  const std::wstring word = encoding_.fromSystem(WordOf(token));
  if (refused.offered && refused.code == YErrInterruptRefused) {
    return CluiWaitingText(word, waitingLine(parser));
  }
  if (refused.offered && refused.code != 0) return CluiCodeText(refused.code);
  if (refused.code != 0) return explainArgument(parser, refused, spot);
  if (token.id() == YcluiIdNone || token.id() == YcluiIdFreeWord) {
    return explainUnknown(parser, WordOf(token));
  }
  if (refused.offered) return explainMisplaced(parser, word, refused.inside);
  return explainArgument(parser, refused, spot);
}

std::wstring CluiRefusal::explainUnknown(YcluiParser& parser, const char* word) {
  const std::wstring typed = encoding_.fromSystem(word);
  if (compared_ >= ComparedAtMost) return CluiUnknownText(typed, std::wstring());
  ++compared_;
  const CluiNearGlance glance(word);
  std::vector<const YcluiKeyword*> near;
  NameMarks possible;
  for (YAssocSetItr i(*parser.lex()->words()); i.item != nullptr; ++i) {
    const auto* record = static_cast<const YcluiKeyword*>(i.item);
    if (!glance.mayBeMeant(record->name())) continue;
    near.push_back(record);
    possible.emplace(NameOf(parser, *record), false);
  }
  MarkPossible(parser, possible);
  std::vector<std::wstring> here;
  std::vector<std::wstring> away;
  for (const YcluiKeyword* record : near) {
    const bool isHere = possible[NameOf(parser, *record)];
    (isHere ? here : away).push_back(encoding_.fromSystem(record->name()));
  }
  const std::size_t count = here.size();
  here.insert(here.end(), away.begin(), away.end());
  return CluiUnknownText(typed, CluiNearest(typed, here, count));
}

// What the current frame interrupts.
std::wstring CluiRefusal::waitingLine(const YcluiParser& parser) const {
  std::string line = parser.wholeLine();
  line.resize(line.size() - std::strlen(parser.currentLine()));
  if (!line.empty() && line.back() == ' ') line.pop_back();
  return encoding_.fromSystem(line);
}

std::wstring CluiRefusal::explainMisplaced(YcluiParser& parser, const std::wstring& word,
                                           bool inside) {
  YString_Array syntax;
  parser.completionList("", syntax);
  NameSet expected;
  for (int i = 0; i < syntax.size(); ++i) expected.insert(syntax[i].buffer);
  YString_Array all;
  parser.possibleWords(all);
  CluiPossible possible;
  for (int i = 0; i < all.size(); ++i) {
    const bool isHere = expected.count(all[i].buffer) > 0;
    (isHere ? possible.here : possible.anywhere).push_back(encoding_.fromSystem(all[i].buffer));
  }
  const std::wstring line = inside ? encoding_.fromSystem(parser.currentLine()) : std::wstring();
  return CluiMisplacedText(word, line, possible);
}

std::wstring CluiRefusal::explainArgument(YcluiParser& parser, const CluiRefused& refused,
                                          CluiSpot& spot) {
  const char* word = WordOf(*refused.token);
  if (!StandsAt(spot, word)) return explainForm(parser, refused, spot);
  const std::string text = line_->textFrom(spot);
  const YcluiKeyword* keyword = parser.lex()->keyword(word);
  const int index = refused.token->argc();
  // Behind the declared arguments, and behind a word without any, all are strings.
  YcluiValueType type = keyword == nullptr ? YcluiValueNone : keyword->argType(index - 1);
  if (type == YcluiValueNone) type = YcluiValueString;
  const CluiArgumentPlace place =
      CluiFindArgument(text, spot.offset + std::strlen(word), line_->cutOf(spot), index, keyword);
  const std::size_t line = spot.line;
  line_->move(spot, place.offset);
  std::wstring fault = LiteralFault(refused.code, text, place.offset);
  if (!place.separated) fault += brokenText(encoding_.fromSystem(word), line, spot);
  fault += RestText(refused.code, text, place.offset);
  return CluiArgumentText(encoding_.fromSystem(word), line == spot.line ? 0 : line, index, type,
                          fault);
}

void CluiRefusal::moveToArgument(YcluiParser& parser, const CluiLine& line, const YcluiToken& token,
                                 int index, CluiSpot& spot) {
  const char* word = WordOf(token);
  if (!StandsAt(spot, word)) return;
  const std::size_t behind = spot.offset + std::strlen(word);
  const YcluiKeyword* keyword = parser.lex()->keyword(word);
  const std::string text = line.textFrom(spot);
  line.move(spot, CluiFindArgument(text, behind, line.cutOf(spot), index, keyword).offset);
}

// Behind a word that the line does not show: a number is known to be an argument's, and so is what
// is missing.
std::wstring CluiRefusal::explainNested(YcluiParser& parser, const CluiRefused& refused) const {
  std::wstring fault = LiteralFault(refused.code, "", 0);
  const bool isNumber = refused.code == YErrNotANumber || refused.code == YErrBadPoint ||
                        refused.code == YErrOutOfRange;
  const char* word = WordOf(*refused.token);
  const YcluiKeyword* keyword = parser.lex()->keyword(word);
  const int index = refused.token->argc();
  const bool isDeclared = keyword != nullptr && index <= keyword->argCount();
  if (refused.code != 0 && !(isNumber && isDeclared)) return fault;
  const YcluiValueType type = isDeclared ? keyword->argType(index - 1) : YcluiValueString;
  return CluiArgumentText(encoding_.fromSystem(word), 0, index, type, fault);
}

// Of a variable form in the place of a word. Anything else comes out of a nested text, and its
// fault costs nothing of the line.
std::wstring CluiRefusal::explainForm(YcluiParser& parser, const CluiRefused& refused,
                                      const CluiSpot& spot) {
  const std::string text = line_->textFrom(spot);
  if (parser.lex()->suspendedTexts() > 0 || !OpensVariable(text, spot.offset)) {
    return explainNested(parser, refused);
  }
  const std::size_t setting = text.find("}=", spot.offset);
  const bool sets = setting != std::string::npos && IsQuote(text, setting + 2);
  return LiteralFault(refused.code, text, sets ? setting + 2 : spot.offset) +
         RestText(refused.code, text, spot.offset);
}

// An argument that no comma follows, though more are wanted, ends its line for the time being: that
// is told where the next one was looked for.
std::wstring CluiRefusal::brokenText(const std::wstring& word, std::size_t line,
                                     const CluiSpot& spot) const {
  if (spot.line != line) return L"; that line broke off without a comma";
  if (line_->isNow(spot)) return std::wstring();
  return L"; the arguments of " + CluiQuoted(word) +
         L" broke off here and go on with the next line";
}
