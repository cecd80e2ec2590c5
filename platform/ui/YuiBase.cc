#include "platform/ui/YuiBase.h"

#include <cstdlib>
#include <cstring>
#include <new>

void* YuiBase::operator new(std::size_t size) noexcept {
  return ::operator new(size, std::nothrow);
}

void YuiBase::operator delete(void* memory) {
  ::operator delete(memory);
}

YuiBase::YuiBase() = default;

YuiBase::~YuiBase() {
  std::free(name_);
}

const char* YuiBase::IsA() const {
  return "YuiBase";
}

YWord YuiBase::IsKindOf(const char* name) const {
  return name != nullptr && std::strcmp(name, "YuiBase") == 0 ? 1 : 0;
}

const char* YuiBase::GetState() {
  return "";
}

YuiBase* YuiBase::Handle() {
  return this;
}

void YuiBase::SetName(const char* name) {
  char* copy = name == nullptr ? nullptr : strdup(name);
  std::free(name_);
  name_ = copy;
}

const char* YuiBase::GetName() const {
  return name_ == nullptr ? "" : name_;
}

int YuiBase::GetWindowID() const {
  return 0;
}

int YuiBase::GetUseCount() const {
  return useCount_;
}

void YuiBase::IncrUseCount() const {
  ++useCount_;
}

void YuiBase::DecrUseCount() const {
  if (useCount_ > 0) --useCount_;
}
