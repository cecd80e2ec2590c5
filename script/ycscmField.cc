// The primitives of the field binding, which is not there yet.

#include <cstdint>
#include <cstdio>

#include "foundation/YStatus.h"
#include "script/ycscmPrimitives.h"

namespace {

void notThere(const char* name, YStatus& status) {
  std::fprintf(stderr, "CLUI Error: %s is not there yet\n", name);
  YStatusClear(status);
}

}  // namespace

void ycscmAttachField(std::uint32_t, YStatus& status) {
  notThere("clui-attach-field", status);
}

void ycscmSetKeystrokeAction(std::uint32_t, YStatus& status) {
  notThere("clui-set-keystroke-action", status);
}

void ycscmReferCurrentWord(std::uint32_t, YStatus& status) {
  notThere("clui-refer-current-word", status);
}

void ycscmReplaceCurrentWord(std::uint32_t, YStatus& status) {
  notThere("clui-replace-current-word", status);
}
