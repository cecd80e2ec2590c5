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
#include "program/terminal/CluiHangup.h"
#include "program/terminal/CluiTypedWord.h"
#include "terminal/YcluiHalfTyped.h"
#include "terminal/YcluiOfferList.h"
#include "terminal/YcluiOffers.h"
#include "terminal/YcluiShow.h"

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
constexpr char EraseWordByte = '\x17';  // Control-W
constexpr char SuspendByte = '\x1A';    // Control-Z
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
      field_(std::make_unique<CluiTerminalField>()),
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
  openEditor();
  beginWord(field_->word());
  {
    const CluiHangup hangup;
    loop();
  }
  CluiClearInterrupt();  // in a terminal Control-C is a key and does not end the run
  screen_.leave();
  flush();
  terminal_.close();
  keepUnfinished();
  history_.save();
  return typing_.parser() != nullptr && !isLost_;
}

void CluiSession::openEditor() {
  editor_.emplace(*typing_.parser(), history_);
  const std::string error = CluiReadColours(settings_.colours, editor_->colours());
  if (!error.empty()) screen_.print(error);
}

// Attaches the field to the parser unless the language has done so.
bool CluiSession::attach() {
  if (field_->binding() != nullptr) return true;
  YStatus status = {0};
  char result[64];
  const std::string text =
      "(terminal-attach " + std::to_string(reinterpret_cast<long>(typing_.parser())) + ")";
  ScmVMExternal::ExecuteString(text.c_str(), result, sizeof result, status);
  return YStatusIsGood(status) && field_->binding() != nullptr;
}

// --- The loop

void CluiSession::loop() {
  YcluiKeys keys(YcluiKeyTable::OfTerminal(), terminal_.eraseKey(), encoding_.c_str());
  while (goesOn()) {
    refresh();
    flush();
    std::string bytes;
    const YcluiTerminal::Event event = terminal_.read(bytes, keys.waits() ? KeyMilliseconds : -1);
    if (event == YcluiTerminal::Event::Gone || terminal_.endingSignal() != 0) return;
    checkSignals();
    if (event == YcluiTerminal::Event::Nothing && CluiInterrupted()) {
      CluiClearInterrupt();
      handle({YcluiKey::Control, YcluiKeyName::None, 'c', ""});
    } else if (event == YcluiTerminal::Event::Nothing) {
      keys.settle();
    }
    keys.feed(bytes);
    take(keys);
    reloadIfAsked();
  }
}

bool CluiSession::goesOn() {
  return !settings_.leaves && !isLost_ && typing_.parser() != nullptr;
}

void CluiSession::take(YcluiKeys& keys) {
  YcluiKey key;
  terminal_.enableSignalKeys(true);
  while (goesOn() && terminal_.endingSignal() == 0 && keys.next(key)) {
    keys.isPasting() || key.kind == YcluiKey::PasteEnd ? handlePasted(key) : handle(key);
    if (CluiInterrupted()) afterInterrupt(keys);
    reloadIfAsked();
  }
  terminal_.enableSignalKeys(false);
}

