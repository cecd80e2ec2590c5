// A text that an editor shows, line by line with what the language makes of it.

#ifndef WORKSHOP_SERVER_CLUISERVEDTEXT_H_
#define WORKSHOP_SERVER_CLUISERVEDTEXT_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "parser/YcluiParser.h"
#include "parser/YcluiPreview.h"
#include "terminal/YcluiOffers.h"
#include "workshop/server/CluiChangingWords.h"

// Lines count from 0, columns in units of UTF-16.
struct CluiTextPosition {
  std::size_t line = 0;
  std::size_t column = 0;
};

// A piece of a line that is not blank. See YcluiPiece.
struct CluiServedPiece {
  std::uint32_t begin = 0;  // columns
  std::uint32_t end = 0;
  YcluiPieceKind kind = YcluiPieceBlank;
  std::uint32_t tokenId = YcluiIdNone;
  int argument = 0;
  bool endsCommand = false;
};

// What should be said about a part of a line.
struct CluiServedFinding {
  enum Kind { Error, Warning, Doubt };  // an error that may be none in a run is a doubt

  std::size_t line = 0;
  std::uint32_t begin = 0;  // columns
  std::uint32_t end = 0;
  Kind kind = Error;
  std::string text;  // UTF-8
};

// The line of a text as the system reads it, and the columns of its bytes.
class CluiServedLine {
 public:
  // Returns why the line cannot be converted, and the line is empty then; otherwise "".
  std::string convert(const std::string& utf8);

  const std::string& text() const { return text_; }  // with its end of line
  std::uint32_t columnAt(std::size_t offset) const;
  // The offset of the character that contains the column.
  std::size_t offsetAt(std::size_t column) const;

 private:
  std::string text_;
  std::vector<std::uint32_t> columns_;  // of each byte and of the end
};

// Reads a text as a run of the program would read a file of it, and supposes that commands change
// nothing. A change costs the lines that it touches and those after them that are read in another
// state than before, besides the number of lines.
class CluiServedText {
 public:
  // The number of findings that an editor is shown of a text.
  static constexpr std::size_t MostFindings = 500;

  // All of them outlive it.
  CluiServedText(const YcluiParser& parser, const CluiChangingWords& changing)
      : parser_(parser), changing_(changing), preview_(parser), offers_(parser) {}

  // Replaces all of it. Texts are in UTF-8.
  void set(std::string_view text);
  // Replaces what is between two positions. A position past the end of its line, or of the text, is
  // that end, and a second one before the first is the first.
  void replace(CluiTextPosition begin, CluiTextPosition end, std::string_view text);

  std::size_t lineCount() const { return lines_.size(); }
  // REQUIRES, for all that follow: line < lineCount().
  // The text of a piece of the line, in UTF-8.
  std::string textOf(std::size_t line, const CluiServedPiece& piece) const;
  const std::vector<CluiServedPiece>& pieces(std::size_t line) const { return lines_[line].pieces; }
  // The findings about the whole text, in order. Of those that rest on a command that may change
  // the language, the first one says so, and the others are left out. Of too many, the last one
  // says how many are left out.
  std::vector<CluiServedFinding> findings() const;

  // What is offered at the position, and the line as it is read; valid until the next operation.
  YcluiOffers& offersAt(CluiTextPosition position, const CluiServedLine*& line);
  // What is typed at the position.
  const YcluiTyping& typingAt(CluiTextPosition position);

 private:
  struct Line {
    std::string utf8;  // without its end
    YcluiPreviewState before;
    std::vector<CluiServedPiece> pieces;
    std::vector<CluiServedFinding> findings;
    std::optional<CluiServedFinding> missing;  // an argument, unless the next line brings it
    bool isHeld = false;                       // it ends where the next line may bring an argument
    bool leavesCommand = false;
    bool isBlank = false;
    bool isInDoubt = false;  // a command before it may change the language
    std::string changing;    // the first word in it whose command may do so
  };

  const YcluiParser& parser_;
  const CluiChangingWords& changing_;
  YcluiPreview preview_;
  YcluiOffers offers_;
  CluiServedLine present_;  // the line that was converted last
  std::vector<Line> lines_;

  void readFrom(std::size_t first, std::size_t changed);
  YcluiPreviewState readLine(Line& line, bool followsHeld);
  void addPieces(Line& line);
  void addFindings(Line& line);
  CluiServedFinding unfinished() const;
  std::string doubtAbout(std::size_t line) const;
  CluiTextPosition within(CluiTextPosition position) const;
  void previewAt(CluiTextPosition position, std::size_t& offset);
};

#endif  // WORKSHOP_SERVER_CLUISERVEDTEXT_H_
