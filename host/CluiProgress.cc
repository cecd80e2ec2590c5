#include "host/CluiProgress.h"

#include <unistd.h>

#include <cstdio>

CluiProgress::CluiProgress(bool wanted) : on_(wanted && isatty(STDERR_FILENO) != 0) {}

void CluiProgress::show(const std::string& name, long long done, long long total) {
  if (!on_ || total <= 0) return;
  const Clock::time_point now = Clock::now();
  if (now - last_ < std::chrono::milliseconds(100)) return;
  erase();
  last_ = now;
  const std::string text = name + ": " + std::to_string(done) + " of " + std::to_string(total) +
                           " bytes, " + std::to_string(done * 100 / total) + "%";
  std::fputs(text.c_str(), stderr);
  drawn_ = text.size();
}

void CluiProgress::erase() {
  if (drawn_ == 0) return;
  std::fprintf(stderr, "\r%*s\r", static_cast<int>(drawn_), "");
  drawn_ = 0;
}
