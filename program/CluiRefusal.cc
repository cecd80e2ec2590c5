#include "program/CluiRefusal.h"

#include <cstring>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "foundation/YErrCodes.h"
#include "parser/YcluiParser.h"
#include "program/CluiNearest.h"
#include "program/CluiTextEnd.h"
#include "program/text/CluiMessages.h"

namespace {

using NameSet = std::unordered_set<std::string_view>;
using NameMarks = std::unordered_map<std::string_view, bool>;

// Sets the mark of each name that can come next.
void MarkPossible(const YcluiParser& parser, NameMarks& marks) {
  if (marks.empty()) return;
  const auto mark = [](void* all, const char* name) {
    NameMarks& names = *static_cast<NameMarks*>(all);
    const auto found = names.find(name);
    if (found != names.end()) found->second = true;
  };
  parser.eachPossibleWord("", mark, &marks);
}

// The name that the dictionary lists for the word's id; empty when there is none.
std::string_view NameOf(YcluiParser& parser, const YcluiKeyword& word) {
  const char* name = parser.lex()->keyword(word.id());
  return name == nullptr ? "" : name;
}

const char* WordOf(const YcluiToken& token) {
  return token.string() == nullptr ? "" : token.string();
}

constexpr char WhiteSpace[] = " \t\r\n\v\f";

// The part of a text with a fault that is worth quoting: up to white space or a comma, or a whole
// variable.
std::string FoundIn(const std::string& text, unsigned int code) {
  if (!text.starts_with("${")) {
    const std::string ends = code == YErrBadPoint ? WhiteSpace : WhiteSpace + std::string(",");
    return text.substr(0, text.find_first_of(ends, 1));
  }
  std::size_t end = text.find('}') + 1;
  if (text[end] == '[') end = text.find(']', end) + 1;
  return text.substr(0, end);
}

// The text of the input that is lost with a fault. `text` starts at the fault; what follows it in
// the text of a command or an alias does not count.
CluiSkipped SkippedIn(const std::string& text, const CluiSpot& fault) {
  const std::size_t end = text.find_first_of(WhiteSpace, 1);
  if (end == std::string::npos || CluiIsBlank(text.substr(end))) return CluiSkipped::Nothing;
  if (fault.text->compare(fault.offset, end, text, 0, end) != 0) return CluiSkipped::Nothing;
  const std::size_t next = text.find('\n');
  const bool isOneLine = next == std::string::npos || CluiIsBlank(text.substr(next));
  return isOneLine ? CluiSkipped::Line : CluiSkipped::BothLines;
}

std::wstring SkippedText(CluiSkipped skipped) {
  switch (skipped) {
    case CluiSkipped::Line:
      return L"; the rest of the line is skipped";
    case CluiSkipped::BothLines:
      return L"; the rest of both lines is skipped";
    case CluiSkipped::Nothing:
      break;
  }
  return std::wstring();
}

// When a comma is missing between arguments, the lexer stops reading the line and expects the next
// argument in the next one. This explains a fault that is found there.
std::wstring BrokenText(const std::wstring& word, const CluiLine& line, const CluiSpot& begin,
                        const CluiSpot& fault) {
  if (begin.line > 0 && fault.line != begin.line) return L"; that line ended without a comma";
  if (line.isNow(fault)) return std::wstring();
  return L"; the arguments of " + CluiQuoted(word) + L" stop here and continue in the next line";
}

}  // namespace

std::wstring CluiRefusal::explain(YcluiParser& parser, const CluiLine& line,
                                  const CluiRefused& refused, CluiSpot& spot) {
  const YcluiToken& token = *refused.token;
  const std::wstring word = encoding_.fromSystem(WordOf(token));
  if (refused.offered && refused.code == YErrInterruptRefused) {
    return CluiWaitingText(word, waitingLine(parser));
  }
  if (refused.offered && refused.code != 0) return CluiCodeText(refused.code);
  if (refused.code != 0) return explainFault(parser, line, refused, spot);
  if (token.id() == YcluiIdNone || token.id() == YcluiIdFreeWord) {
    return explainUnknown(parser, WordOf(token));
  }
  if (refused.offered) return explainMisplaced(parser, word, refused.inside);
  return explainFault(parser, line, refused, spot);
}

