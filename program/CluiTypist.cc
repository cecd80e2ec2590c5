#include "program/CluiTypist.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "parser/YcluiParser.h"
#include "program/CluiInterrupt.h"

namespace {

constexpr char Pasted[] = "paste";

}  // namespace

void CluiTypist::open(CluiEncoding& encoding, const std::string& language, CluiReport& report) {
  language_ = language;
  report_ = &report;
  session_ = std::make_unique<CluiSession>(*this, encoding.name(), settings_, language);
  const bool isOnScreen = isatty(STDERR_FILENO) != 0;
  report.setBefore([this, isOnScreen] {
    std::size_t width = 0;
    if (session_ != nullptr) {
      session_->clearLine();
      width = session_->screen().width();
    } else if (lines_ != nullptr) {
      lines_->print("");
      width = lines_->width();
    }
    return isOnScreen ? width : 0;
  });
}

void CluiTypist::run(bool isQuiet) {
  CluiKeepCatchingInterrupts();
  reading_.line().restart();
  reading_.setInput("");
  if (settings_.sendsWords ? runWords() : runLines(isQuiet)) return;
  diagnostics_.inputFailed(
      0, reading_.isAlive() ? "cannot read from the terminal" : "the parser was deleted");
}

// Tells a session of words when a command is complete.
void CluiTypist::listen() {
  reading_.parser()->setSynCallback(
      [](void* data, const char*, const char*) {
        static_cast<CluiSession*>(data)->commandCompletes();
      },
      session_.get());
}

bool CluiTypist::runWords() {
  listen();
  return session_->run();
}

bool CluiTypist::runLines(bool isQuiet) {
  session_.reset();
  lines_ = std::make_unique<CluiLineSession>(*this, settings_, language_);
  return lines_->run(isQuiet ? std::string() : greeting());
}

std::string CluiTypist::greeting() const {
  const std::string name = std::filesystem::path(language_).stem().string();
  return name + ": Tab completes, ? lists what can come next, Control-D leaves";
}

void CluiTypist::close() {
  if (!isOpen()) return;
  const int signal = session_ != nullptr ? session_->endingSignal() : lines_->endingSignal();
  report_->setBefore(nullptr);
  session_.reset();
  lines_.reset();
  if (signal != 0) YcluiTerminal::EndBy(signal);
}

bool CluiTypist::reload() {
  if (!reload_()) return false;
  openText_.clear();
  feeder_.begin();
  if (session_ != nullptr) listen();
  return true;
}

void CluiTypist::dropOldParsers() {
  YcluiParser::CleanupMortuary();
}

YcluiParser* CluiTypist::parser() {
  return reading_.isAlive() ? reading_.parser() : nullptr;
}

// The text of an open token is kept in front, so that a fault in a later word is shown in the
// whole.
void CluiTypist::beginWord(const std::string& word) {
  if (reading_.parser()->openToken() == nullptr) openText_.clear();
  std::string text = openText_ + word + " ";
  reading_.line().advance(text, 0, openText_.size());
  diagnostics_.beginInput();
  diagnostics_.beginText();
}

void CluiTypist::endWord(bool wasSent) {
  if (wasSent && reading_.isAlive() && reading_.parser()->openToken() != nullptr) {
    openText_ = reading_.line().text();
  }
  diagnostics_.endText();
}

void CluiTypist::readLine(std::string line, std::size_t number) {
  reading_.setInput(Pasted);
  feeder_.feedText(line, number);
  if (reading_.isAlive()) feeder_.readLeftText(number);
  reading_.setInput("");
  keepOpenText();
}

// A line is complete: what the parser leaves unread of it is read, too.
void CluiTypist::sendLine(std::string line) {
  reading_.line().restart();
  diagnostics_.beginInput();
  feeder_.begin();
  feeder_.feedText(line, 1);
  feeder_.flush();
  if (reading_.isAlive()) feeder_.readLeftText(1);
}

// Keeps the text from the start of the open token, which may be in an earlier line. Ends of line
// become blanks, since typed text is a single line.
void CluiTypist::keepOpenText() {
  if (!reading_.isAlive() || reading_.parser()->openToken() == nullptr) return openText_.clear();
  const int begin = reading_.parser()->lastTokenOffset();
  if (begin >= 0) openText_.clear();
  openText_.append(reading_.line().text(), static_cast<std::size_t>(std::max(begin, 0)));
  std::replace(openText_.begin(), openText_.end(), '\n', ' ');
}

// Held lines with a comment are read now: typing could not continue them.
std::string CluiTypist::takeHeld() {
  if (!reading_.isAlive()) feeder_.begin();
  if (feeder_.held().find('#') != std::string::npos) {
    reading_.setInput(Pasted);
    feeder_.flush();
    reading_.setInput("");
    keepOpenText();
  }
  return std::exchange(feeder_.held(), std::string());
}

bool CluiTypist::endsInComma() const {
  const std::size_t last = openText_.find_last_not_of(" \t\r\n");
  return last != std::string::npos && openText_[last] == ',';
}
