// One frame of a parser: the command that is being entered at one level of nesting.

#ifndef PARSER_YCLUILINEPARSER_H_
#define PARSER_YCLUILINEPARSER_H_

#include "foundation/YArray.h"
#include "foundation/YStack.h"
#include "foundation/YString.h"
#include "foundation/YTypes.h"
#include "lex/YcluiToken.h"
#include "syntax/YcluiNfa.h"

// A walker with the tokens of the command so far and the text that shows them. A line in this sense
// is one command, even when it was read from several lines of input.
//
// Between any two operations `currentLine` is the echo strings of the tokens joined by one blank.
// `wholeLine` is the prefix, one blank and the line; when one of the two is empty, it is the other.
// In a stored token, `previousNode` is the walker's current node before the token's step and
// `presentNode` the one after it. Both are the same for a token that an indefinite node accepted,
// since it does not move the walker, and null for a token that was added without a step.
//
// Parsers create and destroy frames; they also own the graph and the indefinite nodes. Adding a
// token and removing the last one cost the length of that token, whatever the length of the line.
//
// Tokens are returned as pointers, null when there is none, which are valid until the next
// operation that changes the frame. No operation records a code.
class YQRT_API YcluiLineParser : public YcluiNfa {
 public:
  // An empty frame, which can be used once syntaxGraph has set a graph. Null is the empty prefix.
  explicit YcluiLineParser(const char* prefixText);
  // Copies tokens, texts and the state of the walker; shares the graph.
  YcluiLineParser(const YcluiLineParser& other) = default;
  YcluiLineParser& operator=(const YcluiLineParser&) = delete;
  ~YcluiLineParser() = default;

  // Resets the walker and empties the line; returns 1. Returns 0 without a graph, and changes
  // nothing.
  YWord reset();

  // Steps with the token and stores a copy of it. Returns the node that accepted it; an indefinite
  // node does not become the walker's current node. Returns null, and changes nothing, when the
  // token is refused.
  YcluiSyntaxNode* next(const YcluiToken& token);

  const YcluiToken* currentToken() const;        // the last one
  const YcluiToken* tokenAt(YWord index) const;  // from 0
  YWord numberOfToken() const { return static_cast<YWord>(tokens.count()); }
  // The index of the first token of the same id, or -1.
  int findToken(const YcluiToken& token) const;

  // Removes the last token and returns the token that is last then. The walker returns to its state
  // before the token's step; a token that did not move the walker leaves it unchanged.
  const YcluiToken* popLastToken();
  // 1 when an indefinite node accepted the last token, else 0.
  YWord lastIsIndefinite() const;

  // Removes a token and steps again with all others, since a token decides what may follow it.
  // Returns 1 when all of them are accepted. Returns 0 and changes nothing when there is no token
  // at that index. Returns 0 when one of the others is refused: the walker then steps with all the
  // old tokens, and those that it accepts stay, in their order.
  YWord removeToken(YWord index);

  // The node with which the command began: the first present node that accepts a token and is not
  // indefinite. Null when there is none yet.
  const YcluiSyntaxNode* firstNode() const;

  // The line without and with its prefix, possibly the empty text. Valid until the next operation
  // that changes the frame.
  const char* currentLine() const;
  const char* wholeLine() const;

 private:
  friend class YcluiFrames;
  friend class YcluiParserCore;

  YcluiToken_Stack tokens;
  // The texts contain the first `shown` tokens. The others are appended when a text is requested,
  // since most lines are never shown.
  mutable YString line;
  mutable YString whole;
  mutable std::int32_t shown = 0;
  YString prefix;
  // Number of tokens at the beginning that firstNode has passed over. Each token is examined once,
  // so that firstNode stays cheap in a long line of indefinite words.
  mutable std::int32_t passed = 0;

  // Add and remove a token without the walker. popToken returns the token that is last then.
  void pushToken(const YcluiToken& token);
  const YcluiToken* popToken();

  // Adds an incomplete token at the end of the line. hideToken removes it, and so does the next
  // change of the frame.
  void showToken(const YcluiToken& token);
  void hideToken();

  void storeToken(const YcluiToken& token);
  void dropToken();
  void showAll() const;
  void extendTexts(const char* echo) const;
  void cutTexts(std::uint32_t lineLength);
  bool stepAgain(const YcluiToken_Array& saved, int without);

  // A callback receives the texts without a copy and may change the frame before it returns. While
  // texts are held, a change first moves them to `keptTexts`, where they stay unchanged until the
  // last holder releases them. holdTexts returns the argument for releaseTexts.
  std::uint32_t holdTexts();
  void releaseTexts(std::uint32_t held);
  void keepHeldTexts() const;

  // State of this object that is not copied.
  struct Bookkeeping {
    Bookkeeping() = default;
    Bookkeeping(const Bookkeeping&) {}
    Bookkeeping& operator=(const Bookkeeping&) = delete;

    std::uint32_t users = 0;           // operations of the parser that will use this frame again
    bool isIndependent = false;        // interrupts no command in a frame below
    bool isGone = false;               // not a frame any more; its last user destroys it
    bool isShowing = false;            // the last token was added by showToken
    std::uint32_t holders = 0;         // of texts, including those in keptTexts
    std::uint32_t presentHolders = 0;  // of `line` and `whole`
    std::uint32_t textVersion = 0;     // incremented when texts are moved to keptTexts
    YArray<YString> keptTexts;
  };
  mutable Bookkeeping own;
};

using YcluiLineParserP_Array = YArray<YcluiLineParser*>;
using YcluiLineParserP_Stack = YStack<YcluiLineParser*>;

#endif  // PARSER_YCLUILINEPARSER_H_
