// The implementation of YcluiParser. Internal to the parser.

#ifndef PARSER_YCLUIPARSERCORE_H_
#define PARSER_YCLUIPARSERCORE_H_

#include <memory>

#include "parser/YcluiCallback.h"
#include "parser/YcluiCandidates.h"
#include "parser/YcluiCommandLog.h"
#include "parser/YcluiFrames.h"
#include "parser/YcluiHelp.h"
#include "parser/YcluiLevels.h"
#include "parser/YcluiParser.h"
#include "parser/YcluiParserRegistry.h"
#include "parser/YcluiPlayback.h"
#include "parser/YcluiTextOffsets.h"
#include "parser/YcluiWorkToken.h"

// Passes each token through the callbacks, the syntax and the log to its command; every other task
// has a part of its own. An operation that needs one part only is called on that part. Text and
// commands are passed to the virtual operations of the parser, which a host may override.
class YcluiParserCore final : private YcluiPlayback::Input {
 public:
  YcluiParserCore(YcluiParser& parser, YWord context);
  YcluiParserCore(const YcluiParserCore&) = delete;
  YcluiParserCore& operator=(const YcluiParserCore&) = delete;
  ~YcluiParserCore() = default;
  // Calls the gone callback, then closes log and files. All operations of the parser work until it
  // returns.
  void takeLeave();

  // Marks an operation of the parser that is on the call stack. Until the outermost one returns,
  // the mortuary does not destroy the parser, and retired graphs are kept.
  class Running {
   public:
    explicit Running(YcluiParserCore& core) : core_(core) { core_.enter(); }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() { core_.exit(); }

   private:
    YcluiParserCore& core_;
  };

  // The beginning and the end of such an operation.
  void enter() { ++life.running; }
  void exit() {
    if (--life.running == 0) frames.freeRetired();
  }

  // The operations of the same names; success is true. REQUIRES, for `interpret`: a frame.
  int interpret(const char* text);
  bool pushToken(YcluiToken& token);
  bool pushToken(const char* text);
  const YcluiToken* popToken();
  void reset();
  void popFrame();
  void setSyntaxGraph(YcluiSyntaxGraph* graph);
  void echo();
  bool writeToLog(const char* text) { return log.write(text, playback.isRunning()); }
  // Converts an offset in the lexer's text to one in the text of the outermost interpret. Returns
  // the offset of the last token for -1 and in the text of an alias.
  int outerOffset(long lexerOffset) const;
  // Returns false when the command cannot continue: without a frame, or when it is complete.
  bool findCandidates(const char* prefix, YcluiCandidates::Words& found) const;

  // The parts. Each depends only on those before it.
  YcluiWorkToken workToken;
  YcluiFrames frames;
  std::unique_ptr<YcluiLex> lexer;
  YcluiTextOffsets offsets;
  YcluiPlayback playback;
  YcluiCommandLog log;
  mutable YcluiCandidates candidates{&YcluiNfa::possibleNodes};
  mutable YcluiCandidates acceptedCandidates{&YcluiNfa::acceptingNodes};
  YcluiHelp help;
  YcluiParserRegistry::Entry life;

  YcluiCallback<YcluiTokProc> tokenCallback;
  YcluiCallback<YcluiTokRefuseProc> refuseCallback;
  YcluiCallback<YcluiEchoProc> hostEcho;
  YcluiCallback<YcluiEchoProc> systemEcho;
  YcluiCallback<YcluiSynProc> hostSyntax;
  YcluiCallback<YcluiSynProc> systemSyntax;
  YcluiCallback<YcluiGoneProc> goneCallback;
  bool echoEnabled = true;
  bool isAliasRun = false;

 private:
  YcluiParser& parser_;
  YWord context_;
  int interpretDepth_ = 0;  // number of running calls of interpret
  int suspendedDepth_ = 0;  // number of texts that are suspended while a nested one is read
  int outerSuspended_ = 0;  // suspendedDepth_ when the outermost interpret began
  int expansions_ = 0;      // number of aliases expanded since the last word of the outermost text
  YcluiLevels<YString> levelTexts_;  // texts of aliases and commands

  void interpretPlayed(const char* text) override;
  long nextOffset() const override;

  int leaveToOuterLoop(const char* text);
  void takeText(const char* text);
  void appendText(const char* text);
  bool readToken();
  void refuseWord();
  bool pushWorkToken();
  void showOpenToken();

  const YcluiSyntaxNode* stepInto(YcluiLineParser& frame, const YcluiToken& token);
  bool expand(const YcluiToken& token);
  void runCommand(const char* commandTemplate, const YcluiToken_Stack& tokens);
  void reportRefused(const YcluiToken& token);
  void reportCommand();
};

#endif  // PARSER_YCLUIPARSERCORE_H_
