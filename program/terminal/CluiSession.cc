#include "program/terminal/CluiSession.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "parser/YcluiParser.h"
#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"
#include "program/CluiInterrupt.h"
#include "program/text/CluiMessages.h"

namespace {

// How long a key of several bytes may take to come.
constexpr int KeyMilliseconds = 50;

CluiSession* TheSession = nullptr;

bool IsBlank(const std::string& text) {
  return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

}  // namespace

CluiSession::CluiSession(CluiTyping& typing, CluiEncoding& encoding, const std::string& language)
    : typing_(typing),
      encoding_(encoding),
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
  CluiForgetInterrupt();  // it was a key
  screen_.leave();
  flush();
  terminal_.close();
  history_.save();
  return typing_.parser() != nullptr;
}

// The language may have attached the field already.
bool CluiSession::attach() {
  if (field_.isAttached()) return true;
  YStatus status = {0};
  char answer[64];
  const std::string text =
      "(terminal-attach " + std::to_string(reinterpret_cast<long>(typing_.parser())) + ")";
  ScmVMExternal::ExecuteString(text.c_str(), answer, sizeof answer, status);
  return YStatusIsGood(status) && field_.isAttached();
}

// --- The loop

void CluiSession::loop() {
  CluiKeys keys(capabilities_, encoding_, terminal_.eraseKey());
  while (!leaves_ && typing_.parser() != nullptr) {
    refresh();
    flush();
    std::string bytes;
    const CluiTerminal::Event event = terminal_.read(bytes, keys.waits() ? KeyMilliseconds : -1);
    if (event == CluiTerminal::Event::Gone || terminal_.endingSignal() != 0) return;
    lookAround();
    if (event == CluiTerminal::Event::Nothing && CluiInterrupted()) {
      CluiForgetInterrupt();
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
  terminal_.letKeysSignal(true);
  while (!leaves_ && typing_.parser() != nullptr && terminal_.endingSignal() == 0 &&
         keys.next(key)) {
    handle(key);
    if (CluiInterrupted()) afterInterrupt(keys);
  }
  terminal_.letKeysSignal(false);
}

// What was typed ahead was meant for what has been stopped.
void CluiSession::afterInterrupt(CluiKeys& keys) {
  CluiForgetInterrupt();
  keys.drop();
  pasted_.clear();
  typing_.takeHeld();
  dropsPaste_ = pasting_;
  screen_.print(L"interrupted");
}

void CluiSession::lookAround() {
  if (terminal_.wasStopped()) screen_.forget();
  int width = 0;
  int height = 0;
  if (terminal_.wasResized() && terminal_.size(width, height)) screen_.resize(width, height);
}

void CluiSession::refresh() {
  if (!pasting_) screen_.show(promptNow(), field_.characters());
}

void CluiSession::flush() {
  const std::string output = screen_.takeOutput();
  if (output.empty()) return;
  std::fflush(stdout);
  terminal_.write(output);
}

const std::wstring& CluiSession::promptNow() {
  return commandIsOpen() ? prompts_.open : prompts_.ready;
}

bool CluiSession::commandIsOpen() {
  YcluiParser* parser = typing_.parser();
  if (parser == nullptr) return false;
  return parser->numberOfToken() > 0 || parser->tokenIsOpen() != 0 || parser->nestingDepth() > 1;
}

// --- What happens meanwhile

void CluiSession::makeWay() {
  screen_.giveWay();
  flush();
}

void CluiSession::lineIs(const char* wholeLine) {
  field_.takeLine(wholeLine);
  outcome_ = Outcome::Read;
}

void CluiSession::commandIsComplete() {
  if (pasting_) return makeWay();
  screen_.show(prompts_.ready, field_.characters());
  screen_.leave();
  flush();
}

// A word that works anywhere is a command of its own in the eyes of who types it.
void CluiSession::scriptRuns() {
  YcluiParser* parser = typing_.parser();
  const bool isFirst = std::exchange(wordIsNew_, false);
  const bool stays = isFirst && !pasting_ && parser != nullptr && parser->lastIsIndefinite() != 0;
  if (!stays) return makeWay();
  const bool alone = parser->numberOfToken() == 1 && parser->nestingDepth() == 1;
  screen_.show(alone ? prompts_.ready : prompts_.open, field_.characters());
  screen_.leave();
  makeWay();
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
  if (byte == CluiKeyByte::Leave && field_.text().empty()) return leave();
  if (byte != CluiKeyByte::Interrupt) return;
  takeWord();
  giveUp();
}

void CluiSession::stop() {
  screen_.leave();
  flush();
  terminal_.stop();
  terminal_.wasStopped();  // and the line is known to be left
}

// With a second quote where a backslash takes the first.
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

// Answers whether the field was let have it.
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

// A command that gives its parser another syntax leaves an empty line that nobody has shown.
void CluiSession::clearStaleLine() {
  YcluiParser* parser = typing_.parser();
  if (outcome_ == Outcome::None || parser == nullptr || commandIsOpen()) return;
  if (!field_.text().empty() && field_.word().empty()) parser->reset();
}

// --- What is kept of it

// A word that was refused is kept by itself, so that it can be called back and mended.
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
  if (outcome_ == Outcome::GivenUp || !commandIsOpen()) keepTyped();
  history_.reset();
}

void CluiSession::keepTyped() {
  std::string line;
  for (const std::string& word : typed_) line.append(line.empty() ? "" : " ").append(word);
  history_.add(line);
  typed_.clear();
}

// --- What keys ask for

void CluiSession::giveUp() {
  YcluiParser* parser = typing_.parser();
  if (parser == nullptr) return;
  parser->exhaust();
  const bool isOpen = parser->tokenIsOpen() != 0 || parser->numberOfToken() > 0;
  parser->dropOpenToken();
  if (isOpen || parser->nestingDepth() == 1) {
    parser->reset();
  } else {
    giveUpFrame(*parser);
  }
  outcome_ = Outcome::GivenUp;
}

// A command that pushed the frame when it was complete stands below as it was left, and takes no
// further word.
void CluiSession::giveUpFrame(YcluiParser& parser) {
  parser.popFrame();
  YString_Array words;
  if (parser.completionList("", words) == 0) parser.reset();
}

// A half-read token is shown, but has not come yet: showing anything else shows the line without.
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
    const bool behindReturn = !pasted_.empty() && pasted_.back() == '\r';
    if (behindReturn) {
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

// What was typed in front of it belongs to the first line.
void CluiSession::pasteLine() {
  const std::string begun = encoding_.toUser(encoding_.fromSystem(takeWord()));
  std::string line = begun + pasted_;
  pasted_.clear();
  ++pastedLines_;
  if (!IsBlank(line)) {
    screen_.hide();
    screen_.print(promptNow() + encoding_.fromUser(line));
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

// Takes the word out of the field, an open quote with it.
std::string CluiSession::takeWord() {
  std::string word = field_.word();
  while (field_.rubOut()) {
  }
  return word;
}
