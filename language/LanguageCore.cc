#include "language/LanguageCore.h"

#include <algorithm>
#include <utility>

#include "language/LanguageRefusals.h"
#include "language/LanguageSyntax.h"
#include "parser/YcluiHelp.h"

namespace yqrtClui {

namespace {

constexpr std::size_t KeptRefusals = 100;
constexpr std::size_t KeptWords = 100;

}  // namespace

// --- Declarations

void LanguageCore::add(const Syntax& syntax, std::unique_ptr<detail::Command> command,
                       bool isAnywhere) {
  std::string fault = words_.declare(syntax);
  if (fault.empty()) fault = FaultOfCommand(syntax, *command);
  if (!fault.empty()) {
    if (error_.empty()) error_ = std::move(fault);
    return;
  }
  if (isAnywhere) anywhereIds_.push_back(words_.idOf(*syntax.word()));
  entries_.push_back({syntax, std::move(command), isAnywhere, false});
  isStale_ = true;
}

bool LanguageCore::remove(const Syntax& word) {
  if (word.kind() != Syntax::Kind::Word) return false;
  const std::uint32_t id = words_.idOf(*word.word());
  if (!words_.remove(*word.word())) return false;
  for (Entry& entry : entries_) entry.isRemoved = entry.isRemoved || hasWord(entry.syntax, id);
  std::erase(anywhereIds_, id);
  isStale_ = true;
  return true;
}

bool LanguageCore::hasWord(const Syntax& syntax, std::uint32_t id) const {
  if (syntax.kind() == Syntax::Kind::Word) return words_.idOf(*syntax.word()) == id;
  const std::vector<Syntax>& parts = syntax.parts();
  return std::any_of(parts.begin(), parts.end(),
                     [&](const Syntax& part) { return hasWord(part, id); });
}

// A new graph of all commands; the parser destroys the former one.
void LanguageCore::setSyntax() {
  std::vector<NumberedSyntax> commands;
  std::vector<NumberedSyntax> anywhere;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (entries_[i].isRemoved) continue;
    (entries_[i].isAnywhere ? anywhere : commands).push_back({&entries_[i].syntax, i});
  }
  std::string fault;
  parser_.setSyntaxGraph(BuildGraph(commands, words_, fault).release());
  if (error_.empty()) error_ = std::move(fault);
  for (const NumberedSyntax& each : anywhere) {
    parser_.addIndefiniteNode(BuildNode(each, words_).release());
  }
  isStale_ = false;
}

bool LanguageCore::isAnywhere(std::uint32_t id) const {
  return std::find(anywhereIds_.begin(), anywhereIds_.end(), id) != anywhereIds_.end();
}

// --- Feeds

void LanguageCore::begin(LanguageFeed& feed) {
  feed.outer_ = std::exchange(feed_, &feed);
  feed.line_.swap(spareLine_);
  if (feed.outer_ == nullptr) {
    isLeft_ = false;
    errors_ = &YErr;
    update();
  }
  codes_ = errors_->count();
  if (feed.outer_ == nullptr) return;
  // What is fed by a command is a command of its own.
  feed.frames_ = parser_.nestingDepth();
  parser_.pushIndependentFrame();
}

bool LanguageCore::release(LanguageFeed& feed) {
  feed_ = feed.outer_;
  feed.line_.swap(spareLine_);
  if (feed_ == nullptr) return isAbandoned_;
  if (parser_.tokenIsOpen() != 0) parser_.dropOpenToken();
  while (parser_.nestingDepth() > feed.frames_) parser_.popFrame();
  return false;
}

std::exception_ptr LanguageCore::read(LanguageFeed& feed, std::string_view lines) {
  if (!error_.empty()) {
    Refusal refusal;
    refusal.kind = Refusal::Kind::BrokenLanguage;
    refusal.message = error_;
    if (feed.result_.refused == 0) report(std::move(refusal), -1);
    lines = {};
  }
  while (!lines.empty() && !isOver(feed)) {
    const std::size_t end = std::min(lines.find('\n'), lines.size() - 1) + 1;
    feed.line_.assign(lines.substr(0, end));
    if (feed.line_.back() != '\n') feed.line_ += '\n';
    ++feed.number_;
    readLine(feed);
    feed.begin_ += end;
    lines.remove_prefix(end);
  }
  return std::exchange(thrown_, nullptr);
}

