#include "language/LanguageRefusals.h"

#include <algorithm>
#include <cmath>

#include "foundation/YAscii.h"
#include "foundation/YCharacters.h"
#include "foundation/YErrCodes.h"
#include "lex/YcluiLex.h"

namespace yqrtClui {

namespace {

std::string Quoted(const std::string& text) {
  return "\"" + text + "\"";
}

std::string WordOf(const YcluiToken& token) {
  return token.string() == nullptr ? "" : token.string();
}

std::string NumberText(double number) {
  YString text;
  text << number;
  return text.buffer;
}

// "an integer from 0 to 9"
std::string InWords(const ArgumentDeclaration& argument) {
  std::string text = TypeInWords(argument.type);
  if (!std::isinf(argument.low)) text += " from " + NumberText(argument.low);
  if (!std::isinf(argument.high)) {
    text += (std::isinf(argument.low) ? " up to " : " to ") + NumberText(argument.high);
  }
  return text;
}

// "argument 2 of "at:" (HEIGHT)"
std::string ArgumentInWords(const std::string& word, int index,
                            const ArgumentDeclaration* argument) {
  std::string text = "argument " + std::to_string(index) + " of " + Quoted(word);
  if (argument != nullptr && !argument->name.empty()) text += " (" + argument->name + ")";
  return text;
}

const ArgumentDeclaration* FindArgument(const WordDeclaration* word, int index) {
  if (word == nullptr || index < 1) return nullptr;
  const auto slot = static_cast<std::size_t>(index) - 1;
  return slot < word->arguments.size() ? &word->arguments[slot] : nullptr;
}

// The part of an invalid text that is worth quoting.
std::string FaultOf(const char* text) {
  const char* end = text;
  while (*end != '\0' && *end != ',' && !YIsWhiteSpace(*end)) ++end;
  return std::string(text, end);
}

std::string CodeInWords(unsigned int code) {
  switch (code) {
    case YErrEndOfInput:
      return "the closing quote is missing";
    case YErrOutOfRange:
      return "the number is too large for an integer";
    case YErrBadPoint:
      return "expected a point, such as 12,34";
    case YErrNoSuchVariable:
      return "there is no such variable";
    case YErrTextTooLong:
      return "the text becomes too long";
    case YErrTooDeep:
      return "the nesting is too deep";
    default:
      return "it cannot be read";
  }
}

std::string ValueText(const YAttribValue& value) {
  if (value.tag == YAttribLong) return std::to_string(value.GetLong());
  if (value.tag == YAttribDouble) return NumberText(value.GetDouble());
  return value.GetString();
}

}  // namespace

std::string TypeInWords(ArgumentType type) {
  switch (type) {
    case ArgumentType::Integer:
      return "an integer";
    case ArgumentType::Number:
      return "a number";
    case ArgumentType::Point:
      return "a point";
    case ArgumentType::Text:
      break;
  }
  return "a text";
}

Refusal RefusedWord(const YcluiToken& token, unsigned int code) {
  Refusal refusal;
  refusal.code = code;
  refusal.found = WordOf(token);
  if (code == YErrInterruptRefused) {
    refusal.kind = Refusal::Kind::NotInterruptible;
    refusal.message = Quoted(refusal.found) + " cannot interrupt the command";
  } else if (token.id() == YcluiIdNone || token.id() == YcluiIdFreeWord) {
    refusal.kind = Refusal::Kind::UnknownWord;
    refusal.message = "unknown word " + Quoted(refusal.found);
  } else {
    refusal.kind = Refusal::Kind::NotAllowedHere;
    refusal.message = Quoted(refusal.found) + " is not allowed here";
  }
  return refusal;
}

Refusal RefusedLiteral(const YcluiLex& lex, const YcluiToken& token, const WordDeclaration* word,
                       unsigned int code) {
  Refusal refusal;
  refusal.code = code;
  refusal.found = FaultOf(lex.faultText());
  const int index = lex.faultArgument();
  const ArgumentDeclaration* argument = FindArgument(word, index);
  if (code == YErrNothing && argument == nullptr && word != nullptr) {
    refusal.kind = Refusal::Kind::TooManyArguments;
    refusal.message = "expected no argument after " +
                      ArgumentInWords(WordOf(token), index - 1, FindArgument(word, index - 1));
    return refusal;
  }
  refusal.kind = code == YErrNothing ? Refusal::Kind::MissingArgument
                 : index > 0         ? Refusal::Kind::BadArgument
                                     : Refusal::Kind::Unreadable;
  std::string fault = CodeInWords(code);
  if (argument != nullptr && (code == YErrNotANumber || code == YErrNothing)) {
    fault = "expected " + InWords(*argument) + ", found " +
            (refusal.found.empty() ? "nothing" : Quoted(refusal.found));
  }
  refusal.message =
      index > 0 ? ArgumentInWords(WordOf(token), index, argument) + ": " + fault : fault;
  return refusal;
}

Refusal RefusedValue(const YcluiToken& token, const WordDeclaration& word, int index) {
  Refusal refusal;
  const ArgumentDeclaration* argument = FindArgument(&word, index);
  refusal.found = ValueText(*token[index]);
  if (argument == nullptr) {
    refusal.kind = Refusal::Kind::TooManyArguments;
    refusal.message = Quoted(word.name) + " has " + std::to_string(word.arguments.size()) +
                      (word.arguments.size() == 1 ? " argument" : " arguments") + ", found " +
                      Quoted(refusal.found) + " as another";
    return refusal;
  }
  refusal.kind = Refusal::Kind::BadArgument;
  const std::string fault =
      argument->values.empty()
          ? "expected " + InWords(*argument) + ", found " + Quoted(refusal.found)
          : Quoted(refusal.found) + " is none of its values";
  refusal.message = ArgumentInWords(word.name, index, argument) + ": " + fault;
  refusal.expected = argument->values;
  return refusal;
}

bool IsAccepted(const YAttribValue& value, const ArgumentDeclaration& argument) {
  if (value.tag == YAttribLong || value.tag == YAttribDouble) {
    const double number = value.tag == YAttribLong ? value.GetLong() : value.GetDouble();
    return number >= argument.low && number <= argument.high;
  }
  const std::vector<std::string>& values = argument.values;
  const std::string_view text(value.GetString(), value.GetStringLength());
  return values.empty() || std::find(values.begin(), values.end(), text) != values.end();
}

std::size_t CountCharacters(std::string_view text) {
  if (YCharacters::IsAscii(text) || !YCharacters::CanConvert()) return text.size();
  std::u32string characters;
  YCharacters::AppendFromBytes(text, characters);
  return characters.size();
}

}  // namespace yqrtClui
