#include "program/CluiSource.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "program/CluiInterrupt.h"

namespace {

constexpr std::size_t PieceSize = std::size_t{1} << 16;

// Waits until there is something to read or the run is interrupted.
void WaitFor(int file) {
  pollfd both[2] = {{file, POLLIN, 0}, {CluiInterruptDescriptor(), POLLIN, 0}};
  poll(both, 2, -1);
}

}  // namespace

CluiSource::~CluiSource() {
  if (file_ > STDIN_FILENO) close(file_);
}

bool CluiSource::openFile(const std::string& name, std::string& error) {
  file_ = name == "-" ? STDIN_FILENO : open(name.c_str(), O_RDONLY | O_CLOEXEC);
  if (file_ < 0) {
    error = std::strerror(errno);
    return false;
  }
  struct stat facts = {};
  if (fstat(file_, &facts) == 0 && S_ISREG(facts.st_mode)) bytesOfFile_ = facts.st_size;
  ended_ = false;
  return true;
}

void CluiSource::openText(std::string text) {
  piece_ = std::move(text);
}

CluiRead CluiSource::next(std::string& line, std::string& error) {
  line.clear();
  while (line.empty() || line.back() != '\n') {
    if (position_ == piece_.size() && !ended_ && !fill(error)) return CluiRead::Failed;
    if (position_ == piece_.size()) break;
    const std::size_t newline = piece_.find('\n', position_);
    const std::size_t end = newline == std::string::npos ? piece_.size() : newline + 1;
    line.append(piece_, position_, end - position_);
    position_ = end;
  }
  if (line.empty()) return CluiRead::End;
  bytesRead_ += static_cast<long long>(line.size());
  if (line.back() != '\n') line += '\n';
  return CluiRead::Line;
}

bool CluiSource::fill(std::string& error) {
  position_ = 0;
  piece_.clear();
  WaitFor(file_);
  if (CluiInterrupted()) {
    ended_ = true;
    return true;
  }
  piece_.resize(PieceSize);
  const ssize_t got = read(file_, piece_.data(), piece_.size());
  piece_.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
  if (got == 0) ended_ = true;
  if (got >= 0 || errno == EINTR) return true;
  ended_ = true;
  error = std::strerror(errno);
  return false;
}
