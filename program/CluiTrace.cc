#include "program/CluiTrace.h"

#include "lex/YcluiToken.h"

namespace {

constexpr wchar_t Accepted[] = L"accepted";
constexpr wchar_t Refused[] = L"refused";
constexpr wchar_t Expanded[] = L"expanded";
constexpr std::size_t LabelWidth = 10;

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
  if (!held_) return print(L"line", line);
  hasLine_ = true;
  line_ = line;
}

void CluiTrace::refused(const YcluiToken& token, bool offered, const std::wstring& reason) {
  if (held_ && offered) return settle(Refused, L": " + reason);
  settle();
  // An unknown word still has the arguments of the token before it.
  const bool isUnknown = token.id() == YcluiIdNone && token.string() != nullptr;
  print(Refused, isUnknown ? token.string() : TextOf(token), L": " + reason);
}

void CluiTrace::runs(const char* text) {
  settle();
  print(L"runs", text);
}

void CluiTrace::settle() {
  if (held_) settle(expanded_ ? Expanded : Accepted);
}

void CluiTrace::settle(const wchar_t* what, const std::wstring& reason) {
  held_ = false;
  print(what, word_, reason);
  if (hasLine_) print(L"line", line_);
}

void CluiTrace::print(const wchar_t* what, const std::string& text, const std::wstring& reason) {
  std::wstring line = what;
  if (!text.empty()) line.resize(LabelWidth, L' ');
  report_.print(line + encoding_.fromSystem(text) + reason);
}
