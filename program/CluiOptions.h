// The options of the program.

#ifndef PROGRAM_CLUIOPTIONS_H_
#define PROGRAM_CLUIOPTIONS_H_

#include <string>
#include <vector>

#include "foundation/YEncoding.h"
#include "parser/YcluiLogNestStyle.h"

// A picture or a page of a language.
enum class CluiDrawing { None, Diagram, Graph, Manual };

struct CluiOptions {
  std::string language;                        // the script that creates the parser
  std::vector<std::string> texts;              // of -e, in order
  std::vector<std::string> files;              // "-" is standard input
  std::string encoding = "UTF-8";              // of files and streams
  YEncoding::Kind inside = YEncoding::Utf8;    // of text inside, recordings and the history
  std::string library;                         // empty: the installed one
  std::string log;                             // empty: nothing is recorded
  bool append = false;                         // at the end of that file
  YcluiLogNestStyle nest = YcluiLogNestPlain;  // how playbacks are recorded
  bool play = false;                           // the files are recordings to be played
  bool dry = false;                            // no command runs
  bool show = false;                           // print recordings, and nothing else
  bool lint = false;                           // examine the language, and nothing else
  CluiDrawing drawing = CluiDrawing::None;     // write it instead of reading files
  std::vector<std::string> words;              // that commands of a diagram have; empty: all
  bool lsp = false;                            // serve an editor, and nothing else
  bool test = false;                           // the files are transcripts to be compared
  bool update = false;                         // and to be written anew where they differ
  bool typed = false;                          // input is typed in a terminal
  bool quiet = false;                          // neither progress nor summary
  bool trace = false;                          // every token, echo and command
  bool every = false;                          // report every refused word of a line

  // Whether a task of the workshop needs what the script declared (CluiGrammarRecorder).
  bool examines() const { return lint || drawing != CluiDrawing::None; }
};

// What is left to do after the options are read.
enum class CluiStart {
  Run,       // run or show
  Done,      // nothing: help or the version has been printed
  BadUsage,  // nothing: a message and a hint have been printed
};

CluiStart CluiReadOptions(int argc, char** argv, CluiOptions& options);

#endif  // PROGRAM_CLUIOPTIONS_H_
