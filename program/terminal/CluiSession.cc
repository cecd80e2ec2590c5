#include "program/terminal/CluiSession.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "foundation/YAscii.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"
#include "program/CluiInterrupt.h"
#include "program/text/CluiMessages.h"
#include "terminal/YcluiPrompt.h"

namespace {

// The longest time between the bytes of one key.
constexpr int KeyMilliseconds = 50;

CluiSession* TheSession = nullptr;

bool IsBlank(const std::string& text) {
  return std::all_of(text.begin(), text.end(), YIsWhiteSpace);
}

}  // namespace

CluiSession::CluiSession(CluiTyping& typing, CluiEncoding& encoding, CluiTerminalSettings& settings,
                         const std::string& language)
    : typing_(typing),
      encoding_(encoding),
      settings_(settings),
      capabilities_(CluiCapabilities::Read()),
      field_(encoding),
      screen_(capabilities_, encoding),
      history_(CluiHistory::DefaultFile(language)) {
  TheSession = this;
}

CluiSession::~CluiSession() {
  TheSession = nullptr;
}

CluiSession* CluiSession::Current() {
  return TheSession;
}

bool CluiSession::run() {
  if (!attach() || !terminal_.open(capabilities_.begin, capabilities_.end)) return false;
  history_.load();
  int width = 0;
  int height = 0;
  if (terminal_.size(width, height)) screen_.resize(width, height);
  loop();
  CluiClearInterrupt();  // in a terminal Control-C is a key and does not end the run
  screen_.leave();
  flush();
  terminal_.close();
  history_.save();
  return typing_.parser() != nullptr;
}

// Attaches the field to the parser unless the language has done so.
bool CluiSession::attach() {
  if (field_.isAttached()) return true;
  YStatus status = {0};
  char result[64];
  const std::string text =
      "(terminal-attach " + std::to_string(reinterpret_cast<long>(typing_.parser())) + ")";
  ScmVMExternal::ExecuteString(text.c_str(), result, sizeof result, status);
  return YStatusIsGood(status) && field_.isAttached();
}

// --- The loop

void CluiSession::loop() {
  CluiKeys keys(capabilities_, encoding_, terminal_.eraseKey());
  while (!settings_.leaves && typing_.parser() != nullptr) {
    refresh();
    flush();
    std::string bytes;
    const CluiTerminal::Event event = terminal_.read(bytes, keys.waits() ? KeyMilliseconds : -1);
    if (event == CluiTerminal::Event::Gone || terminal_.endingSignal() != 0) return;
    checkSignals();
    if (event == CluiTerminal::Event::Nothing && CluiInterrupted()) {
      CluiClearInterrupt();
      control(CluiKeyByte::Interrupt);
    } else if (event == CluiTerminal::Event::Nothing) {
      keys.settle();
    }
    keys.feed(bytes);
    take(keys);
  }
}

void CluiSession::take(CluiKeys& keys) {
  CluiKey key;
  terminal_.enableSignalKeys(true);
  while (!settings_.leaves && typing_.parser() != nullptr && terminal_.endingSignal() == 0 &&
         keys.next(key)) {
    handle(key);
    if (CluiInterrupted()) afterInterrupt(keys);
  }
  terminal_.enableSignalKeys(false);
}

// Drops what was typed ahead, since it was meant for the command that was interrupted.
void CluiSession::afterInterrupt(CluiKeys& keys) {
  CluiClearInterrupt();
  keys.drop();
  pasted_.clear();
  typing_.takeHeld();
  dropsPaste_ = pasting_;
  screen_.print(L"interrupted");
}

void CluiSession::checkSignals() {
  if (terminal_.wasStopped()) screen_.othersHaveWritten();
  int width = 0;
  int height = 0;
  if (terminal_.wasResized() && terminal_.size(width, height)) screen_.resize(width, height);
}

void CluiSession::refresh() {
  if (!pasting_) screen_.show(prompt(), field_.characters());
}

