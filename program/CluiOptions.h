// The options of the program.

#ifndef PROGRAM_CLUIOPTIONS_H_
#define PROGRAM_CLUIOPTIONS_H_

#include <string>
#include <vector>

#include "foundation/YEncoding.h"
#include "parser/YcluiLogNestStyle.h"

// What the program does.
enum class CluiTask {
  Run,      // reads command lines
  DryRun,   // the same, but no command runs
  Play,     // plays the files back as recordings
  Show,     // prints recordings
  Lint,     // examines the language
  Diagram,  // prints pictures of its commands,
  Graph,    // the graph of its syntax,
  Manual,   // or a page about it
  Serve,    // serves an editor
  Test,     // compares transcripts
};

struct CluiOptions {
  CluiTask task = CluiTask::Run;
  std::string language;                        // the script that creates the parser
  std::vector<std::string> texts;              // of -e, in order
  std::vector<std::string> files;              // "-" is standard input
  std::string encoding = "UTF-8";              // of files and streams
  YEncoding::Kind inside = YEncoding::Utf8;    // of text inside, recordings and the history
  std::string library;                         // empty: the installed one
  std::string log;                             // empty: nothing is recorded
  bool append = false;                         // at the end of that file
  YcluiLogNestStyle nest = YcluiLogNestPlain;  // how playbacks are recorded
  std::vector<std::string> words;              // that commands of a diagram have; empty: all
  bool update = false;                         // transcripts that differ are written anew
  bool typed = false;                          // input is typed in a terminal
  bool quiet = false;                          // neither progress nor summary
  bool trace = false;                          // every token, echo and command
  bool every = false;                          // report every refused word of a line

  // Whether something about the language is printed, instead of reading files.
  bool draws() const {
    return task == CluiTask::Diagram || task == CluiTask::Graph || task == CluiTask::Manual;
  }
  // Whether the task needs what the script declared (CluiGrammarRecorder).
  bool examines() const { return task == CluiTask::Lint || draws(); }
};

// What is left to do after the options are read.
enum class CluiStart {
  Run,       // the task
  Done,      // nothing: help or the version has been printed
  BadUsage,  // nothing: a message and a hint have been printed
};

CluiStart CluiReadOptions(int argc, char** argv, CluiOptions& options);

#endif  // PROGRAM_CLUIOPTIONS_H_
