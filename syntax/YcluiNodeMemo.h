// What walkers remember of a node. Internal to the walker.

#ifndef SYNTAX_YCLUINODEMEMO_H_
#define SYNTAX_YCLUINODEMEMO_H_

#include <cstdint>
#include <memory>
#include <new>

#include "syntax/YcluiIdIndex.h"

// A step that begins at a structural node, or behind a token node, and nowhere else: the token
// nodes that come up in it, and the ways behind the node to the end of the graph. Both hold for
// walks to that end while nothing has changed.
//
// The matches of a step with few of them stand in the memo itself, so that a step that is known
// reads one or two lines of memory here.
class alignas(64) YcluiNodeMemo {
 public:
  enum class Step : std::uint8_t {
    Unknown,
    Narrow,   // one step has looked at a few links, so the next one collects what comes up
    Wide,     // one step has looked at many, so the next one makes the index
    Few,      // the memo holds all token nodes that come up
    Indexed,  // `matches` of the large part does
    Covered,  // what comes up stands in too many indexes, or does not fit in here
  };
  Step step = Step::Unknown;
  std::int8_t ways = Unknown;
  static constexpr std::int8_t Unknown = -1;

  // What only places with many alternatives need.
  struct Large {
    YcluiIdIndex matches;
    // The successors as indefinite nodes, up to the link that was read last.
    const YRing* read = nullptr;
    YcluiIdIndex indefinites;
  };
  Large& large() {
    if (large_ == nullptr) large_.reset(YChecked(new (std::nothrow) Large));
    return *large_;
  }

  // Of a step that is known. The matches of the id, or null.
  YcluiIdIndex::Row* find(unsigned long id) {
    if (step == Step::Indexed) return large_->matches.find(id);
    for (int i = 0; i < fewCount_; ++i) {
      if (few_[i].id == id) return &few_[i];
    }
    return nullptr;
  }
  void pushAll(const YcluiIdIndex::Row& row, YcluiSyntaxNodeStk& nodes) const {
    nodes.push(row.node);
    if (row.next != YcluiIdIndex::None) large_->matches.pushOthers(row, nodes);
  }
  // Takes all that comes up, if there is not much of it and no id twice.
  void takeFew(const YcluiSyntaxNodeStk& matches) {
    if (matches.count() > MostFew) return;
    fewCount_ = 0;
    for (int i = 0; i < matches.count(); ++i) {
      YcluiSyntaxNode* node = matches.at(i);
      if (find(node->tokenId) != nullptr) return;
      few_[fewCount_++] = {node, node->tokenId};
    }
    step = Step::Few;
  }
  void takeAll(const YcluiSyntaxNodeStk& matches) {
    YcluiIdIndex& index = large().matches;
    for (int i = 0; i < matches.count(); ++i) index.add(matches.at(i));
    step = Step::Indexed;
  }

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
    if (large_ != nullptr) large_->matches.clear();
  }

 private:
  static constexpr int MostFew = 6;
  std::uint8_t fewCount_ = 0;
  std::uint64_t changes_ = 0;
  const YcluiSyntaxNode* end_ = nullptr;
  std::unique_ptr<Large> large_;
  YcluiIdIndex::Row few_[MostFew];
};

#endif  // SYNTAX_YCLUINODEMEMO_H_
