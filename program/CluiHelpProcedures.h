// The Scheme procedures for the help of words and arguments.

#ifndef PROGRAM_CLUIHELPPROCEDURES_H_
#define PROGRAM_CLUIHELPPROCEDURES_H_

// Binds the procedures below, which set and read the help of a parser P; see YcluiHelp. ID is the
// id of a word, cut to 24 bits, and K counts arguments from 1. An invalid argument is an error and
// changes nothing.
//
//   (word-help P ID TEXT)          sets the text of a word
//   (word-help P ID)               the text, or #f
//   (argument-help P ID K NAME TEXT)  sets the name and the text of an argument
//   (argument-help P ID K NAME TEXT LOW HIGH)  sets its range too
//   (argument-help P ID K)         the name, or #f
//   (argument-values P ID K LIST)  sets its values: a list of strings, the empty list for none
//   (argument-values P ID K PROCEDURE)  the values are what PROCEDURE returns for a string, what is
//                                  typed so far
//   (argument-values P ID K 'files)  file names are wanted
//   (matching-values P ID K TYPED) the values that begin with TYPED, as completion offers them
//
// A procedure that fails, or returns something else than a list of strings, gives no values and no
// message; what it prints is dropped. It is not called any more when other values have replaced it
// or P is destroyed, and is collected after the next call of argument-values.
// REQUIRES: the engine has been started. False when it is not usable, which has been reported.
bool CluiBindHelpProcedures();

// Whether the text calls such a procedure, and so belongs to no command.
bool CluiAsksForValues(const char* text);

#endif  // PROGRAM_CLUIHELPPROCEDURES_H_
