#include "program/CluiTrace.h"

#include "lex/YcluiToken.h"

namespace {

constexpr wchar_t Taken[] = L"taken";
constexpr wchar_t Refused[] = L"refused";
constexpr wchar_t Expanded[] = L"expanded";
constexpr std::size_t WidthOfAnswer = 10;

std::string TextOf(const YcluiToken& token) {
  const char* text = token.wholeString();
  return text == nullptr ? "" : text;
}

}  // namespace

void CluiTrace::offered(const YcluiToken& token) {
  settle();
  held_ = true;
  expanded_ = token.id() == YcluiIdAlias;
  hasLine_ = false;
  word_ = expanded_ ? token[1]->GetString() : TextOf(token);
}

void CluiTrace::echo(const char* line) {
  if (!held_) return tell(L"line", line);
  hasLine_ = true;
  line_ = line;
}

void CluiTrace::refused(const YcluiToken& token, bool offered) {
  if (held_ && offered) return answer(Refused);
  settle();
  tell(Refused, TextOf(token));
}

void CluiTrace::runs(const char* text) {
  settle();
  tell(L"runs", text);
}

void CluiTrace::settle() {
  if (held_) answer(expanded_ ? Expanded : Taken);
}

void CluiTrace::answer(const wchar_t* what) {
  held_ = false;
  tell(what, word_);
  if (hasLine_) tell(L"line", line_);
}

void CluiTrace::tell(const wchar_t* what, const std::string& text) {
  std::wstring line = what;
  if (!text.empty()) line.resize(WidthOfAnswer, L' ');
  report_.tell(line + encoding_.fromSystem(text));
}
