// Types into clui in a terminal of tmux and compares the screen. The beginning of drafting.txt
// describes the format of the sessions.

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/Rows.h"
#include "tests/support/WorkingFolder.h"

namespace {

using Lines = std::vector<std::string>;

constexpr std::chrono::seconds Patience(20);
constexpr std::chrono::milliseconds Pause(10);

// Lines of one mark: one action, or one expected screen.
struct Step {
  char mark;
  Lines lines;
};

// Consecutive lines of the screen, or of a paste, are one step.
std::vector<Step> StepsOf(const Row& row) {
  std::vector<Step> steps;
  for (const auto& [mark, line] : row.lines) {
    const bool goesOn = (mark == '|' || mark == '"') && !steps.empty() && steps.back().mark == mark;
    if (!goesOn) steps.push_back({mark, {}});
    steps.back().lines.push_back(line);
  }
  return steps;
}

std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? "'\\''" : std::string(1, c);
  return quoted + "'";
}

// The output of a command.
std::string OutputOf(const std::string& command) {
  [[maybe_unused]] const int status = std::system(("{ " + command + "\n} >printed 2>&1").c_str());
  return ReadFile("printed");
}

// The lines, without trailing blanks and trailing empty lines.
Lines LinesOf(const std::string& text) {
  Lines lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line.substr(0, line.find_last_not_of(' ') + 1));
  }
  while (!lines.empty() && lines.back().empty()) lines.pop_back();
  return lines;
}

std::string Joined(const Lines& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

class Terminal : public testing::TestWithParam<Row> {
 protected:
  WorkingFolder folder_;

  void SetUp() override {
    std::signal(SIGINT, SIG_DFL);  // it is ignored if the tests run in the background
    const std::string& language = GetParam().table;
    const auto& [mark, line] = GetParam().lines.front();
    std::filesystem::copy(EXAMPLES "/" + language, folder_.path);
    // For a sanitized build: the garbage collector scans the real stack, and memory is not freed at
    // the end of the process.
    WriteFile(
        "run",
        "export ASAN_OPTIONS=detect_leaks=0:detect_stack_use_after_return=0:replace_intrin=0\n"
        "export HOME=$PWD XDG_STATE_HOME=$PWD/state LC_ALL=C.UTF-8 PS1='$ ' PS2= HISTFILE=\n"
        "unset PROMPT_COMMAND NO_COLOR\n"
        "PATH=$PWD/bin:$PATH\n"
        "mkdir -p bin && printf '#!/bin/sh\\nexec \"%s\" --inside %s \"$@\"' " CLUI_PROGRAM
        " ${CLUI_INSIDE:-utf-8} >bin/clui && chmod +x bin/clui\n" +
            (mark == '$' ? line : "clui " + language + ".scm") + "\nexec sleep 1000\n");
  }
  void TearDown() override { tmux("kill-server"); }

  // LC_ALL and -u make tmux use UTF-8 in any locale.
  std::string tmux(const std::string& words) const {
    return OutputOf("env -u TMUX LC_ALL=C.UTF-8 " TMUX " -u -S socket -f /dev/null " + words);
  }
  void start() {
    tmux("new-session -d -x 80 -y 24 'bash run'");
    tmux("set -g status off");
    // Wait for the prompt: the terminal itself would echo keys typed before.
    expect([&] { return seen(1).empty(); }, false);
  }

  // The last lines of the screen, at most `count`.
  Lines seen(std::size_t count) const {
    Lines lines = LinesOf(tmux("capture-pane -p"));
    if (lines.size() > count) lines.erase(lines.begin(), lines.end() - static_cast<long>(count));
    return lines;
  }
  // The value must be as expected several times in a row, since keys that were sent may arrive
  // late.
  template <typename Look, typename Wanted>
  void expect(const Look& look, const Wanted& wanted) {
    const auto end = std::chrono::steady_clock::now() + Patience;
    auto found = look();
    for (int good = 0; good < 3;) {
      if (found != wanted && std::chrono::steady_clock::now() > end) break;
      good = found == wanted ? good + 1 : 0;
      std::this_thread::sleep_for(Pause);
      found = look();
    }
    ASSERT_EQ(found, wanted) << "the screen:\n" << tmux("capture-pane -p");
  }

  void paste(const Lines& lines) {
    std::string text = Joined(lines);
    text.pop_back();
    WriteFile("pasted", text);
    tmux("load-buffer pasted ';' paste-buffer -p");
  }
  // Waits until the new size has reached the terminal, which is after tmux reports it.
  void resize(const std::string& options) {
    tmux("resize-window " + options);
    const std::string size = tmux("display -p '#{pane_height} #{pane_width}'");
    const std::string name = tmux("display -p '#{pane_tty}'");
    expect([&] { return OutputOf("stty size <" + name); }, size);
  }
  void take(const Step& step) {
    const std::string& line = step.lines.front();
    const Lines rows = LinesOf(Joined(step.lines));
    ASSERT_NE(std::string("$<^\"%!@|").find(step.mark), std::string::npos) << step.mark;
    if (step.mark == '<') tmux("send-keys -l -- " + Quoted(line));
    if (step.mark == '^') tmux("send-keys " + line);
    if (step.mark == '"') paste(step.lines);
    if (step.mark == '%') resize(line);
    if (step.mark == '!') OutputOf(line);
    if (step.mark == '@') expect([&] { return tmux("display -p '#{cursor_x}'"); }, line + "\n");
    if (step.mark == '|') expect([&] { return seen(step.lines.size()); }, rows);
  }
};

TEST_P(Terminal, ShowsWhatItsSessionExpects) {
  start();
  const char* const inside = std::getenv("CLUI_INSIDE");
  const bool isUtf8 = inside == nullptr || std::string(inside) == "utf-8";
  if (IsOfOtherEncoding(GetParam(), isUtf8)) GTEST_SKIP();
  for (const Step& step : StepsOf(GetParam())) {
    take(step);
    if (HasFatalFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Sessions, Terminal,
    testing::ValuesIn(RowsOf({SESSIONS "/drafting.txt", SESSIONS "/router.txt"})), NameOfRow);

}  // namespace