// Drops what was typed ahead, since it was meant for the command that was interrupted.
void CluiSession::afterInterrupt(YcluiKeys& keys) {
  CluiClearInterrupt();
  keys.drop();
  pasted_.clear();
  pasteFault_.clear();
  afterPaste_.clear();
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
  if (pasting_ || typing_.parser() == nullptr) return;
  editor_->setPrompts(settings_.prompts.ready, settings_.prompts.open);
  YcluiShow(*editor_, screen_);
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

YcluiPicture CluiSession::sentPicture(const std::string& prompt) {
  YcluiPicture picture;
  const YcluiStyle style = editor_ ? editor_->colours().of(YcluiTextKind::Prompt) : YcluiStyle();
  picture.prompt.add(prompt, style);
  picture.line.add(field_->text());
  picture.cursor = field_->text().size();
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
  const std::size_t room = screen_.rowsBeside(sentPicture(prompt()));
  const std::size_t taken = argument.empty() ? 0 : 1;
  YcluiOfferList list(offers);
  list.open(false);
  for (const YcluiStyledText& row :
       list.rows(screen_.width(), room > taken ? room - taken : 1, editor_->colours())) {
    screen_.print(row);
  }
  return true;
}

// Shows the line once more and leaves it on the screen.
void CluiSession::leaveLine(const std::string& prompt) {
  screen_.show(sentPicture(prompt));
  screen_.leave();
  flush();
}

bool CluiSession::commandIsOpen() {
  YcluiParser* parser = typing_.parser();
  return parser != nullptr && YcluiIsHalfTyped(*parser);
}

// --- Loading the language again

// The rest of a paste is read before.
void CluiSession::reloadIfAsked() {
  if (pasting_ || !goesOn() || !(settings_.reloads || CluiHangup::isAsked())) return;
  terminal_.enableSignalKeys(true);
  if (reload()) screen_.print("the language has been loaded again");
  terminal_.enableSignalKeys(false);
  CluiClearInterrupt();
}

// The word is kept, what was sent of a command is in the history. A script may attach a field while
// it is loaded, so it gets a field of its own, and the old one goes on when loading fails.
bool CluiSession::reload() {
  settings_.reloads = false;
  CluiHangup::clear();
  clearLine();
  auto old = std::exchange(field_, std::make_unique<CluiTerminalField>());
  if (!typing_.reload()) {
    field_ = std::move(old);
    return false;
  }
  const std::string word = editor_->text();
  const std::size_t cursor = editor_->cursor();
  addSentToHistory();
  openEditor();
  old.reset();
  typing_.dropOldParsers();
  isLost_ = !attach();
  countsQuotes_ = false;
  beginWord(word);
  editor_->moveTo(cursor);
  return !isLost_;
}

// --- Events of the parser and the engine

void CluiSession::clearLine() {
  screen_.giveWay();
  flush();
}

void CluiSession::lineChanges(const char* wholeLine) {
  field_->setLine(wholeLine);
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
  key_ = &key;
  const char byte = ByteOf(key);
  if (editor_->isForChoice(key)) {
    edit(key);
  } else {
    editor_->endChoice();
    updateField();
    if (key.kind == YcluiKey::Text) {
      lastKey_ = thisKey_ = '\0';
      if (offer(key.bytes)) edit(key);
    } else if (byte != '\0') {
      control(byte);
    } else {
      edit(key);
    }
  }
  key_ = nullptr;
}

void CluiSession::control(char byte) {
  if (byte == SuspendByte) return stop();
  lastKey_ = thisKey_;
  thisKey_ = byte;
  if (byte == ReturnByte) closeQuote();
  const std::string typed = editor_->text();
  if (!offer(std::string(1, byte))) {
    const bool isComment = byte == ReturnByte && typed.starts_with('#');
    if (isComment && field_->word().empty()) keepComment(typed);
    return;
  }
  if (byte == LeaveByte && editor_->text().empty()) {
    settings_.leaves = true;
  } else if (byte == InterruptByte) {
    setWord("");
    giveUp();
    beginWord("");
  } else {
    edit(*key_);
  }
}

// Return, Control-C and Control-D on an empty word are not for the editor: it has no whole line.
void CluiSession::edit(const YcluiKey& key) {
  YcluiParser* parser = typing_.parser();
  if (parser == nullptr) return;
  isEdited_ = true;
  const char byte = ByteOf(key);
  if (editor_->cursor() == 0 && !editor_->isForChoice(key)) {
    if (byte == EraseByte || byte == EraseWordByte) return takeLastToEdit(byte == EraseByte);
  }
  const bool isEnd = byte == LeaveByte && editor_->text().empty();
  if (isEnd || byte == InterruptByte || byte == ReturnByte) {
    if (!editor_->isForChoice(key)) return;
  }
  const YcluiParser::Hold hold(*parser);
  const bool isPasted = pasting_ && key.kind == YcluiKey::Text;
  const YcluiKey pasted = {YcluiKey::Paste, YcluiKeyName::None, '\0', key.bytes};
  const YcluiLineEditor::Request request = editor_->handle(isPasted ? pasted : key);
  if (editor_->rings()) screen_.ring();
  if (request == YcluiLineEditor::Request::Clear) screen_.clear();
  updateField();
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
    const CluiTypedWord word(*parser, editor_->text(), mayBeginWithComma());
    if (word.ending() != YcluiEndsInQuote) return;
    setWord(editor_->text() + word.openQuote());
  }
}

