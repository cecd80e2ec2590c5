// How each kind of text looks.

#ifndef TERMINAL_YCLUICOLOURS_H_
#define TERMINAL_YCLUICOLOURS_H_

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "foundation/YTypes.h"
#include "terminal/YcluiStyle.h"

// What is shown. In a text of settings each has the name that is given here.
enum class YcluiTextKind {
  Blank,            // blank
  Comment,          // comment
  Word,             // word: one that continues the command
  AnywhereWord,     // anywhere: one that is accepted at any place
  Alias,            // alias
  Variable,         // variable
  StringArgument,   // string
  FloatArgument,    // float
  IntegerArgument,  // integer
  PointArgument,    // point
  OtherArgument,    // argument: one of any other type
  Punctuation,      // punctuation
  OpenQuote,        // quote: from one that is not closed
  Refused,          // refused
  Unread,           // unread: what would not be read
  Supposed,         // supposed: added to what follows a command that would run
  Hint,             // hint
  Prompt,           // prompt
  Message,          // message
  ListSelected,     // selected: the entry of a list that Return takes
  ListHelp,         // help: what a list says of its entries
};

// The table of styles. No meaning rests on a colour alone: Refused is underlined whatever is set.
class YQRT_API YcluiColours {
 public:
  YcluiColours();

  YcluiStyle of(YcluiTextKind kind) const { return styles_[static_cast<std::size_t>(kind)]; }
  // The same with what Supposed adds.
  YcluiStyle ofSupposed(YcluiTextKind kind) const;

  void set(YcluiTextKind kind, YcluiStyle style);
  // Reads settings such as "word=bold refused=underline,red hint=dim", with blanks between them:
  // each replaces the style of a kind. A style is one of or several of bold, dim, underline and a
  // colour (black red green yellow blue magenta cyan white, the same after "bright-"), or plain.
  // False for anything else, with a sentence in `error`, and nothing is changed.
  bool read(std::string_view settings, std::string& error);

 private:
  static constexpr std::size_t Kinds = static_cast<std::size_t>(YcluiTextKind::ListHelp) + 1;

  std::array<YcluiStyle, Kinds> styles_;
};

#endif  // TERMINAL_YCLUICOLOURS_H_
