// The lines that were typed, in this session, in earlier ones and in those that run at once.

#ifndef TERMINAL_YCLUIHISTORY_H_
#define TERMINAL_YCLUIHISTORY_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/YTypes.h"
#include "terminal/YcluiHistoryFile.h"

// Lines are texts in the encoding inside the process and are kept byte for byte, each once: an
// equal older line is removed. If the file cannot be used, the history consists of this session
// only. A pointer to a line is valid until the next call that is not const.
class YQRT_API YcluiHistory {
 public:
  // In bytes; longer lines are not kept.
  static constexpr std::size_t LongestLine = YcluiHistoryFile::LongestLine;
  static constexpr std::size_t None = static_cast<std::size_t>(-1);

  enum class Direction { Older, Newer };

  // The newest `maximum` lines are kept. An empty name is a history without a file.
  explicit YcluiHistory(std::string file, std::size_t maximum = 1000);
  YcluiHistory(const YcluiHistory&) = delete;
  YcluiHistory& operator=(const YcluiHistory&) = delete;

  // Reads the lines of the file that are new: all of them at first, then those that other sessions
  // have added. Calls reset(). False when the file exists and cannot be read.
  bool refresh();
  // Adds the line here and to the file, unless it is too long, blank or begins with a blank. Calls
  // reset().
  void add(const std::string& line);
  // Shortens the file if it is too long. False when lines of this session could not be written.
  bool save();

  // Moves to the next line in that direction that begins with the typed text and is longer. Null,
  // and nothing moves, when there is none. After the newest line newer() returns the typed text.
  //
  // `text` is what is being edited. The first step stores it as the typed text and calls refresh().
  // It is also a first step when `text` is neither the line of the last step nor the typed text,
  // since it has been edited then.
  const std::string* older(const std::string& text);
  const std::string* newer(const std::string& text);
  // Ends moving: the next step is the first one.
  void reset() { at_ = lines_.size(); }

  // Lines have indices from 0, the oldest, to size() - 1.
  std::size_t size() const { return lines_.size(); }
  const std::string& operator[](std::size_t index) const { return lines_[index]; }
  // The index of the next line that contains the text, in that direction from the line `from`,
  // which is not looked at; None when there is none. Begin with refresh() and with size() as
  // `from`.
  std::size_t search(std::string_view text, std::size_t from, Direction direction) const;
  // The offset of the first occurrence of the text that begins where a character of the line does;
  // None without one.
  static std::size_t Find(std::string_view line, std::string_view text);

  // The index of the newest line before the line `from` that begins with the text and is longer;
  // None without one. Begin with size() as `from`. Reads no file.
  std::size_t lineBeginning(std::string_view text, std::size_t from) const;
  // The newest such line of all; null without one.
  const std::string* suggestion(std::string_view beginning) const;

  // The file for a language, by the base name of its script: clui/NAME.history, or when the
  // encoding inside is UTF-8 clui/NAME.utf-8.history, in the folder $XDG_STATE_HOME, or
  // ~/.local/state unless that variable has an absolute path. Empty when HOME has none either.
  static std::string DefaultFile(const std::string& language);

 private:
  YcluiHistoryFile file_;
  std::size_t maximum_;
  std::vector<std::string> lines_;
  std::size_t at_ = 0;  // index of the line of the last step, or size()
  std::string typed_;
  bool allWritten_ = true;

  void append(std::vector<std::string> fresh);
  bool continues(const std::string& text) const;
};

#endif  // TERMINAL_YCLUIHISTORY_H_
