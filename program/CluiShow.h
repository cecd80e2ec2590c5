// Recordings for the reader.

#ifndef PROGRAM_CLUISHOW_H_
#define PROGRAM_CLUISHOW_H_

#include "program/CluiOptions.h"

// Prints the files of the options, which are text of the system, in the user's encoding, and
// answers the exit status.
int CluiShow(const CluiOptions& options);

#endif  // PROGRAM_CLUISHOW_H_
