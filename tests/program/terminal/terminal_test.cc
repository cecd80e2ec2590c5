// Types into clui in a real terminal, that of tmux, and looks at the screen. The head of
// drafting.txt tells the form of the rows.

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

// What is done in one go, or what the screen must show then.
struct Step {
  char mark;
  Lines lines;
};

// Lines of the screen, and what is pasted, belong together.
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

// What a command prints.
std::string OutputOf(const std::string& command) {
  [[maybe_unused]] const int status = std::system(("{ " + command + "\n} >printed 2>&1").c_str());
  return ReadFile("printed");
}

// The lines, without blanks at their ends and empty lines at the end of all.
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
    std::signal(SIGINT, SIG_DFL);  // whoever started the tests may have it ignored
    const std::string& language = GetParam().table;
    const auto& [mark, line] = GetParam().lines.front();
    std::filesystem::copy(EXAMPLES "/" + language, folder_.path);
    // In a sanitized build: the collector of the engine reads the real stack and frees nothing.
    WriteFile(
        "run",
        "export ASAN_OPTIONS=detect_leaks=0:detect_stack_use_after_return=0:replace_intrin=0\n"
        "export HOME=$PWD XDG_STATE_HOME=$PWD/state LC_ALL=C.UTF-8 PS1='$ ' PS2= HISTFILE=\n"
        "unset PROMPT_COMMAND NO_COLOR\n"
        "mkdir -p bin && ln -sf " CLUI_PROGRAM " bin/clui && PATH=$PWD/bin:$PATH\n" +
            (mark == '$' ? line : "clui " + language + ".scm") + "\nexec sleep 1000\n");
  }
  void TearDown() override { tmux("kill-server"); }

  // tmux reads what is typed as UTF-8 whatever the locale of the tests is.
  std::string tmux(const std::string& words) const {
    return OutputOf("env -u TMUX LC_ALL=C.UTF-8 " TMUX " -u -S socket -f /dev/null " + words);
  }
  void start() {
    tmux("new-session -d -x 80 -y 24 'bash run'");
    tmux("set -g status off");
    // What is typed before the program reads keys would be shown by the terminal itself.
    expect([&] { return seen(1).empty(); }, false);
  }

  // The last lines of the screen, as many as are wanted.
  Lines seen(std::size_t count) const {
    Lines lines = LinesOf(tmux("capture-pane -p"));
    if (lines.size() > count) lines.erase(lines.begin(), lines.end() - static_cast<long>(count));
    return lines;
  }
  // What is looked at must stay as it is wanted, since keys that were sent may still be on their
  // way.
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
  // tmux tells the program a moment after it has changed the screen.
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

TEST_P(Terminal, ShowsWhatItsRowSays) {
  start();
  for (const Step& step : StepsOf(GetParam())) {
    take(step);
    if (HasFatalFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Sessions, Terminal,
    testing::ValuesIn(RowsOf({SESSIONS "/drafting.txt", SESSIONS "/router.txt"})), NameOfRow);

}  // namespace
