#include "platform/ui/YuiModificationCallBack.h"

#include <cstring>

YuiModificationCallBack::YuiModificationCallBack() = default;

YuiModificationCallBack::~YuiModificationCallBack() = default;

const char* YuiModificationCallBack::IsA() const {
  return "YuiModificationCallBack";
}

YWord YuiModificationCallBack::IsKindOf(const char* name) const {
  if (name != nullptr && std::strcmp(name, "YuiModificationCallBack") == 0) return 1;
  return YuiBase::IsKindOf(name);
}

void YuiModificationCallBack::OnRelease(YuiTextField*) {}
