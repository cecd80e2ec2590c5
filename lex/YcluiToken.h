// The token: one word of input with the arguments behind it.

#ifndef LEX_YCLUITOKEN_H_
#define LEX_YCLUITOKEN_H_

#include <memory>
#include <string_view>
#include <vector>

#include "foundation/YAttribValue.h"
#include "foundation/YMemory.h"
#include "foundation/YStack.h"
#include "foundation/YString.h"
#include "foundation/YTypes.h"

class YcluiKeyword;
class YcluiSyntaxNode;

// What kind of word a token is. Words of the dictionary carry the same numbers.
enum YcluiTokenType : std::uint32_t {
  YcluiTokenNone = 0,        // no token of the system has it
  YcluiTokenKeyword = 1,     // a word without declared arguments; what every new token has
  YcluiTokenArgKeyword = 2,  // a word with a declared argument list
  YcluiTokenAlias = 3,       // an alias or a variable reference: text to be read in its place
};

// The ids with a meaning of their own. All other ids belong to words of the dictionary, which are
// numbered from 5000 or as their declaration says; nothing keeps a declaration from repeating one.
enum YcluiReservedId : std::uint32_t {
  YcluiIdNone = 0,      // a word without meaning
  YcluiIdFreeWord = 7,  // an unknown word that announced arguments, with them
  YcluiIdAlias = 8,     // argument 1 is the text that is to be read in place of the token
  YcluiIdVariable = 9,  // a variable was set; there is nothing left to do
};

// How a declared argument is read. A number outside the enumeration reads nothing.
enum YcluiValueType : std::uint32_t {
  YcluiValueNone = 0,     // no declaration
  YcluiValueString = 1,   // a string, quoted or not
  YcluiValueFloat = 2,    // a double
  YcluiValueInteger = 3,  // a long
  YcluiValuePoint = 4,    // a pair of longs
};

// What a token callback answers. Any other number acts as YcluiTokenPass.
enum YcluiTokenCtrl : std::uint32_t {
  YcluiTokenPass = 0,  // go on with the token
  YcluiTokenDrop = 1,  // the callback has dealt with it
};

// A word with its arguments: argument 0 is the word itself, as a string value, and the values read
// behind it are arguments 1 and up. A token owns its arguments and texts, and a copy is deep; the
// nodes that a frame notes in it belong to the syntax. Assigning to a token reuses its memory.
//
// Only the lexer and the parsers fill a token. Two tokens are equal when their ids are.
class YQRT_API YcluiToken {
 public:
  // No word: id 0, type YcluiTokenKeyword, one argument, which is null.
  YcluiToken();
  // The same with the word as argument 0. The id stays 0.
  explicit YcluiToken(const char* word);
  // The token of a word of the dictionary, without arguments.
  explicit YcluiToken(const YcluiKeyword& keyword);
  YcluiToken(const YcluiToken& other);
  YcluiToken(YcluiToken&& other) noexcept;
  ~YcluiToken();

  YcluiToken& operator=(const YcluiToken& source);
  YcluiToken& operator=(YcluiToken&& source) noexcept;

  YcluiTokenType type() const { return type_; }
  std::uint32_t id() const { return id_; }
  // The number of arguments, argument 0 included.
  int argc() const { return argc_; }
  // The text of argument 0, null while there is none. Good until the token changes.
  const char* string() const;
  // The argument at `index`, null when there is none at that index.
  const YAttribValue* operator[](int index) const;
  // 1 while the input ended before all declared arguments were there; the token then goes on with
  // the next text.
  YWord underConstruction() const { return underConstruction_; }

  YWord operator==(const YcluiToken& other) const { return id_ == other.id_ ? 1 : 0; }
  YWord operator!=(const YcluiToken& other) const { return id_ != other.id_ ? 1 : 0; }
  YWord operator==(std::uint32_t id) const { return id_ == id ? 1 : 0; }
  YWord operator!=(std::uint32_t id) const { return id_ != id ? 1 : 0; }

  // The token as text, made from its values: the word, and directly behind it the arguments with
  // "," between them, numbers in decimal, points as X,Y, strings between double quotes with nothing
  // escaped, null values as nothing. Null when the token is hidden. Good until the token changes.
  const char* wholeString() const;
  // What an echo shows: the text given to setEchoString if there is one, else the whole text. Null
  // when the token is hidden.
  const char* echoString() const;
  // Gives the token a text to be shown in an echo; null gives the empty text. `text` may be the
  // present one. Answers 0 with YErrNoMemory, and the token then has none, when there is no memory.
  YWord setEchoString(const char* text);

 private:
  friend class YcluiLex;
  friend class YcluiLineParser;
  friend class YcluiParser;

  // Takes over the word, the id and the type, with room for the declared arguments and none of them
  // there. underConstruction stays as it was.
  YcluiToken& operator=(const YcluiKeyword& keyword);

  void setType(YcluiTokenType type) { type_ = type; }
  void setID(std::uint32_t id) { id_ = id; }
  void setNeedMore(YWord flag) { underConstruction_ = flag; }
  YWord hidden() const { return hidden_; }
  void hidden(YWord flag) { hidden_ = flag; }

  // In a token of a frame: where the walker stood before and behind the token.
  YcluiSyntaxNode* previousNode() const { return previousNode_; }
  void previousNode(YcluiSyntaxNode* node) { previousNode_ = node; }
  YcluiSyntaxNode* presentNode() const { return presentNode_; }
  void presentNode(YcluiSyntaxNode* node) { presentNode_ = node; }

  void setArg0(std::string_view word);
  // Sets the number of arguments; the whole text stays that of before.
  void setArgC(std::uint32_t count);
  void resizeArgs(std::uint32_t count) {
    if (args.size() < count) args.resize(count);
  }
  // Sets an argument, which becomes the last one: further ones are cut off. 0 for a negative index.
  // The value must not be an argument of this token, which may move.
  YWord setValue(const YAttribValue& value, int index);
  // The whole text is from now on that of the arguments of this moment. It is written when it is
  // asked for, so that a token may be filled value by value.
  void recreateWholeStr();

  void extendWholeStr() const;
  // Has room for `count` arguments. Too little room is given up, with what it held.
  void makeRoom(std::size_t count) {
    if (args.size() < count) {
      args.clear();
      args.resize(count);
    }
  }

  YcluiTokenType type_ = YcluiTokenKeyword;
  std::uint32_t id_ = YcluiIdNone;
  std::vector<YAttribValue, YAllocator<YAttribValue>> args;  // never fewer than argc_
  std::int32_t argc_ = 1;
  YWord underConstruction_ = 0;
  YWord hidden_ = 0;

  mutable YString wholeStr;  // the text of the first wholeWritten arguments
  mutable std::int32_t wholeWritten = 0;
  std::int32_t wholeArgc = 1;  // how many arguments the whole text is to show

  std::unique_ptr<char[]> echoStr;  // room that is kept when the text goes
  std::size_t echoRoom = 0;
  bool hasEcho_ = false;

  YcluiSyntaxNode* previousNode_ = nullptr;
  YcluiSyntaxNode* presentNode_ = nullptr;
};

using YcluiToken_Array = YArray<YcluiToken>;
using YcluiToken_Stack = YStack<YcluiToken>;

#endif  // LEX_YCLUITOKEN_H_
