#include "parser/YcluiPreviewState.h"

#include "parser/YcluiAssignments.h"
#include "parser/YcluiTrialState.h"

YcluiPreviewState::YcluiPreviewState() = default;
YcluiPreviewState::YcluiPreviewState(const YcluiPreviewState& other) = default;
YcluiPreviewState::YcluiPreviewState(YcluiPreviewState&& other) noexcept = default;
YcluiPreviewState::~YcluiPreviewState() = default;
YcluiPreviewState& YcluiPreviewState::operator=(const YcluiPreviewState& other) = default;
YcluiPreviewState& YcluiPreviewState::operator=(YcluiPreviewState&& other) noexcept = default;

bool YcluiPreviewState::operator==(const YcluiPreviewState& other) const {
  if (generation_ != other.generation_ || isSupposed_ != other.isSupposed_) return false;
  if (open_ == nullptr || other.open_ == nullptr) {
    return open_ == other.open_ &&
           YcluiAssignments(assignments_) == YcluiAssignments(other.assignments_);
  }
  return open_ == other.open_ || *open_ == *other.open_;
}
