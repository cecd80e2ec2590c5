// Prints recordings.

#ifndef PROGRAM_CLUISHOW_H_
#define PROGRAM_CLUISHOW_H_

#include "program/CluiOptions.h"

// Converts the files of the options from the system's encoding to the user's and prints them. A
// recording in another encoding is refused.
// Returns the exit status.
int CluiShow(const CluiOptions& options);

#endif  // PROGRAM_CLUISHOW_H_
