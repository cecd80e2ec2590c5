// A command language declared in C++: words, what may follow them, and functions as commands.

#ifndef LANGUAGE_LANGUAGE_H_
#define LANGUAGE_LANGUAGE_H_

#include <cstddef>
#include <exception>
#include <fstream>
#include <istream>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/YTypes.h"
#include "language/Argument.h"  // IWYU pragma: export
#include "language/Command.h"
#include "language/Line.h"    // IWYU pragma: export
#include "language/Result.h"  // IWYU pragma: export
#include "language/Syntax.h"  // IWYU pragma: export

class YcluiParser;

namespace yqrtClui {

class LanguageCore;

// A text that is being read, line by line. Internal: use Language::feed.
class YQRT_API LanguageFeed {
 public:
  // The result must outlive it.
  LanguageFeed(LanguageCore& core, Result& result);
  LanguageFeed(const LanguageFeed&) = delete;
  LanguageFeed& operator=(const LanguageFeed&) = delete;
  ~LanguageFeed();

  // Reads lines; the last one may lack its end of line. Returns what a command has thrown, or null.
  std::exception_ptr read(std::string_view lines);
  // Whether the rest is not to be read: the language was left or destroyed, or a command threw.
  bool isOver() const;
  // There is no more text. A command that is half typed is refused and dropped if the text was
  // `isWhole`.
  void end(bool isWhole);

 private:
  friend class LanguageCore;

  LanguageCore& core_;
  Result& result_;
  LanguageFeed* outer_ = nullptr;  // the text whose command feeds this one; null for none
  bool hasThrown_ = false;
  std::string line_;        // being read, with its end
  std::size_t number_ = 0;  // of the line, from 1
  std::size_t begin_ = 0;   // its offset in the whole text
  int frames_ = 0;          // of the parser when the text began
  int suspended_ = 0;       // texts of the lexer while a line is read; more in an alias
  long token_ = 0;          // offset in the line of the last token that is in no alias
};

// A candidate of completion: a text that can be typed in place of the last word or argument.
struct Candidate {
  std::string text;
  std::string help;  // of a word; empty without one
};

// A language owns a parser and its commands:
//
//   yqrtClui::Language language;
//   language.command(word("add:", integer("A"), integer("B")),
//                    [](int a, int b) { std::cout << a + b << '\n'; });
//   language.feed("add:5,7");                                   // prints 12
//
// A command is a fragment (language/Syntax.h) that ends in a word, or in a choice of words, and a
// callable that runs when the last word is complete. Several commands may begin with the same
// words. The callable is stored; it may be move-only. Its parameters are
//
//   the arguments of the command's words, in their order: int, long, long long or double for an
//   integer, double for a number, std::string_view or std::string for a text, Point for a point
//
//   or const Line&, for the words of the command with their arguments
//
// For a fragment whose arguments the compiler knows (Phrase, which every word is) the parameters
// are checked by the compiler, otherwise by `command`. Texts are valid until the callable returns.
// It returns nothing, or a text: one that is not empty is the message of a failure, which is
// reported like a refusal. What was typed reaches a command as values only and is never run as
// code.
//
// Errors. No operation throws, but for what commands throw: when one throws, the rest of the text
// is not read, everything is put in order, and the call that has read the text throws the same
// exception. When the text is read by the parser itself, as a log that is played, there is no such
// call: the exception is dropped, and reported by onRefusal as CommandFailed. A mistake in the
// declarations is in error(), and the language then reads nothing.
//
// Re-entry. A command may do anything to its language: add commands, which are accepted when the
// outermost command has returned; feed it text, which is read at once, as a command of its own that
// must be complete, whatever the priorities; destroy it, which ends the reading. A language may be
// moved at any time, but not by a command while run() reads lines.
//
// Texts are in the encoding inside the process. A line ends at its end of line, and a string does
// not continue in the next line; a command may span several lines. A language is for one thread.
class YQRT_API Language {
 public:
  Language();
  Language(Language&& other) noexcept;
  Language& operator=(Language&& other) noexcept;
  ~Language();

  // --- Declarations. They drop a command that is half typed.

  // Adds a command. Of the words in the fragment, those that are new are declared.
  template <class... Values, class Function>
  Language& command(const Phrase<Values...>& phrase, Function&& function) {
    add(phrase, detail::MakeCommand(detail::List<Values...>(), std::forward<Function>(function)),
        false);
    return *this;
  }
  template <class Function>
  Language& command(const Syntax& syntax, Function&& function) {
    add(syntax, detail::MakeCommand(std::forward<Function>(function)), false);
    return *this;
  }
  // Adds a command of one word that is accepted anywhere, also inside another command, which then
  // continues as if the word had not been typed. A Line has that word only.
  template <class... Values, class Function>
  Language& anywhere(const Word<Values...>& word, Function&& function) {
    add(word, detail::MakeCommand(detail::List<Values...>(), std::forward<Function>(function)),
        true);
    return *this;
  }
  // Deletes a word and the commands with it: the word is unknown from now on, until another command
  // with it is added. False when the language does not have it.
  bool remove(const Syntax& word);

