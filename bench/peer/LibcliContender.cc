#include <libcli.h>

#include <charconv>
#include <cstring>

#include "bench/peer/Contender.h"

// The library exports it without a declaration.
extern "C" void cli_get_completions(cli_def* cli, const char* command, char lastchar,
                                    cli_comphelp* comphelp);

namespace {

bool NumberOf(char* argv[], int argc, int& number) {
  if (argc != 2) return false;
  return std::from_chars(argv[0], argv[0] + std::strlen(argv[0]), number).ec == std::errc();
}

int Add(cli_def* cli, int sign, char* argv[], int argc) {
  int number = 0;
  if (!NumberOf(argv, argc, number)) return CLI_ERROR;
  static_cast<Outcome*>(cli_get_context(cli))->sum += sign * number;
  return CLI_OK;
}

int SwitchOn(cli_def* cli, const char*, char* argv[], int argc) {
  return Add(cli, 1, argv, argc);
}

int SwitchOff(cli_def* cli, const char*, char* argv[], int argc) {
  return Add(cli, -1, argv, argc);
}

void DropText(cli_def*, const char*) {}

void Register(cli_def* cli, cli_command* parent, const char* word,
              int (*action)(cli_def*, const char*, char**, int)) {
  cli_register_command(cli, parent, word, action, PRIVILEGE_UNPRIVILEGED, MODE_EXEC, nullptr);
}

class LibcliContender : public Contender {
 public:
  explicit LibcliContender(const Language& language) : cli_(cli_init()) {
    for (const std::string& word : language.words) {
      cli_command* command = cli_register_command(cli_, nullptr, word.c_str(), nullptr,
                                                  PRIVILEGE_UNPRIVILEGED, MODE_EXEC, nullptr);
      Register(cli_, command, "on", &SwitchOn);
      Register(cli_, command, "off", &SwitchOff);
    }
    cli_set_context(cli_, &outcome_);
    cli_print_callback(cli_, &DropText);
    // What each session of it begins with; the short forms are worked out here.
    cli_set_privilege(cli_, PRIVILEGE_PRIVILEGED);
  }
  LibcliContender(const LibcliContender&) = delete;
  LibcliContender& operator=(const LibcliContender&) = delete;
  ~LibcliContender() override { cli_done(cli_); }

  std::string typed(const Line& line) const override {
    return line.word + (line.isOn ? " on " : " off ") + std::to_string(line.number) + " \"abc\"";
  }

  Outcome read(const TypedLines& lines) override {
    outcome_ = Outcome();
    lines.forEach([this](const char* line, std::size_t) {
      if (cli_run_command(cli_, line) != CLI_OK) ++outcome_.refused;
    });
    return outcome_;
  }

  long complete(const char* prefix) override {
    cli_comphelp words{};
    cli_get_completions(cli_, prefix, '\t', &words);
    const long count = words.num_entries;
    cli_free_comphelp(&words);
    return count;
  }

  long completeBehind(const std::string& word) override { return complete((word + " ").c_str()); }

 private:
  cli_def* cli_;
  Outcome outcome_;
};

}  // namespace

std::unique_ptr<Contender> MakeLibcli(const Language& language) {
  return std::make_unique<LibcliContender>(language);
}
