// The Scheme procedures that the program adds to those of the library.

#ifndef PROGRAM_CLUIPROCEDURES_H_
#define PROGRAM_CLUIPROCEDURES_H_

// Binds the procedures below. Unlike text that a template inserts, a value is never run as code.
//
//   (token-argument P N K [NO-WORD])
//                           argument K of token N of the current command as a value: a number, a
//                           pair (x . y) for a point, a string, or #f when the token has no such
//                           argument. NO-WORD, by default #f, when there is no such token. Both
//                           count from 0, N as in a template; -1 is the last token
//   (command-words P)       the tokens of the current command: for each one a list of its id, its
//                           word and the values of its arguments. A word without arguments is a
//                           list of two
//   (clui-words P)          the words of the language in the order of their declarations, aliases
//                           excluded: for each one a list of its id, its name and the types of its
//                           arguments, numbers as in clui-token
//
// A parser that does not exist is an error (YErrNotAlive). REQUIRES: the engine has been started.
void CluiBindProcedures();

// Keeps the values of all variables of the module in which scripts run. False when that failed,
// which has been reported.
bool CluiKeepBindings();
// Sets them again and removes the variables that were added since.
void CluiRestoreBindings();

#endif  // PROGRAM_CLUIPROCEDURES_H_
