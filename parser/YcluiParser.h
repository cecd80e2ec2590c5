// The parser: a command line with all its state. A host passes text to it.

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

// Types of callbacks. The first argument is the data that was set with the function. Texts are
// never null. The other arguments are valid until the callback returns, whatever it calls.

// A new token. The callback may change it, for instance its echo text; the frame stores the changed
// token. YcluiTokenDrop drops the token, any other result lets it pass.
using YcluiTokProc = YcluiTokenCtrl (*)(void* data, YcluiToken& token);
// A token that was refused. `code` is the latest code of the error manager; for an unknown word and
// for a token that the syntax refuses it is an older one, since nothing is recorded for them.
using YcluiTokRefuseProc = void (*)(void* data, const YcluiToken& token, std::uint32_t code);
// The whole line of the current frame, which may have changed.
using YcluiEchoProc = void (*)(void* data, const char* wholeLine);
// The line of a complete command, without and with the lines of the commands that it interrupts.
using YcluiSynProc = void (*)(void* data, const char* line, const char* wholeLine);
// The parser is being destroyed.
using YcluiGoneProc = void (*)(void* data);
// A word of a list. `name` is valid until the callback returns.
using YcluiWordProc = void (*)(void* data, const char* name);

class YcluiHelp;
class YcluiParser;
class YcluiParserCore;
using pYcluiParser_Stack = YStack<YcluiParser*>;

// The destructor is not virtual on purpose: see there.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// A parser owns a lexer, a syntax graph, the indefinite nodes and a stack of frames; the top is the
// current frame. A host declares words, sets a syntax and passes text:
//
//   YcluiParser parser;
//   const auto go = parser.lex()->addKeyword("go", nullptr, 0);
//   auto* syntax = new YcluiSyntaxGraph;
//   syntax->insertAnd(new YcluiSyntaxNode(go, "(display \"$0\")"));
//   parser.setSyntaxGraph(syntax);              // the parser now owns it
//   parser.interpret("go stop ");               // 1: "go" was accepted, and its command has run
//
// `interpret` reads tokens from its text and offers each to the current frame. A token is processed
// in this order:
//
//   1. the token callback, which can drop the token
//   2. an alias or a reference to a variable: its text is read instead; the steps below are for the
//      tokens of that text
//   3. the step through the syntax, which accepts or refuses the token
//   4. the log, whether or not the token was accepted
//   5. the priority check against the command that the frame interrupts; when it fails, the token
//      is removed again, YErrInterruptRefused is recorded as YErrNote, and the token is refused
//   6. the echo procedures; then, for a refused token, the refuse callback and nothing else
//   7. the syntax callbacks, if the frame is terminated, that is, the command is complete
//   8. the command of the accepting node
//   9. the reset of the frame, if it is still the current one and still terminated
//
// A refused token leaves the frame unchanged; except in step 5 no code is recorded. A command ends
// with the first token that has a path to the end of the syntax. Ends of lines have no meaning: a
// command may span several texts, and a text may contain several commands. Unread text, a token
// whose arguments are incomplete and all frames persist from one call of `interpret` to the next.
//
// Re-entry. Callbacks and commands may call any operation of the same parser. Frames and graphs
// that they remove are destroyed when no running operation uses them any more. A parser must not be
// destroyed while one of its operations runs; AddDeadBody deletes it afterwards. While the command
// of a line's last token runs, its frame is still terminated and refuses tokens, so such a command
// resets the parser or pushes a frame before it passes text to it.
//
// Without a frame, that is before the first setSyntaxGraph, operations that read text return 0 and
// record YErrNoSyntax as YErrWarning. Those for tokens, frames and candidates do nothing and return
// null, the empty text, 0 or -1 without recording a code. All others work.
//
// A YWord that says whether something succeeded or is true is 1 or 0. A parser is used by one
// thread at a time, with everything that belongs to it; different threads can use different
// parsers.
class YQRT_API YcluiParser {
 public:
  // `context` is a number of the host's, which command templates read as $c.
  //
  // When there is no memory for the lexer or for the token that it reads, nothing is recorded, and
  // setSyntaxGraph will create no frame.
  explicit YcluiParser(YWord context = 0);
  YcluiParser(const YcluiParser&) = delete;
  YcluiParser& operator=(const YcluiParser&) = delete;
  // Calls the gone procedure, writes the log's closing lines and closes all files; a failure to
  // close is recorded as YErrNotClosed, as YErrError. Not virtual: a derived parser must not be
  // destroyed through this class.
  ~YcluiParser();

