// The frames of a parser and the syntax that they walk.

#ifndef PARSER_YCLUIFRAMES_H_
#define PARSER_YCLUIFRAMES_H_

#include <cstdint>

#include "foundation/YStack.h"
#include "foundation/YTypes.h"
#include "parser/YcluiLineParser.h"
#include "syntax/YcluiSyntaxGraph.h"

// Owns the frames, the graph and the indefinite nodes. Callbacks and commands may replace any of
// them while an operation of the parser goes on with the former ones: a frame that is in use is
// destroyed by its last user, and a graph that was replaced, with its indefinite nodes, when
// freeRetired is called.
class YcluiFrames {
 public:
  YcluiFrames() = default;
  YcluiFrames(const YcluiFrames&) = delete;
  YcluiFrames& operator=(const YcluiFrames&) = delete;
  ~YcluiFrames();

  // Owns the graph from now on. There are no frames then, and no indefinite nodes.
  void replaceSyntax(YcluiSyntaxGraph* graph);
  // Owns the node from now on. Nothing without a syntax, or for null.
  void addIndefinite(YcluiSyntaxNode* node);
  // The indefinite nodes are its successors; null without a syntax.
  const YcluiSyntaxNode* indefiniteRoot() const { return indefiniteRoot_; }
  void freeRetired();

  // Puts an empty frame on top. False when there is no memory for it.
  bool push(const char* prefix);
  // There must be a frame.
  void drop();
  // The top; null without a frame.
  YcluiLineParser* current() const { return stack_.isEmpty() != 0 ? nullptr : stack_.topSlot(); }
  int depth() const { return stack_.count(); }

  // The node on which the command began that the current frame interrupts; null without one.
  const YcluiSyntaxNode* interruptedNode() const;
  // Whether the interrupted command admits the one in `frame`, which holds the accepted token.
  bool admits(const YcluiLineParser& frame, const YcluiSyntaxNode& accepted) const;

  // An operation continues with a frame after it has called out. While a frame is in use no other
  // one can have its address.
  class Use {
   public:
    explicit Use(YcluiLineParser& frame) : frame_(frame) { ++frame_.own.users; }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;
    ~Use() {
      if (--frame_.own.users == 0 && frame_.own.isGone) delete &frame_;
    }
    // Whether it is still one of the frames.
    bool isThere() const { return !frame_.own.isGone; }

   private:
    YcluiLineParser& frame_;
  };

  // Callbacks look at the texts of a frame.
  class TextUse {
   public:
    explicit TextUse(YcluiLineParser& frame)
        : use_(frame), frame_(frame), held_(frame.holdTexts()) {}
    TextUse(const TextUse&) = delete;
    TextUse& operator=(const TextUse&) = delete;
    ~TextUse() { frame_.releaseTexts(held_); }

   private:
    Use use_;
    YcluiLineParser& frame_;
    std::uint32_t held_;
  };

 private:
  YcluiLineParserP_Stack stack_;
  YcluiSyntaxGraph* graph_ = nullptr;
  YcluiSyntaxNode* indefiniteRoot_ = nullptr;
  YStack<YcluiSyntaxGraph*> retiredGraphs_;
  YStack<YcluiSyntaxNode*> retiredRoots_;
  YcluiSyntaxNode* formerRoot_ = nullptr;  // its successors are the indefinite nodes of before

  void dropAll();
  void replaceIndefiniteRoot();
  void freeRoot(YcluiSyntaxNode* root);
  void deleteIndefinites();
};

#endif  // PARSER_YCLUIFRAMES_H_
