#include "terminal/YcluiTerminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <functional>

namespace {

// A child process with a terminal of its own. The modes and what is written are seen from outside.
class Child {
 public:
  explicit Child(const std::function<void()>& run) : master_(posix_openpt(O_RDWR | O_NOCTTY)) {
    grantpt(master_);
    unlockpt(master_);
    tcgetattr(master_, &before_);
    id = fork();
    if (id != 0) return;
    setsid();
    const int terminal = open(ptsname(master_), O_RDWR);
    ioctl(terminal, TIOCSCTTY, 0);
    for (int i = 0; i < 3; ++i) dup2(terminal, i);
    close(master_);
    run();
    std::exit(0);
  }
  ~Child() {
    kill(id, SIGKILL);
    waitpid(id, nullptr, 0);
    close(master_);
  }

  pid_t id = 0;

  void type(const std::string& bytes) const {
    EXPECT_EQ(write(master_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  void resize(unsigned short width, unsigned short height) const {
    const winsize size = {height, width, 0, 0};
    ioctl(master_, TIOCSWINSZ, &size);
  }
  // Whether this text is written in time. What precedes it is skipped.
  bool writes(const std::string& text) {
    std::size_t at;
    while ((at = output_.find(text)) == output_.npos) {
      pollfd wait = {master_, POLLIN, 0};
      char piece[256];
      const ssize_t length = poll(&wait, 1, 10000) > 0 ? read(master_, piece, sizeof piece) : 0;
      if (length <= 0) return false;
      output_.append(piece, static_cast<std::size_t>(length));
    }
    output_.erase(0, at + text.size());
    return true;
  }
  bool hasItsModes() const {
    termios now;
    tcgetattr(master_, &now);
    return now.c_lflag == before_.c_lflag && now.c_iflag == before_.c_iflag;
  }
  void restoreModes() const { tcsetattr(master_, TCSANOW, &before_); }
  int waitForEnd() const {
    int status = -1;
    waitpid(id, &status, 0);
    return status;
  }

 private:
  int master_;
  termios before_;
  std::string output_;
};

// Reports what happens until the terminal or the process is to end.
void Report(YcluiTerminal& terminal) {
  for (;;) {
    std::string bytes;
    const YcluiTerminal::Event event = terminal.read(bytes, -1);
    int width = 0;
    int height = 0;
    if (terminal.endingSignal() != 0) YcluiTerminal::EndBy(terminal.endingSignal());
    if (event == YcluiTerminal::Event::Gone) std::exit(1);
    if (terminal.wasStopped()) terminal.write("continued");
    if (terminal.wasResized() && terminal.size(width, height)) {
      terminal.write(std::to_string(width) + "x" + std::to_string(height) + ";");
    }
    if (bytes == "s") terminal.enableSignalKeys(true);
    for (const char byte : bytes) terminal.write(std::to_string(int{byte}) + ";");
    if (bytes == "x") std::exit(0);
    if (bytes == "a") std::abort();
    if (bytes == "p") raise(SIGPIPE);
    if (bytes == "c") terminal.close();
    if (bytes == "c") terminal.write("closed");
  }
}

void OpenAndReport() {
  YcluiTerminal terminal;
  if (!terminal.open("begin", "end", [] { YcluiTerminal().write("ending"); })) std::exit(2);
  Report(terminal);
}

TEST(Terminal, ReadsKeysAndNotLines) {
  Child child(OpenAndReport);
  ASSERT_TRUE(child.writes("begin"));
  EXPECT_FALSE(child.hasItsModes());
  child.type("\r\x03\x1A");
  EXPECT_TRUE(child.writes("13;3;26;"));
  child.resize(50, 7);
  EXPECT_TRUE(child.writes("50x7;"));
}

TEST(Terminal, IsRestoredHoweverTheProcessEnds) {
  const struct {
    const char* keys;
    int signal;  // sent from outside, or 0
    int endsBy;
  } rows[] = {{"x", 0, 0},          {"a", 0, SIGABRT},    {"p", 0, SIGPIPE}, {"", SIGTERM, SIGTERM},
              {"", SIGHUP, SIGHUP}, {"", SIGINT, SIGINT}, {"s", 0, SIGINT}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.keys + std::to_string(row.endsBy));
    Child child(OpenAndReport);
    ASSERT_TRUE(child.writes("begin"));
    child.type(row.keys);
    if (row.signal != 0) kill(child.id, row.signal);
    EXPECT_TRUE(row.endsBy != SIGTERM || child.writes("ending"));
    if (*row.keys == 's') {
      EXPECT_TRUE(child.writes("115;"));
      child.type("\x03");
    }
    ASSERT_TRUE(child.writes("end"));
    const int status = child.waitForEnd();
    EXPECT_EQ(row.endsBy == 0 ? WEXITSTATUS(status) : WTERMSIG(status), row.endsBy);
    EXPECT_TRUE(child.hasItsModes());
  }
}

TEST(Terminal, IsOursAgainAfterAStop) {
  Child child(OpenAndReport);
  ASSERT_TRUE(child.writes("begin"));
  kill(child.id, SIGSTOP);
  waitpid(child.id, nullptr, WUNTRACED);
  child.restoreModes();  // as a shell does
  kill(child.id, SIGCONT);
  EXPECT_TRUE(child.writes("begin"));
  EXPECT_TRUE(child.writes("continued"));
  EXPECT_FALSE(child.hasItsModes());
  // It has no shell that would continue it, so that this does not stop it.
  kill(child.id, SIGTSTP);
  EXPECT_TRUE(child.writes("endbegin"));
  EXPECT_TRUE(child.writes("continued"));
  EXPECT_FALSE(child.hasItsModes());
}

TEST(Terminal, LeavesTheProcessAloneOnceClosed) {
  Child child(OpenAndReport);
  ASSERT_TRUE(child.writes("begin"));
  child.type("c");
  EXPECT_TRUE(child.writes("endclosed"));
  EXPECT_TRUE(child.hasItsModes());
  kill(child.id, SIGTERM);
  EXPECT_EQ(WTERMSIG(child.waitForEnd()), SIGTERM);
}

// The host's descriptor ends a wait, is emptied, and is no longer looked at when it has ended.
TEST(Terminal, WakesForTheHost) {
  Child child([] {
    int ends[2];
    YcluiTerminal terminal;
    if (pipe(ends) != 0 || !terminal.open("", "", nullptr, ends[0])) std::exit(2);
    if (write(ends[1], "x", 1) != 1) std::exit(3);
    std::string bytes;
    terminal.read(bytes, -1);
    terminal.write("woken");
    close(ends[1]);
    terminal.read(bytes, -1);
    terminal.write("ended");
    Report(terminal);
  });
  EXPECT_TRUE(child.writes("wokenended"));
  child.type("k");
  EXPECT_TRUE(child.writes("107;"));
}

TEST(Terminal, IsNotOpenedTwiceOrOnAFile) {
  Child child([] {
    YcluiTerminal terminal;
    const bool opens = terminal.open("", "");
    const bool opensTwice = YcluiTerminal().open("", "");
    terminal.close();
    close(STDIN_FILENO);
    const bool opensNothing = terminal.open("", "");
    terminal.write(opens && !opensTwice && !opensNothing ? "good" : "bad");
    Report(terminal);
  });
  EXPECT_TRUE(child.writes("good"));
}

}  // namespace
