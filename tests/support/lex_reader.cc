#include "tests/support/lex_reader.h"

#include "tests/support/codes.h"
#include "tests/support/words.h"

namespace {

std::string Arguments(const YcluiToken& token) {
  std::string shown;
  for (int i = 1; i < token.argc(); ++i) shown += (i == 1 ? "" : ",") + Shown(*token[i]);
  return shown.empty() ? "" : "(" + shown + ")";
}

std::string Accepted(const YcluiToken& token) {
  if (token == YcluiIdAlias) return std::string("{") + token[1]->GetString() + "}";
  if (token == YcluiIdVariable) return "set";
  return (token == YcluiIdFreeWord ? "free:" : "") + std::string(token.string()) +
         Arguments(token) + (token.underConstruction() != 0 ? "..." : "");
}

}  // namespace

std::string Shown(const YAttribValue& value) {
  YStatus status{0};
  YString shown;
  if (value.tag == YAttribNull) shown << '~';
  if (value.tag == YAttribLong) shown << 'i' << value.GetLong();
  if (value.tag == YAttribDouble) shown << 'd' << value.GetDouble();
  if (value.tag == YAttribPoint) shown << 'p' << value.GetPointX(status) << ';';
  if (value.tag == YAttribPoint) shown << value.GetPointY(status);
  if (value.tag == YAttribString) shown << 's' << value.GetString();
  return shown.buffer;
}

LexReader::LexReader() {
  Declare(lex, "now Delete=DEL line:/ii name/s scale/f at/p odd/? mix/ispf ; go->now_; Nothing->");
}

std::string LexReader::read(const std::string& text) {
  const bool unread = lex.more() != 0;
  given_ = (unread ? given_ : "") + text;
  unread ? lex.putString(text.c_str()) : lex.setString(text.c_str());
  std::string shown;
  while (lex.more() != 0) {
    shown += (shown.empty() ? "" : " ") + readToken();
    if (token.underConstruction() != 0) break;
  }
  const std::string rest = given_.substr(lex.cursorOffset());
  return rest.empty() ? shown : shown + "|" + rest;
}

std::string LexReader::readToken() {
  const std::uint64_t before = YErr.count();
  if (lex.getNextToken(token) != 0) return Accepted(token);
  token = YcluiToken(token.string());  // drops the flag, as a parser does
  const std::string codes = CodesSince(before, "!");
  return codes.empty() ? std::string("?") + token.string() : codes;
}
