// What the command line asks for.

#ifndef PROGRAM_CLUIOPTIONS_H_
#define PROGRAM_CLUIOPTIONS_H_

#include <string>
#include <vector>

#include "parser/YcluiLogNestStyle.h"

struct CluiOptions {
  std::string language;                        // the script that makes the parser
  std::vector<std::string> texts;              // of -e, in order
  std::vector<std::string> files;              // "-" is standard input
  std::string encoding = "UTF-8";              // of files and streams
  std::string library;                         // empty: the one that belongs to the program
  std::string log;                             // empty: nothing is recorded
  bool append = false;                         // at the end of that file
  YcluiLogNestStyle nest = YcluiLogNestPlain;  // how playbacks are recorded
  bool play = false;                           // the files are recordings to be played
  bool show = false;                           // print recordings, and nothing else
  bool typed = false;                          // keys of a terminal are read
  bool quiet = false;                          // neither progress nor summary
  bool trace = false;                          // every token, echo and command
};

// What the program does once its options are read.
enum class CluiStart {
  Run,       // there is a run to make
  Done,      // help or the version has been printed
  BadUsage,  // a line about the fault and a hint have been printed
};

CluiStart CluiReadOptions(int argc, char** argv, CluiOptions& options);

#endif  // PROGRAM_CLUIOPTIONS_H_
