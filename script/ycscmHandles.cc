#include "script/ycscmHandles.h"

#include <new>

#include "foundation/YErr.h"
#include "foundation/YMemory.h"
#include "platform/containers/YSet.h"
#include "platform/engine/ScmVMExternal.h"
#include "syntax/YcluiSyntaxGraph.h"

namespace {

// Neither set is destroyed at the end of the process, so that leak checkers still find what scripts
// have dropped.
YSet& liveFragments() {
  static YSet* const handles = YChecked(new (std::nothrow) YSet);
  return *handles;
}

YSet& keptNodes() {
  static YSet* const handles = YChecked(new (std::nothrow) YSet);
  return *handles;
}

}  // namespace

void ycscmPushFragment(std::unique_ptr<YcluiSyntaxGraph> fragment) {
  YcluiSyntaxGraph* handle = fragment.release();
  liveFragments().attach(handle);
  ScmVMExternal::StackPushHandle(handle, nullptr, nullptr);
}

std::unique_ptr<YcluiSyntaxGraph> ycscmConsumeFragment(void* handle) {
  if (liveFragments().detach(handle) == nullptr) {
    cluiWarning(YErrNotAlive);
    return nullptr;
  }
  return std::unique_ptr<YcluiSyntaxGraph>(static_cast<YcluiSyntaxGraph*>(handle));
}

void ycscmKeepNode(YcluiSyntaxNode* node) {
  keptNodes().attach(node);
}
