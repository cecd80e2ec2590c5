// The line that is being fed, and where in it, or in the one fed before, a token stands.

#ifndef PROGRAM_CLUILINE_H_
#define PROGRAM_CLUILINE_H_

#include <string>

#include "program/text/CluiEncoding.h"

// The bytes of the character at `offset`, where one starts: 1 or 2.
std::size_t CluiStepAt(const std::string& text, std::size_t offset);

// A character of a line of the input.
struct CluiSpot {
  std::size_t line = 0;               // counted from 1
  std::size_t character = 0;          // counted from 0
  std::size_t offset = 0;             // of the character, in bytes of the line
  const std::string* text = nullptr;  // the line, text of the system
  std::size_t begin = 0;              // where in the text that line begins, when it holds several
};

class CluiLine {
 public:
  explicit CluiLine(CluiEncoding& encoding) : encoding_(encoding) {}

  // Forgets the lines of an earlier input.
  void restart();
  // Goes on to the line of that number, whose text is taken out of `text`; a text of several lines
  // has that of the first one. So many bytes at its front were fed before, as a piece of their own.
  void take(std::string& text, std::size_t number, std::size_t fedBefore = 0);

  const std::string& text() const { return now_.text; }
  std::size_t number() const { return now_.number; }

  // The character at a byte offset as YcluiParser::lastTokenOffset returns it. A negative one is in
  // the line before, of which text was left unread; one in front of that is moved to its start.
  // Past the end, where text is that a command has appended, the spot asked for before is returned
  // again. Asked for in order, the spots of a line cost its length.
  CluiSpot spotOf(int offset);

  // Whether it lies in the present line, and not in the one before.
  bool isNow(const CluiSpot& spot) const { return spot.text == &now_.text; }

  // The line of a spot as characters. Made once while it is asked for again.
  const std::wstring& characters(const CluiSpot& spot);

 private:
  struct Fed {
    std::string text;
    std::size_t number = 0;
  };

  CluiEncoding& encoding_;
  Fed now_;
  Fed before_;
  int fedBefore_ = 0;
  CluiSpot last_;
  std::wstring characters_;
  std::size_t charactersOf_ = 0;  // the number of the line that they are
};

#endif  // PROGRAM_CLUILINE_H_