  // --- Input

  // Reads the text that is still unread from previous calls, then this text. Returns the number of
  // tokens for which pushToken returned 1; an alias counts as one token, whatever its text does.
  // Null is the empty text. The text is copied.
  //
  // A text that ends inside a token's arguments leaves the token open: it is shown in one echo, and
  // the next text continues it. Texts are joined with nothing between, so an end of line that ends
  // a word must be part of the text.
  //
  // For a word that is no token (it is unknown, or an argument is invalid) the refuse callback is
  // called first and the line echoed then. The word is neither logged nor stored, and reading
  // continues after it.
  //
  // A nested call, from a command or a callback, reads the unread text of the outer call first and
  // its own text then; the outer call finds nothing left to read. When YcluiMostNestedCommands
  // calls are running, a further call does not read: it appends its text for an outer call and
  // returns 0, or, when no text is unread, refuses it and returns 0 with YErrTooDeep, as YErrError.
  // Texts of aliases do not count as calls. The words to which one word of the outermost text can
  // expand are limited too: see YcluiMostExpansions and YcluiLongestExpansion.
  virtual int interpret(const char* text);
  // Drops the unread text. Frames, their tokens and an open token are unchanged.
  virtual void exhaust();

  // Processes a token as described above. Returns 1 when the frame accepted it, or when it was
  // replaced by a text and that was read; else 0. A token of id YcluiIdNone is added to the line
  // without a step, echoed and nothing else, and 0 is returned.
  YWord pushToken(YcluiToken& token);
  // Reads the whole text now, before any unread text. Returns 1 when it was read, even if tokens
  // were refused. Returns 0 with YErrTooDeep, as YErrError, when YcluiMostSuspendedTexts texts are
  // suspended.
  YWord pushToken(const char* text);
  // Adds a word without meaning to the line of the current frame: templates count it and echoes
  // show it. Returns 0.
  YWord pushDummyToken(const char* text);

  // Whether a token is open, that is, some of its arguments are still missing.
  YWord tokenIsOpen() const;
  // The open token, with the arguments read so far; null when there is none. Valid until the next
  // text.
  const YcluiToken* openToken() const;
  // Drops the open token. The unread text is unchanged.
  void dropOpenToken();

  // The offset of the last token, in bytes from the start of the text that was given to the
  // outermost `interpret`. It is negative for a token that began in the unread text of a previous
  // call, and the text's length or more for a token of text that a command appended. The tokens of
  // an alias have the offset of the alias.
  int lastTokenOffset() const;
  // The offset, counted in the same way, at which the lexer failed. Known while the refuse callback
  // runs for that word; otherwise, and in the text of an alias, the offset of the token.
  int lastFaultOffset() const;
  // The offset, counted in the same way, of an argument of the last token, from 1. Known until the
  // token is offered to the syntax; otherwise, and in the text of an alias, the offset of the
  // token.
  int lastArgumentOffset(int index) const;

  // --- Tokens of the current frame

  // Pointers to tokens and texts are valid until the frame changes; a pointer to a token is null
  // when there is none.

