#include "bench/PseudoTerminal.h"

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <ctime>

namespace {

constexpr int Patience = 10000;  // milliseconds
constexpr int Pause = 3;         // between the answer and the next key

double Now() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace

PseudoTerminal::PseudoTerminal(const std::vector<std::string>& command) {
  winsize size{};
  size.ws_col = 100;
  size.ws_row = 30;
  child_ = forkpty(&master_, nullptr, nullptr, &size);
  if (child_ != 0) return;
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  execv(arguments[0], arguments.data());
  _exit(127);
}

PseudoTerminal::~PseudoTerminal() {
  close(master_);  // which is a hang-up
  if (child_ <= 0) return;
  kill(child_, SIGTERM);
  waitpid(child_, nullptr, 0);
}

bool PseudoTerminal::readWithin(int milliseconds) {
  pollfd ready = {master_, POLLIN, 0};
  char bytes[65536];
  if (poll(&ready, 1, milliseconds) <= 0) return false;
  const ssize_t count = read(master_, bytes, sizeof bytes);
  if (count <= 0) return false;
  answered_ += static_cast<std::size_t>(count);
  return true;
}

bool PseudoTerminal::settle(int milliseconds) {
  if (!readWithin(Patience)) return false;
  while (readWithin(milliseconds)) continue;
  return true;
}

double PseudoTerminal::press(const std::string& bytes, std::size_t atLeast) {
  answered_ = 0;
  const double start = Now();
  if (write(master_, bytes.data(), bytes.size()) < 0 || !readWithin(Patience)) return -1;
  const double answer = Now() - start;
  while (readWithin(answered_ < atLeast ? Patience : Pause)) continue;
  return answered_ < atLeast ? -1 : answer;
}