void CluiSession::flush() {
  const std::string output = screen_.takeOutput();
  if (output.empty()) return;
  std::fflush(stdout);
  terminal_.write(output);
}

std::wstring CluiSession::prompt() {
  const CluiPrompts& prompts = settings_.prompts;
  return encoding_.fromSystem(commandIsOpen() ? prompts.open : prompts.ready);
}

bool CluiSession::commandIsOpen() {
  YcluiParser* parser = typing_.parser();
  if (parser == nullptr) return false;
  return parser->numberOfToken() > 0 || parser->tokenIsOpen() != 0 || parser->nestingDepth() > 1;
}

// --- Events of the parser and the engine

void CluiSession::clearLine() {
  screen_.hideForOthers();
  flush();
}

void CluiSession::lineChanges(const char* wholeLine) {
  field_.setLine(wholeLine);
  outcome_ = Outcome::Read;
}

void CluiSession::commandCompletes() {
  if (pasting_) return clearLine();
  screen_.show(encoding_.fromSystem(settings_.prompts.ready), field_.characters());
  screen_.leave();
  flush();
}

// The line of an indefinite word stays on the screen like that of a complete command.
void CluiSession::scriptRuns() {
  YcluiParser* parser = typing_.parser();
  const bool isFirst = std::exchange(wordIsNew_, false);
  const bool stays = isFirst && !pasting_ && parser != nullptr && parser->lastIsIndefinite() != 0;
  if (!stays) return clearLine();
  const bool alone = parser->numberOfToken() == 1 && parser->nestingDepth() == 1;
  const CluiPrompts& prompts = settings_.prompts;
  screen_.show(encoding_.fromSystem(alone ? prompts.ready : prompts.open), field_.characters());
  screen_.leave();
  clearLine();
}

// --- Keys

void CluiSession::handle(const CluiKey& key) {
  if (key.kind != CluiKey::Control) lastKey_ = thisKey_ = '\0';
  switch (key.kind) {
    case CluiKey::Control:
      return control(key.bytes.front());
    case CluiKey::Text:
      return text(key.bytes);
    case CluiKey::Erase:
      if (offer(std::string(1, CluiKeyByte::Erase)) && !field_.rubOut()) screen_.ring();
      return;
    case CluiKey::PasteBegin:
      pasting_ = true;
      dropsPaste_ = false;
      pasted_.clear();
      pastedLines_ = 0;
      return;
    case CluiKey::Paste:
      if (!dropsPaste_) paste(key.bytes);
      return;
    case CluiKey::PasteEnd:
      return pasteRest();
  }
}

void CluiSession::control(char byte) {
  if (byte == CluiKeyByte::Suspend) return stop();
  lastKey_ = thisKey_;
  thisKey_ = byte;
  if (byte == CluiKeyByte::Return) closeQuote();
  if (!offer(std::string(1, byte))) return;
  if (byte == CluiKeyByte::Leave && field_.text().empty()) {
    settings_.leaves = true;
    return;
  }
  if (byte != CluiKeyByte::Interrupt) return;
  takeWord();
  giveUp();
}

void CluiSession::stop() {
  screen_.leave();
  flush();
  terminal_.stop();
  terminal_.wasStopped();  // clears the flag, since the line has been left already
}

// Types the quote twice if a backslash escapes the first.
void CluiSession::closeQuote() {
  YcluiParser* parser = typing_.parser();
  if (parser == nullptr) return;
  const CluiTextEnd end = CluiEndOf(*parser, field_.word(), textState(*parser));
  if (end.kind != CluiTextEnd::Quote) return;
  const std::string quote(1, end.quote);
  if (end.isEscape) field_.type(quote);
  field_.type(quote);
}

void CluiSession::text(const std::string& character) {
  std::string system;
  CluiFault fault;
  if (encoding_.toSystem(character, system, fault)) {
    offer(system);
    return;
  }
  screen_.print(CluiFaultText(fault, "the terminal's encoding"));
}

