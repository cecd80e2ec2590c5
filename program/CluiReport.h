// What the user is told: one line a matter, on the standard error stream.

#ifndef PROGRAM_CLUIREPORT_H_
#define PROGRAM_CLUIREPORT_H_

#include <functional>
#include <string>
#include <utility>

#include "program/CluiProgress.h"
#include "program/text/CluiEncoding.h"

// A place in an input. Lines and columns count from 1; 0 stands for none. A column counts
// characters, whatever their width.
struct CluiPlace {
  std::string name;
  std::size_t line = 0;
  std::size_t column = 0;

  bool operator==(const CluiPlace&) const = default;
};

// A piece of a line with a caret below the character at fault.
struct CluiExcerpt {
  std::wstring text;
  std::wstring caret;
};

// The excerpt of `line` around the character at index `character`; a line too long to be read is
// cut to its neighbourhood. The caret stands by display width, behind the tabs that the line has.
// Control characters are shown as "?".
CluiExcerpt CluiExcerptOf(const std::wstring& line, std::size_t character);

class CluiReport {
 public:
  CluiReport(CluiEncoding& encoding, CluiProgress& progress)
      : encoding_(encoding), progress_(progress) {}

  // "name:line:column: message", with what is none left out; without a name, the message alone.
  void tell(const CluiPlace& place, const std::wstring& message);
  // The message alone, as it stands.
  void tell(const std::wstring& message);
  void show(const CluiExcerpt& excerpt);
  // Called in front of each line, so that what else is on the terminal can make way. It answers the
  // width of the screen, at which messages are broken, or 0 for none.
  void setBefore(std::function<std::size_t()> before) { before_ = std::move(before); }

 private:
  CluiEncoding& encoding_;
  CluiProgress& progress_;
  std::function<std::size_t()> before_;

  std::size_t makeWay();
  void write(const std::string& line);
};

#endif  // PROGRAM_CLUIREPORT_H_
