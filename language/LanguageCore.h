// All state of a language. Internal to the language.

#ifndef LANGUAGE_LANGUAGECORE_H_
#define LANGUAGE_LANGUAGECORE_H_

#include <cstddef>
#include <cstdint>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/YErr.h"
#include "language/Language.h"
#include "language/LanguageParser.h"
#include "language/LanguageWords.h"
#include "parser/YcluiPreview.h"

namespace yqrtClui {

// Reads texts for feeds and runs commands. It lives as long as the Language or the outermost feed
// that is being read, so that a command may destroy the Language.
class LanguageCore {
 public:
  using Handler = std::function<std::exception_ptr(const Refusal&)>;

  LanguageCore() = default;
  LanguageCore(const LanguageCore&) = delete;
  LanguageCore& operator=(const LanguageCore&) = delete;
  ~LanguageCore() = default;

  // --- Declarations

  void add(const Syntax& syntax, std::unique_ptr<detail::Command> command, bool isAnywhere);
  bool remove(const Syntax& word);
  const std::string& error() const { return error_; }
  // Sets the syntax if commands were added, unless a command is running.
  void update() {
    if (isStale_ && running_ == 0) setSyntax();
  }

  // --- Text

  void begin(LanguageFeed& feed);
  std::exception_ptr read(LanguageFeed& feed, std::string_view lines);
  bool isOver(const LanguageFeed& feed) const { return feed.hasThrown_ || isLeft_ || isAbandoned_; }
  void end(LanguageFeed& feed, bool isWhole);
  // Returns whether the core is to be destroyed.
  bool release(LanguageFeed& feed);
  bool isReading() const { return feed_ != nullptr; }
  void leave() { isLeft_ = true; }
  bool isLeft() const { return isLeft_; }
  void drop();
  // The Language is being destroyed.
  void abandon() { isAbandoned_ = true; }
  void setHandler(Handler handler);
  bool hasHandler() const { return *handler_ != nullptr; }
  std::vector<Candidate> complete(std::string_view text);
  YcluiParser& parser() { return parser_; }

  // --- Calls of the parser

  // Whether a token may be offered to the syntax. False, and the refusal is reported, when its
  // arguments are not those that were declared.
  bool admits(const YcluiToken& token);
  void refuse(const YcluiToken& token);
  void runCommand(std::size_t number);

 private:
  struct Entry {
    Syntax syntax;
    std::unique_ptr<detail::Command> command;
    bool isAnywhere;
    bool isRemoved;  // with one of its words; a command that runs may remove itself
  };
  using Tokens = std::vector<const YcluiToken*>;

  LanguageParser parser_{*this};
  LanguageWords words_{parser_};
  std::vector<Entry> entries_;
  std::vector<std::uint32_t> anywhereIds_;
  std::string error_;
  bool isStale_ = true;  // the parser's syntax does not have all entries
  bool isLeft_ = false;
  bool isAbandoned_ = false;
  std::shared_ptr<Handler> handler_ = std::make_shared<Handler>();
  std::unique_ptr<YcluiPreview> preview_;  // for completion
  LanguageFeed* feed_ = nullptr;           // the innermost text
  std::string spareLine_;                  // its memory is used by the next feed
  std::exception_ptr thrown_;              // by a command, until the feed returns it
  std::deque<Tokens> levels_;              // the words of the running commands
  std::size_t running_ = 0;                // how many there are
  const YErrManager* errors_ = &YErr;      // of the thread that feeds
  std::uint64_t codes_ = 0;                // recorded before the present token

  void setSyntax();
  bool isAnywhere(std::uint32_t id) const;
  bool hasWord(const Syntax& syntax, std::uint32_t id) const;
  Tokens& collectTokens(bool isAnywhere);
  void readLine(LanguageFeed& feed);
  void skipRest();
  bool isStopped() const { return feed_ != nullptr ? isOver(*feed_) : isAbandoned_; }
  void stop(std::exception_ptr thrown);
  void reportDropped();
  // Only texts that commands feed need it: the parser knows the place in the outermost one.
  void notePlace() {
    if (feed_ != nullptr && feed_->outer_ != nullptr && !isInAlias()) notePlaceInLine();
  }
  void notePlaceInLine();
  bool isInAlias() const;
  long offsetOf(long inParser, long inLexer) const;
  bool checkArguments(const YcluiToken& token, const WordDeclaration& word);
  void report(Refusal refusal, long offset);
  void place(Refusal& refusal, long offset) const;
  std::vector<std::string> expectedWords() const;
  unsigned int newCode() const;
};

}  // namespace yqrtClui

#endif  // LANGUAGE_LANGUAGECORE_H_
