#include "program/CluiDiagnostics.h"

#include <cstdio>
#include <utility>

#include "foundation/YErrCodes.h"
#include "parser/YcluiParser.h"
#include "program/text/CluiMessages.h"

void CluiDiagnostics::beginInput() {
  refusal_.restart();
  line_.reset();
  hasDoubted_ = false;
}

void CluiDiagnostics::beginText() {
  offered_ = {};
  reportedCode_ = 0;
  acceptedBefore_ = outcome_.accepted;
}

void CluiDiagnostics::endText() {
  trace_.settle();
  reportCodes();
  reportUnshown();
  if (!reading_.isAlive() || reading_.parser()->lex()->more() == 0) line_.reset();
}

void CluiDiagnostics::offered() {
  offered_ = reading_.tokenStart();
  // A playback may have gone on to another line.
  if (unshown_ > 0 && !isInLine(reading_.place())) reportUnshown();
}

void CluiDiagnostics::commandBegins() {
  reportCodes();
  offered_ = {};
}

void CluiDiagnostics::refused(const YcluiToken& token) {
  ++outcome_.refused;
  const bool offered = offered_ == reading_.tokenStart();
  if (offered) --outcome_.accepted;
  offered_ = {};
  CluiSpot spot = reading_.spot();
  CluiRefused refused = {&token, offered, takeCode(), beganEarlier(), spot};
  if (!offered) refused.fault = reading_.spotAt(reading_.parser()->lastFaultOffset());
  if (options_.trace) {
    trace_.refused(token, offered, refusal_.reason(*reading_.parser(), refused));
  }
  const CluiPlace place = reading_.placeOf(refused.fault);
  if (const CluiPassed* passed = doubtAbout(refused, place)) {
    return refusedInDoubt(refused, spot, *passed);
  }
  if (!mustShow(refused, place)) {
    ++unshown_;
    return;
  }
  const std::wstring message =
      refusal_.explain(*reading_.parser(), reading_.lineOf(refused.fault), refused, spot);
  reportAt(spot, message);
  line_ = place;
  isLast_ = true;
}

// Whether the word is unknown, its arguments cannot be read, or the syntax refuses it.
const CluiPassed* CluiDiagnostics::doubtAbout(const CluiRefused& refused,
                                              const CluiPlace& place) const {
  if (doubt_ == nullptr) return nullptr;
  const YcluiLex& lex = *reading_.parser()->lex();
  const std::uint32_t id = refused.token->id();
  const bool isUnknown = refused.code == 0 && (id == YcluiIdNone || id == YcluiIdFreeWord);
  CluiRests rests = isUnknown         ? CluiRests::OnWords
                    : refused.offered ? CluiRests::OnPlace
                                      : CluiRests::OnArguments;
  const std::string_view fault = refused.offered ? "" : lex.faultText();
  const bool isExpanded = isUnknown && lex.suspendedTexts() > 0;
  if (isExpanded || fault.substr(0, fault.find('\n')).find("${") != std::string_view::npos) {
    rests = CluiRests::OnVariables;
  }
  return doubt_->refuse(rests, place.line);
}

// The first of an input is shown. What follows it is in doubt, too, and rests on nothing better.
void CluiDiagnostics::refusedInDoubt(const CluiRefused& refused, CluiSpot& spot,
                                     const CluiPassed& passed) {
  --outcome_.refused;
  ++outcome_.doubtful;
  if (hasDoubted_ && !options_.every) return;
  hasDoubted_ = true;
  const std::wstring message =
      refusal_.explain(*reading_.parser(), reading_.lineOf(refused.fault), refused, spot);
  reportAt(spot, L"warning: " + message + doubtText(passed));
}

std::wstring CluiDiagnostics::doubtText(const CluiPassed& passed) {
  std::wstring text = L"; after " + CluiQuoted(encoding_.fromSystem(passed.line.c_str()));
  if (passed.input == reading_.input()) text += L" in line " + std::to_wstring(passed.number);
  return text + L" ran, this may differ";
}

