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

// The callbacks: plain functions, called with the word that was given with them. A token callback
// may change the token, for instance its echo text, and the frame then stores what it left. Texts
// are never null. What a callback is given stays good until it returns, whatever it does meanwhile.
using YcluiTokProc = YcluiTokenCtrl (*)(void* word, YcluiToken& token);
using YcluiTokRefuseProc = void (*)(void* word, const YcluiToken& token, std::uint32_t code);
using YcluiEchoProc = void (*)(void* word, const char* wholeLine);
using YcluiSynProc = void (*)(void* word, const char* line, const char* wholeLine);
using YcluiGoneProc = void (*)(void* word);
using YcluiWordProc = void (*)(void* word, const char* name);

class YcluiParser;
class YcluiParserCore;
using pYcluiParser_Stack = YStack<YcluiParser*>;

// A parser owns a lexer, a syntax graph, the indefinite nodes and a stack of frames, of which the
// top is the current one. `interpret` reads tokens from the text that it is given and offers each
// to the current frame. For a token, things happen in this order:
//
//   1. the token callback, which can drop the token
//   2. an alias or a reference to a variable: its text is read in its place, and that is all
//   3. the step through the syntax
//   4. the log, whether or not the token was accepted
//   5. the priority check against the command that the frame interrupts; where it fails, the token
//      is taken back, YErrInterruptRefused is recorded as YErrNote, and the token counts as refused
//   6. the echo procedures; for a refused token then the refuse callback, and that is all
//   7. the syntax callbacks, when the frame is terminated: the command is complete
//   8. the command of the accepted node
//   9. the reset of the frame, when it is still the current one and still terminated
//
// A refused token costs nothing but itself and records no code of its own. A command ends with the
// first token that has a way to the end of the syntax; line ends mean nothing, so a command may
// span several texts and a text may hold several commands. Unread text, a token whose arguments are
// half read and all frames survive from one call of `interpret` to the next.
//
// Re-entry. Callbacks and commands run in the middle of all this and may call any operation of the
// same parser. Frames and graphs that go while a token is on its way live on until nothing uses
// them. A parser must not be destroyed while it runs: AddDeadBody is the way to delete it then.
// While the command of the last token of a line runs, its frame is still terminated and refuses
// what comes; such a command resets the parser or pushes a frame before it feeds text.
//
// Without a frame, that is before the first setSyntaxGraph, everything refuses: a text records
// YErrNoSyntax as YErrWarning and answers 0, and what asks for tokens, lines or candidates answers
// null, the empty text, 0 or -1.
class YQRT_API YcluiParser {
 public:
  // `context` is the creator's: command templates read it as $c.
  //
  // When there is no memory for the lexer or for the working token, nothing is recorded and the
  // parser never gets a frame.
  explicit YcluiParser(YWord contextWord = 0);
  YcluiParser(const YcluiParser&) = delete;
  YcluiParser& operator=(const YcluiParser&) = delete;
  // Ends the log orderly and closes the files of a paused playback; what cannot be written out is
  // recorded as YErrNotClosed. Not virtual: a derived parser is destroyed as what it is.
  ~YcluiParser();

  // Input.

  // Reads the text, behind what is unread from before. Answers for how many tokens pushToken
  // answered 1; an alias is one token, whatever its text does. Null is the empty text.
  //
  // A nested call, from a command or a callback, first reads what the outer call has not read yet,
  // then its own text; the outer call then finds nothing left. Behind YcluiMostNestedCommands calls
  // inside one another the text is only appended when there is unread text, for a loop outside to
  // read; otherwise it is refused with YErrTooDeep, as YErrError. Texts of aliases do not count; of
  // these YcluiMostExpansions, of YcluiLongestExpansion bytes together, may come of one word of the
  // outermost text.
  //
  // Where the text ends in the middle of a token's arguments, the token is shown in one echo and
  // waits for the next text.
  //
  // A word that the lexer cannot make a token of goes to the refuse callback first and is echoed
  // then; it is neither logged nor stored, and reading goes on behind it.
  virtual int interpret(const char* text);
  // Drops the unread text. Frames, tokens and a half-read token stay.
  virtual void exhaust();