// Returns whether nothing is bound to the key, so that it edits.
bool CluiSession::offer(const std::string& bytes) {
  const std::string word = field_->word();
  const CluiSentWords::Extent before(*typing_.parser());
  const std::size_t refusals = typing_.refusals();
  outcome_ = Outcome::None;
  isEdited_ = false;
  typing_.beginWord(word);
  const bool let = field_->type(bytes);
  if (let && bytes == "\"") countsQuotes_ = true;
  typing_.endWord(outcome_ == Outcome::Read);
  remember(word, before, typing_.refusals() != refusals);
  clearStaleLine();
  if (!let) followField();
  return let;
}

// --- The word in the editor and in the field

// Begins a word after what the parser has read.
void CluiSession::beginWord(const std::string& text) {
  const YcluiParser* parser = typing_.parser();
  outcome_ = Outcome::None;
  if (parser == nullptr) return;
  const YcluiParser::Hold hold(*parser);
  const std::string typed = sent_.text();
  editor_->beginAfter({field_->line(), typed.empty() ? typed : typed + " ",
                       mayBeginWithComma() && CluiTypedWord::EndsInArgument(*parser)},
                      text);
  updateField();
}

void CluiSession::setWord(const std::string& text) {
  const YcluiParser* parser = typing_.parser();
  if (parser == nullptr) return;
  const YcluiParser::Hold hold(*parser);
  editor_->setText(text);
  updateField();
}

// After an action of a key, which may have changed the word, the parser or both.
void CluiSession::followField() {
  if (outcome_ != Outcome::None) return beginWord(field_->word());
  if (!isEdited_ || field_->word() != editor_->text()) setWord(field_->word());
}

// A binding that counts quotes gets what is erased at the end as by a key, so that it closes one.
void CluiSession::updateField() {
  const std::string& text = editor_->text();
  while (countsQuotes_ && !text.starts_with(field_->word()) && field_->rubOut()) {
  }
  if (field_->word() == text) return;
  YStatus status = {0};
  char result[64];
  ScmVMExternal::ExecuteString("(terminal-update)", result, sizeof result, status);
}

// A command that sets another syntax empties the command line without an echo; reset() echoes it.
void CluiSession::clearStaleLine() {
  YcluiParser* parser = typing_.parser();
  if (outcome_ == Outcome::None || parser == nullptr || commandIsOpen()) return;
  if (!field_->text().empty() && field_->word().empty()) parser->reset();
}

// --- History

// A refused text is an entry of its own, so that it can be recalled and corrected. What was
// accepted of it is known by the command line only.
void CluiSession::remember(const std::string& word, const CluiSentWords::Extent& before,
                           bool refused) {
  if (outcome_ == Outcome::None || outcome_ == Outcome::TakenBack) return;
  const YcluiParser* parser = typing_.parser();
  const CluiSentWords::Extent after = parser == nullptr ? before : CluiSentWords::Extent(*parser);
  if (!refused) sent_.add(word, before, after);
  if (refused) history_.add(word);
  if (refused && !(after == before)) sent_.set(field_->line(), after);
  if (outcome_ == Outcome::GivenUp || !commandIsOpen()) addSentToHistory();
  history_.reset();
}

void CluiSession::addSentToHistory() {
  history_.add(sent_.text());
  sent_.clear();
}

// A comment that was sent is an entry of its own: within a command it would hide what follows it.
void CluiSession::keepComment(const std::string& comment) {
  history_.add(comment);
  YcluiPicture picture = sentPicture(prompt());
  picture.line.add(comment);
  picture.cursor = picture.line.text().size();
  screen_.show(picture);
  screen_.leave();
}

