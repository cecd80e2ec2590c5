// The token: one word of input with its arguments.

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

// The kind of a token, and of a word of the dictionary.
enum YcluiTokenType : std::uint32_t {
  YcluiTokenNone = 0,        // not used by any token
  YcluiTokenKeyword = 1,     // a word without declared arguments; the type of a new token
  YcluiTokenArgKeyword = 2,  // a word with a declared argument list
  YcluiTokenAlias = 3,       // an alias or a variable reference, to be replaced by its text
};

// Reserved ids. All other ids belong to words of the dictionary, which are numbered from 5000 or as
// their declaration says. Nothing prevents a declaration from repeating an id.
enum YcluiReservedId : std::uint32_t {
  YcluiIdNone = 0,      // an unknown word
  YcluiIdFreeWord = 7,  // an unknown word that is followed by arguments
  YcluiIdAlias = 8,     // argument 1 is the text that replaces the token
  YcluiIdVariable = 9,  // an assignment to a variable, which has been carried out
};

// The type of a declared argument. For a number outside the enumeration nothing is read.
enum YcluiValueType : std::uint32_t {
  YcluiValueNone = 0,     // no declaration
  YcluiValueString = 1,   // a string, quoted or not
  YcluiValueFloat = 2,    // a double
  YcluiValueInteger = 3,  // a long
  YcluiValuePoint = 4,    // a pair of longs
};

// The result of a token callback. Any other number acts as YcluiTokenPass.
enum YcluiTokenCtrl : std::uint32_t {
  YcluiTokenPass = 0,  // continue with the token
  YcluiTokenDrop = 1,  // discard the token; the callback has handled it
};

// A word with its arguments. Argument 0 is the word itself, as a string value; the values that
// follow it are arguments 1 and up. A token owns its arguments and texts, and copies are deep; the
// nodes that a frame records in it belong to the syntax. Assigning to a token reuses its memory.
//
// Only the lexer and the parsers fill a token. Two tokens are equal when their ids are.
class YQRT_API YcluiToken {
 public:
  // A token without a word: id 0, type YcluiTokenKeyword, one argument, which is a null value.
  YcluiToken();
  // A token with the word as argument 0 and id 0. A null word is treated as empty.
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
  // The number of arguments, including argument 0.
  int argc() const { return argc_; }
  // The text of argument 0, null when it is no string. Valid until the token changes.
  const char* string() const;
  // The argument at `index`, null when there is none at that index.
  const YAttribValue* operator[](int index) const;
  // Returns 1 when the input ended before all declared arguments were read; the next text then
  // continues the token.
  YWord underConstruction() const { return underConstruction_; }

  YWord operator==(const YcluiToken& other) const { return id_ == other.id_ ? 1 : 0; }
  YWord operator!=(const YcluiToken& other) const { return id_ != other.id_ ? 1 : 0; }
  YWord operator==(std::uint32_t id) const { return id_ == id ? 1 : 0; }
  YWord operator!=(std::uint32_t id) const { return id_ != id ? 1 : 0; }

  // The token as text: the word, directly followed by its arguments separated by ",". Numbers are
  // in decimal, points are X,Y, strings are in double quotes without escapes, null values are
  // empty. Returns null when the token is hidden. Valid until the token changes.
  const char* wholeString() const;
  // The text that an echo shows: the one given to setEchoString, else wholeString(). Null when the
  // token is hidden.
  const char* echoString() const;
  // Sets the text that an echo shows; null is treated as empty. `text` may be the current echo
  // text. When there is no memory, returns 0 with YErrNoMemory, and the token has no echo text.
  YWord setEchoString(const char* text);

 private:
  friend class YcluiLex;
  friend class YcluiLineParser;
  friend class YcluiWorkToken;

  // Copies the word, the id and the type and reserves memory for the declared arguments, none of
  // which is set. Does not change underConstruction.
  YcluiToken& operator=(const YcluiKeyword& keyword);

  void setType(YcluiTokenType type) { type_ = type; }
  void setID(std::uint32_t id) { id_ = id; }
  void setNeedMore(YWord flag) { underConstruction_ = flag; }
  YWord hidden() const { return hidden_; }
  void hidden(YWord flag) { hidden_ = flag; }

  // In a token of a frame: the nodes at which the walker was before and after the token.
  YcluiSyntaxNode* previousNode() const { return previousNode_; }
  void previousNode(YcluiSyntaxNode* node) { previousNode_ = node; }
  YcluiSyntaxNode* presentNode() const { return presentNode_; }
  void presentNode(YcluiSyntaxNode* node) { presentNode_ = node; }

  void setArg0(std::string_view word);
  // Sets the number of arguments. wholeString() does not change.
  void setArgC(std::uint32_t count);
  void resizeArgs(std::uint32_t count) {
    if (args.size() < count) args.resize(count);
  }
  // Sets an argument and makes it the last one. Returns 0 for a negative index. `value` must not be
  // an argument of this token, because the arguments may move.
  YWord setValue(const YAttribValue& value, int index);
  // Makes wholeString() return the text of the current arguments. The text is built on demand, so
  // that setting a token value by value stays cheap.
  void recreateWholeStr();

  void extendWholeStr() const;
  // Reserves memory for `count` arguments. When it has to be allocated, the arguments are lost.
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
  std::int32_t wholeArgc = 1;  // number of arguments that the whole text includes

  std::unique_ptr<char[]> echoStr;  // kept for reuse when the echo text is removed
  std::size_t echoRoom = 0;
  bool hasEcho_ = false;

  YcluiSyntaxNode* previousNode_ = nullptr;
  YcluiSyntaxNode* presentNode_ = nullptr;
};

using YcluiToken_Array = YArray<YcluiToken>;
using YcluiToken_Stack = YStack<YcluiToken>;

#endif  // LEX_YCLUITOKEN_H_
