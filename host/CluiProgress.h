// How far the reading of a large file has come, on the standard error stream.

#ifndef HOST_CLUIPROGRESS_H_
#define HOST_CLUIPROGRESS_H_

#include <chrono>
#include <string>

// One line, drawn over itself at most ten times a second and only while there is something to wait
// for. Whoever else writes to the stream erases it first.
class CluiProgress {
 public:
  // Nothing is ever drawn unless `wanted` and the stream is a terminal.
  explicit CluiProgress(bool wanted);

  // The file has `total` bytes, of which `done` are read. Nothing is drawn for a total of 0.
  void show(const std::string& name, long long done, long long total);
  void erase();

 private:
  using Clock = std::chrono::steady_clock;

  bool on_ = false;
  std::size_t drawn_ = 0;  // columns on the terminal now
  Clock::time_point last_ = Clock::now();
};

#endif  // HOST_CLUIPROGRESS_H_
