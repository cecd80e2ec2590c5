// The lines that were typed, in this run and in earlier ones.

#ifndef PROGRAM_TERMINAL_CLUIHISTORY_H_
#define PROGRAM_TERMINAL_CLUIHISTORY_H_

#include <deque>
#include <string>

// Lines are text of the system and come back byte for byte. The file has one entry a line: a
// backslash stands as "\\", an end of line as "\n", any other control byte but the tab as "\xHH".
// A backslash that begins nothing of that kind stands for itself.
//
// A line is in the file as soon as it is added, and other programs may add to the same file
// meanwhile: each appends under a lock, and a file that has grown too long is replaced by its
// newest lines under the same lock. What is no regular file, or cannot be read or written, leaves a
// history of this run alone.
class CluiHistory {
 public:
  // Longer lines, in bytes, are not kept.
  static constexpr std::size_t LongestLine = 65536;

  // The newest `maximum` lines are kept. An empty name is a history without a file.
  explicit CluiHistory(std::string file, std::size_t maximum = 1000);
  CluiHistory(const CluiHistory&) = delete;
  CluiHistory& operator=(const CluiHistory&) = delete;

  // Takes the lines of the file for older ones. False when it is there and cannot be read.
  bool load();
  // Adds a line, unless it is blank, too long or the one added last, and ends going back.
  void add(const std::string& line);

  // One step back or forth; null when there is none, and nothing changes. The first step back keeps
  // `current`, the line that is being typed, and the last step forth answers it. Lines stay good
  // until the next call.
  const std::string* older(const std::string& current);
  const std::string* newer();
  // Ends going back: the next step back begins with the newest line.
  void reset();

  // Shortens the file if it has grown too long. False when lines of this run could not be written.
  bool save();

  // The file for a language, by the base name of its script: clui/NAME.history in the folder
  // $XDG_STATE_HOME, which is ~/.local/state unless the variable holds an absolute name. Empty when
  // there is no home either.
  static std::string DefaultFile(const std::string& language);

 private:
  std::string file_;
  std::size_t maximum_;
  std::deque<std::string> lines_;
  std::size_t back_ = 0;  // how many steps
  std::string current_;
  std::size_t surplus_ = 0;  // lines that the file may have too many
  bool allWritten_ = true;

  bool append(const std::string& line);
  bool shorten();
};

#endif  // PROGRAM_TERMINAL_CLUIHISTORY_H_
