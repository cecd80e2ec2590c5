// yqrtClui beside what could be picked in its place: libcli, Tcl, and a loop written by hand.
//
//   peer_bench               everything, which takes some minutes
//   peer_bench --quick       small languages and few lines, to see that it runs
//   peer_bench --svg FILE    also draws the cost of a line against the size of the language
//
// Each contender reads the same lines in languages of 10 to 10,000 commands: the command's word, a
// choice of two words, an integer and a string. The action of each command adds the integer up or
// takes it away, and the sums are checked. A peer that is not installed is told and left out.
//
// The contenders run in turn, seven times over. A cell is the median of the times of a unit, and in
// parentheses the median of the ratios to the first column. Memory is that of a process of its own.

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "bench/peer/Contender.h"
#include "bench/peer/PeakMemory.h"
#include "bench/peer/Plot.h"
#ifdef PEER_HAS_ENGINE
#include "bench/peer/ScriptRow.h"
#endif
#include "bench/peer/SideBySide.h"

namespace {

struct Scale {
  std::vector<int> sizes;
  int lines;      // of the rows that matter most
  int sideLines;  // of the others
  int repetitions;
};

const Scale Full = {{10, 100, 1000, 10000}, 100000, 20000, 7};
const Scale Quick = {{10, 100}, 2000, 1000, 3};

std::vector<std::string> Names() {
  std::vector<std::string> names;
  for (const ContenderKind& kind : ContenderKinds()) names.emplace_back(kind.name);
  return names;
}

// The contenders over one language; those that are not installed are null.
class Field {
 public:
  explicit Field(const Language& language) : language_(language) {
    for (const ContenderKind& kind : ContenderKinds()) {
      contenders_.push_back(kind.make != nullptr ? kind.make(language) : nullptr);
    }
  }

  std::vector<Measured> read(Spelling spelling, int count, int repetitions) const {
    std::vector<PeerWork> works;
    for (std::size_t i = 0; i < contenders_.size(); ++i) {
      works.push_back(reading(i, spelling, count));
    }
    return SideBySide(works, count, repetitions);
  }

  std::vector<Measured> complete(const std::string& prefix, int repetitions) const {
    const long least = std::count_if(language_.words.begin(), language_.words.end(),
                                     [&](const auto& word) { return word.starts_with(prefix); });
    std::vector<PeerWork> works;
    for (std::size_t i = 1; i < contenders_.size(); ++i) {
      works.push_back(completing(i, prefix, least));
    }
    return SideBySide(works, Completions, repetitions);
  }

  // yqrtClui without a log and with one.
  std::vector<Measured> log(int count, int repetitions) const {
    Contender* clui = contenders_[1].get();
    const PeerWork plain = reading(1, Spelling::Whole, count);
    const std::string path = std::filesystem::temp_directory_path() / "peer_bench.XXXXXX";
    std::string name = path;
    const int file = mkstemp(name.data());
    if (file >= 0) close(file);
    const PeerWork logged = [clui, plain, name] {
      return clui->log(name.c_str()) && plain() && clui->log(nullptr);
    };
    std::vector<Measured> measured = SideBySide({plain, logged}, count, repetitions);
    std::filesystem::remove(name);
    return measured;
  }

 private:
  static constexpr int Completions = 20;

  const Language& language_;
  std::vector<std::unique_ptr<Contender>> contenders_;

  // The loop knows no short forms: it reads whole words then, to compare with.
  PeerWork reading(std::size_t index, Spelling spelling, int count) const {
    Contender* contender = contenders_[index].get();
    const bool isShort = spelling == Spelling::Short;
    const bool canRead = !isShort || index == 0 || ContenderKinds()[index].takesShortForms;
    if (contender == nullptr || !canRead) return {};
    const auto lines =
        LinesOf(language_, isShort && index == 0 ? Spelling::Whole : spelling, count);
    const bool isRefused = spelling == Spelling::Unknown || spelling == Spelling::Misplaced;
    const Outcome expected = isRefused ? Outcome{0, count} : Outcome{SumOf(lines), 0};
    std::vector<std::string> typed;
    typed.reserve(lines.size());
    for (const Line& line : lines) typed.push_back(contender->typed(line));
    return [contender, expected, typed] { return contender->read(typed) == expected; };
  }

