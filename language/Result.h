// What came of a text: the commands that ran and the words that were refused.

#ifndef LANGUAGE_RESULT_H_
#define LANGUAGE_RESULT_H_

#include <cstddef>
#include <string>
#include <vector>

#include "foundation/YTypes.h"

namespace yqrtClui {

// Why something was not accepted, and where. Texts are in the encoding inside the process.
struct YQRT_API Refusal {
  enum class Kind {
    UnknownWord,
    NotAllowedHere,   // a word that the syntax does not accept there
    BadArgument,      // it is malformed, of another type, out of range, or not one of the values
    MissingArgument,  // a comma is followed by nothing
    TooManyArguments,
    Unreadable,        // anything else that the lexer cannot read; see `code`
    NotInterruptible,  // the command that is half typed may not be interrupted by this word
    Unfinished,        // the text ended inside a command, which was dropped
    CommandFailed,     // a command returned this message
    NotOpened,         // the file could not be opened or read
    BrokenLanguage,    // nothing was read, see Language::error()
  };

  Kind kind = Kind::UnknownWord;
  // Where it begins: line and column from 1, the column in characters; the offset from the start
  // of the whole text, in bytes. All are 0 when it is about the text as a whole.
  std::size_t line = 0;
  std::size_t column = 0;
  std::size_t offset = 0;
  std::string found;                  // what was typed there, when it is known
  std::string message;                // a sentence without a full stop
  std::vector<std::string> expected;  // words or values that are accepted there; 100 at most
  unsigned int code = 0;              // of foundation/YErrCodes.h, 0 for none

  // "LINE:COLUMN: MESSAGE; expected A, B or C", with at most 8 words, after "NAME:" if it is given.
  std::string text(const std::string& name = {}) const;
  // The same without the place.
  std::string sentence() const;
};

// The result of reading a text. It converts to true when nothing was refused.
struct Result {
  std::size_t commands = 0;       // that ran
  std::vector<Refusal> refusals;  // the first 100 of them
  std::size_t refused = 0;        // how many there are
  // The text ended inside a command, which the next text continues.
  bool isUnfinished = false;

  bool isGood() const { return refused == 0; }
  explicit operator bool() const { return isGood(); }
};

}  // namespace yqrtClui

#endif  // LANGUAGE_RESULT_H_
