// Messages for the user, one line each, on the standard error stream.

#ifndef PROGRAM_CLUIREPORT_H_
#define PROGRAM_CLUIREPORT_H_

#include <functional>
#include <string>
#include <utility>

#include "program/CluiProgress.h"
#include "program/text/CluiEncoding.h"

// A position in an input. Lines and columns count from 1; 0 means none. A column counts characters,
// whatever their width.
struct CluiPlace {
  std::string name;
  std::size_t line = 0;
  std::size_t column = 0;

  bool operator==(const CluiPlace&) const = default;
};

// Part of a line, with a caret below the character at fault.
struct CluiExcerpt {
  std::wstring text;
  std::wstring caret;
};

// The excerpt of `line` around the character at index `character`, for a screen of so many columns,
// or 0 for no screen. A long line is cut on both sides of it. The caret is placed by display width,
// after the same tabs as in the line, which are blanks on a screen. Control characters are shown as
// "?".
CluiExcerpt CluiExcerptOf(const std::wstring& line, std::size_t character, std::size_t columns);

class CluiReport {
 public:
  CluiReport(CluiEncoding& encoding, CluiProgress& progress)
      : encoding_(encoding), progress_(progress) {}

  // Prints "name:line:column: message", where a line or column of 0 is omitted; without a name, the
  // message alone.
  void print(const CluiPlace& place, const std::wstring& message);
  // The message alone.
  void print(const std::wstring& message);
  // Prints an excerpt of the line.
  void show(const std::wstring& line, std::size_t character);
  // Sets a function that is called before each message to clear other output from the terminal. It
  // returns the width at which messages are wrapped, or 0 for none.
  void setBefore(std::function<std::size_t()> before) { before_ = std::move(before); }

 private:
  CluiEncoding& encoding_;
  CluiProgress& progress_;
  std::function<std::size_t()> before_;

  std::size_t clearTerminal();
  void write(const std::string& line);
};

#endif  // PROGRAM_CLUIREPORT_H_
