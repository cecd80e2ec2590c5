// Runs transcripts of a language and compares what is printed.

#ifndef PROGRAM_CLUITRANSCRIPTTEST_H_
#define PROGRAM_CLUITRANSCRIPTTEST_H_

#include "program/CluiOptions.h"

// Runs each file of the options as a CluiTranscript, in a process of its own that loads the
// language anew. Prints the differences in the unified format or, with options.update, writes the
// files anew. Returns the exit status: 0 without differences or when all files were updated, 1 with
// one, 2 when the language cannot be loaded or a file not be read or written.
// REQUIRES: the engine has not been started.
int CluiTestTranscripts(const CluiOptions& options);

#endif  // PROGRAM_CLUITRANSCRIPTTEST_H_