  const YcluiToken* currentToken() const;        // the last one
  const YcluiToken* tokenAt(YWord index) const;  // from 0
  YWord numberOfToken() const;
  // Whether an indefinite node accepted the last token.
  YWord lastIsIndefinite() const;
  // The echo texts of the tokens, joined by blanks.
  const char* currentLine() const;
  // The lines of the commands that this one interrupts, then its own, joined by blanks.
  const char* wholeLine() const;
  // The index of the first token with the same id, or -1.
  int findToken(const YcluiToken& token) const;
  // The same for the token of makeToken(text).
  int findToken(const char* text) const;
  // Removes the last token, echoes, and returns the token that is last then. Returns null when none
  // is left, or the echo procedure removed the frame.
  const YcluiToken* popToken();
  // Removes a token, steps again with the others, without callbacks, log and commands, and echoes.
  // Returns 0 when there is no such token, or when the others are not all accepted without it; see
  // YcluiLineParser::removeToken for the tokens that the frame has then.
  YWord removeToken(YWord index);
  // A token of the word that the dictionary finds for the text, without arguments; one of id
  // YcluiIdNone when there is no such word.
  YcluiToken makeToken(const char* text) const;
  // Removes all tokens of the current frame, echoes, and ends the line of an open log.
  void reset();
  // Writes each token of the frame as "[word]." and then one end of line.
  void dmpCommandLine(std::ostream& out) const;

  // --- Syntax

  // Takes ownership of the graph, removes all frames and pushes an empty one. Unread text is
  // matched against the new syntax. Nothing is echoed or logged. The previous graph is destroyed
  // when no operation of the parser is running any more; until then it may be set again, and so may
  // the present one at any time. Previous indefinite nodes match nothing any more, but live as long
  // as the parser. Null is ignored. Without memory for the frame the parser has none, and
  // YErrNoMemory is recorded as YErrFatal.
  void setSyntaxGraph(YcluiSyntaxGraph* newGraph);
  // Takes ownership of a node that is matched anywhere in a line, in every frame, before the nodes
  // of the graph. Before the first setSyntaxGraph it does nothing, and the caller still owns the
  // node. Null is ignored.
  void addIndefiniteNode(YcluiSyntaxNode* node);

  // The present graph, and the structural node whose successors are the indefinite nodes. They
  // still belong to the parser. Null without a syntax.
  const YcluiSyntaxGraph* syntaxGraph() const;
  const YcluiSyntaxNode* indefiniteRoot() const;

  // --- Frames, by which one command interrupts another; all frames walk the same graph

  // Puts an empty frame on top, with the whole line of the one below as its prefix; echoes and logs
  // nothing. Returns 0 with YErrNoMemory, as YErrFatal, when there is no memory for it.
  YWord pushFrame();
  // The same for a frame that interrupts nothing: every command is admitted in it, and in the
  // frames above it only commands in these and in it can be interrupted.
  YWord pushIndependentFrame();
  // Removes the top frame, ends the line of an open log, and echoes the frame below, which is
  // unchanged. The bottom frame is reset instead. Returns 0 in any case.
  YWord popFrame();
  // The number of frames.
  int nestingDepth() const;

  // --- Callbacks

  // Each setter stores the function with its data and returns the previous function. Null removes
  // it.

  YcluiTokProc setTokCallback(YcluiTokProc proc, void* data);
  YcluiTokRefuseProc setTokRefuseCallback(YcluiTokRefuseProc proc, void* data);
  YcluiEchoProc setEchoProcedure(YcluiEchoProc proc, void* data);
  YcluiSynProc setSynCallback(YcluiSynProc proc, void* data);
  // A second pair for the binding of a text field, called after the host's pair. These two return
  // the present function of the host's pair.
  YcluiEchoProc sysSetEchoProcedure(YcluiEchoProc proc, void* data);
  YcluiSynProc sysSetSynCallback(YcluiSynProc proc, void* data);
  // Called once by the destructor, while all operations of the parser still work.
  YcluiGoneProc sysSetGoneProcedure(YcluiGoneProc proc, void* data);
  // 0 disables both echo procedures, any other value enables them. They are enabled at first.
  // Syntax callbacks are always called.
  void enableEcho(YWord flag);

  // --- Words and variables

  // The lexer, which holds words, aliases and variables; null when there was no memory for it. The
  // parser owns it.
  YcluiLex* lex() const;
  // YcluiLex::addAlias, delAlias and addVariable. Without a lexer they return 0.
  YWord setAlias(const char* name, const char* text);
  YWord unsetAlias(const char* name);
  YWord setVariable(const char* name, const YAttribValue& value);
  YWord setVariable(const char* name, const YAttribValue& value, YWord index);
  YWord setVariable(const char* name, YWord count, const YAttribValue* values);

