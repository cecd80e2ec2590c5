// The Scheme procedures that the program adds to those of the library.

#ifndef PROGRAM_CLUIPROCEDURES_H_
#define PROGRAM_CLUIPROCEDURES_H_

// Binds (token-argument PARSER N K), which returns argument K of token N of the current command as
// a value: a number, a pair (x . y) for a point, a string, or #f when there is none. Both count
// from 0, N as in a template; -1 is the last token. Unlike text that a template inserts, a value is
// never run as code. REQUIRES: the engine has been started.
void CluiBindProcedures();

#endif  // PROGRAM_CLUIPROCEDURES_H_
