// The progress of reading a large file, on the standard error stream.

#ifndef PROGRAM_CLUIPROGRESS_H_
#define PROGRAM_CLUIPROGRESS_H_

#include <chrono>
#include <string>

// One line, redrawn at most ten times a second. Call erase() before anything else is written to the
// stream.
class CluiProgress {
 public:
  // Draws only if `wanted` and the stream is a terminal.
  explicit CluiProgress(bool wanted);

  // Reading of a file of `total` bytes begins; 0 when the size is unknown.
  void begin(const std::string& name, long long total);
  // `done` bytes have been read, the last one in line `line`.
  void show(long long done, long long line);
  void erase();

 private:
  using Clock = std::chrono::steady_clock;

  bool on_ = false;
  std::string name_;
  long long total_ = 0;
  std::size_t drawn_ = 0;  // columns that the line has on the terminal now
  Clock::time_point begin_;
  Clock::time_point last_;
};

#endif  // PROGRAM_CLUIPROGRESS_H_
