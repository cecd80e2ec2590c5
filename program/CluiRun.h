// A batch run: the engine, a language, and the inputs fed to its parser.

#ifndef PROGRAM_CLUIRUN_H_
#define PROGRAM_CLUIRUN_H_

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "foundation/YErr.h"
#include "lex/YcluiToken.h"
#include "platform/engine/ScmVM.h"
#include "program/CluiEncoding.h"
#include "program/CluiLine.h"
#include "program/CluiOptions.h"
#include "program/CluiPlayed.h"
#include "program/CluiProgress.h"
#include "program/CluiRefusal.h"
#include "program/CluiReport.h"
#include "program/CluiSource.h"
#include "program/CluiTextEnd.h"
#include "program/CluiTrace.h"
#include "program/terminal/CluiSession.h"
#include "program/terminal/CluiTyping.h"

class YcluiParser;

// One a process, as there is one engine and one error manager.
class CluiRun : public CluiTyping {
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

  // Does everything and answers the exit status.
  int run();

  YcluiParser* parser() override;
  void beginWord(const std::string& word) override;
  void endWord(bool wasSent) override;
  void readLine(std::string& bytes, std::size_t number) override;
  std::string takeHeld() override;
  bool isBehindComma() const override;
  std::size_t refusals() const override { return refused_; }

 private:
  using Clock = std::chrono::steady_clock;

  // Where the lexer stands: the same for all that belongs to one token.
  struct Stand {
    std::uint32_t offset = 0;
    int depth = -1;  // -1 stands for no token

    bool operator==(const Stand&) const = default;
  };
  // A code that the error manager was given, until it is known whose it is.
  struct Code {
    unsigned int code;
    YErrSeverity severity;
    CluiPlace place;
    Stand stand;
  };

  const CluiOptions& options_;
  mutable CluiEncoding encoding_;
  CluiProgress progress_;
  CluiReport report_;
  CluiTrace trace_;
  CluiLine line_;
  CluiPlayed played_;
  CluiRefusal refusal_;
  YcluiParser* parser_ = nullptr;  // null until the language is loaded, and when all is over
  std::string input_;              // the name of the input being read
  std::string playedName_;         // its full name, when it is played
  std::vector<Code> codes_;
  unsigned int toldCode_ = 0;  // the one that was told last in this line, and where
  CluiPlace toldPlace_;
  Stand offered_;          // the token that came before the syntax last, until a command begins
  std::size_t taken_ = 0;  // words that came before the syntax and were not refused
  std::size_t takenBefore_ = 0;  // of these, in earlier lines
  std::size_t refused_ = 0;
  std::size_t failed_ = 0;
  bool ended_ = false;          // an input ended inside a command
  bool logLost_ = false;        // not everything could be recorded
  bool unable_ = false;         // not all input could be read
  std::string openText_;        // what was typed of the token that is half read
  std::string heldText_;        // lines that end in a comma behind which an argument must come
  std::size_t heldNumber_ = 0;  // that of the first of them
  CluiTextState heldState_;     // how they end
  std::unique_ptr<CluiSession> session_;  // when somebody types

  // CluiRun.cc: the way of the run.
  bool start();
  void setPorts();
  bool loadLanguage();
  void follow();
  void readInputs();
  void readFile(const std::string& name);
  void readLines(CluiSource& source);
  void feed(std::string& bytes, std::size_t number);
  void feedHeld(std::string& text, std::size_t number);
  bool holds(const std::string& text);
  void flushHeld();
  void interpret(std::string& text, std::size_t number);
  void endInput(std::size_t number);
  void readLeftText(std::size_t number);
  std::wstring unfinished() const;
  bool isAlive() const;
  void giveUpInput(std::size_t line, const std::string& problem);
  void finish();
  int status() const;
  void summarise();

  // CluiRunLog.cc: recording and playing.
  bool startLog();
  void endLog();
  void playFile(const std::string& name);
  void tellCut();
  void tellStopped(Clock::time_point begin);
  bool isPlayed() const;
  CluiPlace playbackPlace() const;
  std::string nameOfPlayed(const std::string& file) const;
  void showPlayback();
  void tellLosses(const YcluiToken& token);

  // CluiRunTyping.cc: somebody types.
  void openSession();
  void typeIn();
  void endSession();
  void keepOpenText();

  // CluiRunEvents.cc: what comes back from parser and engine meanwhile.
  CluiPlace here();
  CluiSpot spotNow();
  Stand stand() const;
  CluiLine& lineOf(const CluiSpot& spot);
  CluiPlace placeOf(const CluiSpot& spot) const;
  void tellProblem(const std::string& place, const std::string& problem);
  void tellAt(const CluiSpot& spot, const std::wstring& message);
  void tellCodes();
  unsigned int takeCode();
  bool beganEarlier() const;
  void onCode(unsigned int code, YErrSeverity severity);
  void onScriptError(const ScmVMError& error);
  void onText(const char* text);
  YcluiTokenCtrl onToken(const YcluiToken& token);
  void onRefuse(const YcluiToken& token);
  void onEcho(const char* line);
};

#endif  // PROGRAM_CLUIRUN_H_
