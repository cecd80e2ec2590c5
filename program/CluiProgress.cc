#include "program/CluiProgress.h"

#include <unistd.h>

#include <cmath>
#include <cstdio>

namespace {

constexpr std::size_t WidthAtMost = 79;

}  // namespace

CluiProgress::CluiProgress(bool wanted) : on_(wanted && isatty(STDERR_FILENO) != 0) {}

void CluiProgress::begin(const std::string& name, long long total) {
  name_ = name;
  total_ = total;
  begin_ = last_ = Clock::now();
}

void CluiProgress::show(long long done, long long line) {
  if (!on_ || total_ <= 0) return;
  const Clock::time_point now = Clock::now();
  if (now - last_ < std::chrono::milliseconds(100)) return;
  last_ = now;
  const double time = std::chrono::duration<double>(now - begin_).count();
  const double left =
      done > 0 ? time * static_cast<double>(total_ - done) / static_cast<double>(done) : 0;
  std::string text = name_ + ": " + std::to_string(done) + " of " + std::to_string(total_) +
                     " bytes, " + std::to_string(done * 100 / total_) + "%, " +
                     std::to_string(static_cast<long long>(static_cast<double>(line) / time)) +
                     " lines/s, " + std::to_string(std::lround(left)) + " s left";
  // Only a single line can be erased.
  if (text.size() > WidthAtMost) text.erase(0, text.size() - WidthAtMost);
  erase();
  std::fputs(text.c_str(), stderr);
  drawn_ = text.size();
}

void CluiProgress::erase() {
  if (drawn_ == 0) return;
  std::fprintf(stderr, "\r%*s\r", static_cast<int>(drawn_), "");
  drawn_ = 0;
}
