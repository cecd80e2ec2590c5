#include "platform/ui/YuiTextField.h"

#include <cstring>
#include <utility>

constinit YLiveList<YuiTextField> YuiTextField::All;

YuiTextField::YuiTextField() {
  All.join(membership_);
}

YuiTextField::~YuiTextField() {
  All.leave(membership_);
  SetModificationCallBack(nullptr);
}

const char* YuiTextField::IsA() const {
  return "YuiTextField";
}

YWord YuiTextField::IsKindOf(const char* name) const {
  if (name != nullptr && std::strcmp(name, "YuiTextField") == 0) return 1;
  return YuiBase::IsKindOf(name);
}

void YuiTextField::SetModificationCallBack(YuiModificationCallBack* callBack) {
  YuiModificationCallBack* former = std::exchange(callBack_, callBack);
  if (former != nullptr && former != callBack) former->OnRelease(this);
}

YWord YuiTextField::OfferModification(const char* text, std::uint32_t length) {
  return callBack_ == nullptr ? 1 : callBack_->OnModification(0, 0, text, length);
}

YuiTextField* YuiTextField::FindLive(const void* handle) {
  return All.find(handle);
}
