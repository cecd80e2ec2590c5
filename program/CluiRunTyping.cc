// A run in which somebody types at a terminal.

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "parser/YcluiParser.h"
#include "program/CluiInterrupt.h"
#include "program/CluiRun.h"

namespace {

constexpr char Pasted[] = "paste";

}  // namespace

void CluiRun::openSession() {
  session_ = std::make_unique<CluiSession>(*this, encoding_, options_.language);
  const bool isSeen = isatty(STDERR_FILENO) != 0;
  report_.setBefore([this, isSeen] {
    session_->makeWay();
    return isSeen ? static_cast<std::size_t>(session_->screen().width()) : 0;
  });
}

void CluiRun::typeIn() {
  CluiKeepCatchingInterrupts();
  parser_->setSynCallback(
      [](void* word, const char*, const char*) {
        static_cast<CluiRun*>(word)->session_->commandIsComplete();
      },
      this);
  line_.restart();
  input_.clear();
  if (session_->run()) return;
  giveUpInput(0, isAlive() ? "nothing can be typed here" : "the parser was deleted");
}

void CluiRun::endSession() {
  if (session_ == nullptr) return;
  const int signal = session_->endingSignal();
  report_.setBefore(nullptr);
  session_.reset();
  if (signal != 0) CluiTerminal::EndBy(signal);
}

YcluiParser* CluiRun::parser() {
  return isAlive() ? parser_ : nullptr;
}

// Without a number: what is typed word by word has no lines. The words of one token are one text,
// in which a fault can be shown.
void CluiRun::beginWord(const std::string& word) {
  if (parser_->openToken() == nullptr) openText_.clear();
  std::string text = openText_ + word + " ";
  line_.take(text, 0, openText_.size());
  refusal_.restart();
  offered_ = {};
  toldCode_ = 0;
  takenBefore_ = taken_;
}

void CluiRun::endWord(bool wasSent) {
  if (wasSent && isAlive() && parser_->openToken() != nullptr) openText_ = line_.text();
  if (options_.trace) trace_.settle();
  tellCodes();
}

void CluiRun::readLine(std::string& bytes, std::size_t number) {
  input_ = Pasted;
  feed(bytes, number);
  if (isAlive()) readLeftText(number);
  input_.clear();
  keepOpenText();
}

// From where the open token begins, which may be in an earlier line. Without ends of line, as what
// is typed has no lines.
void CluiRun::keepOpenText() {
  if (!isAlive() || parser_->openToken() == nullptr) return openText_.clear();
  const int begin = parser_->lastTokenOffset();
  if (begin >= 0) openText_.clear();
  openText_.append(line_.text(), static_cast<std::size_t>(std::max(begin, 0)));
  std::replace(openText_.begin(), openText_.end(), '\n', ' ');
}

// A comment cannot be typed on.
std::string CluiRun::takeHeld() {
  if (!isAlive()) heldText_.clear();
  if (heldText_.find('#') != std::string::npos) {
    input_ = Pasted;
    flushHeld();
    input_.clear();
    keepOpenText();
  }
  return std::exchange(heldText_, std::string());
}

bool CluiRun::isBehindComma() const {
  const std::size_t last = openText_.find_last_not_of(" \t\r\n");
  return last != std::string::npos && openText_[last] == ',';
}
