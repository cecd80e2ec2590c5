#include "bench/peer/Tables.h"

#include <algorithm>
#include <cstdio>
#include "bench/TemporaryFile.h"
#include "bench/peer/Plot.h"

namespace {

constexpr std::size_t Clui = 1;  // its column where the loop has the first one

std::vector<std::string> Names(std::size_t from) {
  std::vector<std::string> names;
  for (const ContenderKind& kind : ContenderKinds()) names.emplace_back(kind.name);
  names.erase(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(from));
  return names;
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
  for (const int size : scale.sizes) languages_.push_back(std::make_unique<Language>(size));
  measureBuilding();
  for (const auto& language : languages_) fields_.push_back(std::make_unique<Field>(*language));
  measureLines();
  measureCompletion();
}

// Size by size, each language so often that all rows build as many commands: after a smaller one
// the memory of a larger one would be new to the process each time, which is measured as peak
// memory.
void Tables::measureBuilding() {
  for (const auto& language : languages_) {
    const int size = static_cast<int>(language->words.size());
    const WorkRow row = Building(*language, scale_.sizes.back() / size);
    build_.add(std::to_string(size), SideBySide({row}, scale_.repetitions).front());
  }
}

void Tables::measureLines() {
  std::vector<WorkRow> rows[5];
  const TemporaryFile log;
  for (const auto& field : fields_) {
    rows[0].push_back(field->reading(Spelling::Whole, scale_.lines));
    rows[1].push_back(field->reading(Spelling::Short, scale_.lines));
    rows[2].push_back(field->reading(Spelling::Unknown, scale_.sideLines));
    rows[3].push_back(field->reading(Spelling::Misplaced, scale_.sideLines));
    rows[4].push_back(field->logging(scale_.sideLines, log.path()));
  }
  measure({{&whole_, rows[0]},
           {&short_, rows[1]},
           {&unknown_, rows[2]},
           {&misplaced_, rows[3]},
           {&log_, rows[4]}});
}

void Tables::measureCompletion() {
  std::vector<WorkRow> rows[3];
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const std::string letters = languages_[i]->words.front().substr(0, 2);
    rows[0].push_back(fields_[i]->completing(""));
    rows[1].push_back(fields_[i]->completing(letters));
    rows[2].push_back(fields_[i]->completingInTurn(letters));
  }
  measure({{&empty_, rows[0]}, {&letters_, rows[1]}, {&inTurn_, rows[2]}});
}

// All of them in one go, so that any two can be compared turn by turn.
void Tables::measure(const std::vector<std::pair<SideTable*, std::vector<WorkRow>>>& tables) {
  std::vector<WorkRow> rows;
  for (const auto& [table, own] : tables) rows.insert(rows.end(), own.begin(), own.end());
  std::vector<std::vector<Measured>> cells = SideBySide(rows, scale_.repetitions);
  auto next = cells.begin();
  for (const auto& [table, own] : tables) {
    for (const int size : scale_.sizes) table->add(std::to_string(size), std::move(*next++));
  }
}

void Tables::print() const {
  for (const SideTable* table :
       {&whole_, &short_, &unknown_, &misplaced_, &build_, &empty_, &letters_, &inTurn_, &log_}) {
    table->print();
  }
}

void Tables::printBounds() const {
  std::printf("\nwhat yqrtClui is to keep to\n");
  PrintBound("a line, in lines of the loop", whole_.worstRatio(Clui, 0), 6);
  PrintBound("a line in the largest language, in lines in the smallest", whole_.growth(Clui, 0),
             1.5);
  PrintBound("the same with short forms", short_.growth(Clui, 0), 1.5);
  double unknown = 0;
  for (std::size_t row = 0; row < whole_.count(); ++row) {
    unknown = std::max(unknown, MedianRatio(unknown_.at(row, Clui), whole_.at(row, Clui)));
  }
  PrintBound("a line with an unknown word, in lines with known ones", unknown, 1);
  PrintBound("building a command of the largest language, in those of 100", build_.growth(Clui, 1),
             2);
  PrintBound("building the largest language, in ms",
             build_.column(Clui).back() * scale_.sizes.back() * 1e-6, 20);
  if (ContenderKinds()[Clui + 1].make == nullptr) return;
  PrintBound("completion at an empty prompt, in those of libcli", empty_.worstRatio(0, 1), 1);
  PrintBound("completion behind two letters, in those of libcli", letters_.worstRatio(0, 1), 1);
  PrintBound("both places in turn, in those of libcli", inTurn_.worstRatio(0, 1), 1);
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
