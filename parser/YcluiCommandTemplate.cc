#include "parser/YcluiCommandTemplate.h"

#include <cstdint>
#include <cstring>

#include "foundation/YAscii.h"
#include "foundation/YcluiLimits.h"

namespace {

// Larger than any number of tokens or arguments, so further digits make no difference.
constexpr long Beyond = 1L << 40;

// Reads white space, a sign and digits, and returns their end. Without a digit the number is 0 and
// the result is `from`.
const char* ReadNumber(const char* from, long& number) {
  number = 0;
  const char* at = from;
  while (YIsWhiteSpace(*at)) ++at;
  const bool isNegative = *at == '-';
  if (*at == '-' || *at == '+') ++at;
  if (!YIsDigit(*at)) return from;
  for (; YIsDigit(*at); ++at) {
    if (number < Beyond) number = number * 10 + (*at - '0');
  }
  if (isNegative) number = -number;
  return at;
}

class TemplateFiller {
 public:
  TemplateFiller(YWord context, long parserNumber, const YcluiToken_Stack& tokens, YString& result)
      : context_(context), parserNumber_(parserNumber), tokens_(tokens), result_(result) {}

  // False when the result would be too long.
  bool fill(const char* commandTemplate) {
    const char* plain = commandTemplate;  // start of the text that is not in the result yet
    const char* at = plain;
    while (*at != '\0' && !tooLong_) {
      if (*at == '$' && OpensForm(at[1])) {
        hasForms_ = true;
        append(plain, static_cast<std::size_t>(at - plain));
        plain = at = fillForm(at + 1);
        checkLength(0);
      } else if (*at == '$' || *at == '\\') {
        at += at[1] == '\0' ? 1 : 2;
      } else {
        ++at;
      }
    }
    append(plain, static_cast<std::size_t>(at - plain));
    return !tooLong_;
  }

 private:
  // Argument numbers that select another part of a token.
  static constexpr long TheWord = -1;
  static constexpr long TheId = -2;

  YWord context_;
  long parserNumber_;
  const YcluiToken_Stack& tokens_;
  YString& result_;
  bool hasForms_ = false;
  bool tooLong_ = false;

  static bool OpensForm(char c) {
    return c == 'c' || c == 'p' || c == '$' || c == '-' || YIsDigit(c);
  }

  void checkLength(std::size_t more) {
    if (hasForms_ && result_.length + more > YcluiLongestExpansion) tooLong_ = true;
  }
  void append(const char* text, std::size_t length) {
    checkLength(length);
    if (!tooLong_) result_.concat(text, length);
  }
  void append(const char* text) { append(text, std::strlen(text)); }

  // Fills in the form whose "$" is before `at`, and returns its end.
  const char* fillForm(const char* at) {
    if (*at == 'c') {
      result_ << static_cast<std::int32_t>(context_);
      return at + 1;
    }
    if (*at == 'p') {
      result_ << parserNumber_;
      return at + 1;
    }
    long number = tokens_.count() - 1;
    if (*at == '$') return fillSelected(number, at + 1);
    at = ReadNumber(at, number);
    if (number < 0) number += tokens_.count() - 1;
    return fillSelected(number, at);
  }

  // Reads the selector at `at`, fills in the part that it selects of the token with that number,
  // and returns the selector's end.
  const char* fillSelected(long number, const char* at) {
    long part = TheWord;
    if (*at == '#') {
      part = TheId;
      ++at;
    } else if (*at == '[') {
      at = ReadNumber(at + 1, part);
      if (*at != '\0') ++at;
    }
    if (number >= 0 && number < tokens_.count()) {
      fillPart(tokens_.at(static_cast<int>(number)), part);
    }
    return at;
  }

  void fillPart(const YcluiToken& token, long part) {
    if (part == TheWord) {
      if (token.string() != nullptr) append(token.string());
    } else if (part == TheId) {
      result_ << token.id();
    } else if (part >= 0 && part + 1 < token.argc()) {
      fillValue(*token[static_cast<int>(part) + 1]);
    }
  }

  void fillValue(const YAttribValue& value) {
    YStatus status{0};
    switch (value.tag) {
      case YAttribLong:
        result_ << static_cast<long>(value.GetLong());
        break;
      case YAttribDouble:
        result_ << value.GetDouble();
        break;
      case YAttribPoint:
        result_ << static_cast<long>(value.GetPointX(status)) << ' '
                << static_cast<long>(value.GetPointY(status));
        break;
      case YAttribString:
        append(value.GetString());
        break;
      default:
        break;
    }
  }
};

}  // namespace

bool YcluiFillTemplate(const char* commandTemplate, YWord context, long parserNumber,
                       const YcluiToken_Stack& tokens, YString& result) {
  return TemplateFiller(context, parserNumber, tokens, result).fill(commandTemplate);
}
