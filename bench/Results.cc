#include "bench/Results.h"

#include <cstdio>

namespace {

std::string Bound(const char* relation, double bound) {
  char text[40];
  std::snprintf(text, sizeof text, "at %s %g", relation, bound);
  return text;
}

}  // namespace

Results::Results() {
  std::printf("table,row,kind,column,value,ratio\n");
}

void Results::add(const char* table, const std::string& row, const std::string& kind,
                  const std::string& column, double value, double ratio) {
  std::printf("%s,\"%s\",\"%s\",%s,%.6g,", table, row.c_str(), kind.c_str(), column.c_str(), value);
  if (ratio != 0) std::printf("%.6g", ratio);
  std::printf("\n");
}

void Results::atMost(const std::string& what, double figure, double bound) {
  addBound(what, figure, Bound("most", bound), figure <= bound);
}

void Results::atLeast(const std::string& what, double figure, double bound) {
  addBound(what, figure, Bound("least", bound), figure >= bound);
}

void Results::addBound(const std::string& what, double figure, const std::string& bound,
                       bool isKept) {
  const char* kept = isKept ? "kept" : "not kept";
  std::printf("bounds,\"%s\",%s,figure,%.6g,\n", what.c_str(), bound.c_str(), figure);
  std::printf("bounds,\"%s\",%s,kept,%s,\n", what.c_str(), bound.c_str(), isKept ? "yes" : "no");
  std::fprintf(stderr, "%-8s %9.3g  %-13s %s\n", kept, figure, bound.c_str(), what.c_str());
  areKept_ = areKept_ && isKept;
}
