#include "workshop/CluiVocabulary.h"

#include <cmath>
#include <cstring>

#include "foundation/YCharacters.h"
#include "foundation/YNumber.h"
#include "lex/YcluiKeyword.h"
#include "lex/YcluiLex.h"
#include "lex/YcluiVariable.h"
#include "parser/YcluiHelp.h"
#include "parser/YcluiParser.h"

namespace {

std::string TextOf(const char* bytes) {
  return bytes == nullptr ? std::string() : YCharacters::Utf8FromBytes(bytes);
}

const char* TypeText(YcluiValueType type) {
  switch (type) {
    case YcluiValueFloat:
      return "number";
    case YcluiValueInteger:
      return "integer";
    case YcluiValuePoint:
      return "point";
    default:
      return "string";
  }
}

std::string NumberText(double number) {
  char room[YNumberRoom];
  return {room, YPrintDouble(number, room)};
}

std::string RangeText(double low, double high) {
  if (std::isinf(low) && std::isinf(high)) return "";
  if (std::isinf(low)) return "at most " + NumberText(high);
  if (std::isinf(high)) return "at least " + NumberText(low);
  return NumberText(low) + " to " + NumberText(high);
}

std::string ValueText(const YAttribValue& value) {
  YStatus status = {0};
  switch (value.tag) {
    case YAttribLong:
      return std::to_string(value.GetLong());
    case YAttribDouble:
      return NumberText(value.GetDouble());
    case YAttribPoint: {
      const std::string x = std::to_string(value.GetPointX(status));
      return x + "," + std::to_string(value.GetPointY(status));
    }
    case YAttribString:
      return "\"" + TextOf(value.GetString()) + "\"";
    default:
      return "";
  }
}

// The elements that are shown of an array.
constexpr std::uint32_t MostElements = 20;

std::string VariableText(YcluiVariable& variable) {
  // Its value would make every page different.
  if (std::strcmp(variable.name(), "presenttime") == 0) return "the present date and time";
  if (const YAttribValue* value = variable.valuePointer()) return ValueText(*value);
  std::string text;
  for (std::uint32_t i = 0; i < variable.elementCount(); ++i) {
    if (i == MostElements) return text + ", \u2026";
    text += (i == 0 ? "" : ", ") + ValueText(*variable.element(i));
  }
  return text;
}

std::size_t ShortestOf(const YcluiKeyword& keyword, const std::string& name) {
  const char* const abbreviation = keyword.abbreviation();
  return abbreviation == nullptr ? name.size() : TextOf(abbreviation).size();
}

}  // namespace

CluiVocabulary::CluiVocabulary(const YcluiParser& parser) : parser_(parser) {
  const YcluiLex* const lex = parser.lex();
  if (lex == nullptr || lex->words() == nullptr) return;
  for (YAssocSetItr i(*lex->words()); i.item != nullptr; ++i) {
    const auto& keyword = static_cast<const YcluiKeyword&>(*i.item);
    if (keyword.id() == YcluiIdAlias) {
      aliases_.push_back({TextOf(keyword.name()), TextOf(keyword.aliasText())});
    } else {
      addWord(keyword);
    }
  }
  addVariables();
}

void CluiVocabulary::addWord(const YcluiKeyword& keyword) {
  CluiWordText& word = words_[keyword.id()];
  const std::string name = TextOf(keyword.name());
  word.spellings.push_back({name, ShortestOf(keyword, name)});
  if (word.spellings.size() > 1) return;
  word.text = TextOf(parser_.help().text(keyword.id()));
  addArguments(keyword, word);
}

void CluiVocabulary::addArguments(const YcluiKeyword& keyword, CluiWordText& word) {
  const YcluiHelp& help = parser_.help();
  for (int index = 1;; ++index) {
    const bool isDeclared = index <= keyword.argCount();
    const bool hasHelp = help.argumentName(keyword.id(), index) != nullptr ||
                         help.argumentText(keyword.id(), index) != nullptr;
    if (!isDeclared && !hasHelp) return;
    CluiWordArgument argument = argumentOf(keyword.id(), index);
    argument.isOptional = !isDeclared;
    argument.type = TypeText(isDeclared ? keyword.argType(index - 1) : YcluiValueString);
    if (argument.name.empty()) argument.name = argument.type;
    word.arguments.push_back(argument);
  }
}

CluiWordArgument CluiVocabulary::argumentOf(std::uint32_t id, int index) const {
  const YcluiHelp& help = parser_.help();
  CluiWordArgument argument;
  argument.name = TextOf(help.argumentName(id, index));
  argument.text = TextOf(help.argumentText(id, index));
  double low = 0;
  double high = 0;
  if (help.range(id, index, low, high)) argument.range = RangeText(low, high);
  argument.isFile = help.isFileName(id, index);
  YString_Array values;
  help.findValues(id, index, "", values);
  for (int i = 0; i < values.size(); ++i) argument.values.push_back(TextOf(values.at(i).buffer));
  return argument;
}

void CluiVocabulary::addVariables() {
  const YDictionary* const variables = parser_.lex()->variables();
  if (variables == nullptr) return;
  for (YAssocSetItr i(*variables); i.item != nullptr; ++i) {
    auto& variable = static_cast<YcluiVariable&>(*i.item);
    variables_.push_back({TextOf(variable.name()), VariableText(variable)});
  }
}

const CluiWordText& CluiVocabulary::word(std::uint32_t id) const {
  CluiWordText& word = words_[id];
  if (word.spellings.empty()) {
    const std::string name = "(no word has the id " + std::to_string(id) + ")";
    word.spellings.push_back({name, name.size()});
  }
  return word;
}

std::uint32_t CluiVocabulary::find(std::string_view name) const {
  const YcluiLex* const lex = parser_.lex();
  if (lex == nullptr) return 0;
  const std::string bytes = YCharacters::BytesFromUtf8(name);
  for (const std::string& form : {bytes, bytes + ":"}) {
    const YcluiKeyword* const keyword = lex->keyword(form.c_str());
    if (keyword != nullptr && keyword->id() != YcluiIdAlias) return keyword->id();
  }
  return 0;
}

void CluiVocabulary::setAnywhere(std::uint32_t id) {
  word(id);
  words_[id].isAnywhere = true;
}
