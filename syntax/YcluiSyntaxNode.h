// A node of a syntax graph.

#ifndef SYNTAX_YCLUISYNTAXNODE_H_
#define SYNTAX_YCLUISYNTAXNODE_H_

#include <cstdint>

#include "foundation/YPooled.h"
#include "foundation/YString.h"
#include "foundation/YTypes.h"
#include "platform/containers/YLinkList.h"
#include "syntax/YcluiChangeCount.h"

enum YcluiNodeKind : std::uint16_t {
  YcluiNodePlain = 0,       // an ordinary node
  YcluiNodeClosure = 1,     // belongs to a repeated part
  YcluiNodeIndefinite = 2,  // outside the graph, accepted anywhere in a line
};

// The inherited list contains the successors of the node, in the order in which they were appended.
// It does not own them: the graph owns all its nodes, and a node may be the successor of any number
// of nodes, itself included.
//
// A node with a `tokenId` of 0 is structural: it accepts no token and only leads to its successors.
// Any other node is a token node and accepts the tokens of that id. Only token nodes run their
// `action`.
//
// Walkers cache what they read from nodes. Changes by the operations of this class and the
// destruction of the node invalidate these caches; after writing `tokenId`, `kind` or `action`
// directly, call NoteChange.
class YQRT_API YcluiSyntaxNode : public YLinkList, public YPooled<YcluiSyntaxNode> {
 public:
  std::uint32_t tokenId;
  YcluiNodeKind kind = YcluiNodePlain;
  std::uint8_t priority = 127;        // of a command that begins with the node
  std::uint8_t interruptLimit = 127;  // the highest priority that may interrupt such a command
  YString* action = nullptr;          // the command template, owned; null when there is none

  // The id is cut to 32 bits. Null means no action.
  explicit YcluiSyntaxNode(unsigned long id = 0, const char* actionText = nullptr);
  // Copies everything but the successors; the action is copied too.
  YcluiSyntaxNode(const YcluiSyntaxNode& other);
  YcluiSyntaxNode& operator=(const YcluiSyntaxNode&) = delete;
  // Destroys the action and the links, but not the successors.
  ~YcluiSyntaxNode();

  // The operations of the list, which invalidate caches.
  void* append(void* node) {
    changes_.note();
    return YLinkList::append(node);
  }
  YRing* attach(YRing* ring) {
    changes_.note();
    return YLinkList::attach(ring);
  }
  YRing* detach(YRing* ring) {
    changes_.note();
    return YLinkList::detach(ring);
  }
  void* detach(void* node) {
    changes_.note();
    return YLinkList::detach(node);
  }
  // Moves all successors of another node to the end of this list, in their order, in constant time.
  void takeSuccessors(YcluiSyntaxNode& from) {
    changes_.note();
    from.changes_.note();
    attachAll(from);
  }

  // Sets the action; null gives an empty text. Returns 0 with YErrNoMemory, severity YErrFatal,
  // when the node has no action and there is no memory for one.
  YWord setAction(const char* text);
  void setKind(YcluiNodeKind newKind) {
    changes_.note();
    kind = newKind;
  }

  // Returns 1 when a command that begins with `other` may interrupt one that began with this node.
  // Nodes with the default priorities admit each other.
  YWord admitsInterruptBy(const YcluiSyntaxNode& other) const {
    return interruptLimit >= other.priority ? 1 : 0;
  }

  // Invalidates the caches of all graphs.
  static void NoteChange() { YcluiChangeCount::NoteEverywhere(); }

  // Makes the node count its changes, and its destruction, in that counter instead of the former
  // one. Returns false and does nothing when it does so already. The former counter counts this
  // call as a change.
  bool countChangesIn(const YcluiChangeCount& count) const {
    if (changes_ == count) return false;
    changes_.note();
    changes_ = count;
    return true;
  }

 private:
  mutable YcluiChangeCount changes_;
};

// Iterates over the successors of a node in their order:
//   for (YcluiSuccessorIterator i(node); i.ring != nullptr; ++i) use(i.node());
class YcluiSuccessorIterator : public YLinkListIterator {
 public:
  explicit YcluiSuccessorIterator(const YcluiSyntaxNode& of) : YLinkListIterator(of) {}
  YcluiSyntaxNode* node() const { return static_cast<YcluiSyntaxNode*>(current()); }
};

#endif  // SYNTAX_YCLUISYNTAXNODE_H_