void LanguageCore::readLine(LanguageFeed& feed) {
  const std::size_t nul = feed.line_.find('\0');
  if (nul != std::string::npos) {
    Refusal refusal;
    refusal.kind = Refusal::Kind::Unreadable;
    refusal.message = "a NUL; the line is not read";
    return report(std::move(refusal), static_cast<long>(nul));
  }
  if (feed.outer_ == nullptr) {
    feed.suspended_ = parser_.lex()->suspendedTexts();
    parser_.interpret(feed.line_.c_str());
    return;
  }
  feed.suspended_ = parser_.lex()->suspendedTexts() + 1;
  if (parser_.pushToken(feed.line_.c_str()) != 0) return;
  Refusal refusal;
  refusal.kind = Refusal::Kind::Unreadable;
  refusal.code = YErrTooDeep;
  refusal.message = "too many commands feed the language inside each other";
  report(std::move(refusal), 0);
}

void LanguageCore::end(LanguageFeed& feed, bool isWhole) {
  update();
  const bool isHalfTyped = parser_.numberOfToken() > 0 || parser_.tokenIsOpen() != 0;
  if (!isHalfTyped || isOver(feed)) return;
  if (!isWhole && feed.outer_ == nullptr) {
    feed.result_.isUnfinished = true;
    return;
  }
  Refusal refusal;
  refusal.kind = Refusal::Kind::Unfinished;
  refusal.found = parser_.currentLine();
  if (const YcluiToken* open = parser_.openToken()) {
    refusal.found += (refusal.found.empty() ? "" : " ") + std::string(open->wholeString());
  } else {
    refusal.expected = expectedWords();
  }
  refusal.message = "the text ends inside the command \"" + refusal.found + "\"";
  if (feed.outer_ == nullptr) drop();  // otherwise its frame is removed
  report(std::move(refusal), static_cast<long>(feed.line_.size()) - 1);
}

void LanguageCore::drop() {
  parser_.exhaust();
  parser_.dropOpenToken();
  parser_.reset();
}

void LanguageCore::setHandler(Handler handler) {
  handler_ = std::make_shared<Handler>(std::move(handler));
}

// --- Tokens and commands

bool LanguageCore::admits(const YcluiToken& token) {
  if (isStopped()) {
    parser_.exhaust();
    return false;
  }
  notePlace();
  codes_ = errors_->count();
  if (token.argc() - 1 <= words_.unrestrictedArguments(token.id())) return true;
  const WordDeclaration* word = words_.find(token.id());
  return word == nullptr || checkArguments(token, *word);
}

bool LanguageCore::checkArguments(const YcluiToken& token, const WordDeclaration& word) {
  const int declared = static_cast<int>(word.arguments.size());
  for (int i = 1; i < token.argc(); ++i) {
    if (i <= declared && IsAccepted(*token[i], word.arguments[static_cast<std::size_t>(i) - 1])) {
      continue;
    }
    report(RefusedValue(token, word, i),
           offsetOf(parser_.lastArgumentOffset(i), parser_.lex()->argumentOffset(i)));
    return false;
  }
  return true;
}

void LanguageCore::refuse(const YcluiToken& token) {
  if (isStopped()) return parser_.exhaust();
  notePlace();
  const YcluiLex& lex = *parser_.lex();
  const unsigned int code = newCode();
  const bool isRead = lex.faultOffset() < 0 || (code == YErrNothing && lex.faultArgument() == 0);
  if (isRead) {
    Refusal refusal = RefusedWord(token, code);
    refusal.expected = expectedWords();
    report(std::move(refusal), offsetOf(parser_.lastTokenOffset(), lex.tokenOffset()));
  } else {
    report(RefusedLiteral(lex, token, words_.find(token.id()), code),
           offsetOf(parser_.lastFaultOffset(), lex.faultOffset()));
  }
  codes_ = errors_->count();
}

void LanguageCore::runCommand(std::size_t number) {
  if (number >= entries_.size()) return;
  const bool isAnywhere = entries_[number].isAnywhere;
  detail::Command& command = *entries_[number].command;
  const Tokens& tokens = collectTokens(isAnywhere);
  const int depth = isAnywhere ? parser_.nestingDepth() : 0;
  if (feed_ != nullptr) ++feed_->result_.commands;

  detail::Outcome outcome;
  ++running_;
  command.run(Line(tokens.data(), static_cast<int>(tokens.size())), outcome);
  --running_;

  if (outcome.thrown != nullptr && feed_ != nullptr) {
    stop(std::move(outcome.thrown));
  } else if (outcome.thrown != nullptr) {
    reportDropped();
  } else if (!outcome.failure.empty()) {
    Refusal refusal;
    refusal.kind = Refusal::Kind::CommandFailed;
    refusal.message = std::move(outcome.failure);
    report(std::move(refusal), offsetOf(parser_.lastTokenOffset(), -1));
  }
  if (isStopped()) parser_.exhaust();
  if (isAnywhere && parser_.nestingDepth() == depth && parser_.lastIsIndefinite() != 0) {
    parser_.popToken();
  }
  update();
  codes_ = errors_->count();
}

