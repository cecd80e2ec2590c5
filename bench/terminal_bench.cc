// What somebody at a terminal waits for, in a language of 10,000 words of which each can come.
//
// First the cost of a completion for each candidate, in 10,000 words beside 100, as a ratio. Then
// clui in a pseudo-terminal, with keys pressed one at a time: the time from the writing of the key
// to the first bytes of the answer, by the clock on the wall, so that what else the machine does
// counts. The bounds are 1 ms for the median and 5 ms for 99 keys of 100.
//
//   a letter       is echoed
//   completion     Tab, which carries a word on, or finds that it cannot
//   listing of 10  Tab again
//   Return         the word is read, its command runs, the line is kept in the history
//   listing of all "?" at the start of a line, of which the window holds a part
//   refused word   Return behind a word that no dictionary has, with the message that tells so
//
// Nothing here fails; a figure above its bound is marked.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "bench/CompletionRows.h"
#include "bench/CostTable.h"
#include "bench/PseudoTerminal.h"

namespace {

namespace fs = std::filesystem;

constexpr int Words = 10000;
constexpr int TypedWords = 500;
constexpr int ListedEvery = 10;  // words
constexpr std::size_t BytesOfList = 1000;
constexpr double MedianBound = 1e-3;
constexpr double HighBound = 5e-3;

using Times = std::vector<double>;

void WriteLanguage(const fs::path& file) {
  std::ofstream script(file);
  script << "(define p (clui-parser-new 0))\n(clui-set-syntax p (apply clui-oneof (map"
            " (lambda (name) (clui-syntax (clui-token p name) \"#t\")) '(";
  for (int i = 0; i < Words; ++i) script << '"' << BenchWord(i) << "\" ";
  script << "))))\n";
}

double At(const Times& times, double part) {
  return times[static_cast<std::size_t>(part * static_cast<double>(times.size() - 1))];
}

void Print(const std::string& what, Times times) {
  if (times.empty()) return;
  std::sort(times.begin(), times.end());
  const double median = At(times, 0.5);
  const double high = At(times, 0.99);
  std::cout << std::left << std::setw(16) << what << std::right << std::fixed
            << std::setprecision(3) << std::setw(7) << times.size() << std::setw(10) << median * 1e3
            << std::setw(10) << high * 1e3 << std::setw(10) << times.back() * 1e3
            << (median > MedianBound || high > HighBound ? " above" : "") << '\n';
}

class Typist {
 public:
  explicit Typist(PseudoTerminal& terminal) : terminal_(terminal) {}

  // False when a key was not answered.
  bool typeWord(const std::string& word) {
    for (std::size_t i = 0; i < 6; ++i) press("a letter", word.substr(i, 1));
    press("completion", "\t");
    press("listing of 10", "\t");
    press("a letter", word.substr(6, 1));
    press("completion", "\t");
    press("Return", "\r");
    return good_;
  }
  bool listAll() {
    press("listing of all", "?", BytesOfList);
    return good_;
  }
  bool typeUnknown(const std::string& word) {
    for (const char letter : word) press("a letter", {letter});
    press("refused word", "\r", word.size());
    return good_;
  }
  void print() const {
    std::cout << "\nkey                keys median ms    p99 ms    max ms   bounds 1 and 5\n";
    Times all;
    for (const auto& [what, times] : times_) {
      Print(what, times);
      all.insert(all.end(), times.begin(), times.end());
    }
    Print("all keys", all);
  }

 private:
  PseudoTerminal& terminal_;
  std::map<std::string, Times> times_;
  bool good_ = true;

  void press(const std::string& what, const std::string& key, std::size_t atLeast = 1) {
    const double seconds = good_ ? terminal_.press(key, atLeast) : -1;
    good_ = seconds >= 0;
    if (good_) times_[what].push_back(seconds);
  }
};

bool TypeInto(PseudoTerminal& terminal) {
  if (!terminal.settle(500)) return false;
  Typist typist(terminal);
  unsigned int number = 1;
  bool good = true;
  for (int i = 0; i < TypedWords && good; ++i) {
    number = number * 1103515245U + 12345U;
    good = typist.typeWord(BenchWord(static_cast<int>(number / 65536 % Words)));
    if (good && i % ListedEvery == 0) {
      good = typist.listAll() && typist.typeUnknown(BenchWord(i).replace(4, 1, "x"));
    }
  }
  typist.print();
  return good;
}

bool TypeInFolder(const std::string& program, const fs::path& folder) {
  WriteLanguage(folder / "many.scm");
  setenv("XDG_STATE_HOME", folder.c_str(), 1);
  setenv("TERM", "xterm-256color", 1);
  setenv("LC_ALL", "C.UTF-8", 1);
  PseudoTerminal terminal({program, (folder / "many.scm").string()});
  return TypeInto(terminal);
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const std::vector<Row> rows = CompletionRows();
  CostTable table(rows);
  benchmark::RunSpecifiedBenchmarks(&table);
  std::string name = (fs::temp_directory_path() / "clui-XXXXXX").string();
  const fs::path folder = mkdtemp(name.data());
  const bool good = TypeInFolder(CLUI_PROGRAM, folder);
  fs::remove_all(folder);
  if (!good) std::cerr << "terminal_bench: clui did not answer\n";
  return good ? 0 : 1;
}
