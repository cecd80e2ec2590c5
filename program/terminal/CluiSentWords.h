// The words of an unfinished command, as they were typed.

#ifndef PROGRAM_TERMINAL_CLUISENTWORDS_H_
#define PROGRAM_TERMINAL_CLUISENTWORDS_H_

#include <optional>
#include <string>
#include <vector>

#include "parser/YcluiParser.h"

// What a user types differs from the parser's command line: that has no aliases, no variables and
// no escapes in strings. This keeps the typed text of each token, for the history and for a user
// who takes the last word back.
class CluiSentWords {
 public:
  // How much of a command a parser has read.
  struct Extent {
    explicit Extent(const YcluiParser& parser);

    int depth;    // the number of frames
    int tokens;   // in the top frame, an open one included
    bool isOpen;  // the last one is open

    bool operator==(const Extent&) const = default;
  };

  // Adds a text that has been sent, with the extents before and after it.
  void add(const std::string& text, const Extent& before, const Extent& after);
  // Removes the text of the last token of that extent and returns it. No value, and nothing is
  // removed, when that token was not typed in texts of its own.
  std::optional<std::string> takeBack(const Extent& extent);
  // Replaces all words by this line, which is so much of a command.
  void set(const std::string& line, const Extent& extent);
  void clear() { words_.clear(); }

  // All words, with blanks between them.
  std::string text() const;

 private:
  // A text is of the tokens from `first` to `last`, from 1; of none when `last` is smaller.
  struct Word {
    std::string text;
    int depth;
    int first;
    int last;
  };

  std::vector<Word> words_;
};

#endif  // PROGRAM_TERMINAL_CLUISENTWORDS_H_
