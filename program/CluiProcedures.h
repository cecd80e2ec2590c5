// What the program adds to the procedures of the library, for its languages.

#ifndef PROGRAM_CLUIPROCEDURES_H_
#define PROGRAM_CLUIPROCEDURES_H_

// Binds (token-argument PARSER N K): argument K, from 0, of word N of the command under way, as a
// value: a number, a pair (x . y) for a point, a string, or #f when there is none. N counts from 0
// as in a template; -1 is the last word. Text handed over like this never becomes code. The engine
// has been started.
void CluiBindProcedures();

#endif  // PROGRAM_CLUIPROCEDURES_H_
