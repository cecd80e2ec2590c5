#include "terminal/YcluiPrompt.h"

#include <cstdio>
#include <utility>

#include "terminal/YcluiShow.h"

namespace {

// How long the bytes of one key may take to arrive.
constexpr int KeyMilliseconds = 50;

std::string HistoryFile(const std::string& language) {
  return language.empty() ? std::string() : YcluiHistory::DefaultFile(language);
}

bool IsEnd(YcluiLineEditor::Request request) {
  return request == YcluiLineEditor::Request::Line ||
         request == YcluiLineEditor::Request::Interrupt ||
         request == YcluiLineEditor::Request::Leave;
}

YcluiPrompt::Outcome OutcomeOf(YcluiLineEditor::Request end) {
  if (end == YcluiLineEditor::Request::Line) return YcluiPrompt::Outcome::Line;
  return end == YcluiLineEditor::Request::Interrupt ? YcluiPrompt::Outcome::Interrupted
                                                    : YcluiPrompt::Outcome::Ended;
}

}  // namespace

YcluiPrompt::YcluiPrompt(YcluiParser& parser, const std::string& language)
    : parser_(parser),
      capabilities_(YcluiCapabilities::Read()),
      screen_(capabilities_),
      history_(HistoryFile(language)),
      editor_(parser, history_) {}

YcluiPrompt::~YcluiPrompt() {
  close();
}

bool YcluiPrompt::open(void (*onEnding)(), int wake) {
  if (isOpen_) return true;
  if (!terminal_.open(capabilities_.begin, capabilities_.end, onEnding, wake)) return false;
  isOpen_ = true;
  keys_.emplace(YcluiKeyTable::OfTerminal(), terminal_.eraseKey());
  history_.refresh();
  screen_.resize(capabilities_.width, capabilities_.height);
  int width = 0;
  int height = 0;
  if (terminal_.size(width, height)) screen_.resize(width, height);
  return true;
}

void YcluiPrompt::close() {
  if (!isOpen_) return;
  screen_.leave();
  flush();
  history_.save();
  terminal_.close();
  isOpen_ = false;
}

// --- One line

YcluiPrompt::Outcome YcluiPrompt::readLine(std::string& line) {
  const YcluiParser::Hold hold(parser_);
  terminal_.enableSignalKeys(false);
  screen_.forget();
  editor_.begin();
  if (!firstText_.empty()) {
    editor_.setText(std::exchange(firstText_, std::string()));
    editor_.moveTo(firstCursor_);
  }
  YcluiKey key;
  for (;;) {
    YcluiShow(editor_, screen_);
    flush();
    if (!readKeys(key)) return endWithoutKey(line);
    do {
      const YcluiLineEditor::Request request = editor_.handle(key);
      if (editor_.rings()) screen_.ring();
      if (request == YcluiLineEditor::Request::Clear) screen_.clear();
      if (request == YcluiLineEditor::Request::Suspend) stop();
      if (IsEnd(request)) {
        line = editor_.text();
        finish(request);
        return OutcomeOf(request);
      }
      if (parser_.isCondemned() != 0) return Outcome::Ended;
    } while (keys_->next(key));
  }
}

void YcluiPrompt::beginWith(const std::string& text, std::size_t cursor) {
  firstText_ = text;
  firstCursor_ = cursor;
}

YcluiPrompt::Outcome YcluiPrompt::endWithoutKey(std::string& line) {
  if (terminal_.endingSignal() != 0 || !isStopped()) {
    history_.add(editor_.text());
    return Outcome::Ended;
  }
  line = editor_.text();
  screen_.giveWay();
  flush();
  return Outcome::Stopped;
}

// Waits for the next key. False when there will be none, or the wait is to stop.
bool YcluiPrompt::readKeys(YcluiKey& key) {
  while (!keys_->next(key)) {
    std::string bytes;
    const int patience = keys_->waits() ? KeyMilliseconds : -1;
    const YcluiTerminal::Event event = terminal_.read(bytes, patience);
    if (event == YcluiTerminal::Event::Gone || terminal_.endingSignal() != 0) return false;
    if (event == YcluiTerminal::Event::Nothing && isStopped()) return false;
    if (event == YcluiTerminal::Event::Nothing) keys_->settle();
    checkWindow();
    keys_->feed(bytes);
  }
  return true;
}

void YcluiPrompt::checkWindow() {
  const bool wasStopped = terminal_.wasStopped();
  if (wasStopped) screen_.forget();
  int width = 0;
  int height = 0;
  const bool wasResized = terminal_.wasResized();
  if (wasResized && terminal_.size(width, height)) screen_.resize(width, height);
  if (!wasResized && !wasStopped) return;
  YcluiShow(editor_, screen_);
  flush();
}

void YcluiPrompt::flush() {
  const std::string output = screen_.takeOutput();
  if (output.empty()) return;
  std::fflush(stdout);
  terminal_.write(output);
}

void YcluiPrompt::stop() {
  screen_.leave();
  flush();
  terminal_.stop();
}

// The line stays on the screen as it was sent.
void YcluiPrompt::finish(YcluiLineEditor::Request request) {
  YcluiPicture picture = editor_.picture();
  picture.cursor = picture.line.text().size();
  if (request == YcluiLineEditor::Request::Interrupt) picture.line.add("^C");
  screen_.show(std::move(picture));
  screen_.leave();
  flush();
  terminal_.enableSignalKeys(true);
}

void YcluiPrompt::print(const YcluiStyledText& text) {
  screen_.print(text);
  flush();
}

// --- All lines

bool YcluiPrompt::run() {
  if (!open()) return false;
  leaves_ = false;
  std::string line;
  while (!leaves_) {
    const Outcome outcome = readLine(line);
    if (outcome == Outcome::Ended) break;
    if (outcome == Outcome::Interrupted) {
      YcluiGiveUp(parser_);
    } else {
      parser_.interpret((line + "\n").c_str());
    }
  }
  close();
  return true;
}
