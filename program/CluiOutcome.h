// The counts of a run so far.

#ifndef PROGRAM_CLUIOUTCOME_H_
#define PROGRAM_CLUIOUTCOME_H_

#include <cstddef>

struct CluiOutcome {
  std::size_t accepted = 0;  // words that the syntax did not refuse
  std::size_t refused = 0;   // words and lines
  std::size_t doubtful = 0;  // words that a dry run refuses, and a run perhaps not
  std::size_t failed = 0;    // commands
  bool ended = false;        // an input ended inside a command
  bool unable = false;       // some input could not be read, or the recording is incomplete
};

#endif  // PROGRAM_CLUIOUTCOME_H_
