// Recordings for the reader.

#ifndef HOST_CLUISHOW_H_
#define HOST_CLUISHOW_H_

#include "host/CluiOptions.h"

// Prints the files of the options, which are text of the system, in the user's encoding, and
// answers the exit status.
int CluiShow(const CluiOptions& options);

#endif  // HOST_CLUISHOW_H_
