// What a text would do to a parser, without doing it.

#ifndef PARSER_YCLUIPREVIEW_H_
#define PARSER_YCLUIPREVIEW_H_

#include <cstdint>
#include <memory>

#include "foundation/YTypes.h"
#include "lex/YcluiToken.h"
#include "parser/YcluiPreviewState.h"

class YcluiParser;
class YcluiPreviewCore;

enum YcluiPieceKind : std::uint32_t {
  YcluiPieceBlank = 0,         // white space
  YcluiPieceComment = 1,       // from "#" to the end of the line, without it
  YcluiPieceWord = 2,          // a word that the syntax accepts there
  YcluiPieceAnywhereWord = 3,  // a word that is accepted anywhere
  YcluiPieceAlias = 4,         // an alias whose text is accepted
  YcluiPieceVariable = 5,      // a variable form, as a token or as a whole argument
  YcluiPieceString = 6,        // arguments by their types
  YcluiPieceFloat = 7,
  YcluiPieceInteger = 8,
  YcluiPiecePoint = 9,
  YcluiPiecePunctuation = 10,  // a separator of arguments
  YcluiPieceOpenQuote = 11,    // a string without its closing quote, to the end of the text
  YcluiPieceRefused = 12,
  YcluiPieceUnread = 13,  // not read: it follows something that ends the reading
};

// A part of a text.
struct YcluiPiece {
  std::uint32_t begin = 0;  // in bytes
  std::uint32_t end = 0;
  YcluiPieceKind kind = YcluiPieceBlank;
  // Of the token to which the piece belongs; YcluiIdNone for an unknown word and outside tokens.
  std::uint32_t tokenId = YcluiIdNone;
  // Which argument of the token it is, from 1; 0 for the word, and outside arguments.
  int argument = 0;
  // What is recorded for a refused piece or an open quote; YErrNothing where nothing is: an unknown
  // word, a word that the syntax does not accept there, and a missing argument, of which the piece
  // is empty. Of an alias, what is recorded first for the tokens of its text.
  unsigned int code = 0;
  // The token that ends here, or the last one of an alias that ends here, completes a command.
  bool endsCommand = false;
  // A command would have run before this: it may change what follows.
  bool isSupposed = false;
};

// How a text ends, for a host that wonders whether it is complete.
enum YcluiTextEnding : std::uint32_t {
  YcluiEndsWhole = 0,       // after a token, or nothing could be read
  YcluiEndsInQuote = 1,     // in a string without its closing quote
  YcluiEndsInEscape = 2,    // after a backslash, which escapes the next byte, outside quotes
  YcluiEndsInToken = 3,     // arguments are missing, which may be in the next text
  YcluiEndsAfterComma = 4,  // after a separator where the lexer misses an argument now
  YcluiEndsInPoint = 5,     // after the first number of a point
};

// What is being typed at an offset of the text.
enum YcluiTypingKind : std::uint32_t {
  YcluiTypingNothing = 0,   // a comment, or text that is not read
  YcluiTypingWord = 1,      // a word, or nothing yet where a word can begin
  YcluiTypingArgument = 2,  // an argument, or nothing yet where one must begin
  YcluiTypingVariable = 3,  // the name of a variable, after "${"
};

struct YcluiTyping {
  YcluiTypingKind kind = YcluiTypingNothing;
  // The span of it, which contains the offset or ends there. Empty where nothing is typed yet. For
  // a variable, the span of its name.
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
  // Of an argument: the token, which argument from 1, and its type, YcluiValueString after the
  // declared arguments. `word` is the token's word, null without one; valid until the next
  // operation of the preview.
  std::uint32_t tokenId = YcluiIdNone;
  const char* word = nullptr;
  int argument = 0;
  YcluiValueType type = YcluiValueNone;
  // A command would have run before this.
  bool isSupposed = false;
};

enum YcluiCandidateKind : std::uint32_t {
  YcluiCandidateNext = 0,      // continues the command, or begins one
  YcluiCandidateAnywhere = 1,  // accepted anywhere
  YcluiCandidateAlias = 2,
  YcluiCandidateVariable = 3,
};

