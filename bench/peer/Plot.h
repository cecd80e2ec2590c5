// Curves on logarithmic axes, as a picture.

#ifndef BENCH_PEER_PLOT_H_
#define BENCH_PEER_PLOT_H_

#include <string>
#include <vector>

struct Curve {
  std::string name;
  const char* colour;
  bool isDashed;
  std::vector<double> nanoseconds;  // one for each size
};

// Writes an SVG file. False when it cannot be written.
bool WritePlot(const char* path, const std::string& title, const std::vector<int>& sizes,
               const std::vector<Curve>& curves);

#endif  // BENCH_PEER_PLOT_H_
