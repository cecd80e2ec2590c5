// The file of a history, which several sessions use at once.

#ifndef TERMINAL_YCLUIHISTORYFILE_H_
#define TERMINAL_YCLUIHISTORYFILE_H_

#include <cstddef>
#include <string>
#include <vector>

#include "foundation/YTypes.h"

// The file has one entry per line: a backslash is written as "\\", an end of line as "\n", any
// other control byte but the tab as "\xHH". When reading, a backslash that begins no such form is
// literal.
//
// Each session appends under a lock, and a file that is too long is replaced by its newest lines
// under the same lock, so that no line is lost. A lock that another one holds is waited for a
// second at most. Only a regular file is used; it is accessible to its user only.
class YQRT_API YcluiHistoryFile {
 public:
  static constexpr std::size_t LongestLine = 65536;

  // The file may have twice as many lines as the maximum before it is shortened to that. Without a
  // name there is no file, and everything succeeds.
  YcluiHistoryFile(std::string name, std::size_t maximum);
  ~YcluiHistoryFile();
  YcluiHistoryFile(const YcluiHistoryFile&) = delete;
  YcluiHistoryFile& operator=(const YcluiHistoryFile&) = delete;

  // Appends to `lines` what the file has got since the last call, by any session, or all of a file
  // that has been replaced or cut since then. Lines that are too long are left out. False when the
  // file exists and cannot be read.
  bool read(std::vector<std::string>& lines);
  // The same, and then appends the line to the file, which is created with its folder when missing.
  // False when the line could not be written.
  bool append(const std::string& line, std::vector<std::string>& lines);
  // The same as read, and then shortens the file to the maximum if it is longer. Of equal lines the
  // newest stays.
  void shorten(std::vector<std::string>& lines);

 private:
  class Locked;

  std::string name_;
  std::size_t maximum_;
  int seen_ = -1;              // the file that was read, open so that its number is not given away
  std::size_t position_ = 0;   // up to which it was read
  std::size_t lineCount_ = 0;  // how many lines it has

  void see(int file, std::size_t position, std::size_t lineCount);
  void read(const Locked& file, std::vector<std::string>& lines);
  bool shorten(const Locked& file);
  bool replace(const std::string& text, std::size_t lineCount);
};

#endif  // TERMINAL_YCLUIHISTORYFILE_H_
