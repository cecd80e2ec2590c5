// The lexer: divides a text into tokens.

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
//     if (lex.getNextToken(token) == 0) ...          // an invalid token; reading can continue
//     else if (token.underConstruction() != 0) ...   // arguments are missing; more text is needed
//     else ...
//   }
//
// Tokens are separated by white space and comments, which extend from "#" to the end of the line.
// A token is the first of these that matches at its first byte: a variable form, a delimiter, a
// word.
//
//   variable form   ${name} or ${name}[index], a reference, which is replaced by the variable's
//                   text; followed by =value, an assignment
//   delimiter       a byte that was declared as a keyword of its own
//   word            ends before white space, a delimiter, a variable form or the end of the text,
//                   and after a ":", which is part of it. A backslash is dropped, and the byte
//                   after it has no special meaning. Words are looked up in any case
//
// A word of the dictionary that declares arguments is followed by them, with "," between them; so
// is an unknown word that ends in ":".
//
// Texts are NUL-terminated bytes. No byte of a double-byte character (foundation/YKanji.h) has a
// special meaning. White space is the six ASCII characters of the C locale.
//
// A lexer for whose tables there was no memory (YErrNoWordTable, YErrNoVariableTable) has no text,
// and all its operations fail. Reading a text does not allocate when a text of the same kind and
// length was read before.
class YQRT_API YcluiLex {
 public:
  YcluiLex();
  YcluiLex(const YcluiLex&) = delete;
  YcluiLex& operator=(const YcluiLex&) = delete;
  ~YcluiLex();

  // --- Text and cursor

  // Replaces the text.
  YWord setString(const char* text);
  // Appends to the text. Reading continues where it was; but when the text was exhausted, because
  // more() found nothing else or a token was invalid, it starts again with the whole text.
  // Therefore callers call more() first and use setString when it returns 0. Linear in the length
  // of what is appended.
  YWord putString(const char* text);
  // Removes the unread text.
  void reset();
  // pushString suspends the text and starts another one; popString drops that one and continues the
  // suspended one exactly where it was. Neither copies the suspended text. pushString returns 0
  // with YErrTooDeep when YcluiMostSuspendedTexts are suspended, popString returns 0 when none is;
  // nothing changes then.
  YWord pushString(const char* text);
  YWord popString();
  // Returns 1 when another token can be read. Moves the cursor past white space and comments.
  YWord more() {
    // An ASCII byte that can only begin a token needs no search for one.
    if (cursor != nullptr && *cursor > ' ' && *cursor != '#') return 1;
    return seek() ? 1 : 0;
  }

  // Offsets in the current text, in bytes from its start, appended text included: of the token that
  // getNextToken read last, and of the cursor (the length of the text when it is exhausted).
  std::uint32_t tokenOffset() const { return tokenOffset_; }
  std::uint32_t cursorOffset() const;
  // The text from there on.
  const char* unreadText() const { return cursor == nullptr ? "" : cursor; }
  // The number of suspended texts.
  int suspendedTexts() const { return bufferStack.count(); }

  // --- Tokens

  // Reads the next token. Returns 0 when there is none or it is invalid. When `token` is under
  // construction, reads its next arguments.
  //
  // The results with 1:
  //   a word of the dictionary    its id and type, with its full name as argument 0
  //   YcluiIdAlias                an alias or a variable reference; argument 1 is the text that the
  //                               caller reads in its place. A reference leaves argument 0 as it
  //                               was
  //   YcluiIdFreeWord             an unknown word that ended in ":", with at least one argument
  //   YcluiIdVariable             a variable was set; the rest of the token is as it was
  // The results with 0:
  //   an unknown word             the token has the id YcluiIdNone and the word as argument 0; its
  //                               other arguments are as they were; no code is recorded
  //   an invalid word or          the code of the fault is recorded, the rest of the text is
  //   argument                    dropped, and the token keeps the arguments read so far
  //   strings with variable       the same with YErrTextTooLong: the strings of one token that
  //   forms are too long          contain variable forms have at most YcluiLongestExpansion bytes
  //   the text of an alias is     YErrTextTooLong is recorded, see beginExpansion; the rest of the
  //   too long                    text is kept
  //   a missing argument          of an unknown word with ":", or after the "," that follows the
  //                               last declared argument; no code is recorded
  //
  // When the text ends before all declared arguments are read, or no "," follows an argument, the
  // result is 1 and the token is under construction.
  YWord getNextToken(YcluiToken& token);
  // Starts counting the texts of aliases and references anew. Together they may have
  // YcluiLongestExpansion bytes; one that exceeds this is refused. The lexer calls this before each
  // token while no text is suspended.
  void beginExpansion() { replaced = 0; }