std::wstring CluiRefusal::reason(YcluiParser& parser, const CluiRefused& refused) const {
  const YcluiToken& token = *refused.token;
  if (refused.offered && refused.code == YErrInterruptRefused) {
    return L"barred by the priority of " + CluiQuoted(waitingLine(parser));
  }
  if (refused.offered && refused.code != 0) return CluiCodeText(refused.code);
  const bool isUnknown = token.id() == YcluiIdNone || token.id() == YcluiIdFreeWord;
  if (refused.code == 0 && isUnknown) return L"no such word";
  if (refused.code == 0 && refused.offered)
    return L"not here" + CluiExpectedText(possibleWords(parser));
  const YcluiLex& lex = *parser.lex();
  const std::wstring fault =
      faultText(parser, token, refused.code, FoundIn(lex.faultText(), refused.code));
  if (lex.faultArgument() == 0) return fault;
  return L"argument " + std::to_wstring(lex.faultArgument()) + L": " + fault;
}

CluiSkipped CluiRefusal::skipped(YcluiParser& parser, const CluiRefused& refused) const {
  YcluiLex& lex = *parser.lex();
  if (refused.offered || refused.code == 0 || lex.more() != 0) return CluiSkipped::Nothing;
  return SkippedIn(lex.faultText(), refused.fault);
}

std::wstring CluiRefusal::explainUnknown(YcluiParser& parser, const char* word) {
  const std::wstring typed = encoding_.fromSystem(word);
  if (compared_ >= ComparedAtMost) return CluiUnknownText(typed, std::wstring());
  ++compared_;
  const CluiNearFilter filter(word);
  std::vector<const YcluiKeyword*> near;
  NameMarks possible;
  for (YAssocSetItr i(*parser.lex()->words()); i.item != nullptr; ++i) {
    const auto* record = static_cast<const YcluiKeyword*>(i.item);
    if (!filter.mayMatch(record->name())) continue;
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

// The command line of the frames below the current one.
std::wstring CluiRefusal::waitingLine(const YcluiParser& parser) const {
  std::string line = parser.wholeLine();
  line.resize(line.size() - std::strlen(parser.currentLine()));
  if (!line.empty() && line.back() == ' ') line.pop_back();
  return encoding_.fromSystem(line);
}

CluiPossible CluiRefusal::possibleWords(YcluiParser& parser) const {
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
  return possible;
}

std::wstring CluiRefusal::explainMisplaced(YcluiParser& parser, const std::wstring& word,
                                           bool inside) {
  const std::wstring line = inside ? encoding_.fromSystem(parser.currentLine()) : std::wstring();
  return CluiMisplacedText(word, line, possibleWords(parser));
}

std::wstring CluiRefusal::explainFault(YcluiParser& parser, const CluiLine& line,
                                       const CluiRefused& refused, CluiSpot& spot) const {
  YcluiLex& lex = *parser.lex();
  const std::wstring word = encoding_.fromSystem(WordOf(*refused.token));
  const CluiSpot begin = std::exchange(spot, refused.fault);
  const std::string text = lex.faultText();
  const std::string found = FoundIn(text, refused.code);
  std::wstring fault = faultText(parser, *refused.token, refused.code, found);
  const int index = lex.faultArgument();
  if (index > 1 && !lex.faultIsSeparated()) fault += BrokenText(word, line, begin, spot);
  fault += SkippedText(skipped(parser, refused));
  if (index == 0) return fault;
  return CluiArgumentText(word, begin.line == spot.line ? 0 : begin.line, index, fault);
}

// The fault of a literal.
std::wstring CluiRefusal::faultText(const YcluiParser& parser, const YcluiToken& token,
                                    unsigned int code, const std::string& found) const {
  const YcluiLex& lex = *parser.lex();
  const int index = lex.faultArgument();
  const YcluiKeyword* keyword = lex.keyword(WordOf(token));
  const std::wstring quoted = CluiQuoted(encoding_.fromSystem(found));
  // Arguments beyond the declared ones are strings.
  YcluiValueType type = keyword == nullptr ? YcluiValueNone : keyword->argType(index - 1);
  if (type == YcluiValueNone) type = YcluiValueString;
  if (lex.argumentOffset(index) != lex.faultOffset()) type = YcluiValueFloat;  // of an index
  switch (code) {
    case 0:
      return L"expected a string, found nothing";
    case YErrNotANumber: {
      const std::wstring text = L"expected " + CluiTypeText(type) + L", found " + quoted;
      if (!found.starts_with("${")) return text;
      return text + (type == YcluiValueString ? L", whose value has no text"
                                              : L", whose value is not a number");
    }
    case YErrBadPoint:
    case YErrOutOfRange:
      return CluiCodeText(code) + L", found " + quoted;
    case YErrNoSuchVariable:
      return L"no such variable " + quoted;
    default:
      return CluiCodeText(code);
  }
}
