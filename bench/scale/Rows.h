// What scale_bench measures.

#ifndef BENCH_SCALE_ROWS_H_
#define BENCH_SCALE_ROWS_H_

#include <string>
#include <vector>

#include "bench/Measure.h"

// The same work on pieces of two sizes.
struct Row {
  std::string what;
  std::string unit;
  long small;
  long large;
  // The work on so many pieces of that size. Making it is not measured.
  Work (*make)(long size, long pieces);
};

// Work that calls a function for each piece.
inline Work ForEachPiece(long pieces, const std::function<bool()>& run) {
  return {[pieces, run] {
    bool isRight = true;
    for (long i = 0; i < pieces; ++i) isRight = run() && isRight;
    return isRight;
  }};
}

std::vector<Row> TextRows();
std::vector<Row> WordRows();
std::vector<Row> GraphRows();

#endif  // BENCH_SCALE_ROWS_H_
