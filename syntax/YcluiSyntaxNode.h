// One state of a syntax graph.

#ifndef SYNTAX_YCLUISYNTAXNODE_H_
#define SYNTAX_YCLUISYNTAXNODE_H_

#include <cstddef>
#include <cstdint>
#include <new>

#include "foundation/YString.h"
#include "foundation/YTypes.h"
#include "platform/containers/YLinkList.h"
#include "syntax/YcluiChangeCount.h"

enum YcluiNodeKind : std::uint16_t {
  YcluiNodePlain = 0,       // an ordinary node
  YcluiNodeClosure = 1,     // belongs to a repeated part
  YcluiNodeIndefinite = 2,  // is outside the graph and accepted anywhere in a line
};

// The list that a node inherits holds its successors, in the order of their `append`. It does not
// own them: a node may follow any number of nodes, itself included, and a graph owns all its nodes.
//
// A node with a `tokenId` of 0 is structural: it accepts nothing and only leads on to its
// successors. Any other node accepts the token of that id, and only such a node fires its `action`.
//
// Walkers cache what they have read. They notice every change made by an operation of this class,
// and the node's end; whoever writes `tokenId`, `kind` or `action` directly calls NoteChange.
class YQRT_API YcluiSyntaxNode : public YLinkList {
 public:
  std::uint32_t tokenId;
  YcluiNodeKind kind = YcluiNodePlain;
  std::uint8_t priority = 127;        // of its command, when that interrupts another one
  std::uint8_t interruptLimit = 127;  // the highest priority that may interrupt its command
  YString* action = nullptr;          // the command template; owned; null when there is none

  // The id is cut to 32 bits. A null action leaves the node without one.
  explicit YcluiSyntaxNode(unsigned long id = 0, const char* actionText = nullptr);
  // A copy without successors, and with an action of its own.
  YcluiSyntaxNode(const YcluiSyntaxNode& other);
  YcluiSyntaxNode& operator=(const YcluiSyntaxNode&) = delete;
  // Leaves the successors alone.
  ~YcluiSyntaxNode();

  // Nodes share blocks of memory.
  static void* operator new(std::size_t size);
  static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
  static void operator delete(void* node, std::size_t size);

  // The operations of the list of successors.
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
  // Takes over all successors of another node, in their order, after those that are here. Costs
  // the same however many they are.
  void takeSuccessors(YcluiSyntaxNode& from) {
    changes_.note();
    from.changes_.note();
    attachAll(from);
  }

  // Makes `text` the action; null makes it an empty text. 0 when there is no memory for a new
  // action: YErrNoMemory is recorded as YErrFatal, and the node stays without one.
  YWord setAction(const char* text);
  void setKind(YcluiNodeKind newKind) {
    changes_.note();
    kind = newKind;
  }

  // 1 when a command that begins with `other` may interrupt one that began with this node. Two
  // nodes with the priorities that they were made with always admit each other.
  YWord admitsInterruptBy(const YcluiSyntaxNode& other) const {
    return interruptLimit >= other.priority ? 1 : 0;
  }

  // Makes all walkers discard what they have cached, of any graph.
  static void NoteChange() { YcluiChangeCount::NoteEverywhere(); }

  // From now on the node counts its changes, and its end, in that counter only. True when it did
  // not before; that is the last change which its former counter counts.
  bool countChangesIn(const YcluiChangeCount& count) const {
    if (changes_ == count) return false;
    changes_.note();
    changes_ = count;
    return true;
  }

 private:
  mutable YcluiChangeCount changes_;
};

// Walks the successors of a node, in the order of its list:
//   for (YcluiSuccessorIterator i(node); i.ring != nullptr; ++i) use(i.node());
class YcluiSuccessorIterator : public YLinkListIterator {
 public:
  explicit YcluiSuccessorIterator(const YcluiSyntaxNode& of) : YLinkListIterator(of) {}
  YcluiSyntaxNode* node() const { return static_cast<YcluiSyntaxNode*>(current()); }
};

#endif  // SYNTAX_YCLUISYNTAXNODE_H_
