#include "program/CluiFeeder.h"

#include <utility>

#include "parser/YcluiParser.h"
#include "program/CluiTextEnd.h"
#include "program/text/CluiMessages.h"

void CluiFeeder::feed(std::string& bytes, std::size_t number) {
  if (number == 1 && encoding_.isUtf8() && bytes.starts_with("\xEF\xBB\xBF")) bytes.erase(0, 3);
  std::string text;
  CluiFault fault;
  if (encoding_.toSystem(bytes, text, fault)) return feedText(text, number);
  diagnostics_.unreadable(bytes, number, fault);
}

void CluiFeeder::feedText(std::string& text, std::size_t number) {
  const bool holds = mustHold(text);
  if (heldText_.empty()) heldNumber_ = number;
  heldText_ += text;
  if (!holds) flush();
}

bool CluiFeeder::mustHold(const std::string& text) {
  if (!heldText_.empty() && CluiIsBlank(text)) return true;
  if (!CluiMayEndInComma(text)) return false;
  if (preview_ == nullptr) preview_ = std::make_unique<YcluiPreview>(*reading_.parser());
  // The preview has read the held lines last.
  if (heldText_.empty()) {
    preview_->read(text.c_str());
  } else {
    preview_->read(text.c_str(), preview_->stateInside());
  }
  return preview_->ending() == YcluiEndsAfterComma || preview_->ending() == YcluiEndsInPoint;
}

void CluiFeeder::flush() {
  if (heldText_.empty()) return;
  std::string text = std::exchange(heldText_, std::string());
  interpret(text, heldNumber_);
}

void CluiFeeder::interpret(std::string& text, std::size_t number) {
  reading_.line().advance(text, number);
  diagnostics_.beginText();
  reading_.parser()->interpret(reading_.line().text().c_str());
  diagnostics_.endText();
}

void CluiFeeder::end(std::size_t number) {
  if (reading_.isAlive()) flush();
  readLeftText(number);
  const std::wstring what = reading_.isAlive() ? unfinished() : std::wstring();
  if (what.empty()) return;
  diagnostics_.endedInside(what);
  YcluiParser* const parser = reading_.parser();
  parser->dropOpenToken();
  parser->exhaust();
  while (reading_.isAlive() && parser->nestingDepth() > 1) parser->popFrame();
  parser->reset();
}

void CluiFeeder::readLeftText(std::size_t number) {
  std::uint32_t before = 0;
  while (reading_.isAlive() && reading_.parser()->lex()->more() != 0 &&
         reading_.parser()->lex()->cursorOffset() != before) {
    before = reading_.parser()->lex()->cursorOffset();
    std::string nothing;
    interpret(nothing, number + 1);
  }
}

std::wstring CluiFeeder::unfinished() const {
  YcluiParser& parser = *reading_.parser();
  if (const YcluiToken* token = parser.openToken()) {
    const YcluiKeyword* keyword = parser.lex()->keyword(token->string());
    std::wstring what = L"the arguments of " + CluiQuoted(encoding_.fromSystem(token->string()));
    const int next = token->argc();
    if (keyword == nullptr || next > keyword->argCount()) return what;
    return what + L"; expected next: " + CluiTypeText(keyword->argType(next - 1));
  }
  YString_Array candidates;
  const bool goesOn = parser.completionList("", candidates) > 0;
  if (parser.numberOfToken() > 0 && goesOn) {
    return L"the command " + CluiQuoted(encoding_.fromSystem(parser.currentLine()));
  }
  return parser.nestingDepth() > 1 ? L"an interrupting command" : std::wstring();
}
