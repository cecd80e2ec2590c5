// The lexer: text to tokens.

#ifndef LEX_YCLUILEX_H_
#define LEX_YCLUILEX_H_

#include <string_view>
#include <vector>

#include "foundation/YAttribValue.h"
#include "foundation/YErrCodes.h"
#include "foundation/YMemory.h"
#include "foundation/YString.h"
#include "foundation/YTypes.h"
#include "foundation/YcluiLimits.h"
#include "lex/YcluiKeyword.h"
#include "lex/YcluiLexBuffer.h"
#include "lex/YcluiToken.h"
#include "lex/YcluiVariable.h"

class YcluiVariableTable;
class YcluiWordTable;

// Reads tokens from a text, with a dictionary of words and a table of variables:
//
//   lex.setString("line 5, 7 # a comment");
//   while (lex.more() != 0) {
//     if (lex.getNextToken(token) == 0) ...          // a bad token; reading can go on
//     else if (token.underConstruction() != 0) ...   // arguments are missing; more text is needed
//     else ...
//   }
//
// A text is tokens with white space and comments ("#" to the end of the line) between them. At its
// first byte a token is, tried in this order, a variable form "${name}", a delimiter, or a word. A
// word ends before white space, a delimiter, a variable form, and behind a ":". Words are looked up
// in any case. Behind a word that declares arguments, and behind an unknown word that ends in ":",
// stand arguments with "," between them. A backslash takes the next byte as it is.
//
// Texts are NUL-terminated bytes, see foundation/YKanji.h; a character of two bytes is taken whole.
// White space is the six ASCII characters of the C locale.
//
// A lexer whose tables found no memory when it was made (YErrNoWordTable, YErrNoVariableTable) has
// no text and refuses every operation. A lexer that has read such texts before reads without
// allocating.
class YQRT_API YcluiLex {
 public:
  YcluiLex();
  YcluiLex(const YcluiLex&) = delete;
  YcluiLex& operator=(const YcluiLex&) = delete;
  ~YcluiLex();

  // --- Text and cursor

  // Replaces the text.
  YWord setString(const char* text);
  // Appends to the text, with nothing between. Reading goes on where it stood; where the text was
  // exhausted by a comment, by white space or by an error, it starts again with the whole text, so
  // a caller asks more() first. Costs the length of what is appended.
  YWord putString(const char* text);
  // Drops the unread text.
  void reset();
  // Suspends the text and starts another one; popString goes on with it exactly where it stood.
  // Neither copies the suspended text. pushString answers 0 with YErrTooDeep when
  // YcluiMostSuspendedTexts are suspended, popString 0 when none is; nothing changes then.
  YWord pushString(const char* text);
  YWord popString();
  // 1 when another token can be read. Moves the cursor behind white space and comments.
  YWord more() {
    // An ASCII byte that can only begin a token needs no search for one.
    if (cursor != nullptr && *cursor > ' ' && *cursor != '#') return 1;
    return seek();
  }

  // Places in the present text, in bytes from the start of what the last setString was given, what
  // putString appended counted on: where the last getNextToken began to read, and where the next
  // one would (the length of the text when it is exhausted).
  std::uint32_t tokenOffset() const { return tokenStart; }
  std::uint32_t cursorOffset() const;
  // How many texts are suspended.
  int suspendedTexts() const { return bufferStack.count(); }

  // --- Tokens

  // Reads the next token, and answers 0 when there is none or it is bad. A token that is under
  // construction goes on with its arguments.
  //
  // Answered with 1:
  //   a word of the dictionary    its id and type, with its full name as argument 0
  //   YcluiIdAlias                an alias or a variable reference; argument 1 is the text that the
  //                               caller is to read in its place. Of a reference, argument 0 is
  //                               whatever the token held before
  //   YcluiIdFreeWord             an unknown word that ended in ":", with at least one argument
  //   YcluiIdVariable             a variable was set; the rest of the token is as it was
  // Answered with 0:
  //   an unknown word             the token has the id YcluiIdNone and the word as argument 0, its
  //                               further arguments are those of before; no code is pushed
  //   a bad word or argument      the code of the fault is pushed, the rest of the text is dropped,
  //                               and the token keeps the arguments read before
  //   too many strings that       the same, with YErrTextTooLong: in one token they have
  //   hold a variable's text      YcluiLongestExpansion bytes at most
  //   too long a text to read     YErrTextTooLong is pushed, see beginExpansion; the rest of the
  //   in place of an alias        text stays
  //   a missing argument          of an unknown word with ":", or behind the "," that follows the
  //                               last declared argument; no code is pushed
  //
  // A token whose declared arguments are not all there, because the text ends or because no ","
  // follows an argument, is answered with 1 and is under construction.
  YWord getNextToken(YcluiToken& token);
  // From here on aliases and references together may give the caller YcluiLongestExpansion bytes to
  // read in their place; further ones are refused. The lexer does this itself before each token
  // while no text is suspended.
  void beginExpansion() { replaced = 0; }

