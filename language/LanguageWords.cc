#include "language/LanguageWords.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "foundation/YAscii.h"
#include "parser/YcluiHelp.h"
#include "parser/YcluiParser.h"

namespace yqrtClui {

namespace {

std::string Quoted(std::string_view name) {
  return "\"" + std::string(name) + "\"";
}

std::string Folded(const std::string& name) {
  YString folded(name.c_str());
  folded.toLower();
  return folded.buffer;
}

// What the lexer would not read as one word.
bool CanBeTyped(const std::string& name) {
  if (name.empty() || name[0] == '#') return false;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const bool isLast = i + 1 == name.size();
    if (YIsWhiteSpace(name[i]) || name[i] == '\0' || (name[i] == ':' && !isLast)) return false;
    if (name[i] == '$' && !isLast && name[i + 1] == '{') return false;
  }
  return true;
}

bool IsPunctuation(char c) {
  const bool isVisible = c > ' ' && c < '\x7F';
  const bool isAlphanumeric = YIsDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
  return isVisible && !isAlphanumeric;
}

bool CanBeDelimiter(const std::string& name) {
  return name.size() == 1 && IsPunctuation(name[0]) &&
         std::string_view(":,\"'#$\\").find(name[0]) == std::string_view::npos;
}

std::string FaultOf(const ArgumentDeclaration& argument) {
  if (!(argument.low <= argument.high)) return "has a range that is empty";
  return {};
}

std::string FaultOf(const WordDeclaration& word) {
  if (word.isDelimiter && !CanBeDelimiter(word.name)) return "cannot be a delimiter";
  if (!CanBeTyped(word.name)) return "cannot be typed as one word";
  if (!Folded(word.name).starts_with(Folded(word.abbreviation))) {
    return "does not begin with its abbreviation " + Quoted(word.abbreviation);
  }
  for (std::size_t i = 0; i < word.arguments.size(); ++i) {
    const std::string fault = FaultOf(word.arguments[i]);
    if (!fault.empty()) return fault + " for argument " + std::to_string(i + 1);
  }
  return {};
}

bool AreAlike(const ArgumentDeclaration& one, const ArgumentDeclaration& other) {
  return one.type == other.type && one.low == other.low && one.high == other.high &&
         one.values == other.values && one.isFileName == other.isFileName;
}

bool AreAlike(const WordDeclaration& one, const WordDeclaration& other) {
  if (one.isDelimiter != other.isDelimiter) return false;
  if (Folded(one.abbreviation) != Folded(other.abbreviation)) return false;
  if (one.arguments.size() != other.arguments.size()) return false;
  for (std::size_t i = 0; i < one.arguments.size(); ++i) {
    if (!AreAlike(one.arguments[i], other.arguments[i])) return false;
  }
  return true;
}

bool IsRestricted(const ArgumentDeclaration& argument) {
  return !argument.values.empty() || !std::isinf(argument.low) || !std::isinf(argument.high);
}

int UnrestrictedArguments(const WordDeclaration& word) {
  const bool isRestricted = std::any_of(word.arguments.begin(), word.arguments.end(), IsRestricted);
  return isRestricted ? -1 : static_cast<int>(word.arguments.size());
}

YcluiValueType ValueTypeOf(ArgumentType type) {
  switch (type) {
    case ArgumentType::Integer:
      return YcluiValueInteger;
    case ArgumentType::Number:
      return YcluiValueFloat;
    case ArgumentType::Point:
      return YcluiValuePoint;
    case ArgumentType::Text:
      break;
  }
  return YcluiValueString;
}

void AddSuggestions(void* data, const char* /*typed*/, YString_Array& values) {
  const auto& function = *static_cast<const std::function<std::vector<std::string>()>*>(data);
  for (const std::string& each : function()) values.end() = each.c_str();
}

}  // namespace

std::string LanguageWords::declare(const Syntax& syntax) {
  if (syntax.kind() == Syntax::Kind::Word) return declareWord(syntax.word());
  for (const Syntax& part : syntax.parts()) {
    std::string fault = declare(part);
    if (!fault.empty()) return fault;
  }
  return {};
}

std::string LanguageWords::declareWord(const std::shared_ptr<const WordDeclaration>& word) {
  const std::string fault = FaultOf(*word);
  if (!fault.empty()) return "the word " + Quoted(word->name) + " " + fault;
  const std::string split = faultOfDelimiters(*word);
  if (!split.empty()) return split;
  const YcluiKeyword* known = parser_.lex()->keyword(word->name.c_str());
  if (known != nullptr) return compare(*word, known->id(), known->name());
  const std::uint32_t id = addToDictionary(*word, idOf(*word));
  // An abbreviation of another word may hide it, or be hidden by it.
  const YcluiKeyword* found = parser_.lex()->keyword(word->name.c_str());
  if (id == 0 || found == nullptr || found->id() != id) {
    return "the word " + Quoted(word->name) + " could not be found by its name";
  }
  keep(word, id);
  return {};
}

