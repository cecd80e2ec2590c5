#include "script/ycscmHandles.h"

#include <mutex>
#include <new>

#include "foundation/YErr.h"
#include "foundation/YMemory.h"
#include "platform/containers/YSet.h"
#include "platform/engine/ScmVMExternal.h"
#include "syntax/YcluiSyntaxGraph.h"

namespace {

// A set that threads share.
class Handles {
 public:
  void add(void* handle) {
    const std::lock_guard<std::mutex> lock(mutex_);
    handles_.attach(handle);
  }
  // False when it is not in the set.
  bool remove(void* handle) {
    const std::lock_guard<std::mutex> lock(mutex_);
    return handles_.detach(handle) != nullptr;
  }

 private:
  std::mutex mutex_;
  YSet handles_;
};

// Neither set is destroyed at the end of the process, so that leak checkers still find what scripts
// have dropped.
Handles& liveFragments() {
  static auto* const handles = YChecked(new (std::nothrow) Handles);
  return *handles;
}

Handles& keptNodes() {
  static auto* const handles = YChecked(new (std::nothrow) Handles);
  return *handles;
}

}  // namespace

void ycscmPushFragment(std::unique_ptr<YcluiSyntaxGraph> fragment) {
  YcluiSyntaxGraph* handle = fragment.release();
  liveFragments().add(handle);
  ScmVMExternal::StackPushHandle(handle, nullptr, nullptr);
}

std::unique_ptr<YcluiSyntaxGraph> ycscmConsumeFragment(void* handle) {
  if (!liveFragments().remove(handle)) {
    cluiWarning(YErrNotAlive);
    return nullptr;
  }
  return std::unique_ptr<YcluiSyntaxGraph>(static_cast<YcluiSyntaxGraph*>(handle));
}

void ycscmKeepNode(YcluiSyntaxNode* node) {
  keptNodes().add(node);
}