// The tokens stay where they are until the command returns: what it feeds is in other frames.
LanguageCore::Tokens& LanguageCore::collectTokens(bool isAnywhere) {
  if (levels_.size() <= running_) levels_.resize(running_ + 1);
  Tokens& tokens = levels_[running_];
  tokens.clear();
  const YWord count = parser_.numberOfToken();
  for (YWord i = isAnywhere ? count - 1 : 0; i < count; ++i) {
    const YcluiToken* token = parser_.tokenAt(i);
    if (isAnywhere || anywhereIds_.empty() || !this->isAnywhere(token->id())) {
      tokens.push_back(token);
    }
  }
  return tokens;
}

// The text is not read by a feed, so there is no call that could throw the exception.
void LanguageCore::reportDropped() {
  Refusal refusal;
  refusal.kind = Refusal::Kind::CommandFailed;
  refusal.message = "the command has thrown an exception";
  report(std::move(refusal), -1);
}

// Without a feed the exception is dropped.
void LanguageCore::stop(std::exception_ptr thrown) {
  if (feed_ == nullptr) return;
  if (thrown_ == nullptr) thrown_ = std::move(thrown);
  feed_->hasThrown_ = true;
}

// --- Places and refusals

bool LanguageCore::isInAlias() const {
  return feed_ != nullptr && parser_.lex()->suspendedTexts() > feed_->suspended_;
}

void LanguageCore::notePlaceInLine() {
  feed_->token_ = static_cast<long>(parser_.lex()->tokenOffset());
}

// The offset in the line that is fed. The parser counts in the outermost line, the lexer in the one
// that is being read.
long LanguageCore::offsetOf(long inParser, long inLexer) const {
  if (feed_ == nullptr || feed_->outer_ == nullptr) return inParser;
  return isInAlias() || inLexer < 0 ? feed_->token_ : inLexer;
}

// A negative offset is none: the refusal is about the text as a whole.
void LanguageCore::place(Refusal& refusal, long offset) const {
  if (offset < 0 || feed_ == nullptr || feed_->number_ == 0) return;
  const std::size_t at = std::min(static_cast<std::size_t>(offset), feed_->line_.size() - 1);
  refusal.line = feed_->number_;
  refusal.column = CountCharacters(std::string_view(feed_->line_).substr(0, at)) + 1;
  refusal.offset = feed_->begin_ + at;
}

void LanguageCore::report(Refusal refusal, long offset) {
  place(refusal, offset);
  const std::shared_ptr<Handler> handler = handler_;  // it may set another one
  if (*handler != nullptr) {
    std::exception_ptr thrown = (*handler)(refusal);
    if (thrown != nullptr) stop(std::move(thrown));
  }
  if (feed_ == nullptr) return;
  ++feed_->result_.refused;
  std::vector<Refusal>& kept = feed_->result_.refusals;
  if (kept.size() < KeptRefusals) kept.push_back(std::move(refusal));
}

// Of a token that is refused: what was recorded for it.
unsigned int LanguageCore::newCode() const {
  const bool isNew = errors_->count() != codes_ && errors_->code(0) != YErrAmbiguous;
  return isNew ? errors_->code(0) : YErrNothing;
}

std::vector<std::string> LanguageCore::expectedWords() const {
  std::vector<std::string> words;
  parser_.eachPossibleWord(
      "",
      [](void* data, const char* name) {
        auto& all = *static_cast<std::vector<std::string>*>(data);
        if (all.size() >= KeptWords || *name == '\0') return;
        if (std::find(all.begin(), all.end(), name) == all.end()) all.emplace_back(name);
      },
      &words);
  return words;
}

std::vector<Candidate> LanguageCore::complete(std::string_view text) {
  update();
  if (preview_ == nullptr) preview_ = std::make_unique<YcluiPreview>(parser_);
  const std::string read(text);
  // What follows a running command in its line is no part of the state that it completes from.
  const bool suspends = running_ > 0 && parser_.lex()->pushString("") != 0;
  preview_->read(read.c_str());
  const YcluiTyping typing = preview_->at(static_cast<std::uint32_t>(read.size()));
  if (suspends) parser_.lex()->popString();
  const YcluiHelp& help = parser_.help();
  std::vector<Candidate> candidates;
  if (typing.kind == YcluiTypingArgument) {
    YString_Array values;
    help.findValues(typing.tokenId, typing.argument, read.c_str() + typing.begin, values);
    for (int i = 0; i < values.size(); ++i) candidates.push_back({values.at(i).buffer, {}});
    return candidates;
  }
  const int count = preview_->findCandidates();
  for (int i = 0; i < count; ++i) {
    const YcluiCandidate& each = preview_->candidate(i);
    const char* about = help.text(each.tokenId);
    candidates.push_back({each.name, about == nullptr ? "" : about});
  }
  return candidates;
}

}  // namespace yqrtClui
