#include <libcli.h>

#include <charconv>
#include <cstring>

#include "bench/peer/Implementation.h"

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

class Libcli : public Implementation {
 public:
  explicit Libcli(const Language& language) : cli_(cli_init()) {
    for (const std::string& word : language.words) {
      cli_command* command = cli_register_command(cli_, nullptr, word.c_str(), nullptr,
                                                  PRIVILEGE_UNPRIVILEGED, MODE_EXEC, nullptr);
      Register(cli_, command, "on", &SwitchOn);
      Register(cli_, command, "off", &SwitchOff);
    }
    cli_set_context(cli_, &outcome_);
    cli_print_callback(cli_, &DropText);
    // Each session of libcli begins with this call, which also finds the short forms.
    cli_set_privilege(cli_, PRIVILEGE_PRIVILEGED);
  }
  Libcli(const Libcli&) = delete;
  Libcli& operator=(const Libcli&) = delete;
  ~Libcli() override { cli_done(cli_); }

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

  void completeAfter(const std::string& word) override { complete((word + " ").c_str()); }

 private:
  cli_def* cli_;
  Outcome outcome_;
};

}  // namespace

std::unique_ptr<Implementation> MakeLibcli(const Language& language) {
  return std::make_unique<Libcli>(language);
}
