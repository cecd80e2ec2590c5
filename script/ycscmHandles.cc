#include "script/ycscmHandles.h"

#include <functional>
#include <new>
#include <unordered_set>

#include "foundation/YErr.h"
#include "foundation/YMemory.h"
#include "platform/engine/ScmVMExternal.h"
#include "syntax/YcluiSyntaxGraph.h"

namespace {

using Handles =
    std::unordered_set<void*, std::hash<void*>, std::equal_to<void*>, YAllocator<void*>>;

// Both lists outlive the destructors of a process that ends: what scripts have dropped is still
// held, not lost.
Handles& liveFragments() {
  static Handles* const handles = YChecked(new (std::nothrow) Handles);
  return *handles;
}

Handles& keptNodes() {
  static Handles* const handles = YChecked(new (std::nothrow) Handles);
  return *handles;
}

}  // namespace

void ycscmPushFragment(std::unique_ptr<YcluiSyntaxGraph> fragment) {
  YcluiSyntaxGraph* handle = fragment.release();
  liveFragments().insert(handle);
  ScmVMExternal::StackPushHandle(handle, nullptr, nullptr);
}

std::unique_ptr<YcluiSyntaxGraph> ycscmTakeFragment(void* handle) {
  if (liveFragments().erase(handle) == 0) {
    cluiWarning(YErrNotAlive);
    return nullptr;
  }
  return std::unique_ptr<YcluiSyntaxGraph>(static_cast<YcluiSyntaxGraph*>(handle));
}

void ycscmKeepNode(YcluiSyntaxNode* node) {
  keptNodes().insert(node);
}
