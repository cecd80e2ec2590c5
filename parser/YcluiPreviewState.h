// The state of a preview between two texts.

#ifndef PARSER_YCLUIPREVIEWSTATE_H_
#define PARSER_YCLUIPREVIEWSTATE_H_

#include <cstdint>
#include <memory>

#include "foundation/YTypes.h"

struct YcluiAssignment;
struct YcluiTrialState;

// What of the texts so far decides how a preview reads the next one: the place in the syntax, a
// token that waits for arguments, the variables that were set, the text that is unread, and whether
// a command would have run. A value, to be kept, copied and compared at will, for each line of a
// file if need be. Between commands, which is where most lines end, it is four words and refers to
// nothing but the assignments, which all states of a file share; elsewhere copies share the rest.
//
// A state belongs to a parser as it is: to its syntax, words and variables. Change one of these and
// read again; the change of a syntax is noticed (YcluiPreview::read), that of a word or of a
// variable is not. It may outlive preview and parser.
class YQRT_API YcluiPreviewState {
 public:
  // The void state: of no parser.
  YcluiPreviewState();
  YcluiPreviewState(const YcluiPreviewState& other);
  YcluiPreviewState(YcluiPreviewState&& other) noexcept;
  ~YcluiPreviewState();
  YcluiPreviewState& operator=(const YcluiPreviewState& other);
  YcluiPreviewState& operator=(YcluiPreviewState&& other) noexcept;

  // Whether every text means the same after both: it has the same pieces and leads to equal states
  // again. Two states that were reached by different assignments are different, whatever the values
  // that the variables have then. Costs the length of what is open, and the number of assignments
  // that the two do not share.
  bool operator==(const YcluiPreviewState& other) const;
  bool operator!=(const YcluiPreviewState& other) const { return !(*this == other); }

 private:
  friend class YcluiPreviewCore;

  std::uint64_t generation_ = 0;  // of the syntax; 0 for the void state
  bool isSupposed_ = false;
  std::shared_ptr<YcluiAssignment> assignments_;
  std::shared_ptr<const YcluiTrialState> open_;  // all of the state; null between commands
};

#endif  // PARSER_YCLUIPREVIEWSTATE_H_
