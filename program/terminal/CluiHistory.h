// The history of typed lines, of this run and earlier ones.

#ifndef PROGRAM_TERMINAL_CLUIHISTORY_H_
#define PROGRAM_TERMINAL_CLUIHISTORY_H_

#include <deque>
#include <string>

// Lines are text of the system and are restored byte for byte. The file has one entry per line: a
// backslash is written as "\\", an end of line as "\n", any other control byte but the tab as
// "\xHH". When reading, a backslash that begins no such form is literal.
//
// A line is written as soon as it is added, and several programs may use one file: each appends
// under a lock, and a file that is too long is replaced by its newest lines under the same lock. If
// the file cannot be used, or is not a regular one, the history consists of this run only.
class CluiHistory {
 public:
  // In bytes; longer lines are not kept.
  static constexpr std::size_t LongestLine = 65536;

  // The newest `maximum` lines are kept. An empty name is a history without a file.
  explicit CluiHistory(std::string file, std::size_t maximum = 1000);
  CluiHistory(const CluiHistory&) = delete;
  CluiHistory& operator=(const CluiHistory&) = delete;

  // Reads the lines of the file. False when it exists and cannot be read.
  bool load();
  // Adds a line, unless it is blank, too long or equal to the last one, and calls reset().
  void add(const std::string& line);

  // Moves one line back or forward. Returns null, and does not move, when there is none. The first
  // step back stores `current`, the line being typed, and the last step forward returns it. The
  // result is valid until the next call.
  const std::string* older(const std::string& current);
  const std::string* newer();
  // Moves to the end: the next step back returns the newest line.
  void reset();

  // Shortens the file if it is too long. False when lines of this run could not be written.
  bool save();

  // The file for a language, by the base name of its script: clui/NAME.history in the folder
  // $XDG_STATE_HOME, or ~/.local/state unless that variable has an absolute path. Empty when HOME
  // has none either.
  static std::string DefaultFile(const std::string& language);

 private:
  std::string file_;
  std::size_t maximum_;
  std::deque<std::string> lines_;
  std::size_t back_ = 0;  // number of steps back from the end
  std::string current_;
  std::size_t surplus_ = 0;  // number of lines beyond the maximum that the file may have
  bool allWritten_ = true;

  bool append(const std::string& line);
  bool shorten();
};

#endif  // PROGRAM_TERMINAL_CLUIHISTORY_H_