// A fault that costs words of the next line, too, is shown, since nothing else would explain that.
bool CluiDiagnostics::mustShow(const CluiRefused& refused, const CluiPlace& place) const {
  if (options_.every || !isInLine(place)) return true;
  return refusal_.skipped(*reading_.parser(), refused) == CluiSkipped::BothLines;
}

bool CluiDiagnostics::isInLine(const CluiPlace& place) const {
  return line_ && line_->name == place.name && line_->line == place.line;
}

void CluiDiagnostics::reportUnshown() {
  if (unshown_ > 0) report_.print(CluiMoreText(std::exchange(unshown_, 0), isLast_));
}

void CluiDiagnostics::failed(const ScmVMError& error) {
  if (error.interrupted) {
    pending_.clear();
    if (reading_.parser() == nullptr) problem(options_.language, "interrupted");
    return;
  }
  std::wstring message = encoding_.fromUtf8(error.message);
  // The engine does not know why a primitive failed; the code does.
  if (const unsigned int code = lastCode(); code != 0) {
    message += L" (" + CluiCodeText(code) + L")";
    while (lastCode() == code) pending_.pop_back();
  }
  reportCodes();
  if (reading_.parser() == nullptr) return loadFailed(error, message);
  ++outcome_.failed;
  // The message of an error that the language raises itself is enough without the script's text.
  const bool isEnough = error.worded && !options_.trace;
  const std::wstring text = isEnough ? std::wstring() : encoding_.fromUtf8(error.text);
  if (!isEnough && reportCalls(error, message)) {
    isLast_ = false;
    return reportAt(reading_.spot(), L"the command failed" + (text.empty() ? text : L": " + text));
  }
  reportAt(reading_.spot(), L"the command failed: " + message);
  if (!text.empty()) report_.print(L"  in " + text);
}

void CluiDiagnostics::loadFailed(const ScmVMError& error, const std::wstring& message) {
  if (reportCalls(error, message)) return;
  report_.print(reading_.place(), message);
}

// Prints the places in scripts, the innermost one with the message. False when none is known.
bool CluiDiagnostics::reportCalls(const ScmVMError& error, const std::wstring& message) {
  const auto place = [](const auto& at) {
    return CluiPlace{at.file, static_cast<std::size_t>(at.line),
                     static_cast<std::size_t>(at.column)};
  };
  const bool isCall = !error.calls.empty();
  for (const ScmVMCall& call : error.calls) {
    const std::wstring name =
        call.procedure.empty() ? L"a procedure" : encoding_.fromUtf8(call.procedure);
    const bool isFirst = &call == &error.calls.front();
    report_.print(place(call), isFirst ? L"in " + name + L": " + message : L"called by " + name);
  }
  if (!error.file.empty()) report_.print(place(error), isCall ? L"called here" : message);
  return isCall || !error.file.empty();
}

void CluiDiagnostics::addCode(unsigned int code, YErrSeverity severity) {
  if (pending_.size() >= PendingAtMost) reportCodes();
  pending_.push_back({code, severity, reading_.place(), reading_.tokenStart()});
}

void CluiDiagnostics::reportCodes() {
  for (const Code& code : std::exchange(pending_, {})) {
    if (code.severity != YErrNote || options_.trace) reportCode(code);
  }
}

void CluiDiagnostics::reportCode(const Code& code) {
  if (code.code == YErrNotClosed) outcome_.unable = true;
  // An alias that refers to itself can fail in the same way a hundred thousand times.
  const bool isRepeated =
      reading_.parser() != nullptr && code.code == reportedCode_ && code.place == reportedPlace_;
  reportedCode_ = code.code;
  reportedPlace_ = code.place;
  if (isRepeated) return;
  // The parser calls no refuse callback for a text that it does not read.
  if (code.code == YErrTooDeep || code.code == YErrTextTooLong) ++outcome_.refused;
  report(code.place, CluiCodeText(code.code));
}