  // Where the last getNextToken failed, and where its arguments are. Valid until the text is
  // replaced, suspended or resumed; appending to it changes nothing.

  // The offset of the word or literal that is invalid: in a string with an invalid variable form
  // that of the form, in a form with an invalid index that of the index, in a point that of the
  // point. For a missing argument the offset at which it was expected. -1 when nothing failed.
  long faultOffset() const { return faultOffset_; }
  // The text from that offset on, the empty text when nothing failed.
  const char* faultText() const { return faultOffset_ < 0 ? "" : lineBuffer.buffer + faultOffset_; }
  // The index of the argument that failed, from 1; 0 for a word, and for a variable form that is a
  // token.
  int faultArgument() const { return argumentIndex; }
  // Whether a separator precedes the argument that failed. There is none before the first argument,
  // nor before an argument with which a text continues a token under construction, unless the
  // former text ended with one.
  bool faultIsSeparated() const { return afterSeparator; }
  // The offset of an argument, with indices from 1, the one that failed included. -1 when it was
  // read from another text, and when the token has no such argument.
  long argumentOffset(int index) const {
    return hasOffsets(index) ? argumentSpans[static_cast<std::size_t>(index) - 1].begin : -1;
  }
  // Where it ends. For the one that failed, its offset.
  long argumentEnd(int index) const {
    return hasOffsets(index) ? argumentSpans[static_cast<std::size_t>(index) - 1].end : -1;
  }
  // Where the word of the token ends, or the variable form in the place of one. -1 when the token
  // began in another text, and when the word or the form is what failed.
  long wordEnd() const { return wordEnd_; }

  // --- Words; results and codes are those of YcluiWordTable

  std::uint32_t addKeyword(const char* name, const char* abbreviation, std::uint32_t id);
  std::uint32_t addKeyword(const char* name, int count, const YcluiValueType* types,
                           std::uint32_t id);
  // Adds a keyword of one byte and makes the byte a delimiter. Deleting the keyword leaves the byte
  // a delimiter, which is then an unknown word. Returns 0 for a NUL.
  std::uint32_t addKeyword(char byte, std::uint32_t id);
  YWord delKeyword(const char* name);
  // Returns 1 or 0.
  YWord addAlias(const char* name, const char* text);
  YWord delAlias(const char* name);
  // Whether the byte is a keyword of its own, or was one.
  bool isDelimiter(char byte) const;
  // The name of the first word of that id, or null.
  const char* keyword(std::uint32_t id) const;
  // The word that is found by the text, a name or an accepted short form, in any case; or null.
  // Valid until the word is deleted.
  const YcluiKeyword* keyword(const char* name) const;
  // All words in the order of adding, as records of YcluiKeyword; YAssocSetItr iterates over them.
  // Null when the lexer has no tables.
  const YDictionary* words() const;
  // A number that grows whenever a word is added or deleted.
  std::uint64_t wordChanges() const;

  // --- Variables; names are found in any case

  // Set a variable, and create it if necessary: a simple one; one element of an array; the first
  // `count` elements of an array, whose other elements are unchanged. Return 0 without a code when
  // the variable is of the other kind, and with YErrOutsideArray, severity YErrWarning, when the
  // array would have more than YcluiMostElements elements. The values may be those of the variable
  // itself.
  YWord addVariable(const char* name, const YAttribValue& value);
  YWord addVariable(const char* name, const YAttribValue& value, std::uint32_t index);
  YWord addVariable(const char* name, std::uint32_t count, const YAttribValue* values);
  // The variable of that name, or null. Valid until the lexer is destroyed.
  YcluiVariable* variable(const char* name) const;
  // All variables, first added first, as records of YcluiVariable. Null when the lexer has no
  // tables.
  const YDictionary* variables() const;

