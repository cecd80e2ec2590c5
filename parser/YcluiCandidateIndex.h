// The words that can come at one place, in the order of their names. Internal to the parser.

#ifndef PARSER_YCLUICANDIDATEINDEX_H_
#define PARSER_YCLUICANDIDATEINDEX_H_

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include "foundation/YMemory.h"
#include "parser/YcluiPreview.h"

// Once the candidates of a place are in order, those that begin with a prefix are a range for each
// kind. So a prefix costs two binary searches, however many words it finds.
class YcluiCandidateIndex {
 public:
  // Replace the candidates: clear, add each, sort. Of several with one name and kind the first is
  // kept, and of words (next and anywhere) the one that continues the command.
  void clear();
  void add(const YcluiCandidate& candidate) { all_.push_back(candidate); }
  void sort();

  // Selects those whose names begin with the prefix, in the order of the kinds, each by name.
  void select(std::string_view prefix);
  void selectNone() { selected_.fill({}); }
  std::size_t count() const;
  // REQUIRES: index < count()
  const YcluiCandidate& at(std::size_t index) const;

 private:
  static constexpr std::size_t Kinds = YcluiCandidateVariable + 1;
  struct Range {
    std::size_t begin = 0;
    std::size_t end = 0;
  };

  std::vector<YcluiCandidate, YAllocator<YcluiCandidate>> all_;
  std::array<Range, Kinds> kinds_;
  std::array<Range, Kinds> selected_;
};

#endif  // PARSER_YCLUICANDIDATEINDEX_H_
