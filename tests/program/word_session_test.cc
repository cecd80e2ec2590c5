// Random editing in a session that sends each word, in a terminal that nobody looks at, against a
// list of characters and a cursor.

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "tests/support/WorkingFolder.h"

namespace {

constexpr char Language[] = R"scheme(
(terminal-mode 'word)
(define p (clui-parser-new 0))
(define (keep text)
  (let ((file (open-file "said" "a")))
    (display text file)
    (newline file)
    (close-port file)))
(clui-set-syntax p (clui-oneof (clui-token p "say:" 1) "(keep (token-argument p -1 0))"))
)scheme";

// What is between the quotes, which the keys below do not leave.
struct Reference {
  std::vector<std::string> text;
  std::size_t cursor = 0;

  std::string joined() const {
    std::string all;
    for (const std::string& character : text) all += character;
    return all;
  }
};

// The bytes of a random key, whose effect the reference has. At the end of a line Control-F and
// Control-E take a hint and Control-D completes.
std::string Press(std::mt19937& random, Reference& line) {
  const char* const characters[] = {"a", "b", " ", "#", ",", "食", "堂", "?", ":"};
  const auto place = [&](std::size_t i) { return line.text.begin() + static_cast<long>(i); };
  const bool isFirst = line.cursor == 0;
  const bool isLast = line.cursor == line.text.size();
  switch (random() % 10) {
    case 0:
    case 1:
      return isFirst ? "" : (--line.cursor, "\x02");
    case 2:
      return isLast ? "" : (++line.cursor, "\x06");
    case 3:
      return isLast ? "" : (line.cursor = line.text.size(), "\x05");
    case 4:
      if (isFirst) return "";
      line.text.erase(place(--line.cursor));
      return "\x7f";
    case 5:
      if (isLast) return "";
      line.text.erase(place(line.cursor));
      return "\x04";
    case 6:
      if (isLast || random() % 4 != 0) return "";
      line.text.resize(line.cursor);
      return "\x0b";
    default:
      const std::string character = characters[random() % std::size(characters)];
      line.text.insert(place(line.cursor++), character);
      return character;
  }
}

// Starts the program in a terminal of its own and returns the terminal.
int Start(pid_t& process) {
  int terminal = -1;
  winsize size = {24, 80, 0, 0};
  process = forkpty(&terminal, nullptr, nullptr, &size);
  if (process != 0) return terminal;
  setenv("LC_ALL", "C.UTF-8", 1);
  setenv("TERM", "xterm", 1);
  setenv("XDG_STATE_HOME", "state", 1);
  setenv("ASAN_OPTIONS", "detect_leaks=0:detect_stack_use_after_return=0", 1);
  const char* const inside = std::getenv("CLUI_INSIDE");
  execl(CLUI_PROGRAM, CLUI_PROGRAM, "--inside", inside == nullptr ? "utf-8" : inside, "own.scm",
        nullptr);
  _exit(127);
}

// Types and drops what is shown, until the program ends when there is nothing left to type.
void Type(int terminal, const std::string& keys) {
  std::size_t typed = 0;
  char shown[4096];
  for (;;) {
    const short wanted = typed < keys.size() ? POLLIN | POLLOUT : POLLIN;
    pollfd ready = {terminal, wanted, 0};
    if (poll(&ready, 1, 60000) <= 0) return;
    if ((ready.revents & POLLIN) != 0) {
      if (read(terminal, shown, sizeof shown) <= 0) return;
    } else if ((ready.revents & POLLOUT) != 0) {
      const std::size_t length = std::min<std::size_t>(64, keys.size() - typed);
      const ssize_t written = write(terminal, keys.data() + typed, length);
      if (written < 0) return;
      typed += static_cast<std::size_t>(written);
    } else {
      return;
    }
  }
}

// Waits for the first bytes, which are written when the terminal is set up.
void Await(int terminal) {
  pollfd ready = {terminal, POLLIN, 0};
  poll(&ready, 1, 60000);
}

TEST(WordSession, SendsWhatARandomSessionHasEdited) {
  const WorkingFolder folder;
  WriteFile("own.scm", Language);
  std::mt19937 random(21);
  std::string keys;
  std::string expected;
  for (int round = 0; round < 300; ++round) {
    Reference line;
    keys += "say:\"";
    for (int key = 0; key < 60; ++key) keys += Press(random, line);
    keys += "\r";
    expected += line.joined() + "\n";
  }
  pid_t process = 0;
  const int terminal = Start(process);
  ASSERT_GE(terminal, 0);
  Await(terminal);
  Type(terminal, keys + "\x04");
  close(terminal);
  int status = -1;
  waitpid(process, &status, 0);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(ReadFile("said"), expected);
}

}  // namespace