// What was half typed when the session ended.
void CluiSession::keepUnfinished() {
  const std::string sent = sent_.text();
  const std::string word = editor_->text();
  history_.add(sent.empty() || word.empty() ? sent + word : sent + " " + word);
}

// --- Actions of keys

void CluiSession::giveUp() {
  YcluiParser* parser = typing_.parser();
  if (parser == nullptr) return;
  YcluiGiveUp(*parser);
  outcome_ = Outcome::GivenUp;
}

void CluiSession::takeBack() {
  takeLast();
}

// The text of the last token, which is removed from the parser; none without a token. An open token
// is shown but is not in the frame yet: pushing and popping a dummy token makes the parser echo the
// line without it.
std::optional<std::string> CluiSession::takeLast() {
  YcluiParser* parser = typing_.parser();
  if (parser == nullptr) return std::nullopt;
  const CluiSentWords::Extent extent(*parser);
  if (extent.tokens == 0) return std::nullopt;
  const std::string line = field_->line();
  parser->exhaust();
  if (extent.isOpen) {
    parser->dropOpenToken();
    parser->pushDummyToken("");
  }
  parser->popToken();
  outcome_ = Outcome::TakenBack;
  const std::string left = field_->line();
  std::optional<std::string> typed = sent_.takeBack(extent);
  if (typed) return typed;
  sent_.set(left, CluiSentWords::Extent(*parser));
  const std::size_t begin = left.empty() ? 0 : left.size() + 1;
  return line.substr(std::min(begin, line.size()));
}

// The last token becomes the beginning of the word again, or is dropped.
void CluiSession::takeLastToEdit(bool keeps) {
  const std::string word = editor_->text();
  const std::optional<std::string> last = takeLast();
  if (!last) return screen_.ring();
  beginWord(keeps ? *last + word : word);
  editor_->moveTo(keeps ? last->size() : 0);
}

void CluiSession::editByKey() {
  if (key_ != nullptr) edit(*key_);
}

void CluiSession::insert(const std::string& text) {
  const YcluiParser* parser = typing_.parser();
  if (!editor_ || parser == nullptr) return;
  const YcluiParser::Hold hold(*parser);
  if (outcome_ != Outcome::None || field_->word() != editor_->text()) beginWord(field_->word());
  editor_->insert(text);
  isEdited_ = true;
  updateField();
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
  editor_->endChoice();
  updateField();
  pasting_ = true;
  dropsPaste_ = false;
  pasted_.clear();
  pasteFault_.clear();
  afterPaste_.clear();
  pastedLines_ = 0;
}

void CluiSession::paste(const std::string& bytes) {
  for (const char byte : bytes) {
    byte == '\n' ? pasteLine() : pasted_.push_back(byte);
    if (typing_.parser() == nullptr || CluiInterrupted()) return;
  }
}

void CluiSession::pasteLine() {
  std::string line = takeBeforeCursor() + std::exchange(pasted_, std::string());
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
  beginWord(field_->word());
  for (std::size_t i = 0; i < rest.size() && typing_.parser() != nullptr;) {
    const std::size_t length = CluiStepAt(rest, i);
    const YcluiKey key = {YcluiKey::Text, YcluiKeyName::None, '\0', rest.substr(i, length)};
    key_ = &key;
    if (offer(key.bytes)) edit(key);
    key_ = nullptr;
    i += length;
  }
  if (!afterPaste_.empty()) {
    const std::size_t cursor = editor_->cursor();
    insert(std::exchange(afterPaste_, std::string()));
    editor_->moveTo(cursor);
  }
  pasting_ = false;
}

// The part of the word that is the beginning of the first line of the paste. The rest of the word
// follows the last one.
std::string CluiSession::takeBeforeCursor() {
  const std::string word = field_->word();
  if (word.empty()) return word;
  const std::size_t cursor = word == editor_->text() ? editor_->cursor() : word.size();
  afterPaste_.insert(0, word.substr(cursor));
  setWord("");
  return word.substr(0, cursor);
}
