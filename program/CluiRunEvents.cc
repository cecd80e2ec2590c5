// What comes back from the parser and the engine while they work, and how it is told.
//
// A code of the error manager has no place of its own. It belongs to the word that pushed it, which
// is known when the word is refused; so codes wait until then, or until something else happens that
// shows that they were a command's.

#include "parser/YcluiParser.h"
#include "program/CluiInterrupt.h"
#include "program/CluiMessages.h"
#include "program/CluiRun.h"

namespace {

constexpr std::size_t WaitingAtMost = 64;

}  // namespace

CluiPlace CluiRun::here() {
  if (parser_ != nullptr) return placeOf(spotNow());
  CluiPlace place;
  int line = 0;
  ScmVM::place(place.name, line);
  if (place.name.empty()) place.name = "clui";
  place.line = static_cast<std::size_t>(line);
  return place;
}

// Of the last token. Of what is played it has none when it cannot be told from which line it is.
CluiSpot CluiRun::spotNow() {
  static const std::string none;
  YcluiPlayedToken token;
  CluiSpot spot;
  if (parser_->playedToken(token) != 0 && played_.find(token, spot)) return spot;
  if (isPlayed()) return {0, 0, 0, &none};
  return line_.spotOf(parser_->lastTokenOffset());
}

CluiRun::Stand CluiRun::stand() const {
  if (parser_ == nullptr) return {};
  return {parser_->lex()->tokenOffset(), parser_->lex()->suspendedTexts()};
}

CluiLine& CluiRun::lineOf(const CluiSpot& spot) {
  return played_.has(spot) ? played_.line() : line_;
}

CluiPlace CluiRun::placeOf(const CluiSpot& spot) const {
  if (played_.has(spot)) {
    return {nameOfPlayed(played_.file()), spot.line, spot.character + 1};
  }
  if (isPlayed()) return playbackPlace();
  return {input_, spot.line, spot.line == 0 ? 0 : spot.character + 1};
}

void CluiRun::tellProblem(const std::string& place, const std::string& problem) {
  report_.tell({place, 0, 0}, encoding_.fromUtf8(problem));
}

void CluiRun::tellAt(const CluiSpot& spot, const std::wstring& message) {
  report_.tell(placeOf(spot), message);
  if (spot.line > 0) report_.show(CluiExcerptOf(lineOf(spot).characters(spot), spot.character));
}

void CluiRun::tellCodes() {
  const std::vector<Code> codes = std::move(codes_);
  codes_.clear();
  for (const Code& code : codes) {
    if (code.severity == YErrNote && !options_.trace) continue;
    if (code.code == YErrNotClosed) unable_ = true;
    // What one word stands for can fail in the same way a hundred thousand times.
    const bool isTold = parser_ != nullptr && code.code == toldCode_ && code.place == toldPlace_;
    toldCode_ = code.code;
    toldPlace_ = code.place;
    if (isTold) continue;
    // Nothing else tells of a text that was not read.
    if (code.code == YErrTooDeep || code.code == YErrTextTooLong) ++refused_;
    report_.tell(code.place, CluiCodeText(code.code));
  }
}

// The code that the refused word pushed, the last one if there are several, or 0. What others
// pushed is told.
unsigned int CluiRun::takeCode() {
  unsigned int code = 0;
  while (!codes_.empty() && codes_.back().stand == stand()) {
    if (code == 0) code = codes_.back().code;
    codes_.pop_back();
  }
  tellCodes();
  return code;
}

void CluiRun::onCode(unsigned int code, YErrSeverity severity) {
  if (codes_.size() >= WaitingAtMost) tellCodes();
  codes_.push_back({code, severity, here(), stand()});
}

void CluiRun::onScriptError(const ScmVMError& error) {
  if (error.interrupted) {
    codes_.clear();
    if (parser_ == nullptr) tellProblem(options_.language, "interrupted");
    return;
  }
  std::wstring message = encoding_.fromUtf8(error.message);
  // A primitive that failed says by a code what the engine cannot know.
  if (!codes_.empty()) {
    const unsigned int code = codes_.back().code;
    message += L" (" + CluiCodeText(code) + L")";
    while (!codes_.empty() && codes_.back().code == code) codes_.pop_back();
  }
  tellCodes();
  if (parser_ == nullptr) {
    CluiPlace place = here();
    if (!error.file.empty()) {
      place = {error.file, static_cast<std::size_t>(error.line),
               static_cast<std::size_t>(error.column)};
    }
    return report_.tell(place, message);
  }
  ++failed_;
  tellAt(spotNow(), L"the command failed: " + message);
  // What the language says of its own accord needs no look into its scripts.
  if (!error.worded && !error.text.empty()) report_.tell(L"  in " + encoding_.fromUtf8(error.text));
}

void CluiRun::onText(const char* text) {
  tellCodes();
  offered_ = {};
  if (session_ != nullptr && CluiSession::IsKey(text)) return;
  if (options_.trace) trace_.runs(text);
  if (session_ != nullptr) session_->scriptRuns();
}

// Whether the command under way has words from in front of the line that is being fed. What is
// played is shown without its line.
bool CluiRun::beganEarlier() const {
  return parser_->numberOfToken() > (isPlayed() ? 0 : taken_ - takenBefore_);
}

YcluiTokenCtrl CluiRun::onToken(const YcluiToken& token) {
  tellCodes();
  if (session_ != nullptr) session_->wordComes();
  offered_ = stand();
  if (CluiInterrupted()) {
    parser_->pausePlayback();
    // A line that is played directly is finished.
    if (line_.number() > 0) {
      parser_->exhaust();
      return YcluiTokenDrop;
    }
  }
  ++taken_;
  showPlayback();
  tellLosses(token);
  if (options_.trace) trace_.offered(token);
  return YcluiTokenPass;
}

void CluiRun::onRefuse(const YcluiToken& token) {
  if (CluiInterrupted() && line_.number() > 0) return parser_->exhaust();
  ++refused_;
  const bool offered = offered_ == stand();
  if (offered) --taken_;
  offered_ = {};
  const CluiRefused refused = {&token, offered, takeCode(), beganEarlier()};
  CluiSpot spot = spotNow();
  const std::wstring message = refusal_.explain(*parser_, lineOf(spot), refused, spot);
  if (options_.trace) trace_.refused(token, offered);
  tellAt(spot, message);
}

void CluiRun::onEcho(const char* line) {
  if (session_ != nullptr) session_->lineIs(line);
  if (options_.trace) trace_.echo(line);
}
