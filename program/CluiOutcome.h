// What has come of a run so far.

#ifndef PROGRAM_CLUIOUTCOME_H_
#define PROGRAM_CLUIOUTCOME_H_

#include <cstddef>

struct CluiOutcome {
  std::size_t taken = 0;    // words that reached the syntax and were not refused
  std::size_t refused = 0;  // words and lines
  std::size_t failed = 0;   // commands
  bool ended = false;       // an input ended inside a command
  bool unable = false;      // not all input could be read, or not everything be recorded
};

#endif  // PROGRAM_CLUIOUTCOME_H_