struct YcluiCandidate {
  const char* name = nullptr;  // valid until words or variables are added or deleted
  YcluiCandidateKind kind = YcluiCandidateNext;
  std::uint32_t tokenId = YcluiIdNone;  // of a word
};

// Reads texts as `interpret` of a parser would, and says what each part of them means:
//
//   YcluiPreview preview(parser);
//   preview.read("box 1,2 red");
//   for (int i = 0; i < preview.count(); ++i) paint(preview.piece(i));
//
// It starts from the parser's present state, that is, its frame, a token whose arguments are
// incomplete, and text that is unread; or goes on after a text that it has read:
//
//   preview.read(first);
//   preview.read(second, preview.state());  // as if the parser had read the first
//
// A state can be kept and returned to. An editor keeps one for each line of a file; after a change
// it reads again from the changed line, until the state after a line is the one that it was.
//
// Nothing of the parser changes: no callback, no command, no log, no variable;
// nothing is recorded in the error manager. It supposes that commands and callbacks leave the
// parser as it is, and marks what follows the first command that would run.
//
// A preview can be made before the parser has a syntax, and used until the parser is destroyed.
// What it returns describes the last text that was read, at the time when it was read: read it
// again after the parser has changed. Reading costs the length of the text, of what was unread
// before it and of what its aliases expand to; a preview that has read such texts before does not
// allocate, but for variables that the text sets. Going to a state costs the number of assignments
// in which it differs from the text read last: for the next text none, for an earlier one all of
// them up to there.
class YQRT_API YcluiPreview {
 public:
  explicit YcluiPreview(const YcluiParser& parser);
  YcluiPreview(const YcluiPreview&) = delete;
  YcluiPreview& operator=(const YcluiPreview&) = delete;
  ~YcluiPreview();

  // Reads a text; null is the empty one. Without a syntax all of it is unread.
  void read(const char* text);
  // Reads it in the state. Returns false when that is void, or not of the present syntax: then it
  // is read in the parser's present state.
  bool read(const char* text, const YcluiPreviewState& before);

  // The parser's present state: read(text, present()) is read(text). Void without a syntax.
  YcluiPreviewState present() const;
  // The state after the last text, in which the parser would read the next one.
  YcluiPreviewState state() const;
  // The state for a text that would be appended to the last one and read together with it. It
  // differs from `state` where the lexer refuses the end of a text that more text would mend: at
  // YcluiEndsAfterComma and YcluiEndsInPoint, where it goes on in that token. A host that holds
  // such a line until it has the next one reads that in this state; a comment at the end of the
  // line wants its newline.
  YcluiPreviewState stateInside() const;

  // The pieces: in order, without gaps, the first one beginning at 0 and the last one ending with
  // the text. Only the piece of a missing argument is empty.
  int count() const;
  // REQUIRES: 0 <= index < count().
  const YcluiPiece& piece(int index) const;
  // The index of the piece that contains the byte at the offset; -1 at the end of the text or after
  // it.
  int pieceAt(std::uint32_t offset) const;
  // The index of the first piece that is refused, or an open quote; -1 without one. It is refused
  // for certain unless it is `isSupposed`, and then no later piece is, either.
  int firstRefused() const;

  YcluiTextEnding ending() const;
  // Whether the text leaves a command half typed; also when it was before and the text is blank.
  bool leavesCommand() const;

  // What is being typed at the offset, which is between 0 and the length of the text. The text
  // after it plays no part, but belongs to the span as far as it continues what is typed. Costs as
  // much as reading the text up to there.
  const YcluiTyping& at(std::uint32_t offset);
  // The words or variables that can be there and continue what the span has up to the offset, in
  // any case of ASCII letters: of the last call of `at`. First words that continue the command,
  // then those that are accepted anywhere, then aliases; in the order of their names, each name
  // once. Words that the interrupted command would not admit are left out, and so are words whose
  // name finds another word. For an argument and for nothing there are none; see YcluiHelp for its
  // values. The first call in a place costs all words that could come there, further ones hardly
  // anything, whatever they find.
  int findCandidates();
  // REQUIRES: 0 <= index < what findCandidates returned.
  const YcluiCandidate& candidate(int index) const;

 private:
  std::unique_ptr<YcluiPreviewCore> core_;
};

#endif  // PARSER_YCLUIPREVIEW_H_
