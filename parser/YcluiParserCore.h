// What is behind the operations of YcluiParser.

#ifndef PARSER_YCLUIPARSERCORE_H_
#define PARSER_YCLUIPARSERCORE_H_

#include <memory>

#include "parser/YcluiCallback.h"
#include "parser/YcluiCandidates.h"
#include "parser/YcluiCommandLog.h"
#include "parser/YcluiFrames.h"
#include "parser/YcluiLevels.h"
#include "parser/YcluiParser.h"
#include "parser/YcluiParserRegistry.h"
#include "parser/YcluiPlayback.h"
#include "parser/YcluiTextOffsets.h"
#include "parser/YcluiWorkToken.h"

// Brings each token through the callbacks, the syntax and the log to its command, with one part for
// each other task. An operation that concerns one part alone is called on the part. Text and
// commands go through the virtual operations of the parser, which a host may override.
class YcluiParserCore final : private YcluiPlayback::Input {
 public:
  YcluiParserCore(YcluiParser& parser, YWord context);
  YcluiParserCore(const YcluiParserCore&) = delete;
  YcluiParserCore& operator=(const YcluiParserCore&) = delete;
  ~YcluiParserCore() = default;
  // Calls the gone callback, then closes log and files. The parser is complete until it returns.
  void takeLeave();

  // An operation of the parser is on the call stack: the mortuary waits, and what is retired is
  // kept until the outermost one returns.
  class Running {
   public:
    explicit Running(YcluiParserCore& core) : core_(core) { ++core_.life.running; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() {
      if (--core_.life.running == 0) core_.frames.freeRetired();
    }

   private:
    YcluiParserCore& core_;
  };

  // The operations of the same names. `interpret` needs a frame.
  int interpret(const char* text);
  YWord pushToken(YcluiToken& token);
  YWord pushToken(const char* text);
  const YcluiToken* popToken();
  void reset();
  void popFrame();
  void setSyntaxGraph(YcluiSyntaxGraph* graph);
  void echo();
  YWord writeToLog(const char* text) { return log.write(text, playback.isRunning()); }
  // That offset of the lexer's text, for a caller of the outermost interpret; that of the last
  // token when it is -1 or belongs to the text of an alias.
  int outerOffset(long lexerOffset) const;
  // False when nothing can come.
  bool findCandidates(const char* prefix, YcluiCandidates::Words& found) const;

  // The parts, in the order in which they depend on one another.
  YcluiWorkToken workToken;
  YcluiFrames frames;
  std::unique_ptr<YcluiLex> lexer;
  YcluiTextOffsets offsets;
  YcluiPlayback playback;
  YcluiCommandLog log;
  mutable YcluiCandidates candidates;
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
  int interpretDepth_ = 0;  // calls of interpret on the call stack
  int suspendedDepth_ = 0;  // texts that wait for a nested one to be read
  int outerSuspended_ = 0;  // of these, those that waited when the outermost interpret began
  int expansions_ = 0;      // since the last word of the outermost text
  YcluiLevels<YString> levelTexts_;  // texts of aliases and commands

  void interpretPlayed(const char* text) override;
  long nextOffset() const override;

  int leaveToLoopOutside(const char* text);
  void takeText(const char* text);
  void appendText(const char* text);
  YWord readToken();
  void refuseWord();
  YWord pushWorkToken();
  void showOpenToken();

  const YcluiSyntaxNode* stepInto(YcluiLineParser& frame, const YcluiToken& token);
  YWord expand(const YcluiToken& token);
  void runCommand(const char* commandTemplate, const YcluiToken_Stack& tokens);
  void reportRefused(const YcluiToken& token);
  void reportCommand();
};

#endif  // PARSER_YCLUIPARSERCORE_H_
