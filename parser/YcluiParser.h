// The parser: one command line with all its state, and the only way in for text.

#ifndef PARSER_YCLUIPARSER_H_
#define PARSER_YCLUIPARSER_H_

#include <cstdint>
#include <iosfwd>
#include <memory>

#include "foundation/YAttribValue.h"
#include "foundation/YStack.h"
#include "foundation/YString_Array.h"
#include "foundation/YTypes.h"
#include "foundation/YcluiLimits.h"
#include "lex/YcluiLex.h"
#include "lex/YcluiToken.h"
#include "parser/YcluiLogNestStyle.h"
#include "parser/YcluiPlayedToken.h"
#include "syntax/YcluiSyntaxGraph.h"

// The callbacks: plain functions, called with the data that was registered with them. A token
// callback may change the token, for instance its echo text, and the frame then stores the changed
// one. Texts are never null. The arguments stay valid until the callback returns, whatever it
// calls.
using YcluiTokProc = YcluiTokenCtrl (*)(void* data, YcluiToken& token);
using YcluiTokRefuseProc = void (*)(void* data, const YcluiToken& token, std::uint32_t code);
using YcluiEchoProc = void (*)(void* data, const char* wholeLine);
using YcluiSynProc = void (*)(void* data, const char* line, const char* wholeLine);
using YcluiGoneProc = void (*)(void* data);
using YcluiWordProc = void (*)(void* data, const char* name);

class YcluiParser;
class YcluiParserCore;
using pYcluiParser_Stack = YStack<YcluiParser*>;

// A parser owns a lexer, a syntax graph, the indefinite nodes and a stack of frames, of which the
// top is the current one. `interpret` reads tokens from its text and offers each to the current
// frame. A token is processed in this order:
//
//   1. the token callback, which can drop the token
//   2. an alias or a reference to a variable: its text is read instead, and nothing below happens
//   3. the step through the syntax
//   4. the log, whether or not the token was accepted
//   5. the priority check against the command that the frame interrupts; where it fails, the token
//      is taken back, YErrInterruptRefused is recorded as YErrNote, and the token counts as refused
//   6. the echo procedures; then, for a refused token, the refuse callback, and nothing below
//   7. the syntax callbacks, when the frame is terminated: the command is complete
//   8. the command of the accepted node
//   9. the reset of the frame, when it is still the current one and still terminated
//
// A refused token leaves the frame unchanged and records no code of its own. A command ends with
// the first token that has a path to the end of the syntax; line ends mean nothing, so a command
// may span several texts and a text may hold several commands. Unread text, a token whose arguments
// are incomplete and all frames persist from one call of `interpret` to the next.
//
// Re-entry. Callbacks and commands may call any operation of the same parser. Frames and graphs
// that are removed while a token is processed are destroyed when nothing uses them any more. A
// parser must not be destroyed while it runs: AddDeadBody is the way to delete it then. While the
// command of a line's last token runs, its frame is still terminated and refuses tokens; such a
// command resets the parser or pushes a frame before it feeds text.
//
// Before the first setSyntaxGraph there is no frame. Then a text records YErrNoSyntax as
// YErrWarning and returns 0, and questions for tokens, lines or candidates return null, the empty
// text, 0 or -1.
class YQRT_API YcluiParser {
 public:
  // Command templates read `context` as $c.
  //
  // When there is no memory for the lexer or for the working token, nothing is recorded and the
  // parser never gets a frame.
  explicit YcluiParser(YWord context = 0);
  YcluiParser(const YcluiParser&) = delete;
  YcluiParser& operator=(const YcluiParser&) = delete;
  // Writes the log's closing lines and closes the files of a paused playback; a failure is recorded
  // as YErrNotClosed. Not virtual: a derived parser must not be destroyed through this class.
  ~YcluiParser();

  // Input.