  // Of the last getNextToken, with offsets as above. Good until the text is replaced, suspended or
  // taken back; appending to it changes nothing.

  // Where the literal or word begins that could not be read: of a string with a bad variable form
  // in it the form, of such a form with a bad index the index, of a point the whole point. A
  // missing argument would have begun there. -1 when nothing failed.
  long faultOffset() const { return faultStart; }
  // The text from there on, the empty text when nothing failed.
  const char* faultText() const { return faultStart < 0 ? "" : lineBuffer.buffer + faultStart; }
  // Which argument of the token that is or belongs to, from 1; 0 for a word, and for a variable
  // form in the place of one.
  int faultArgument() const { return argumentIndex; }
  // Whether a separator precedes the argument that failed. None does when the argument was to be
  // the first one, or when it goes on with a token that was left open without a separator.
  bool faultIsSeparated() const { return afterSeparator; }
  // Where an argument of the token begins, from 1, the one that failed included. -1 when it was
  // read from another text, and when the token has no such argument.
  long argumentOffset(int index) const {
    const bool isKnown = firstStart != 0 && index >= firstStart && index <= lastStart;
    return isKnown ? argumentStarts[static_cast<std::size_t>(index) - 1] : -1;
  }

  // --- Words; see YcluiWordTable for what they answer and which codes they push

  std::uint32_t addKeyword(const char* name, const char* abbreviation, std::uint32_t id);
  std::uint32_t addKeyword(const char* name, int count, const YcluiValueType* types,
                           std::uint32_t id);
  // Adds a keyword of one byte that is a token wherever it stands, and a delimiter from now on:
  // deleting the keyword leaves the delimiter, which is then an unknown word. 0 for a NUL.
  std::uint32_t addKeyword(char byte, std::uint32_t id);
  YWord delKeyword(const char* name);
  // Answers 1 or 0.
  YWord addAlias(const char* name, const char* text);
  YWord delAlias(const char* name);
  // Whether the byte is a keyword of its own, or was one.
  bool isDelimiter(char byte) const;
  // The name of the first word of that id, or null.
  const char* keyword(std::uint32_t id) const;
  // The word that the name, in any case, or an accepted short form finds, or null. Good until the
  // word is deleted.
  const YcluiKeyword* keyword(const char* name) const;
  // All words, first added first, as records of YcluiKeyword; YAssocSetItr walks them. Null when
  // the lexer has no tables.
  const YDictionary* words() const;
  // Goes up whenever a word is added or deleted.
  std::uint64_t wordChanges() const;

  // --- Variables; names are found in any case

  // Set a variable, or make it: a simple one; one element of an array; the first `count` elements
  // of an array, whose further elements stay. Answer 0 without a code when the variable is of the
  // other kind, and with YErrOutsideArray, severity YErrWarning, when the array would get more than
  // YcluiMostElements elements. The values may be those of the variable that is set.
  YWord addVariable(const char* name, const YAttribValue& value);
  YWord addVariable(const char* name, const YAttribValue& value, std::uint32_t index);
  YWord addVariable(const char* name, std::uint32_t count, const YAttribValue* values);
  // The variable of that name, or null. Good as long as the lexer.
  YcluiVariable* variable(const char* name) const;

 protected:
  // A scanner takes a position in a NUL-terminated text, fills `value`, and answers the position
  // behind what it read; on failure it pushes a code, makes `value` null unless it says otherwise,
  // and answers null. The cursor does not move.

  // The first byte that is neither white space nor in a comment, null at the end of the text.
  char* SkipWhiteSpace(char* p);
  // The first byte that is not white space, possibly the NUL.
  char* RecoverError(char* p);

  // Reads arguments into the token: `wanted` declared ones, then as many strings as are separated
  // from them. Answers the number of arguments that the token has, argument 0 not counted, or -1.
  int getArguments(YcluiToken& token, std::uint32_t wanted, const YcluiValueType* types);
  // Reads one argument at the cursor, which becomes null on failure. A type outside the enumeration
  // reads nothing and leaves `value`. 0 on failure and, without a code, at the end of the text.
  YWord getNextArg(YAttribValue& value, YcluiValueType type);

  // A word: up to a byte of `stops`, white space, a variable form or the end, or up to and
  // including a byte of `introducers`, which sets `flag`. It may be empty.
  char* GetUnquotedString(char* text, YAttribValue& value, YWord& flag, const char* introducers,
                          const char* stops);
  // A string that opens with the byte `quote` at `text` and ends with the next one; variable forms
  // in it are replaced by their text. On failure `value` may be what a failed form left.
  char* GetStringLiteral(char* text, YAttribValue& value, char quote);
  char* GetFloat(char* text, YAttribValue& value);
  // A number, cut towards zero to a long.
  char* GetInteger(char* text, YAttribValue& value);
  // Two integers with "," between them.
  char* GetPoint(char* text, YAttribValue& value);

