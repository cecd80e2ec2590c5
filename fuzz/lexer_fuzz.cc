// The lexer: any bytes, with any dictionary. An input is a row of texts, with a byte in front of
// each that tells what becomes of it.

#include <vector>

#include "fuzz/Choices.h"
#include "tests/lex/lex_reader.h"

namespace {

void AddWord(YcluiLex& lex, const std::string& name, const std::string& kinds) {
  std::vector<YcluiValueType> types;
  for (const char kind : kinds) types.push_back(YcluiValueType(kind % 6));
  lex.addKeyword(name.c_str(), static_cast<int>(types.size()), types.data(), 0);
}

// A text is read in a bounded number of tokens, and its places lie inside it.
void Read(YcluiLex& lex, YcluiToken& token) {
  for (std::uint32_t before = 0; lex.more() != 0; before = lex.cursorOffset()) {
    Require(lex.cursorOffset() >= before, "the lexer goes back");
    const YWord taken = lex.getNextToken(token);
    Require(lex.cursorOffset() >= lex.tokenOffset(), "a token that ends before it begins");
    if (taken == 0) token = YcluiToken(token.string());
    Require(token.argc() > 0 && token[token.argc()] == nullptr, "count of arguments");
    token.wholeString();
    if (token.underConstruction() != 0) return;
  }
}

void Take(LexReader& reader, unsigned what, const std::string& text, Choices& choices) {
  YcluiLex& lex = reader.lex;
  const char* name = text.c_str();
  if (what == 'k') lex.addKeyword(name, text.substr(0, text.size() / 2).c_str(), 0);
  if (what == 'w') AddWord(lex, text, choices.text());
  if (what == ';') lex.addKeyword(*name, 0);
  if (what == 'd') lex.delKeyword(name);
  if (what == 'a') lex.addAlias(name, choices.text().c_str());
  if (what == 'u') lex.delAlias(name);
  if (what == 'v') lex.addVariable(name, YAttribValue(choices.text().c_str(), 0), choices.byte());
  if (what == '(') lex.pushString(name);
  if (what == ')') lex.popString();
  if (what == 't') lex.more() != 0 ? lex.putString(name) : lex.setString(name);
  Read(lex, reader.token);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  Choices choices(bytes, count);
  LexReader reader;
  while (choices.more()) {
    const unsigned what = choices.byte();
    Take(reader, what, choices.text(), choices);
  }
  return 0;
}
