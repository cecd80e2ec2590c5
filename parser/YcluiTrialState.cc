#include "parser/YcluiTrialState.h"

#include <cstring>

namespace {

bool IsSameText(const char* a, const char* b) {
  return std::strcmp(a, b) == 0;
}

}  // namespace

bool YcluiTrialState::isBetweenCommands() const {
  return !isOpen && !hasTokens && first == nullptr && unread.length == 0 &&
         walker.isTerminated() == 0 && walker.syntaxGraph() != nullptr &&
         walker.currentSyntaxNode() == walker.syntaxGraph()->start;
}

void YcluiTrialState::clear() {
  walker.reset();
  first = nullptr;
  hasTokens = isOpen = false;
  unread.truncate(0);
}

bool YcluiTrialState::operator==(const YcluiTrialState& other) const {
  if (generation != other.generation || first != other.first) return false;
  if (hasTokens != other.hasTokens || isSupposed != other.isSupposed) return false;
  if (isOpen != other.isOpen || !IsSameText(unread.buffer, other.unread.buffer)) return false;
  if (isOpen) {
    if (tokenId != other.tokenId || type != other.type || argc != other.argc) return false;
    if (expanded != other.expanded || !IsSameText(word.buffer, other.word.buffer)) return false;
  }
  return walker.isWith(other.walker) && assignments == other.assignments;
}
