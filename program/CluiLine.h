// The line that is being fed, and the positions of tokens in it and in the line before.

#ifndef PROGRAM_CLUILINE_H_
#define PROGRAM_CLUILINE_H_

#include <string>

#include "program/text/CluiEncoding.h"

// The length in bytes of the character that starts at `offset`.
std::size_t CluiStepAt(const std::string& text, std::size_t offset);

// The position of a character in a line of the input.
struct CluiSpot {
  std::size_t line = 0;               // counted from 1
  std::size_t character = 0;          // counted from 0
  std::size_t offset = 0;             // of the character, in bytes of the text
  const std::string* text = nullptr;  // one or more lines, text of the system
  std::size_t begin = 0;              // offset in the text at which the line begins
};

class CluiLine {
 public:
  explicit CluiLine(CluiEncoding& encoding) : encoding_(encoding) {}

  // Drops the lines of an earlier input.
  void restart();
  // Makes `text`, which is moved from, the present line and keeps the former one. `number` is that
  // of the first line when the text has several. Its first `fedBefore` bytes were fed before.
  void advance(std::string& text, std::size_t number, std::size_t fedBefore = 0);

  const std::string& text() const { return now_.text; }
  std::size_t number() const { return now_.number; }

  // The character at a byte offset as YcluiParser::lastTokenOffset returns it. A negative offset is
  // in the line before, when part of that was left unread; one before that line is its start. An
  // offset past the end is in text that a command has appended: the last spot is returned again.
  // In ascending order, all spots of a line cost its length.
  CluiSpot spotOf(int offset);

  // Whether the spot is in the present line, and not in the one before.
  bool isNow(const CluiSpot& spot) const { return spot.text == &now_.text; }

  // The line of a spot as characters, cached for the line used last.
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
  std::size_t charactersOf_ = 0;  // the number of the line in characters_
};

#endif  // PROGRAM_CLUILINE_H_
