#include "program/text/CluiMessages.h"

#include <algorithm>
#include <cwchar>
#include <utility>

#include "foundation/YEncoding.h"
#include "foundation/YErrCodes.h"
#include "program/text/CluiWidth.h"
#include "terminal/YcluiCodeText.h"

namespace {

constexpr std::size_t NamedAtMost = 12;
constexpr std::size_t AnywhereAtLeast = 4;  // of the named ones, if there are that many
constexpr std::size_t QuotedAtMost = 72;

// The alphabetically first words, at most `room` of them, and the number of the others.
std::wstring ListOf(const wchar_t* head, std::vector<std::wstring>& words, std::size_t room) {
  std::wstring text;
  const std::size_t named = std::min(room, words.size());
  std::partial_sort(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(named), words.end());
  for (std::size_t i = 0; i < named; ++i) text += (i == 0 ? head : L", ") + words[i];
  if (named == words.size()) return text;
  return text.append(L" and ").append(std::to_wstring(words.size() - named)).append(L" more");
}

}  // namespace

std::wstring CluiCodeText(unsigned int code) {
  if (code == YErrOtherEncoding) {
    return YEncoding::IsDoubleByte() ? L"a recording in UTF-8, which is read without --inside cp932"
                                     : L"a recording in code page 932, which --inside cp932 reads";
  }
  const std::string text = YcluiCodeText(code);
  return std::wstring(text.begin(), text.end());
}

std::wstring CluiTypeText(unsigned int valueType) {
  const std::string text = YcluiTypeText(valueType);
  return std::wstring(text.begin(), text.end());
}

std::wstring CluiQuoted(const std::wstring& text) {
  const wchar_t quote = text.find(L'"') == std::wstring::npos ? L'"' : L'\'';
  std::wstring quoted = quote + text.substr(0, QuotedAtMost);
  std::replace_if(quoted.begin(), quoted.end(), CluiIsControl, L'?');
  return quoted + (text.size() > QuotedAtMost ? L"..." : L"") + quote;
}

std::wstring CluiUnknownText(const std::wstring& word, const std::wstring& nearest) {
  const std::wstring text = L"no such word " + CluiQuoted(word);
  return nearest.empty() ? text : text + L", did you mean " + CluiQuoted(nearest) + L"?";
}

std::wstring CluiMisplacedText(const std::wstring& word, const std::wstring& line,
                               CluiPossible possible) {
  const std::wstring text = CluiQuoted(word) + L" cannot come " +
                            (line.empty() ? L"here" : L"in the middle of " + CluiQuoted(line));
  if (possible.here.empty() && possible.anywhere.empty()) return text + L", and no word can";
  return text + CluiExpectedText(std::move(possible));
}

std::wstring CluiExpectedText(CluiPossible possible) {
  // Each kind leaves room for some words of the other.
  const std::size_t here = possible.here.size();
  const std::size_t anywhere = possible.anywhere.size();
  const std::size_t hereAtMost = NamedAtMost - std::min(anywhere, AnywhereAtLeast);
  return ListOf(L"; expected: ", possible.here, hereAtMost) +
         ListOf(L"; anywhere: ", possible.anywhere, NamedAtMost - std::min(here, hereAtMost));
}

std::wstring CluiMoreText(std::size_t more, bool follows) {
  std::wstring text = L"and " + std::to_wstring(more) + L" more";
  if (!follows) text += more == 1 ? L" refusal" : L" refusals";
  return text + L" on this line";
}

std::wstring CluiWaitingText(const std::wstring& word, const std::wstring& line) {
  return CluiQuoted(word) + L" may not interrupt the command " + CluiQuoted(line);
}

std::wstring CluiArgumentText(const std::wstring& word, std::size_t wordLine, int index,
                              const std::wstring& fault) {
  std::wstring text = L"argument " + std::to_wstring(index) + L" of " + CluiQuoted(word);
  if (wordLine > 0) text.append(L" in line ").append(std::to_wstring(wordLine));
  return text + L": " + fault;
}

std::wstring CluiFaultText(const CluiFault& fault, const std::string& encoding) {
  switch (fault.kind) {
    case CluiFault::Nul:
      return L"a NUL byte";
    case CluiFault::BadBytes:
      return L"invalid bytes in " + std::wstring(encoding.begin(), encoding.end());
    case CluiFault::Lacking:
      break;
  }
  wchar_t number[16];
  std::swprintf(number, 16, L"U+%04X", static_cast<unsigned int>(fault.code));
  const std::string inside = YEncoding::InsideInWords();
  return L"the character " + std::wstring(number) + L" \"" + fault.code + L"\" does not exist in " +
         std::wstring(inside.begin(), inside.end());
}

std::string CluiNoNameText() {
  return std::string("the name has a character that does not exist in ") +
         YEncoding::InsideInWords();
}
