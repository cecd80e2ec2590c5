#include "host/CluiRefusal.h"

#include <strings.h>
#include <cstring>

#include "host/CluiLiteral.h"
#include "host/CluiMessages.h"
#include "host/CluiNearest.h"
#include "parser/YcluiParser.h"

namespace {

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

void MoveTo(CluiSpot& spot, std::size_t offset) {
  while (spot.offset < offset) {
    spot.offset += CluiStepAt(*spot.text, spot.offset);
    ++spot.character;
  }
}

}  // namespace

std::wstring CluiRefusal::explain(YcluiParser& parser, const CluiRefused& refused, CluiSpot& spot) {
  const YcluiToken& token = *refused.token;
  const std::wstring word = encoding_.fromSystem(WordOf(token));
  if (refused.offered && refused.code != 0) return CluiCodeText(refused.code);
  if (refused.code != 0) return explainArgument(parser, refused, spot);
  if (token.id() == YcluiIdNone || token.id() == YcluiIdFreeWord) {
    return explainUnknown(parser, word);
  }
  if (refused.offered) return explainMisplaced(parser, word);
  return explainArgument(parser, refused, spot);
}

std::wstring CluiRefusal::explainUnknown(YcluiParser& parser, const std::wstring& word) {
  const auto known = nearest_.find(word);
  if (known != nearest_.end()) return CluiUnknownText(word, known->second);
  if (nearest_.size() >= ComparedAtMost) return CluiUnknownText(word, std::wstring());
  std::vector<std::wstring> words;
  for (YAssocSetItr i(*parser.lex()->words()); i.item != nullptr; ++i) {
    words.push_back(encoding_.fromSystem(static_cast<const YcluiKeyword*>(i.item)->name()));
  }
  return CluiUnknownText(word, nearest_[word] = CluiNearest(word, words));
}

std::wstring CluiRefusal::explainMisplaced(YcluiParser& parser, const std::wstring& word) {
  YString_Array texts;
  parser.possibleWords(texts);
  std::vector<std::wstring> words;
  words.reserve(static_cast<std::size_t>(texts.size()));
  for (int i = 0; i < texts.size(); ++i) words.push_back(encoding_.fromSystem(texts[i].buffer));
  return CluiMisplacedText(word, words);
}

std::wstring CluiRefusal::explainArgument(YcluiParser& parser, const CluiRefused& refused,
                                          CluiSpot& spot) {
  std::wstring fault = refused.code == 0 ? L"it is missing" : CluiCodeText(refused.code);
  const char* word = WordOf(*refused.token);
  if (!StandsAt(spot, word)) return fault;
  const YcluiKeyword* keyword = parser.lex()->keyword(word);
  const int index = refused.token->argc();
  // Behind the declared arguments, and behind a word without any, all are strings.
  YcluiValueType type = keyword == nullptr ? YcluiValueNone : keyword->argType(index - 1);
  if (type == YcluiValueNone) type = YcluiValueString;
  MoveTo(spot, CluiArgumentOffset(*spot.text, spot.offset + std::strlen(word), index, keyword));
  return CluiArgumentText(encoding_.fromSystem(word), index, type, fault);
}
