#include "program/terminal/CluiSession.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "foundation/YAscii.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"
#include "program/CluiInterrupt.h"
#include "program/CluiLine.h"
#include "program/terminal/CluiColours.h"
#include "program/terminal/CluiTypedWord.h"
#include "terminal/YcluiOfferList.h"
#include "terminal/YcluiOffers.h"
#include "terminal/YcluiHalfTyped.h"

namespace {

// The longest time between the bytes of one key.
constexpr int KeyMilliseconds = 50;

// The bytes that stand for keys in the field.
constexpr char InterruptByte = '\x03';  // Control-C
constexpr char LeaveByte = '\x04';      // Control-D
constexpr char EraseByte = '\b';
constexpr char TabByte = '\t';
constexpr char ReturnByte = '\r';
constexpr char DownByte = '\x0E';
constexpr char UpByte = '\x10';
constexpr char SuspendByte = '\x1A';  // Control-Z
constexpr char EscapeByte = '\x1B';

CluiSession* TheSession = nullptr;

// NUL for a key without a function here.
char ByteOf(const YcluiKey& key) {
  if (key.kind == YcluiKey::Control) return static_cast<char>(key.letter & 0x1F);
  switch (key.name) {
    case YcluiKeyName::Backspace:
      return EraseByte;
    case YcluiKeyName::Tab:
      return TabByte;
    case YcluiKeyName::Return:
      return ReturnByte;
    case YcluiKeyName::Down:
      return DownByte;
    case YcluiKeyName::Up:
      return UpByte;
    case YcluiKeyName::Escape:
      return EscapeByte;
    default:
      return '\0';
  }
}

bool IsBlank(const std::string& text) {
  return std::all_of(text.begin(), text.end(), YIsWhiteSpace);
}

}  // namespace

CluiSession::CluiSession(CluiTyping& typing, const std::string& encoding,
                         CluiTerminalSettings& settings, const std::string& language)
    : typing_(typing),
      encoding_(encoding),
      settings_(settings),
      capabilities_(YcluiCapabilities::Read()),
      screen_(capabilities_, encoding),
      history_(YcluiHistory::DefaultFile(language)) {
  TheSession = this;
}

CluiSession::~CluiSession() {
  TheSession = nullptr;
}

CluiSession* CluiSession::Current() {
  return TheSession;
}

bool CluiSession::run() {
  if (!attach()) return false;
  const bool isOpen = terminal_.open(capabilities_.begin, capabilities_.end, ScmVM::interrupt,
                                     CluiInterruptDescriptor());
  if (!isOpen) return false;
  history_.refresh();
  int width = 0;
  int height = 0;
  if (terminal_.size(width, height)) screen_.resize(width, height);
  const std::string error = CluiReadColours(settings_.colours, colours_);
  if (!error.empty()) screen_.print(error);
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
  YcluiKeys keys(YcluiKeyTable::OfTerminal(), terminal_.eraseKey(), encoding_.c_str());
  while (!settings_.leaves && typing_.parser() != nullptr) {
    refresh();
    flush();
    std::string bytes;
    const YcluiTerminal::Event event = terminal_.read(bytes, keys.waits() ? KeyMilliseconds : -1);
    if (event == YcluiTerminal::Event::Gone || terminal_.endingSignal() != 0) return;
    checkSignals();
    if (event == YcluiTerminal::Event::Nothing && CluiInterrupted()) {
      CluiClearInterrupt();
      control(InterruptByte);
    } else if (event == YcluiTerminal::Event::Nothing) {
      keys.settle();
    }
    keys.feed(bytes);
    take(keys);
  }
}

void CluiSession::take(YcluiKeys& keys) {
  YcluiKey key;
  terminal_.enableSignalKeys(true);
  while (!settings_.leaves && typing_.parser() != nullptr && terminal_.endingSignal() == 0 &&
         keys.next(key)) {
    keys.isPasting() || key.kind == YcluiKey::PasteEnd ? handlePasted(key) : handle(key);
    if (CluiInterrupted()) afterInterrupt(keys);
  }
  terminal_.enableSignalKeys(false);
}

