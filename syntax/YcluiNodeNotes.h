// The nodes that an operation of the walker has visited. Internal to the walker.

#ifndef SYNTAX_YCLUINODENOTES_H_
#define SYNTAX_YCLUINODENOTES_H_

#include <cstddef>
#include <cstdint>

#include "platform/containers/YHashTable.h"

class YcluiSyntaxNode;

// A map from nodes to numbers.
class YcluiNodeNotes {
 public:
  // Removes all nodes. The memory for few nodes is kept, so that most operations do not allocate.
  void clear() { entries_.clear(); }

  // Reserves memory for so many nodes.
  void reserve(std::size_t nodes) { entries_.reserve(nodes); }

  // The number of the node, or null when the node has none. Valid until a node is added.
  std::int32_t* find(const YcluiSyntaxNode* node) {
    Entry* entry = entries_.find(Entry{node}.hash(),
                                 [node](const Entry& known) { return known.node == node; });
    return entry == nullptr ? nullptr : &entry->number;
  }
  // Adds a node with a number. Returns false and changes nothing when the node has one.
  bool add(const YcluiSyntaxNode* node, std::int32_t number = 0) {
    if (find(node) != nullptr) return false;
    entries_.add({node, number});
    return true;
  }

 private:
  struct Entry {
    const YcluiSyntaxNode* node = nullptr;
    std::int32_t number = 0;
    bool isEmpty() const { return node == nullptr; }
    std::uint64_t hash() const { return reinterpret_cast<std::uintptr_t>(node) >> 4; }
  };
  YHashTable<Entry> entries_;
};

#endif  // SYNTAX_YCLUINODENOTES_H_