  PeerWork completing(std::size_t index, const std::string& prefix, long least) const {
    Contender* contender = contenders_[index].get();
    if (contender == nullptr) return {};
    return [contender, prefix, least] {
      bool isGood = true;
      for (int i = 0; i < Completions; ++i) {
        isGood = contender->complete(prefix.c_str()) >= least && isGood;
      }
      return isGood;
    };
  }
};

std::vector<Measured> Build(const Language& language, int repetitions) {
  std::vector<PeerWork> works;
  for (const ContenderKind& kind : ContenderKinds()) {
    if (kind.make == nullptr) {
      works.emplace_back();
    } else {
      works.push_back([&kind, &language] { return kind.make(language) != nullptr; });
    }
  }
  return SideBySide(works, static_cast<long>(language.words.size()), repetitions);
}

void ReadOnce(const ContenderKind& kind, const Language& language, int count) {
  const std::unique_ptr<Contender> contender = kind.make(language);
  std::vector<std::string> typed;
  for (const Line& line : LinesOf(language, Spelling::Whole, count)) {
    typed.push_back(contender->typed(line));
  }
  contender->read(typed);
}

// Beyond what a process holds that has the loop read the same lines.
void PrintPeakMemory(const Scale& scale) {
  std::printf("peak memory beyond that of the loop, kB\n%-26s", "");
  for (const std::string& name : Names()) std::printf("%20s", name.c_str());
  for (const int size : scale.sizes) {
    const Language language(size);
    std::printf("\n%-26d", size);
    long least = 0;
    for (const ContenderKind& kind : ContenderKinds()) {
      std::fflush(stdout);
      const long peak = kind.make == nullptr
                            ? -1
                            : PeakMemoryOf([&] { ReadOnce(kind, language, scale.sideLines); });
      if (kind.make == &MakeHandLoop) least = peak;
      if (peak < 0) {
        std::printf("%20s", "-");
      } else {
        std::printf("%20ld", peak - least);
      }
    }
  }
  std::printf("\n");
}

struct Tables {
  SideTable whole{"a line read and carried out, ns (ratio to the loop)", Names()};
  SideTable abbreviated{"the same with short forms; the loop reads whole words", Names()};
  SideTable unknown{"a line refused: its first word is in no dictionary", Names()};
  SideTable misplaced{"a line refused: its first word is known and not allowed there", Names()};
  SideTable build{"building and destroying the language, ns a command", Names()};
  SideTable empty{"completion at an empty prompt, ns (ratio to yqrtClui)", Rivals()};
  SideTable letters{"completion behind two letters, ns (ratio to yqrtClui)", Rivals()};
  SideTable log{"a line with a log being written, ns", {"yqrtClui", "with a log"}};

  static std::vector<std::string> Rivals() {
    const std::vector<std::string> names = Names();
    return {names.begin() + 1, names.end()};
  }

  void measure(int size, const Scale& scale) {
    const Language language(size);
    const std::string what = std::to_string(size);
    const int repetitions = scale.repetitions;
    build.add(what, Build(language, repetitions));
    const Field field(language);
    whole.add(what, field.read(Spelling::Whole, scale.lines, repetitions));
    abbreviated.add(what, field.read(Spelling::Short, scale.lines, repetitions));
    unknown.add(what, field.read(Spelling::Unknown, scale.sideLines, repetitions));
    misplaced.add(what, field.read(Spelling::Misplaced, scale.sideLines, repetitions));
    empty.add(what, field.complete("", repetitions));
    letters.add(what, field.complete(language.words.front().substr(0, 2), repetitions));
    log.add(what, field.log(scale.sideLines, repetitions));
  }

  void print() const {
    for (const SideTable* table :
         {&whole, &abbreviated, &unknown, &misplaced, &build, &empty, &letters, &log}) {
      table->print();
    }
  }

  bool draw(const char* path, const Scale& scale) const {
    constexpr const char* Colours[] = {"#777777", "#c0392b", "#2471a3", "#1e8449"};
    std::vector<Curve> curves;
    for (std::size_t i = 0; i < ContenderKinds().size(); ++i) {
      const ContenderKind& kind = ContenderKinds()[i];
      if (kind.make == nullptr) continue;
      curves.push_back({kind.name, Colours[i], false, whole.column(i)});
      if (!kind.takesShortForms) continue;
      curves.push_back(
          {std::string(kind.name) + ", short", Colours[i], true, abbreviated.column(i)});
    }
    return WritePlot(path, "Cost of a command line", scale.sizes, curves);
  }
};

}  // namespace

int main(int argc, char** argv) {
  const char* picture = nullptr;
  Scale scale = Full;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--quick") == 0) {
      scale = Quick;
    } else if (std::strcmp(argv[i], "--svg") == 0 && i + 1 < argc) {
      picture = argv[++i];
    } else {
      std::fprintf(stderr, "usage: peer_bench [--quick] [--svg FILE]\n");
      return 2;
    }
  }
  for (const ContenderKind& kind : ContenderKinds()) {
    if (kind.make == nullptr) std::printf("%s is not installed and left out\n", kind.name);
  }
  PrintPeakMemory(scale);
  Tables tables;
  for (const int size : scale.sizes) tables.measure(size, scale);
  tables.print();
#ifdef PEER_HAS_ENGINE
  PrintScriptTable(scale.sideLines, scale.repetitions);
#else
  std::printf("\nbuilt without the script engine: no row for commands that it runs\n");
#endif
  if (picture == nullptr || tables.draw(picture, scale)) return 0;
  std::fprintf(stderr, "peer_bench: cannot write %s\n", picture);
  return 1;
}