// Returns whether the field may apply the change.
bool CluiSession::offer(const std::string& bytes) {
  const std::string word = field_.word();
  const std::size_t refusals = typing_.refusals();
  outcome_ = Outcome::None;
  typing_.beginWord(word);
  const bool let = field_.type(bytes);
  typing_.endWord(outcome_ == Outcome::Read);
  remember(word, typing_.refusals() != refusals);
  clearStaleLine();
  return let;
}

// A command that sets another syntax empties the command line without an echo; reset() echoes it.
void CluiSession::clearStaleLine() {
  YcluiParser* parser = typing_.parser();
  if (outcome_ == Outcome::None || parser == nullptr || commandIsOpen()) return;
  if (!field_.text().empty() && field_.word().empty()) parser->reset();
}

// --- History

// A refused word is an entry of its own, so that it can be recalled and corrected.
void CluiSession::remember(const std::string& word, bool refused) {
  if (outcome_ == Outcome::None) return;
  if (outcome_ == Outcome::TakenBack) {
    if (!typed_.empty()) typed_.pop_back();
    return;
  }
  if (refused) {
    history_.add(word);
  } else if (!word.empty()) {
    typed_.push_back(word);
  }
  if (outcome_ == Outcome::GivenUp || !commandIsOpen()) addTypedToHistory();
  history_.reset();
}

void CluiSession::addTypedToHistory() {
  std::string line;
  for (const std::string& word : typed_) line.append(line.empty() ? "" : " ").append(word);
  history_.add(line);
  typed_.clear();
}

// --- Actions of keys

void CluiSession::giveUp() {
  YcluiParser* parser = typing_.parser();
  if (parser == nullptr) return;
  YcluiGiveUp(*parser);
  outcome_ = Outcome::GivenUp;
}

// An open token is shown but is not in the frame yet. Pushing and popping a dummy token makes the
// parser echo the line without it.
void CluiSession::takeBack() {
  YcluiParser* parser = typing_.parser();
  if (parser == nullptr) return;
  parser->exhaust();
  if (parser->tokenIsOpen() != 0) {
    parser->dropOpenToken();
    parser->pushDummyToken("");
  }
  parser->popToken();
  outcome_ = Outcome::TakenBack;
}

// --- Pasting

void CluiSession::paste(const std::string& bytes) {
  for (const char byte : bytes) {
    const bool isAfterReturn = !pasted_.empty() && pasted_.back() == '\r';
    if (isAfterReturn) {
      pasted_.pop_back();
      pasteLine();
      if (byte == '\n') continue;
    }
    if (byte == '\n') {
      pasteLine();
    } else {
      pasted_ += byte;
    }
    if (typing_.parser() == nullptr || CluiInterrupted()) return;
  }
}

// The word typed before the paste is the beginning of its first line.
void CluiSession::pasteLine() {
  const std::string begun = encoding_.toUser(encoding_.fromSystem(takeWord()));
  std::string line = begun + pasted_;
  pasted_.clear();
  ++pastedLines_;
  if (!IsBlank(line)) {
    screen_.hide();
    screen_.print(prompt() + encoding_.fromUser(line));
  }
  line += '\n';
  typing_.readLine(line, pastedLines_);
}

void CluiSession::pasteRest() {
  if (!pasted_.empty() && pasted_.back() == '\r') {
    pasted_.pop_back();
    pasteLine();
  }
  std::string rest = encoding_.toUser(encoding_.fromSystem(typing_.takeHeld())) + pasted_;
  std::replace(rest.begin(), rest.end(), '\n', ' ');
  pasted_.clear();
  CluiCapabilities none;
  CluiKeys keys(none, encoding_, '\b');
  keys.feed(rest);
  CluiKey key;
  while (typing_.parser() != nullptr && keys.next(key)) {
    if (key.kind == CluiKey::Text) text(key.bytes);
    if (key.kind == CluiKey::Control && key.bytes == "\t") text(" ");
  }
  pasting_ = false;
}

// Removes the word from the field character by character, so that the binding closes its quote.
std::string CluiSession::takeWord() {
  std::string word = field_.word();
  while (field_.rubOut()) {
  }
  return word;
}