  // Reads the unread text of before, then this one. Returns for how many tokens pushToken returned
  // 1; an alias is one token, whatever its text does. Null is the empty text.
  //
  // A nested call, from a command or a callback, first reads the unread text of the outer call,
  // then its own; the outer call then finds nothing left. At YcluiMostNestedCommands nested calls
  // the text is only appended when there is unread text, for an outer call to read; otherwise it is
  // refused with YErrTooDeep, as YErrError. Texts of aliases do not count; one word of the
  // outermost text may expand to YcluiMostExpansions of them, of YcluiLongestExpansion bytes
  // together.
  //
  // Where the text ends in the middle of a token's arguments, the token is shown in one echo and
  // waits for the next text.
  //
  // A word that the lexer cannot make a token of is reported to the refuse callback first and
  // echoed then; it is neither logged nor stored, and reading continues after it.
  virtual int interpret(const char* text);
  // Drops the unread text. Frames, tokens and an open token stay.
  virtual void exhaust();

  // Processes a token as described above. 1 when the frame accepted it, or when it was replaced by
  // text and that was read. A token of id YcluiIdNone is added to the line without a step, is
  // echoed only, and returns 0.
  YWord pushToken(YcluiToken& token);
  // Reads the whole text ahead of anything that is unread. 0 when texts are nested too deep.
  YWord pushToken(const char* text);
  // Adds a word without meaning to the line of the current frame, where templates count it and
  // echoes show it. Returns 0.
  YWord pushDummyToken(const char* text);

  // Whether a token waits for the rest of its arguments.
  YWord tokenIsOpen() const;
  // That token, with the arguments that are read, or null. Valid until the next text.
  const YcluiToken* openToken() const;
  // Drops such a token. The unread text after it stays.
  void dropOpenToken();

  // The offset of the last token, in bytes from the start of the text that was given to the
  // outermost `interpret`. Negative when it began in unread text of before; the length of the text
  // or more for a token of a text that a command appended. The tokens of an alias have the offset
  // of the alias.
  int lastTokenOffset() const;
  // The same for what the lexer could not read, while the refuse callback runs for it, and for an
  // argument of that token, from 1, until the token is offered to the syntax; see YcluiLex. Where
  // the lexer does not know, and in the text of an alias, the offset of the token.
  int lastFaultOffset() const;
  int lastArgumentOffset(int index) const;

  // Tokens of the current frame. Pointers are null when there is no token and stay valid until the
  // frame changes.

  const YcluiToken* currentToken() const;  // the last one
  const YcluiToken* tokenAt(YWord index) const;
  YWord numberOfToken() const;
  // Whether the last one was accepted by an indefinite node.
  YWord lastIsIndefinite() const;
  const char* currentLine() const;
  // The same after the lines of the commands that it interrupts.
  const char* wholeLine() const;
  // The index of the first token with the same id, or -1.
  int findToken(const YcluiToken& token) const;
  int findToken(const char* text) const;
  // Removes the last token, echoes, and returns the token that is last then; null also when the
  // echo removed the frame.
  const YcluiToken* popToken();
  // Removes a token by walking the others again, without callbacks, log and commands; then echoes.
  // 0 when one of the others is refused without it (see YcluiLineParser::removeToken).
  YWord removeToken(YWord index);
  // A token of the dictionary's word for the text, or one of id YcluiIdNone when it has none.
  YcluiToken makeToken(const char* text) const;
  // Empties the current frame, echoes, and ends the line of an open log.
  void reset();
  // Writes each token of the frame as "[word]." and one end of line.
  void dmpCommandLine(std::ostream& out) const;

  // Syntax.

  // Owns the graph from now on and starts again with one empty frame; unread text is matched
  // against the new syntax. Nothing is echoed or logged. Previous indefinite nodes match nothing
  // any more, but live as long as the parser. Null is ignored, and the present graph is kept when
  // it is given again. When there is no memory for the frame, YErrNoMemory is recorded as YErrFatal
  // and the parser has none.
  void setSyntaxGraph(YcluiSyntaxGraph* newGraph);
  // Owns a node from now on that is matched anywhere in a line, in every frame, ahead of the
  // syntax. Nothing happens before the first setSyntaxGraph, or for null, and the node stays the
  // caller's.
  void addIndefiniteNode(YcluiSyntaxNode* node);

