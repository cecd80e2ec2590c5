#include "language/Line.h"

#include "foundation/YString.h"
#include "language/Syntax.h"
#include "lex/YcluiToken.h"

namespace yqrtClui {

namespace {

const YAttribValue& ValueAt(const YcluiToken& token, int index) {
  static const YAttribValue null;
  const YAttribValue* value = index < 1 ? nullptr : token[index];
  return value == nullptr ? null : *value;
}

}  // namespace

std::string_view Token::name() const {
  const char* name = token_->string();
  return name == nullptr ? "" : name;
}

bool Token::is(const Syntax& word) const {
  if (word.kind() != Syntax::Kind::Word) return false;
  YString name(word.word()->name.c_str());
  name.toLower();
  return this->name() == name.buffer;
}

int Token::count() const {
  return token_->argc() - 1;
}

std::int32_t Token::integer(int index) const {
  return ValueAt(*token_, index).GetLong();
}

double Token::number(int index) const {
  const YAttribValue& value = ValueAt(*token_, index);
  return value.tag == YAttribLong ? value.GetLong() : value.GetDouble();
}

std::string_view Token::text(int index) const {
  const YAttribValue& value = ValueAt(*token_, index);
  return {value.GetString(), value.GetStringLength()};
}

Point Token::point(int index) const {
  const YAttribValue& value = ValueAt(*token_, index);
  YStatus status{0};
  return {value.GetPointX(status), value.GetPointY(status)};
}

Token ArgumentReader::next() {
  while (argument_ >= line_[word_].count()) {
    ++word_;
    argument_ = 0;
  }
  ++argument_;
  return line_[word_];
}

void ArgumentReader::read(std::int32_t& value) {
  const Token token = next();
  value = token.integer(argument_);
}

void ArgumentReader::read(double& value) {
  const Token token = next();
  value = token.number(argument_);
}

void ArgumentReader::read(std::string_view& value) {
  const Token token = next();
  value = token.text(argument_);
}

void ArgumentReader::read(Point& value) {
  const Token token = next();
  value = token.point(argument_);
}

}  // namespace yqrtClui