  // A variable form at token level: a reference leaves the variable's text in `value`, a setting
  // leaves it null.
  char* TouchVariable(char* text, YAttribValue& value);
  // The name of a form, as a string in `value`, with its kind and, for an array, its index. A
  // negative index comes out as a number beyond every array.
  char* GetVariableLiteral(char* text, YAttribValue& value, YcluiVariableKind& kind,
                           std::uint32_t& index);
  // The value of a setting; `text` stands on the "=".
  char* GetVarSettingLiteral(char* text, YAttribValue& value);
  // Puts the value of the variable that `value` names in its place. 1 or 0.
  YWord GetVariable(YAttribValue& value, YcluiVariableKind kind, std::uint32_t index);
  // A form that is read: as it is, as a string, as a double, as a long. The typed ones leave a
  // value that cannot serve unchanged.
  char* GetVariable(char* text, YAttribValue& value);
  char* GetStrVariable(char* text, YAttribValue& value);
  char* GetFloatVariable(char* text, YAttribValue& value);
  char* GetIntVariable(char* text, YAttribValue& value);
  // Make or set the variable of a setting. 1 or 0.
  YWord NewVariable(YAttribValue& value, const char* name, YcluiVariableKind kind,
                    std::uint32_t index);
  YWord SetVariable(YAttribValue& value, YcluiVariable& variable, YcluiVariableKind kind,
                    std::uint32_t index);

 private:
  YcluiWordTable* wordTable = nullptr;
  YcluiVariableTable* variableTable = nullptr;
  YString lineBuffer;      // the text, the consumed part included
  char* cursor = nullptr;  // the next byte of it; null when the text is exhausted
  YString delimiters;      // every one-byte keyword, once
  YString argIntroducers;  // bytes that end a word, stay part of it and announce arguments
  YString argSeparators;   // bytes between arguments, and between the numbers of a point
  YcluiLexBuffer_Stack bufferStack;  // the suspended texts

  YString argStops;              // argSeparators and delimiters
  std::uint32_t tokenStart = 0;  // see tokenOffset
  int indexNesting = 0;          // variable forms whose index is being read
  std::size_t expanded = 0;      // bytes of the present token's strings that hold a variable's text
  std::size_t replaced = 0;      // bytes given to be read in place of tokens, see beginExpansion

  long faultStart = -1;         // see faultOffset
  char* failed = nullptr;       // what a scanner could not read begins here
  int argumentIndex = 0;        // of the argument that is being read; 0 before the first one
  bool afterSeparator = false;  // a separator follows the argument read last
  // Offsets of arguments, and the first and the last index that are valid; 0 when none is.
  std::vector<long, YAllocator<long>> argumentStarts;
  int firstStart = 0;
  int lastStart = 0;

  // Reused by every token.
  YAttribValue word;
  YAttribValue argument;
  YString collected;    // of the string that is being scanned
  YString names;        // of the variable forms that are being scanned, one behind the other
  YString settingName;  // of the variable that is being set

  bool usable() const { return variableTable != nullptr; }
  void forgetOffsets();
  void noteArgument();
  // The results of a scanner that fails. Where the value is that of a variable, it stays.
  char* failAt(char* literal);
  char* refuse(char* literal, YAttribValue& value, YErrCode code);
  char* refuseKept(char* literal, YErrCode code);
  // GetUnquotedString before it has a value: the word lies in the text or in `collected`, until the
  // next scan. Null when the text ends inside it.
  char* scanWord(char* text, std::string_view& scanned, YWord& flag, const char* introducers,
                 const char* stops);
  std::string_view collect(const char* run, const char* end);
  // Whether one more such string keeps the token within YcluiLongestExpansion.
  bool canExpand(std::size_t length) const { return length <= YcluiLongestExpansion - expanded; }
  bool mayReplace(std::size_t length);
  const YAttribValue* valueOf(YAttribValue& name, YcluiVariableKind kind, std::uint32_t index);
  YWord readToken(YcluiToken& token);
  YWord getVariableToken(YcluiToken& token);
  YWord getUnknownWord(YcluiToken& token, std::string_view text, bool announces);
  YWord seek();
  YWord readArg(YAttribValue& value, YcluiValueType type);
  char* readStrVariable(YAttribValue& value);
  YWord getArgumentsOf(YcluiToken& token, const YcluiKeyword* record);
  char* readForm(char* text, YAttribValue& value, YcluiVariableKind& kind, std::uint32_t& index);
  char* readIndex(char* text, YAttribValue& value);
};

// Makes a number a string; 0, with the value unchanged, when it is neither number nor string.
YQRT_API YWord StringifyValue(YAttribValue& value);

#endif  // LEX_YCLUILEX_H_