 protected:
  // A lexer with the words and the variables of another one, which must outlive it; without any for
  // null. It declares no words, and the variables that its texts set are its own.
  struct Trial {};
  YcluiLex(const YcluiLex* shared, Trial /*tag*/);
  // Discards the texts and takes over new delimiters.
  void beginTrial(const YcluiLex& shared);
  // Discards these variables.
  void forgetOwnVariables();
  // How many bytes the strings with variable forms have in the token that was read last, of which
  // YcluiLongestExpansion bounds the number. To be kept with a token under construction.
  static std::size_t ExpandedIn(const YcluiLex& lexer) { return lexer.expanded; }
  void setExpanded(std::size_t bytes) { expanded = bytes; }

  // The scanners. Each one reads from `text`, which is NUL-terminated, stores the result in
  // `value`, and returns the end of what it read. On failure it records a code, makes `value` a
  // null value unless its comment says otherwise, and returns null. The cursor does not move.

  // Returns the first byte that is neither white space nor in a comment, null when there is none.
  char* SkipWhiteSpace(char* p);
  // Returns the first byte that is not white space, possibly the NUL.
  char* RecoverError(char* p);

  // Reads arguments at the cursor into the token: `wanted` declared ones of the given types, then
  // strings as long as a separator follows. Returns the number of the token's arguments, argument 0
  // not counted, or -1.
  int getArguments(YcluiToken& token, std::uint32_t wanted, const YcluiValueType* types);
  // Reads one argument at the cursor, which becomes null on failure. For a type outside the
  // enumeration nothing is read and `value` is unchanged. Returns 0 on failure and, without a code,
  // at the end of the text.
  YWord getNextArg(YAttribValue& value, YcluiValueType type);

  // A word, which may be empty. It ends before a byte of `stops`, white space, a variable form and
  // the end of the text, and after a byte of `introducers`; only then `flag` is 1.
  char* GetUnquotedString(char* text, YAttribValue& value, YWord& flag, const char* introducers,
                          const char* stops);
  // A string from the byte `quote` at `text` to the next one. Variable forms in it are replaced by
  // their text. On failure `value` may be what a failed form left.
  char* GetStringLiteral(char* text, YAttribValue& value, char quote);
  char* GetFloat(char* text, YAttribValue& value);
  // A number, truncated to a long.
  char* GetInteger(char* text, YAttribValue& value);
  // Two integers with "," between them.
  char* GetPoint(char* text, YAttribValue& value);

  // A variable form that is a token. A reference stores the variable's text in `value`; an
  // assignment sets the variable and makes `value` a null value.
  char* TouchVariable(char* text, YAttribValue& value);
  // The name of a form, as a string in `value`, with its kind and, for an array, its index. A
  // negative index gives an `index` that no array has.
  char* GetVariableLiteral(char* text, YAttribValue& value, YcluiVariableKind& kind,
                           std::uint32_t& index);
  // The value of an assignment; `text` points to the "=".
  char* GetVarSettingLiteral(char* text, YAttribValue& value);
  // Replaces `value`, the name of a variable, by its value. Returns 1 or 0.
  YWord GetVariable(YAttribValue& value, YcluiVariableKind kind, std::uint32_t index);
  // A form as the value of its variable: unchanged, as a string, as a double, as a long. When the
  // value cannot be converted, it is left in `value`.
  char* GetVariable(char* text, YAttribValue& value);
  char* GetStrVariable(char* text, YAttribValue& value);
  char* GetFloatVariable(char* text, YAttribValue& value);
  char* GetIntVariable(char* text, YAttribValue& value);
  // Create or set the variable of an assignment. Return 1 or 0.
  YWord NewVariable(YAttribValue& value, const char* name, YcluiVariableKind kind,
                    std::uint32_t index);
  YWord SetVariable(YAttribValue& value, YcluiVariable& variable, YcluiVariableKind kind,
                    std::uint32_t index);