  // --- The log

  // A text file of the tokens, accepted or not, each followed by a blank. Each reset and
  // each popFrame ends a line, and so does a text after which more than YcluiLongestLogLine bytes
  // were written since the last such break. Every token is flushed.

  // Opens a log and writes three lines of comment, in UTF-8 five, which mark the encoding. `append`
  // other than 0 keeps the content of an existing file. Returns 0 and records, as YErrWarning,
  // YErrFileIsPlayed when the innermost playback is reading that file, YErrLogIsOpen when there is
  // a log already, YErrOtherEncoding when text would be appended to text of the other encoding, or
  // YErrNotOpened when the file cannot be opened; before the last one YErrNotOpened is also
  // recorded as YErrError.
  YWord startLogging(const char* path, YWord append);
  // Writes the closing lines and closes the log. Returns 0 when no log is open. Returns 0 with
  // YErrNotClosed, as YErrError, when something could not be written since the log was started or
  // this was last reported: the log then stays open, except when only the closing itself failed.
  YWord shutLogging();
  // Adds text to the log; null adds nothing. Returns 1 when a log is open, else 0. During a
  // playback the nest style decides what is written.
  YWord writeToLog(const char* text);
  YWord isLogging() const;
  // Sets how playbacks are logged; YcluiLogNestSilent at first.
  void nestStyle(YcluiLogNestStyle style);

  // --- Playback

  // The lines of a log are given to `interpret` one by one, with all the effects of typed
  // text. A line may start another playback, which ends before the next line is read.

  // Plays the file to its end or to a pause and returns 1. Returns 0 and records
  //   YErrFileIsLogged, as YErrWarning   when the file is the open log
  //   YErrFileIsPlayed, as YErrWarning   when it is being played, at any level, or is paused
  //   YErrTooDeep, as YErrError          when YcluiMostNestedPlaybacks playbacks are running
  //   YErrNotOpened, as for a log        when it cannot be opened
  //   YErrOtherEncoding, as YErrWarning  when its text is not in the encoding inside: nothing is
  //                                      played then, of a pipe the lines before that text
  //   YErrNotClosed, as YErrError        when it was played, but cannot be closed
  //
  // A line ends at an end of line outside double quotes, however long it is. Two backslashes are
  // inserted between a backslash and a quote or backslash that follows it, so that the lexer reads
  // a string of a log as the text that was logged.
  YWord playbackFromLog(const char* path);
  // Stops all playbacks after the line that is running; when none is running, the next playback
  // stops after its first line.
  void pausePlayback();
  // Continues the paused files, innermost first, and returns 1 when all ended or were paused again.
  // Returns 0 when nothing was paused; with YErrTooDeep, as YErrError, when
  // YcluiMostNestedPlaybacks playbacks are running; with YErrNotClosed, as YErrError, when a file
  // could not be closed. A continued file is read in pieces of at most YcluiLongestPiece bytes; a
  // piece includes its end of line, an empty line is skipped, and no backslashes are inserted.
  YWord continuePlayback();
  // Whether a playback is running; 0 while it is paused.
  YWord isPlaybackRun() const;
  // The position of the innermost playback, running or paused. playbackName is the full name of its
  // file, valid until a playback begins or ends; playbackLine is the number, from 1, of the line in
  // which the last text given to `interpret` began; playbackPosition is the number of bytes read.
  // Without a playback they return null and 0.
  const char* playbackName() const;
  long playbackLine() const;
  long playbackPosition() const;
  // Describes the last token if it is from a line that is being played; with nested playbacks, from
  // a line of any of them. The tokens of an alias have the offset of the alias. Returns 0 and
  // leaves `token` unchanged when the token is from no such line, or began in an earlier one. The
  // pointers in `token` are valid until the parser reads further.
  YWord playedToken(YcluiPlayedToken& token) const;
  // The same for an offset from lastFaultOffset or lastArgumentOffset, which may be in a later line
  // than the start of the token.
  YWord playedToken(YcluiPlayedToken& token, int offset) const;
  // The number of played files that ended by a read error. A playback treats it as the end of the
  // file.
  int playbackReadErrors() const;
  // Whether the text of an alias is being read. When the text of an alias inside it ends, this is 0
  // for the rest of the outer text.
  YWord isAliasRun() const;

