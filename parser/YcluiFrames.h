// The frames of a parser and their syntax. Internal to the parser.

#ifndef PARSER_YCLUIFRAMES_H_
#define PARSER_YCLUIFRAMES_H_

#include <cstdint>

#include "foundation/YStack.h"
#include "foundation/YTypes.h"
#include "parser/YcluiLineParser.h"
#include "syntax/YcluiSyntaxGraph.h"

// Owns the frames, the graph and the indefinite nodes. Callbacks and commands may replace any of
// them while an operation of the parser still uses the previous ones. So a frame in use is
// destroyed by its last user, and a replaced graph is retired: it is destroyed by freeRetired.
// Replaced indefinite nodes live as long as this object.
class YcluiFrames {
 public:
  YcluiFrames() = default;
  YcluiFrames(const YcluiFrames&) = delete;
  YcluiFrames& operator=(const YcluiFrames&) = delete;
  ~YcluiFrames();

  // Takes ownership of the graph, which may be the present or a retired one, and removes all frames
  // and indefinite nodes.
  void replaceSyntax(YcluiSyntaxGraph* graph);
  // Takes ownership of the node. Does nothing without a syntax, or for null.
  void addIndefinite(YcluiSyntaxNode* node);
  // The syntax, null before there is one.
  const YcluiSyntaxGraph* graph() const { return graph_; }
  // The node whose successors are the indefinite nodes; null without a syntax.
  const YcluiSyntaxNode* indefiniteRoot() const { return indefiniteRoot_; }
  // Destroys the retired graphs. Called when no operation of the parser is running.
  void freeRetired();

  // Puts an empty frame on top, which interrupts nothing if it is independent. Returns false when
  // there is no memory for it.
  bool push(const char* prefix, bool isIndependent = false);
  // Removes the top. REQUIRES: depth() > 0
  void drop();
  // The top; null without a frame.
  YcluiLineParser* current() const { return stack_.isEmpty() != 0 ? nullptr : stack_.topSlot(); }
  int depth() const { return stack_.count(); }

  // The first node of the command that the current frame interrupts; null without one.
  const YcluiSyntaxNode* interruptedNode() const;
  // Whether the interrupted command admits the one in `frame`, whose last token was accepted by the
  // node.
  bool admits(const YcluiLineParser& frame, const YcluiSyntaxNode& accepted) const;

  // Keeps a frame for an operation that uses it again after a callback or command. Until then no
  // other frame can have its address.
  class Use {
   public:
    explicit Use(YcluiLineParser& frame) : frame_(frame) { ++frame_.own.users; }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;
    ~Use() {
      if (--frame_.own.users == 0 && frame_.own.isGone) delete &frame_;
    }
    // Whether the frame is still on the stack.
    bool isThere() const { return !frame_.own.isGone; }

   private:
    YcluiLineParser& frame_;
  };

  // Keeps the texts of a frame unchanged for a callback that receives them.
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
  YcluiSyntaxNode* formerRoot_ = nullptr;  // its successors are the replaced indefinite nodes

  void dropAll();
  void recall(const YcluiSyntaxGraph& graph);
  void replaceIndefiniteRoot();
  void freeRoot(YcluiSyntaxNode* root);
  void deleteIndefinites();
};

#endif  // PARSER_YCLUIFRAMES_H_