  // Frames: one command interrupts another. All walk the same graph.

  // Puts an empty frame on top, with the whole line of the one below as its prefix. Neither echoed
  // nor logged. 0 when there is no memory for it, with YErrNoMemory as YErrFatal.
  YWord pushFrame();
  // Removes the top frame, ends the line of an open log, and echoes the frame below, which is
  // unchanged. The bottom frame is reset instead. Returns 0.
  YWord popFrame();
  // The number of frames.
  int nestingDepth() const;

  // Callbacks. Each setter stores function and data and returns the previous function; null removes
  // it.

  YcluiTokProc setTokCallback(YcluiTokProc proc, void* data);
  YcluiTokRefuseProc setTokRefuseCallback(YcluiTokRefuseProc proc, void* data);
  YcluiEchoProc setEchoProcedure(YcluiEchoProc proc, void* data);
  YcluiSynProc setSynCallback(YcluiSynProc proc, void* data);
  // The system's pair, called after the host's, by which a field follows the parser. They return
  // the host's present function.
  YcluiEchoProc sysSetEchoProcedure(YcluiEchoProc proc, void* data);
  YcluiSynProc sysSetSynCallback(YcluiSynProc proc, void* data);
  // Called once when the parser is destroyed, while all its operations still work. Returns the
  // previous function.
  YcluiGoneProc sysSetGoneProcedure(YcluiGoneProc proc, void* data);
  // 0 disables both echo procedures, anything else enables them. Syntax callbacks are always
  // called.
  void enableEcho(YWord flag);

  // The lexer, null when there was no memory for it, and its operations under other names.

  YcluiLex* lex() const;
  YWord setAlias(const char* name, const char* text);
  YWord unsetAlias(const char* name);
  YWord setVariable(const char* name, const YAttribValue& value);
  YWord setVariable(const char* name, const YAttribValue& value, YWord index);
  YWord setVariable(const char* name, YWord count, const YAttribValue* values);

  // The log: a text file of the tokens, accepted or not, each followed by a blank. Each reset and
  // each popFrame ends a line, and so does a text that brings the count of bytes above 1024. Every
  // token is flushed at once.

  // Opens a log, at the end of an existing file when `append` is not 0, and writes three lines of
  // comment. 0 with YErrFileIsPlayed when that file is being read by the innermost playback, with
  // YErrLogIsOpen when there is a log already, with YErrNotOpened when it cannot be opened; all as
  // YErrWarning, the last after the YErrError of YcluiLogFile::open.
  YWord startLogging(const char* path, YWord append);
  // Writes the closing lines and closes. 0 without an open log, and when not everything could be
  // written since it was started or last reported: then YErrNotClosed is recorded as YErrError, and
  // the log is still open unless it was the closing itself that failed.
  YWord shutLogging();
  // Adds text to the log, null adding none; 1 when one is open, else 0. During a playback the nest
  // style decides what is written.
  YWord writeToLog(const char* text);
  YWord isLogging() const;
  // How playbacks are logged from now on; YcluiLogNestSilent at first.
  void nestStyle(YcluiLogNestStyle style);

  // Playback: the lines of a log are given to `interpret` one by one, and have every effect of
  // typed text. A line may start another playback, which is finished first.

