// All that is measured of the contenders but for memory.

#ifndef BENCH_PEER_TABLES_H_
#define BENCH_PEER_TABLES_H_

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bench/peer/Field.h"
#include "bench/peer/SideBySide.h"

struct Scale {
  std::vector<int> sizes;
  int lines;      // of the rows that matter most
  int sideLines;  // of the others
  int repetitions;
};

class Tables {
 public:
  explicit Tables(const Scale& scale);

  void print() const;
  // What yqrtClui is to keep to, beside the worst of this run.
  void printBounds() const;
  bool draw(const char* path) const;

 private:
  Scale scale_;
  SideTable whole_;
  SideTable short_;
  SideTable unknown_;
  SideTable misplaced_;
  SideTable build_;
  SideTable empty_;
  SideTable letters_;
  SideTable inTurn_;
  SideTable log_;

  std::vector<std::unique_ptr<Language>> languages_;
  std::vector<std::unique_ptr<Field>> fields_;

  void measureBuilding();
  void measureLines();
  void measureCompletion();
  void measure(const std::vector<std::pair<SideTable*, std::vector<WorkRow>>>& tables);
};

void PrintBound(const char* what, double worst, double most);

#endif  // BENCH_PEER_TABLES_H_