 private:
  YcluiWordTable* wordTable = nullptr;
  YcluiVariableTable* variableTable = nullptr;
  bool ownsWords = true;
  YString lineBuffer;      // the text, the consumed part included
  char* cursor = nullptr;  // the next byte of it; null when the text is exhausted
  YString delimiters;      // every one-byte keyword, once
  YString argIntroducers;  // bytes that end a word, stay part of it and announce arguments
  YString argSeparators;   // bytes between arguments, and between the numbers of a point
  YcluiLexBuffer_Stack bufferStack;  // the suspended texts

  YString argStops;  // argSeparators and delimiters
  std::uint32_t tokenOffset_ = 0;
  int indexNesting = 0;      // variable forms whose index is being read
  std::size_t expanded = 0;  // bytes of the current token's strings with variable forms
  std::size_t replaced = 0;  // bytes of the texts of aliases and references, see beginExpansion

  long faultOffset_ = -1;
  char* failed = nullptr;       // start of what a scanner could not read
  int argumentIndex = 0;        // of the argument being read, from 1; 0 for the word
  bool afterSeparator = false;  // a separator follows the argument read last
  long wordEnd_ = -1;
  // Argument i is in slot i - 1; firstSpan to lastSpan are valid, none when 0.
  struct Span {
    long begin;
    long end;
  };
  std::vector<Span, YAllocator<Span>> argumentSpans;
  int firstSpan = 0;
  int lastSpan = 0;

  // Reused by every token.
  YAttribValue word;
  YAttribValue argument;
  YString collected;     // the part of the current string that was not contiguous in the text
  YString names;         // the names of the nested variable forms being read, in a row
  YString assignedName;  // the name of the variable that is being assigned to

  bool usable() const { return variableTable != nullptr; }
  bool hasOffsets(int index) const {
    return firstSpan != 0 && index >= firstSpan && index <= lastSpan;
  }
  void forgetOffsets();
  // Records that the argument being read begins at the cursor.
  void noteArgument();
  // The null result of a scanner that fails at `literal`: failAt leaves code and value to the
  // caller, refuse also records the code and makes the value null, refuseKept keeps the value.
  char* failAt(char* literal);
  char* refuse(char* literal, YAttribValue& value, YErrCode code);
  char* refuseKept(char* literal, YErrCode code);
  // GetUnquotedString without a value: `scanned` is a part of the text or of `collected`, valid
  // until the next scan. Returns null without a code when the text ends after a backslash or inside
  // a character.
  char* scanWord(char* text, std::string_view& scanned, bool& announces, const char* introducers,
                 const char* stops);
  std::string_view collect(const char* run, const char* end);
  // Whether another string of that length keeps the token's strings within YcluiLongestExpansion.
  bool canExpand(std::size_t length) const { return length <= YcluiLongestExpansion - expanded; }
  bool mayReplace(std::size_t length);
  const YAttribValue* valueOf(YAttribValue& name, YcluiVariableKind kind, std::uint32_t index);
  bool readToken(YcluiToken& token);
  bool getVariableToken(YcluiToken& token);
  bool getUnknownWord(YcluiToken& token, std::string_view text, bool announces);
  bool seek();
  bool readArg(YAttribValue& value, YcluiValueType type);
  char* readStrVariable(YAttribValue& value);
  bool getArgumentsOf(YcluiToken& token, const YcluiKeyword* record);
  char* readForm(char* text, YAttribValue& value, YcluiVariableKind& kind, std::uint32_t& index);
  char* readIndex(char* text, YAttribValue& value);
};

// Converts a number to a string. Returns 0 and leaves the value unchanged when it is neither a
// number nor a string.
YQRT_API YWord StringifyValue(YAttribValue& value);

#endif  // LEX_YCLUILEX_H_