// Drops what was typed ahead, since it was meant for the command that was interrupted.
void CluiSession::afterInterrupt(YcluiKeys& keys) {
  CluiClearInterrupt();
  keys.drop();
  pasted_.clear();
  pasteFault_.clear();
  typing_.takeHeld();
  dropsPaste_ = pasting_;
  screen_.print("interrupted");
}

void CluiSession::checkSignals() {
  if (terminal_.wasStopped()) screen_.forget();
  int width = 0;
  int height = 0;
  if (terminal_.wasResized() && terminal_.size(width, height)) screen_.resize(width, height);
}

void CluiSession::refresh() {
  if (!pasting_) screen_.show(picture(prompt(), true));
}

void CluiSession::flush() {
  const std::string output = screen_.takeOutput();
  if (output.empty()) return;
  std::fflush(stdout);
  terminal_.write(output);
}

const std::string& CluiSession::prompt() {
  return commandIsOpen() ? settings_.prompts.open : settings_.prompts.ready;
}

// The line that was sent is plain; the word after it may be in colours.
YcluiPicture CluiSession::picture(const std::string& prompt, bool isPainted) {
  YcluiPicture picture;
  picture.prompt.add(prompt, colours_.of(YcluiTextKind::Prompt));
  picture.cursor = field_.text().size();
  const YcluiParser* parser = typing_.parser();
  if (!isPainted || parser == nullptr) {
    picture.line.add(field_.text());
    return picture;
  }
  const std::string word = field_.word();
  picture.line.add(field_.text().substr(0, field_.text().size() - word.size()));
  if (typedWord_ == nullptr) typedWord_ = std::make_unique<CluiTypedWord>(*parser);
  typedWord_->read(word, mayBeginWithComma());
  typedWord_->paint(colours_, picture.line);
  return picture;
}

bool CluiSession::list(const YcluiParser& parser, const std::string& word) {
  const YcluiParser::Hold hold(parser);
  CluiTypedWord typed(parser, word, mayBeginWithComma());
  YcluiOffers offers(parser);
  typed.find(offers);
  const std::string argument = offers.argumentText();
  if (!argument.empty()) screen_.print(argument);
  if (offers.empty()) return !argument.empty();
  const std::size_t room = screen_.rowsBeside(picture(prompt(), false));
  const std::size_t taken = argument.empty() ? 0 : 1;
  YcluiOfferList list(offers);
  list.open(false);
  for (const YcluiStyledText& row :
       list.rows(screen_.width(), room > taken ? room - taken : 1, colours_)) {
    screen_.print(row);
  }
  return true;
}

// Shows the line once more and leaves it on the screen.
void CluiSession::leaveLine(const std::string& prompt) {
  screen_.show(picture(prompt, false));
  screen_.leave();
  flush();
}

bool CluiSession::commandIsOpen() {
  YcluiParser* parser = typing_.parser();
  return parser != nullptr && YcluiIsHalfTyped(*parser);
}

// --- Events of the parser and the engine

void CluiSession::clearLine() {
  screen_.giveWay();
  flush();
}

void CluiSession::lineChanges(const char* wholeLine) {
  field_.setLine(wholeLine);
  outcome_ = Outcome::Read;
}

void CluiSession::commandCompletes() {
  pasting_ ? clearLine() : leaveLine(settings_.prompts.ready);
}

// The line of an indefinite word stays on the screen like that of a complete command.
void CluiSession::scriptRuns() {
  YcluiParser* parser = typing_.parser();
  const bool isFirst = std::exchange(wordIsNew_, false);
  const bool stays = isFirst && !pasting_ && parser != nullptr && parser->lastIsIndefinite() != 0;
  if (!stays) return clearLine();
  const bool alone = parser->numberOfToken() == 1 && parser->nestingDepth() == 1;
  leaveLine(alone ? settings_.prompts.ready : settings_.prompts.open);
  clearLine();
}

