#include "parser/YcluiTrialState.h"

#include <cstring>

namespace {

bool IsSameText(const char* a, const char* b) {
  return a == nullptr || b == nullptr ? a == b : std::strcmp(a, b) == 0;
}

bool IsSameToken(const YcluiToken& a, const YcluiToken& b) {
  return a.id() == b.id() && a.type() == b.type() && a.argc() == b.argc() &&
         IsSameText(a.string(), b.string());
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
  if (isOpen && (expanded != other.expanded || !IsSameToken(token, other.token))) return false;
  return walker.isWith(other.walker) && assignments == other.assignments;
}