  // The first mistake in the declarations; empty without one. Two commands of the same words are
  // one, too, and a command that begins with all words of another one: it would never run. Valid
  // until the language is destroyed.
  const std::string& error() const;

  // --- Text

  // Reads a text. A command that is half typed at its end is continued by the next text.
  Result feed(std::string_view text) {
    Result result;
    detail::Rethrow(readText(*core_, text, result));
    return result;
  }
  // Reads a stream line by line, each as soon as it is complete, to its end, or until a command
  // leaves the language. A command that is half typed at the end of the stream is refused.
  Result feed(std::istream& stream) {
    Result result;
    LanguageFeed feed(*core_, result);
    std::string line;
    while (!feed.isOver() && std::getline(stream, line)) {
      line += '\n';
      detail::Rethrow(feed.read(line));
    }
    feed.end(true);
    return result;
  }
  // The same with a file, named in the encoding of the file system. A result with one refusal,
  // NotOpened, when it cannot be opened.
  Result feedFile(const std::string& path) {
    std::ifstream stream(path);
    return stream ? feed(stream) : notOpened(path);
  }

  // Ends the reading after the present command; for commands. The rest of what is fed is not read.
  void leave();
  // Whether the last text was left.
  bool isLeft() const;
  // Drops what is half typed.
  void drop();

  // Sets a callable that is called with each refusal, as `const Refusal&`, when it occurs. They are
  // in the result, too. When it throws, it is as if a command had thrown.
  template <class Function>
  void onRefusal(Function function) {
    setHandler([function = std::move(function)](const Refusal& refusal) mutable {
      detail::Outcome outcome;
      detail::RunGuarded(outcome, [&] { function(refusal); });
      return outcome.thrown;
    });
  }

  // --- What the user is shown

  // What can be typed after the text, from the present state: the words that continue its last
  // word, or the values that continue its last argument. Nothing runs.
  std::vector<Candidate> complete(std::string_view text) const;

  // Reads lines from the user of a terminal until he leaves, or a command does. The prompt is a
  // YcluiPrompt (terminal/YcluiPrompt.h) on this language's parser():
  //
  //   YcluiPrompt prompt(language.parser(), "calculator");  // its history is kept under that name
  //   language.run(prompt);
  //
  // Refusals are shown, unless a callable was set by onRefusal. Control-C drops what is half typed.
  // False when there is no terminal, or the language has an error.
  template <class Prompt>
  bool run(Prompt& prompt);

  // The parser, for previews, logs, variables and aliases. Its syntax, its words and its refuse
  // callback belong to the language. Valid as long as the language, wherever that is
  // moved.
  YcluiParser& parser();

 private:
  using Handler = std::function<std::exception_ptr(const Refusal&)>;

  LanguageCore* core_;  // owned; a text that is being read destroys it when the language is gone

  void add(const Syntax& syntax, std::unique_ptr<detail::Command> command, bool isAnywhere);
  void setHandler(Handler handler);
  bool hasHandler() const;
  static std::exception_ptr readText(LanguageCore& core, std::string_view text, Result& result);
  static Result notOpened(const std::string& path);
};

namespace detail {

// Shows refusals at a prompt that is open.
template <class Prompt>
class PromptSession {
 public:
  explicit PromptSession(Prompt& prompt) : prompt_(prompt) {}
  PromptSession(const PromptSession&) = delete;
  PromptSession& operator=(const PromptSession&) = delete;
  ~PromptSession() { prompt_.close(); }

  void show(const Result& result) {
    for (const Refusal& refusal : result.refusals) prompt_.print(refusal.sentence());
  }

 private:
  Prompt& prompt_;
};

}  // namespace detail

template <class Prompt>
bool Language::run(Prompt& prompt) {
  if (!error().empty() || !prompt.open()) return false;
  detail::PromptSession<Prompt> session(prompt);
  const bool shows = !hasHandler();
  bool goesOn = true;
  std::string line;
  while (goesOn) {
    const auto outcome = prompt.readLine(line);
    if (outcome == Prompt::Outcome::Ended) break;
    if (outcome == Prompt::Outcome::Interrupted) {
      drop();
      continue;
    }
    Result result;
    LanguageFeed feed(*core_, result);
    detail::Rethrow(feed.read(line));
    goesOn = !feed.isOver();
    feed.end(false);
    if (shows) session.show(result);
  }
  return true;
}

}  // namespace yqrtClui

#endif  // LANGUAGE_LANGUAGE_H_
