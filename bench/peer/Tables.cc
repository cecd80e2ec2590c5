#include "bench/peer/Tables.h"

#include <algorithm>
#include <cstdio>

#include "bench/peer/Field.h"
#include "bench/peer/Plot.h"

namespace {

constexpr std::size_t Clui = 1;  // its column where the loop has the first one

std::vector<std::string> Names(std::size_t from) {
  std::vector<std::string> names;
  for (const ContenderKind& kind : ContenderKinds()) names.emplace_back(kind.name);
  names.erase(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(from));
  return names;
}

double Worst(const std::vector<double>& numbers) {
  return *std::max_element(numbers.begin(), numbers.end());
}

// The greatest of the quotients.
double Worst(const std::vector<double>& numbers, const std::vector<double>& others) {
  double worst = 0;
  for (std::size_t i = 0; i < numbers.size(); ++i) worst = std::max(worst, numbers[i] / others[i]);
  return worst;
}

double Growth(const SideTable& table, std::size_t from) {
  const std::vector<double> costs = table.column(Clui);
  return costs.back() / costs[from];
}

}  // namespace

Tables::Tables(const Scale& scale)
    : scale_(scale),
      whole_("a line read and carried out, ns (ratio to the loop)", Names(0)),
      short_("the same with short forms; the loop reads whole words", Names(0)),
      unknown_("a line refused: its first word is in no dictionary", Names(0)),
      misplaced_("a line refused: its first word is known and not allowed there", Names(0)),
      build_("building and destroying the language, ns a command", Names(0)),
      empty_("completion at an empty prompt, ns (ratio to yqrtClui)", Names(Clui)),
      letters_("completion behind two letters, ns (ratio to yqrtClui)", Names(Clui)),
      inTurn_("both a completion behind a command's word and one behind two letters, ns",
              Names(Clui)),
      log_("a line with a log being written, ns", {"yqrtClui", "with a log"}) {
  for (const int size : scale.sizes) measure(size);
}

void Tables::measure(int size) {
  const Language language(size);
  const std::string what = std::to_string(size);
  const int repetitions = scale_.repetitions;
  build_.add(what, BuildSideBySide(language, repetitions));
  const Field field(language);
  whole_.add(what, field.read(Spelling::Whole, scale_.lines, repetitions));
  short_.add(what, field.read(Spelling::Short, scale_.lines, repetitions));
  unknown_.add(what, field.read(Spelling::Unknown, scale_.sideLines, repetitions));
  misplaced_.add(what, field.read(Spelling::Misplaced, scale_.sideLines, repetitions));
  empty_.add(what, field.complete("", repetitions));
  letters_.add(what, field.complete(language.words.front().substr(0, 2), repetitions));
  inTurn_.add(what, field.completeInTurn(language.words.front().substr(0, 2), repetitions));
  log_.add(what, field.log(scale_.sideLines, repetitions));
}

void Tables::print() const {
  for (const SideTable* table :
       {&whole_, &short_, &unknown_, &misplaced_, &build_, &empty_, &letters_, &inTurn_, &log_}) {
    table->print();
  }
}

void Tables::printBounds() const {
  const std::vector<double> build = build_.column(Clui);
  std::printf("\nwhat yqrtClui is to keep to\n");
  PrintBound("a line, in lines of the loop", Worst(whole_.ratios(Clui)), 6);
  PrintBound("a line in the largest language, in lines in the smallest", Growth(whole_, 0), 1.5);
  PrintBound("the same with short forms", Growth(short_, 0), 1.5);
  PrintBound("a line with an unknown word, in lines with known ones",
             Worst(unknown_.column(Clui), whole_.column(Clui)), 1);
  PrintBound("building a command of the largest language, in those of 100", Growth(build_, 1), 2);
  PrintBound("building the largest language, in ms", build.back() * scale_.sizes.back() * 1e-6, 20);
  if (ContenderKinds()[Clui + 1].make == nullptr) return;
  PrintBound("completion at an empty prompt, in those of libcli",
             Worst(empty_.column(0), empty_.column(1)), 1);
  PrintBound("completion behind two letters, in those of libcli",
             Worst(letters_.column(0), letters_.column(1)), 1);
  PrintBound("both places in turn, in those of libcli", Worst(inTurn_.column(0), inTurn_.column(1)),
             1);
}

bool Tables::draw(const char* path) const {
  constexpr const char* Colours[] = {"#777777", "#c0392b", "#2471a3", "#1e8449"};
  std::vector<Curve> curves;
  for (std::size_t i = 0; i < ContenderKinds().size(); ++i) {
    const ContenderKind& kind = ContenderKinds()[i];
    if (kind.make == nullptr) continue;
    curves.push_back({kind.name, Colours[i], false, whole_.column(i)});
    if (!kind.takesShortForms) continue;
    curves.push_back({std::string(kind.name) + ", short", Colours[i], true, short_.column(i)});
  }
  return WritePlot(path, "Cost of a command line", scale_.sizes, curves);
}

void PrintBound(const char* what, double worst, double most) {
  std::printf("%-66s%8.2f  at most %g%s\n", what, worst, most, worst > most ? "  above" : "");
}