unsigned int CluiDiagnostics::dropCodes() {
  const unsigned int last = lastCode();
  pending_.clear();
  return last;
}

void CluiDiagnostics::dropCode(unsigned int code) {
  std::erase_if(pending_, [code](const Code& c) { return c.code == code; });
}

// The last code that the refused word pushed, or 0. Reports the codes that were pushed before it.
unsigned int CluiDiagnostics::takeCode() {
  const CluiTokenStart token = reading_.tokenStart();
  const unsigned int code = !pending_.empty() && pending_.back().token == token ? lastCode() : 0;
  while (!pending_.empty() && pending_.back().token == token) pending_.pop_back();
  reportCodes();
  return code;
}

// Whether the current command has words from an earlier text. A playback is not read in texts of
// ours, so there any word counts as earlier.
bool CluiDiagnostics::beganEarlier() const {
  const std::size_t here = reading_.isPlayed() ? 0 : outcome_.accepted - acceptedBefore_;
  return reading_.parser()->numberOfToken() > here;
}

void CluiDiagnostics::problem(const std::string& name, const std::string& message) {
  problem(name, encoding_.fromUtf8(message));
}

void CluiDiagnostics::problem(const std::string& name, const std::wstring& message) {
  report_.print({name, 0, 0}, message);
}

void CluiDiagnostics::inputFailed(std::size_t line, const std::string& message) {
  outcome_.unable = true;
  report_.print({reading_.input(), line, 0}, encoding_.fromUtf8(message));
}

void CluiDiagnostics::endedInside(const std::wstring& what) {
  const CluiPassed* passed = doubt_ == nullptr ? nullptr : doubt_->ofPlace();
  const std::wstring message = L"the input ended inside " + what;
  if (passed == nullptr) {
    outcome_.ended = true;
    return report_.print({reading_.input(), 0, 0}, message);
  }
  if (hasDoubted_ && !options_.every) return;
  report_.print({reading_.input(), 0, 0}, L"warning: " + message + doubtText(*passed));
}

void CluiDiagnostics::playbackStopped(double seconds) {
  const bool isUnderWay = reading_.parser()->playbackName() != nullptr;
  const CluiPlace place = isUnderWay ? reading_.playbackPlace() : CluiPlace{reading_.input(), 0, 0};
  char time[32];
  std::snprintf(time, sizeof time, "%.1f s", seconds);
  std::string text = "interrupted; " + std::to_string(outcome_.accepted) + " words accepted, ";
  text.append(std::to_string(outcome_.refused)).append(" refused, ").append(time);
  report_.print(place, encoding_.fromUtf8(text));
}

void CluiDiagnostics::unreadable(const std::string& bytes, std::size_t number,
                                 const CluiFault& fault) {
  ++outcome_.refused;
  report_.print({reading_.input(), number, fault.character + 1},
                CluiFaultText(fault, options_.encoding) + L"; the line is skipped");
  report_.show(encoding_.fromUser(bytes), fault.character);
}

void CluiDiagnostics::warnOfArgument(const YcluiToken& token, int index,
                                     const std::wstring& message) {
  const CluiSpot spot = reading_.spotAt(reading_.parser()->lastArgumentOffset(index));
  reportAt(spot, L"warning: argument " + std::to_wstring(index) + L" of " +
                     CluiQuoted(encoding_.fromSystem(token.string())) + message);
}

// A message about another line separates the unshown refusals from the one that was shown.
void CluiDiagnostics::report(const CluiPlace& place, const std::wstring& message) {
  if (!isInLine(place)) {
    reportUnshown();
    line_.reset();
  }
  isLast_ = false;
  report_.print(place, message);
}

void CluiDiagnostics::reportAt(const CluiSpot& spot, const std::wstring& message) {
  report(reading_.placeOf(spot), message);
  if (spot.line == 0) return;
  report_.show(reading_.lineOf(spot).characters(spot), spot.character);
}