// --- Keys

void CluiSession::handle(const YcluiKey& key) {
  switch (key.kind) {
    case YcluiKey::Text:
      lastKey_ = thisKey_ = '\0';
      offer(key.bytes);
      break;
    case YcluiKey::Named:
    case YcluiKey::Control:
      if (const char byte = ByteOf(key)) byte == EraseByte ? erase() : control(byte);
      break;
    case YcluiKey::Invalid:
      screen_.print(key.bytes);
      break;
    default:
      break;
  }
}

void CluiSession::erase() {
  lastKey_ = thisKey_ = '\0';
  if (offer(std::string(1, EraseByte)) && !field_.rubOut()) screen_.ring();
}

void CluiSession::control(char byte) {
  if (byte == SuspendByte) return stop();
  lastKey_ = thisKey_;
  thisKey_ = byte;
  if (byte == ReturnByte) closeQuote();
  if (!offer(std::string(1, byte))) return;
  if (byte == LeaveByte && field_.text().empty()) {
    settings_.leaves = true;
    return;
  }
  if (byte != InterruptByte) return;
  takeWord();
  giveUp();
}

void CluiSession::stop() {
  screen_.leave();
  flush();
  terminal_.stop();
  terminal_.wasStopped();  // clears the flag, since the line has been left already
}

// A backslash may escape the first quote that is typed.
void CluiSession::closeQuote() {
  YcluiParser* parser = typing_.parser();
  if (parser == nullptr) return;
  for (int i = 0; i < 2; ++i) {
    const CluiTypedWord word(*parser, field_.word(), mayBeginWithComma());
    if (word.ending() != YcluiEndsInQuote) return;
    field_.type(std::string(1, word.openQuote()));
  }
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

void CluiSession::handlePasted(const YcluiKey& key) {
  if (key.kind == YcluiKey::PasteEnd) return pasteRest();
  if (!pasting_) beginPaste();
  if (dropsPaste_) return;
  if (key.kind == YcluiKey::Invalid) {
    pasteFault_ = key.bytes;
    pasted_ += '?';
  } else {
    paste(key.bytes);
  }
}

void CluiSession::beginPaste() {
  lastKey_ = thisKey_ = '\0';
  pasting_ = true;
  dropsPaste_ = false;
  pasted_.clear();
  pasteFault_.clear();
  pastedLines_ = 0;
}

void CluiSession::paste(const std::string& bytes) {
  for (const char byte : bytes) {
    byte == '\n' ? pasteLine() : pasted_.push_back(byte);
    if (typing_.parser() == nullptr || CluiInterrupted()) return;
  }
}

// The word typed before the paste is the beginning of its first line.
void CluiSession::pasteLine() {
  std::string line = takeWord() + std::exchange(pasted_, std::string());
  ++pastedLines_;
  if (!IsBlank(line)) {
    screen_.hide();
    screen_.print(prompt() + line);
  }
  if (!skipsLine()) typing_.readLine(line + "\n", pastedLines_);
}

// A line does not run without one of its characters.
bool CluiSession::skipsLine() {
  if (pasteFault_.empty()) return false;
  screen_.print("paste:" + std::to_string(pastedLines_) + ": " +
                std::exchange(pasteFault_, std::string()) + "; the line is skipped");
  return true;
}

void CluiSession::pasteRest() {
  ++pastedLines_;
  std::string rest = typing_.takeHeld();
  if (!skipsLine()) rest += pasted_;
  pasted_.clear();
  std::replace_if(rest.begin(), rest.end(), YIsWhiteSpace, ' ');
  for (std::size_t i = 0; i < rest.size() && typing_.parser() != nullptr;) {
    const std::size_t length = CluiStepAt(rest, i);
    offer(rest.substr(i, length));
    i += length;
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
