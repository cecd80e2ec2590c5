// What walkers remember of a node. Internal to the walker.

#ifndef SYNTAX_YCLUINODEMEMO_H_
#define SYNTAX_YCLUINODEMEMO_H_

#include <cstdint>

#include "syntax/YcluiIdIndex.h"

class YcluiNodeMemo {
 public:
  // A step that begins at a structural node, or behind a token node, and nowhere else: the nodes
  // that come up in it, and the ways behind the node to the end of the graph. Both hold for walks
  // to that end while nothing has changed.
  enum class Step {
    Unknown,
    Wide,     // one step has looked at many links, so the next one makes the index
    Indexed,  // `matches` holds all token nodes that come up
    Covered,  // what comes up stands in too many indexes already
  };
  Step step = Step::Unknown;
  int ways = Unknown;
  YcluiIdIndex matches;
  static constexpr int Unknown = -1;

  // The successors as indefinite nodes, up to the link that was read last.
  const YRing* read = nullptr;
  YcluiIdIndex indefinites;

  bool holds(const YcluiSyntaxNode* end) const {
    return changes_ == YcluiSyntaxNode::Changes() && end_ == end;
  }
  // Forgets what does not hold.
  void renew(const YcluiSyntaxNode* end) {
    if (holds(end)) return;
    changes_ = YcluiSyntaxNode::Changes();
    end_ = end;
    step = Step::Unknown;
    ways = Unknown;
    matches.clear();
  }

 private:
  std::uint64_t changes_ = 0;
  const YcluiSyntaxNode* end_ = nullptr;
};

#endif  // SYNTAX_YCLUINODEMEMO_H_