  // Takes a token as described above. 1 when the frame accepted it, or when it stands for text and
  // that was read. A token of id YcluiIdNone joins the line without a step, is echoed only, and
  // answers 0.
  YWord pushToken(YcluiToken& token);
  // Reads the text to its end before anything that is unread. 0 when texts are nested too deep
  // already.
  YWord pushToken(const char* text);
  // Puts a word without meaning into the line of the current frame, where templates count it and
  // echoes show it. Answers 0.
  YWord pushDummyToken(const char* text);

  // Whether a token waits for the rest of its arguments.
  YWord tokenIsOpen() const;
  // That token, with the arguments that are read, or null. Good until the next text.
  const YcluiToken* openToken() const;
  // Drops such a token. Text that is unread behind it stays.
  void dropOpenToken();

  // Where the last token began, in bytes from the start of the text that was given to the outermost
  // `interpret`. Negative when it began in text left over from earlier; at the length of the text
  // or behind it for a token of a text that a command appended. What an alias stands for counts as
  // being where the alias is.
  int lastTokenOffset() const;
  // The same for what the lexer could not read, while the refuse callback runs for it, and for an
  // argument of that token, from 1, until the token is offered to the syntax; see YcluiLex. Where
  // the lexer does not know, and in the text of an alias, the offset of the token.
  int lastFaultOffset() const;
  int lastArgumentOffset(int index) const;

  // Tokens of the current frame. Pointers are null when there is no token and stay good until the
  // frame changes.

  const YcluiToken* currentToken() const;  // the last one
  const YcluiToken* tokenAt(YWord index) const;
  YWord numberOfToken() const;
  // Whether the last one came as a word that works at any place of a line.
  YWord lastIsIndefinite() const;
  const char* currentLine() const;
  // Behind the lines of the commands that it interrupts.
  const char* wholeLine() const;
  // The index of the first token with the same id, or -1.
  int findToken(const YcluiToken& token) const;
  int findToken(const char* text) const;
  // Takes the last token back, echoes, and answers the token that is last then; null also when the
  // echo made the frame go.
  const YcluiToken* popToken();
  // Takes a token out by walking the others again, without callbacks, log and commands; then
  // echoes. 0 when one of the others is refused without it (see YcluiLineParser::removeToken).
  YWord removeToken(YWord index);
  // A token of the word that the text finds in the dictionary, else one of id YcluiIdNone.
  YcluiToken makeToken(const char* text) const;
  // Empties the current frame, echoes, and ends the line of an open log.
  void reset();
  // Writes each token of the frame as "[word]." and one end of line.
  void dmpCommandLine(std::ostream& out) const;

  // Syntax.

  // Takes over the graph and starts again with one empty frame; text that is unread goes to the new
  // syntax. Nothing is echoed or logged. Indefinite nodes of before no longer count but live as
  // long as the parser. Null is refused without a word, and giving the present graph again keeps
  // it. When there is no memory for the frame, YErrNoMemory is recorded as YErrFatal and the parser
  // has none.
  void setSyntaxGraph(YcluiSyntaxGraph* newGraph);
  // Takes over a node that is accepted at any place of a line, in every frame, ahead of the syntax.
  // Nothing happens before the first setSyntaxGraph, or for null, and the node stays the caller's.
  void addIndefiniteNode(YcluiSyntaxNode* node);

  // Frames: one command interrupts another. All walk the same graph.

  // Puts an empty frame on top, with the whole line of the one below as its prefix. Neither echoed
  // nor logged. 0 when there is no memory for it, with YErrNoMemory as YErrFatal.
  YWord pushFrame();
  // Removes the top frame, ends the line of an open log, and echoes the frame below, which is as it
  // was left. The bottom frame is reset instead. Answers 0.
  YWord popFrame();
  // The number of frames.
  int nestingDepth() const;

