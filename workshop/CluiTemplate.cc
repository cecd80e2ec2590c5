#include "workshop/CluiTemplate.h"

#include "foundation/YAscii.h"

namespace {

// Larger than any number of words or arguments.
constexpr long Beyond = 1L << 40;

char At(std::string_view text, std::size_t at) {
  return at < text.size() ? text[at] : '\0';
}

bool OpensForm(char c) {
  return c == 'c' || c == 'p' || c == '$' || c == '-' || YIsDigit(c);
}

// Reads white space, a sign and digits, and returns their end. Without a digit the number is 0 and
// the result is `from`.
std::size_t ReadNumber(std::string_view text, std::size_t from, long& number) {
  number = 0;
  std::size_t at = from;
  while (YIsWhiteSpace(At(text, at))) ++at;
  const bool isNegative = At(text, at) == '-';
  if (At(text, at) == '-' || At(text, at) == '+') ++at;
  if (!YIsDigit(At(text, at))) return from;
  for (; YIsDigit(At(text, at)); ++at) {
    if (number < Beyond) number = number * 10 + (text[at] - '0');
  }
  if (isNegative) number = -number;
  return at;
}

}  // namespace

CluiTemplate::CluiTemplate(std::string_view code) {
  std::size_t plain = 0;
  std::size_t at = 0;
  while (at < code.size()) {
    if (code[at] == '$' && OpensForm(At(code, at + 1))) {
      CluiForm form;
      form.before = code.substr(plain, at - plain);
      const std::size_t end = ReadForm(code, at + 1, form);
      form.text = code.substr(at, end - at);
      plain = at = end;
      forms_.push_back(std::move(form));
    } else {
      at += code[at] == '$' || code[at] == '\\' ? 2 : 1;
    }
  }
  if (plain < code.size()) rest_ = code.substr(plain);
}

// Reads the form whose "$" is before `at`, and returns its end.
std::size_t CluiTemplate::ReadForm(std::string_view code, std::size_t at, CluiForm& form) {
  const char first = code[at];
  if (first == 'c' || first == 'p') {
    form.kind = first == 'c' ? CluiForm::Kind::Context : CluiForm::Kind::Parser;
    return at + 1;
  }
  form.kind = CluiForm::Kind::FromEnd;
  if (first == '$') {
    ++at;
  } else {
    at = ReadNumber(code, at, form.number);
    if (form.number >= 0) form.kind = CluiForm::Kind::FromStart;
    if (form.number < 0) form.number = -form.number;
  }
  if (At(code, at) == '#') {
    form.hasId = true;
    return at + 1;
  }
  if (At(code, at) != '[') return at;
  at = ReadNumber(code, at + 1, form.argument);
  form.hasId = form.argument == -2;
  // An argument that no word has, unlike -1 and -2.
  if (form.argument < -2) form.argument = Beyond;
  if (form.argument < 0) form.argument = -1;
  return at < code.size() ? at + 1 : at;
}

std::string CluiTemplate::filled(const std::function<std::string(const CluiForm&)>& textFor) const {
  std::string text;
  for (const CluiForm& form : forms_) text += form.before + textFor(form);
  return text + rest_;
}
