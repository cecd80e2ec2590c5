// One frame of a parser: the command that is being entered at one level of nesting.

#ifndef PARSER_YCLUILINEPARSER_H_
#define PARSER_YCLUILINEPARSER_H_

#include "foundation/YArray.h"
#include "foundation/YStack.h"
#include "foundation/YString.h"
#include "foundation/YTypes.h"
#include "lex/YcluiToken.h"
#include "syntax/YcluiNfa.h"

// A walker that remembers what it walked: the tokens of the command so far and the text that shows
// them. A line in this sense is one command, however many lines of input it came in.
//
// Between any two operations `currentLine` is the echo strings of the tokens joined by one blank,
// and `wholeLine` is the prefix, one blank and the line, or the one of the two that is not empty.
// A stored token holds the walker's current node from before its step as `previousNode` and that
// behind it as `presentNode`. The two are the same for a token that an indefinite node took, since
// the walker does not move for it, and null for one that was added without a step.
//
// Parsers make and destroy frames; the graph and the indefinite nodes are theirs. Adding a token
// and taking back the last one cost the length of that token, whatever the length of the line.
//
// A token is answered as a pointer, null when there is none, which stays good until the next
// operation that changes the frame. No operation records a code of its own.
class YQRT_API YcluiLineParser : public YcluiNfa {
 public:
  // Can be used when syntaxGraph has given it a graph. Null is the empty prefix.
  explicit YcluiLineParser(const char* prefixText);
  // Walks the same graph from the same place.
  YcluiLineParser(const YcluiLineParser& other) = default;
  YcluiLineParser& operator=(const YcluiLineParser&) = delete;
  ~YcluiLineParser() = default;

  // Resets the walker and empties the line. 0, with the tokens as they were, without a graph.
  YWord reset();

  // Steps with the token and stores a copy of it. Answers the node that accepted it, which for an
  // indefinite one is not the walker's current node; null when it is refused, with no change.
  YcluiSyntaxNode* next(const YcluiToken& token);

  const YcluiToken* currentToken() const;  // the last one
  const YcluiToken* tokenAt(YWord index) const;
  YWord numberOfToken() const { return static_cast<YWord>(tokens.count()); }
  // The index of the first token of the same id, or -1.
  int findToken(const YcluiToken& token) const;

  // Takes the last token back, and answers the one that is last then. The walker goes back to the
  // node at which the token found it; a token that did not move it leaves it alone.
  const YcluiToken* popLastToken();
  // Whether that token came as a word that works at any place of the line.
  YWord lastIsIndefinite() const;

  // Takes a token out by walking the others again, since what stood in front of a token decides
  // what it may be. 0 when there is no such token, or when one of the others is then refused: the
  // frame then holds those of the old tokens, in their order, that the walker takes once more.
  YWord removeToken(YWord index);

  // The node on which the command really began: the first present node that accepts a token and is
  // not indefinite. Null when there is none yet.
  const YcluiSyntaxNode* firstNode() const;

  // The line without and with its prefix; the empty text when it is empty.
  const char* currentLine() const;
  const char* wholeLine() const;

 private:
  friend class YcluiFrames;
  friend class YcluiParserCore;

  YcluiToken_Stack tokens;
  // The texts show the first `shown` tokens. The others join them when somebody asks, since most
  // lines are never looked at.
  mutable YString line;
  mutable YString whole;
  mutable std::int32_t shown = 0;
  YString prefix;
  // How many of the tokens are known to lie before the one on which the command begins. Each token
  // is asked once, so that a long line of words that may stand anywhere stays cheap.
  mutable std::int32_t passed = 0;

  // Add and take out a token without the walker. popToken answers the token that is last then.
  void pushToken(const YcluiToken& token);
  const YcluiToken* popToken();

  // Shows a token that is not complete at the end of the line. It is gone again as soon as anything
  // changes the frame, and at hideToken.
  void showToken(const YcluiToken& token);
  void hideToken();

  void storeToken(const YcluiToken& token);
  void dropToken();
  void showAll() const;
  void extendTexts(const char* echo) const;
  void cutTexts(std::uint32_t lineLength);
  YWord takeAgain(const YcluiToken_Array& saved, int without);

  // Callbacks are given the texts in place and may change the frame while they look at them: what
  // is held is kept as it is until the last holder lets go. holdTexts answers what releaseTexts
  // wants.
  std::uint32_t holdTexts();
  void releaseTexts(std::uint32_t held);
  void keepHeldTexts() const;

  // What belongs to this very frame and not to a copy of it.
  struct Bookkeeping {
    Bookkeeping() = default;
    Bookkeeping(const Bookkeeping&) {}
    Bookkeeping& operator=(const Bookkeeping&) = delete;

    std::uint32_t users = 0;           // operations of the parser that go on with this frame
    bool isGone = false;               // off the parser's stack, destroyed by its last user
    bool isShowing = false;            // the last token is there for the show
    std::uint32_t holders = 0;         // of texts, kept ones included
    std::uint32_t presentHolders = 0;  // of the texts as they stand
    std::uint32_t textSerial = 0;      // counts the times that texts were kept
    YArray<YString> keptTexts;
  };
  mutable Bookkeeping own;
};

using YcluiLineParserP_Array = YArray<YcluiLineParser*>;
using YcluiLineParserP_Stack = YStack<YcluiLineParser*>;

#endif  // PARSER_YCLUILINEPARSER_H_