  // Callbacks. Each stores function and word and answers the function of before; null removes it.

  YcluiTokProc setTokCallback(YcluiTokProc proc, void* word);
  YcluiTokRefuseProc setTokRefuseCallback(YcluiTokRefuseProc proc, void* word);
  YcluiEchoProc setEchoProcedure(YcluiEchoProc proc, void* word);
  YcluiSynProc setSynCallback(YcluiSynProc proc, void* word);
  // The pair of the system, called behind the host's, by which a field follows the parser. They
  // answer the host's present function.
  YcluiEchoProc sysSetEchoProcedure(YcluiEchoProc proc, void* word);
  YcluiSynProc sysSetSynCallback(YcluiSynProc proc, void* word);
  // Called once when the parser is destroyed, with everything still in place, so that who follows
  // it can take leave. Answers the function of before.
  YcluiGoneProc sysSetGoneProcedure(YcluiGoneProc proc, void* word);
  // 0 stops both echo procedures, anything else lets them go on. Syntax callbacks are not stopped.
  void enableEcho(YWord flag);

  // The lexer, null when there was no memory for it, and its operations under other names.

  YcluiLex* lex() const;
  YWord setAlias(const char* name, const char* text);
  YWord unsetAlias(const char* name);
  YWord setVariable(const char* name, const YAttribValue& value);
  YWord setVariable(const char* name, const YAttribValue& value, YWord index);
  YWord setVariable(const char* name, YWord count, const YAttribValue* values);

  // The log: a text file of the tokens that came, accepted or not, each followed by a blank. Each
  // reset and each popFrame ends a line; behind a text that brings the count of bytes above 1024
  // there is an end of line too. Every token is flushed at once.

  // Opens a log, at the end of an existing file when `append` is not 0, and writes three lines of
  // comment. 0 with YErrFileIsPlayed when that file is being read by the innermost playback, with
  // YErrLogIsOpen when there is a log already, with YErrNotOpened when it cannot be opened; all as
  // YErrWarning, the last behind the YErrError of YcluiLogFile::open.
  YWord startLogging(const char* path, YWord append);
  // Writes the closing lines and closes. 0 without an open log, and when not everything could be
  // written since it was started or last reported: then YErrNotClosed is recorded as YErrError, and
  // the log is still open unless it was the closing itself that failed.
  YWord shutLogging();
  // Adds text to the log, null adding none; 1 when one is open, else 0. Of a playback nothing or a
  // comment is written, as the nest style says.
  YWord writeToLog(const char* text);
  YWord isLogging() const;
  // How playbacks are logged from now on; YcluiLogNestSilent at first.
  void nestStyle(YcluiLogNestStyle style);

  // Playback: the lines of a log go through `interpret` one by one, with all that typed text does.
  // A line may start another playback, which is finished first.

