// A run of the program: starts the engine, loads a language and reads the inputs.

#ifndef PROGRAM_CLUIRUN_H_
#define PROGRAM_CLUIRUN_H_

#include <optional>
#include <string>

#include "lex/YcluiToken.h"
#include "program/CluiDiagnostics.h"
#include "program/CluiDraw.h"
#include "program/CluiDryRun.h"
#include "program/CluiFeeder.h"
#include "program/CluiInput.h"
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
#include "workshop/CluiGrammarRecorder.h"
#include "workshop/server/CluiServerStreams.h"

// One in a process, as there is one engine and one error manager.
class CluiRun {
 public:
  enum Status {
    AllAccepted = 0,
    SomethingRefused = 1,  // or a command failed, or an input ended inside a command
    Unable = 2,            // for example bad usage, or a file that cannot be read
    Interrupted = 130,
  };

  explicit CluiRun(const CluiOptions& options);
  CluiRun(const CluiRun&) = delete;
  CluiRun& operator=(const CluiRun&) = delete;

  // Returns the exit status.
  int run();
  // The same with other input than the options say.
  int run(CluiInput& input);

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
  CluiGrammarRecorder grammars_;  // records only for a task of the workshop
  CluiDraw draw_;
  CluiDryRun dry_;
  std::optional<CluiServerStreams> streams_;  // of an editor
  CluiInput* input_ = nullptr;                // instead of texts and files

  int perform();
  int failToLoad();
  void read();
  bool start();
  void setPorts();
  bool loadLanguage();
  bool findParser(int older);
  bool reload();
  void listen();
  void readInputs();
  void readInput(CluiInput& input);
  bool isBetweenCommands();
  void readTexts();
  void draw();
  bool serve();
  void readFile(const std::string& name);
  void readLines(CluiSource& source);
  int lint(bool isLoaded);
  void finish();
  int worst(int found) const;
  void summarise();

  // Callbacks of the engine and the parser.
  void onText(const char* text);
  YcluiTokenCtrl onToken(const YcluiToken& token);
  void onRefuse(const YcluiToken& token);
  void onEcho(const char* line);
};

#endif  // PROGRAM_CLUIRUN_H_