  // Plays the file to its end or to a pause. 0 with YErrFileIsLogged or YErrFileIsPlayed when the
  // file is the log, or is being played at any level, paused ones included; with YErrTooDeep, as
  // YErrError, inside YcluiMostNestedPlaybacks others; with YErrNotOpened, as for a log; and with
  // YErrNotClosed, when it was played but could not be closed.
  //
  // A line ends at an end of line outside double quotes, however long it is. Two backslashes are
  // inserted between a backslash and a quote or backslash that follows it, so that the lexer reads
  // a string of a log as the text that was logged.
  YWord playbackFromLog(const char* path);
  // Stops all playbacks after the line that is running, or the next playback after its first line.
  void pausePlayback();
  // Continues the paused files, innermost first. 0 when nothing was paused or a file could not be
  // closed. The lines are then given in pieces of YcluiLongestPiece bytes at most, with their ends,
  // as they are in the file, without the empty ones.
  YWord continuePlayback();
  YWord isPlaybackRun() const;
  // The position of the innermost playback, running or paused: the full name of its file, null when
  // there is none; the line of the file, from 1, in which the last text given to `interpret` began;
  // and how many bytes of the file are read. The numbers are 0 when there is none. The name stays
  // valid until a playback begins or ends.
  const char* playbackName() const;
  long playbackLine() const;
  long playbackPosition() const;
  // Describes the last token, if it is from a line that is being played: of nested playbacks the
  // one whose line it is. The tokens of an alias have the offset of the alias. 0, and `token`
  // unchanged, when it is not from such a line, or began in an earlier one of the file. The
  // pointers stay valid until the parser reads on.
  YWord playedToken(YcluiPlayedToken& token) const;
  // The same for what lastFaultOffset or lastArgumentOffset returned, which may be in a later line
  // than the token's beginning.
  YWord playedToken(YcluiPlayedToken& token, int offset) const;
  // How many files so far ended by a read error, which a playback treats as the end of the file.
  int playbackReadErrors() const;
  // Whether the text of an alias is being read; 0 from the end of a nested one on.
  YWord isAliasRun() const;

  // Completion, from the state of the current frame. Exact bytes: the case of `prefix` counts. A
  // candidate whose id has no word in the dictionary is the empty text for an empty prefix and no
  // candidate for another one. Indefinite nodes are not offered.
  //
  // The first question in a state of the walker costs the words that could come there. The second
  // one sorts them; from then on a question costs the words that it finds, until the state changes,
  // or the syntax or the dictionary.

  // Adds the words that could come next and begin with `prefix` to `list`, which is given empty, in
  // the walker's order, one for each node. Returns the number of elements of `list`; 0 when nothing
  // can come, and `list` is unchanged.
  int completionList(const char* prefix, YString_Array& list) const;
  // The longest common beginning of these words, by bytes: 1 when it is not empty. `unique` is 1
  // when there was one candidate only, else 0. Without a candidate `completed` is unchanged.
  YWord completionString(const char* prefix, YString& completed, unsigned long& unique) const;
  // Replaces `words` by the distinct words that could come next and begin with `prefix`, in any
  // case of ASCII letters, in the walker's order, those of indefinite nodes after the others.
  // Words that the interrupted command would not admit are left out; where one is interrupted, each
  // question costs all the words that could come there.
  void possibleWords(YString_Array& words, const char* prefix = nullptr) const;
  // Calls `take` with each of these words in that order, a word once for each node that has it. The
  // function must not call the parser.
  void eachPossibleWord(const char* prefix, YcluiWordProc take, void* data) const;

  // Deletion by scripts, also from a command of the parser itself. A condemned parser works as
  // before until the mortuary is cleaned up. Only a YcluiParser made by new is destroyed there; a
  // parser of a derived class is removed from the mortuary, and its host destroys it.

  static void CreateMortuary();   // nothing when there is one
  static void DestroyMortuary();  // the bodies stay alive
  // Condemns a parser; nothing without a mortuary, for null, or when it is in there already.
  static void AddDeadBody(YcluiParser* parser);
  // Destroys the bodies, the last one first, but for those that are still running, which wait for
  // the next call.
  static void CleanupMortuary();
  YWord isCondemned() const;

  // The parser at that address, if it is alive and not condemned; else null. Any number is allowed.
  static YcluiParser* FindLive(long address);
  // All parsers that are alive and not condemned, in the order of construction; null after the
  // last.
  static YcluiParser* Live(int index);

 private:
  // Runs a finished command text in the script engine; 1 when that went well. 0 without an engine.
  virtual YWord evaluate(const char* text);

  friend class YcluiParserCore;
  std::unique_ptr<YcluiParserCore> core;  // all state
};

#endif  // PARSER_YCLUIPARSER_H_