  // --- Help and completion

  // What hosts show about words and their arguments. Valid until the parser is destroyed.
  YcluiHelp& help() const;

  // Completion is from the state of the current frame. It records no code.
  //
  // The first request in a state of the walker costs the number of words that can come next. The
  // second one sorts them. Further requests cost the number of words that they find, until the
  // state, the syntax or the dictionary changes.

  // Adds the words that can come next and begin with `prefix` to `list`, which should be empty: one
  // for each node, in the walker's order, without those of indefinite nodes. Bytes are compared, so
  // the case of letters matters. A node whose id has no word gives an empty text for an empty
  // prefix, and nothing for another one. Returns the number of elements of `list`. Returns 0 and
  // leaves `list` unchanged when the command is complete.
  int completionList(const char* prefix, YString_Array& list) const;
  // Sets `completed` to the longest common beginning of these words, in bytes, and returns 1 when
  // it is not empty. Sets `unique` to 1 when there is only one word, else to 0. Without a word
  // returns 0 and leaves `completed` unchanged.
  YWord completionString(const char* prefix, YString& completed, unsigned long& unique) const;
  // Replaces `words` by the distinct words that can come next and begin with `prefix`, in any case
  // of ASCII letters: in the walker's order, then those of indefinite nodes. Words that the
  // interrupted command does not admit are left out; inside an interrupted command each request
  // costs the number of all words that can come next.
  void possibleWords(YString_Array& words, const char* prefix = nullptr) const;
  // Calls `report` with each of these words in that order, with a word once for each node that has
  // it. The function must not call the parser.
  void eachPossibleWord(const char* prefix, YcluiWordProc report, void* data) const;

  // --- The mortuary, and the live parsers

  // Each thread has a mortuary and finds the parsers that it has constructed.
  //
  // For deletion by scripts, even from a command of the parser itself. A condemned parser is in the
  // mortuary and works as before until CleanupMortuary destroys it. It must be a YcluiParser made
  // by new, and is destroyed by the thread that condemned it. One of a derived class is only
  // removed from the mortuary, and its host destroys it.

  // Does nothing when there is a mortuary. Without memory there is none.
  static void CreateMortuary();
  // Destroys the mortuary, but not the parsers in it.
  static void DestroyMortuary();
  // Condemns a parser. Does nothing without a mortuary, for null, or when it is in the mortuary.
  static void AddDeadBody(YcluiParser* parser);
  // Destroys the condemned parsers, the last condemned first. A parser with a running operation
  // stays for the next call.
  static void CleanupMortuary();
  YWord isCondemned() const;
  // As long as one exists, CleanupMortuary leaves its parser alone, as during an operation. For
  // hosts that use a parser while scripts may run, as the values of an argument do (YcluiHelp).
  class YQRT_API Hold {
   public:
    explicit Hold(const YcluiParser& parser);
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
    ~Hold();

   private:
    YcluiParserCore& core_;
  };

  // The parser at that address if it is alive and not condemned, else null. The address may be any
  // number. Linear in the number of parsers.
  static YcluiParser* FindLive(long address);
  // The parsers that are alive and not condemned, in the order of construction, from 0; null after
  // the last.
  static YcluiParser* Live(int index);

 private:
  // Runs the text of a command in the script engine. Returns 1 on success; 0 also without an
  // engine. A host that runs commands itself overrides this.
  virtual YWord evaluate(const char* text);
  // Whether a token that the token callback has let pass may be offered to the syntax. With 0 it is
  // discarded as one that the callback drops. A host that checks arguments overrides this.
  virtual YWord admits(const YcluiToken& token);

  friend class YcluiParserCore;
  friend class YcluiPreview;
  std::unique_ptr<YcluiParserCore> core;  // all state
};

#pragma GCC diagnostic pop

#endif  // PARSER_YCLUIPARSER_H_
