// What a walk over a graph has noted of the nodes that it visited. Internal to the walker.

#ifndef SYNTAX_YCLUINODENOTES_H_
#define SYNTAX_YCLUINODENOTES_H_

#include <cstddef>
#include <cstdint>

#include "platform/containers/YHashTable.h"

class YcluiSyntaxNode;

// A set of nodes with a number for each.
class YcluiNodeNotes {
 public:
  // Forgets all nodes. Walks over few nodes allocate nothing after the first one.
  void clear() { rows_.clear(); }

  // Makes room for so many nodes.
  void reserve(std::size_t nodes) { rows_.reserve(nodes); }

  // The number of the node, or null when the node has none; until the next node is added.
  std::int32_t* find(const YcluiSyntaxNode* node) {
    Row* row =
        rows_.find(Row{node}.hash(), [node](const Row& known) { return known.node == node; });
    return row == nullptr ? nullptr : &row->number;
  }
  // Gives a node that has no number one; false, with no change, when it has one.
  bool add(const YcluiSyntaxNode* node, std::int32_t number = 0) {
    if (find(node) != nullptr) return false;
    rows_.add({node, number});
    return true;
  }

 private:
  struct Row {
    const YcluiSyntaxNode* node = nullptr;
    std::int32_t number = 0;
    bool isEmpty() const { return node == nullptr; }
    std::uint64_t hash() const { return reinterpret_cast<std::uintptr_t>(node) >> 4; }
  };
  YHashTable<Row> rows_;
};

#endif  // SYNTAX_YCLUINODENOTES_H_