// The fault of a word that a delimiter would split.
std::string LanguageWords::faultOfDelimiters(const WordDeclaration& word) const {
  const auto fault = [](const std::string& name, char delimiter) {
    return "the word " + Quoted(name) + " contains the delimiter " +
           Quoted(std::string(1, delimiter));
  };
  if (!word.isDelimiter) {
    for (const char c : word.name) {
      if (parser_.lex()->isDelimiter(c)) return fault(word.name, c);
    }
    return {};
  }
  for (const Declared& each : declared_) {
    if (each.word == nullptr || each.word->isDelimiter) continue;
    const std::string& name = each.word->name;
    if (name.find(word.name) != std::string::npos) return fault(name, word.name[0]);
  }
  return {};
}

// The fault of a word whose name finds a word of the dictionary.
std::string LanguageWords::compare(const WordDeclaration& word, std::uint32_t id,
                                   const char* knownName) {
  const WordDeclaration* known = find(id);
  if (known == nullptr || Folded(word.name) != knownName) {
    return "the word " + Quoted(word.name) + " is also a form of the word " + Quoted(knownName);
  }
  if (AreAlike(*known, word)) return {};
  return "the word " + Quoted(word.name) + " is declared twice, with different arguments or forms";
}

std::uint32_t LanguageWords::addToDictionary(const WordDeclaration& word, std::uint32_t id) {
  YcluiLex& lex = *parser_.lex();
  if (word.isDelimiter) return lex.addKeyword(word.name[0], id);
  if (word.arguments.empty()) {
    const char* abbreviation = word.abbreviation.empty() ? nullptr : word.abbreviation.c_str();
    return lex.addKeyword(word.name.c_str(), abbreviation, id);
  }
  std::vector<YcluiValueType> types;
  for (const ArgumentDeclaration& each : word.arguments) types.push_back(ValueTypeOf(each.type));
  return lex.addKeyword(word.name.c_str(), static_cast<int>(types.size()), types.data(), id);
}

void LanguageWords::keep(const std::shared_ptr<const WordDeclaration>& word, std::uint32_t id) {
  if (declared_.empty()) firstId_ = id;
  const std::size_t index = id - firstId_;
  if (declared_.size() <= index) declared_.resize(index + 1);
  setHelp(*word, id);
  ids_[Folded(word->name)] = id;
  declared_[index] = {
      word, UnrestrictedArguments(
                *word)};  // the former declaration, if any, is not used by the help any more
}

void LanguageWords::setHelp(const WordDeclaration& word, std::uint32_t id) {
  YcluiHelp& help = parser_.help();
  help.setText(id, word.help.empty() ? nullptr : word.help.c_str());
  for (std::size_t i = 0; i < word.arguments.size(); ++i) {
    const ArgumentDeclaration& each = word.arguments[i];
    const int index = static_cast<int>(i) + 1;
    help.setArgument(id, index, each.name.empty() ? nullptr : each.name.c_str(),
                     each.help.empty() ? nullptr : each.help.c_str());
    if (!std::isinf(each.low) || !std::isinf(each.high)) {
      help.setRange(id, index, each.low, each.high);
    } else {
      help.removeRange(id, index);
    }
    help.setFileName(id, index, each.isFileName);
    YString_Array values;
    for (const std::string& value : each.values) values.end() = value.c_str();
    help.setValues(id, index, values);
    if (each.values.empty() && each.suggestions) {
      // The data is the function in the declaration, which is kept as long as the parser.
      help.setValues(id, index, AddSuggestions,
                     const_cast<std::function<std::vector<std::string>()>*>(&each.suggestions));
    }
  }
}

bool LanguageWords::remove(const WordDeclaration& word) {
  const std::uint32_t id = idOf(word);
  const YcluiKeyword* known = parser_.lex()->keyword(word.name.c_str());
  if (id == 0 || known == nullptr || known->id() != id) return false;
  return parser_.lex()->delKeyword(known->name()) != 0;
}

std::uint32_t LanguageWords::idOf(const WordDeclaration& word) const {
  const auto known = ids_.find(Folded(word.name));
  return known == ids_.end() ? 0 : known->second;
}

}  // namespace yqrtClui
