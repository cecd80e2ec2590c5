// The variables that texts set. Internal to the preview.

#ifndef PARSER_YCLUIASSIGNMENTS_H_
#define PARSER_YCLUIASSIGNMENTS_H_

#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

#include "foundation/YString.h"

// One assignment, and those before it.
struct YcluiAssignment {
  YcluiAssignment(std::string_view form, std::shared_ptr<YcluiAssignment> earlier);
  YcluiAssignment(const YcluiAssignment&) = delete;
  YcluiAssignment& operator=(const YcluiAssignment&) = delete;
  // Does not recurse: a file can have a million of them.
  ~YcluiAssignment();

  YString text;
  std::shared_ptr<YcluiAssignment> before;
  std::size_t number;  // from 1
};

// The assignments that were read so far, each as its text: reading them again in their order sets
// the same variables. A value that shares what it has in common with the values that it came from,
// so that one can be kept for every line of a file.
class YcluiAssignments {
 public:
  YcluiAssignments() = default;
  explicit YcluiAssignments(std::shared_ptr<YcluiAssignment> last) : last_(std::move(last)) {}

  void add(std::string_view text);
  std::size_t count() const { return last_ == nullptr ? 0 : last_->number; }
  // The last one, null without one.
  const std::shared_ptr<YcluiAssignment>& last() const { return last_; }
  // Whether these are the first ones of the other, or all.
  bool isBeginningOf(const YcluiAssignments& other) const;

  // Costs the number of assignments that the two do not share.
  bool operator==(const YcluiAssignments& other) const;

 private:
  std::shared_ptr<YcluiAssignment> last_;
};

#endif  // PARSER_YCLUIASSIGNMENTS_H_
