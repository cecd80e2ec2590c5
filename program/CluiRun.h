// A run: the engine, a language, and the inputs that are read in it.

#ifndef PROGRAM_CLUIRUN_H_
#define PROGRAM_CLUIRUN_H_

#include <string>

#include "lex/YcluiToken.h"
#include "program/CluiDiagnostics.h"
#include "program/CluiFeeder.h"
#include "program/CluiOptions.h"
#include "program/CluiOutcome.h"
#include "program/CluiPlayer.h"
#include "program/CluiProgress.h"
#include "program/CluiReading.h"
#include "program/CluiRecorder.h"
#include "program/CluiReport.h"
#include "program/CluiSource.h"
#include "program/CluiTrace.h"
#include "program/CluiTypist.h"
#include "program/text/CluiEncoding.h"

// One in a process, as there is one engine and one error manager.
class CluiRun {
 public:
  enum Status {
    AllTaken = 0,
    SomethingRefused = 1,  // or a command failed, or an input ended inside a command
    Unable = 2,            // the program could not do its work, or not all of it
    Stopped = 130,         // by an interrupt
  };

  explicit CluiRun(const CluiOptions& options);
  CluiRun(const CluiRun&) = delete;
  CluiRun& operator=(const CluiRun&) = delete;

  // Does everything and returns the exit status.
  int run();

 private:
  const CluiOptions& options_;
  CluiEncoding encoding_;
  CluiOutcome outcome_;
  CluiProgress progress_;
  CluiReport report_;
  CluiTrace trace_;
  CluiReading reading_;
  CluiDiagnostics diagnostics_;
  CluiFeeder feeder_;
  CluiRecorder recorder_;
  CluiPlayer player_;
  CluiTypist typist_;

  bool start();
  void setPorts();
  bool loadLanguage();
  bool findParser();
  void listen();
  void readInputs();
  void readTexts();
  void readFile(const std::string& name);
  void readLines(CluiSource& source);
  void finish();
  int status() const;
  void summarise();

  // What the parser and the engine report meanwhile.
  void onText(const char* text);
  YcluiTokenCtrl onToken(const YcluiToken& token);
  void onRefuse(const YcluiToken& token);
  void onEcho(const char* line);
};

#endif  // PROGRAM_CLUIRUN_H_