  // Plays the file to its end or to a pause. 0 with YErrFileIsLogged or YErrFileIsPlayed when the
  // file is the log, or is being played at any level, paused ones included; with YErrTooDeep, as
  // YErrError, inside YcluiMostNestedPlaybacks others; with YErrNotOpened, as for a log; and with
  // YErrNotClosed, when it was played but could not be closed.
  //
  // A line ends at an end of line outside double quotes, however long it is. A backslash and a
  // quote or backslash behind it come as four or three backslashes, so that a string of a log has
  // its text again behind the lexer.
  YWord playbackFromLog(const char* path);
  // Stops all playbacks behind the line that is running, or the next one behind its first line.
  void pausePlayback();
  // Goes on with the paused files, innermost first. 0 when nothing was paused or a file could not
  // be closed. The lines then come in pieces of YcluiLongestPiece bytes at most, with their ends,
  // as they are in the file, and empty ones not at all.
  YWord continuePlayback();
  YWord isPlaybackRun() const;
  // Where the innermost playback stands, running or paused: the full name of its file, null when
  // there is none; the line of the file, from 1, in which the last text given to `interpret` began;
  // and how many bytes of the file are read. The numbers are 0 when there is none. The name stays
  // good until a playback begins or ends.
  const char* playbackName() const;
  long playbackLine() const;
  long playbackPosition() const;
  // Tells of the last token, if it is from a line that is being played: of nested playbacks the one
  // whose line it is. What an alias stands for counts as being where the alias is. 0, and `token`
  // untouched, when it is not from such a line, or began in an earlier one of the file. The
  // pointers stay good until the parser goes on.
  YWord playedToken(YcluiPlayedToken& token) const;
  // The same for what lastFaultOffset or lastArgumentOffset returned; that may be in a line behind
  // the one in which the token began.
  YWord playedToken(YcluiPlayedToken& token, int offset) const;
  // How many files so far ended by an error of reading, which a playback takes for their end.
  int playbackReadErrors() const;
  // Whether the text of an alias is being read; the end of a nested one ends it for all.
  YWord isAliasRun() const;

  // Completion, from the state of the current frame. Exact bytes: the case of `prefix` counts. A
  // candidate whose id has no word in the dictionary is the empty text for an empty prefix and no
  // candidate for another one. Indefinite nodes are not offered.
  //
  // The first question at a place of the syntax costs the words that could come there. The second
  // one sorts them; from then on a question costs the words that it finds, until the walker stands
  // elsewhere or syntax or dictionary have changed.

  // Adds the words that could come next and begin with `prefix` to `list`, which is given empty, in
  // the walker's order, one for each node. Answers the number of elements of `list`; 0 when nothing
  // can come, and `list` is untouched.
  int completionList(const char* prefix, YString_Array& list) const;
  // The longest common beginning of these words, by bytes: 1 when it is not empty. `unique` is 1
  // when there was one candidate only, else 0. Without a candidate `completed` is untouched.
  YWord completionString(const char* prefix, YString& completed, unsigned long& unique) const;
  // Replaces `words` by the distinct words that could come next and begin with `prefix`, in any
  // case of ASCII letters, in the walker's order, those of indefinite nodes behind the others.
  // Words that the interrupted command would not admit are left out; while that must be asked, each
  // question costs the words that could come there.
  void possibleWords(YString_Array& words, const char* prefix = nullptr) const;
  // Calls `take` with each of these words in that order, a word once for each node that it comes
  // from. The function must leave the parser alone.
  void eachPossibleWord(const char* prefix, YcluiWordProc take, void* word) const;

  // Deletion by scripts, also from a command of the parser itself. A condemned parser goes on
  // working until the mortuary is cleaned up. Only a YcluiParser made by new is destroyed there; a
  // parser of a derived class leaves the mortuary and is its host's to destroy.

  static void CreateMortuary();   // nothing when there is one
  static void DestroyMortuary();  // the bodies stay alive
  // Condemns a parser; nothing without a mortuary, for null, or when it is in there already.
  static void AddDeadBody(YcluiParser* parser);
  // Destroys the bodies, the last one first, but for those that are still running, which wait for
  // the next time.
  static void CleanupMortuary();
  YWord isCondemned() const;

  // The parser at that address, if it is alive and not condemned; else null. Any number can be
  // asked.
  static YcluiParser* FindLive(long address);
  // All parsers that are alive and not condemned, in the order of their making; null behind the
  // last.
  static YcluiParser* Live(int index);

 private:
  // Runs a finished command text in the script engine; 1 when that went well. 0 without an engine.
  virtual YWord evaluate(const char* text);

  friend class YcluiParserCore;
  std::unique_ptr<YcluiParserCore> core;  // all state
};

#endif  // PARSER_YCLUIPARSER_H_
