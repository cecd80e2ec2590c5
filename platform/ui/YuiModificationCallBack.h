// The callback that a text field calls before it applies a change.

#ifndef PLATFORM_UI_YUIMODIFICATIONCALLBACK_H_
#define PLATFORM_UI_YUIMODIFICATIONCALLBACK_H_

#include <cstdint>

#include "platform/ui/YuiBase.h"

class YuiTextField;

// The library does not own these objects. Before one is destroyed, or in its destructor, it must be
// removed from the fields that call it (YuiTextField::SetModificationCallBack).
class YQRT_API YuiModificationCallBack : public YuiBase {
 public:
  YuiModificationCallBack();
  ~YuiModificationCallBack() override;

  const char* IsA() const override;
  YWord IsKindOf(const char* name) const override;

  // Called for a change at the end of the field's text: the first `length` bytes at `text` are to
  // be appended, or with a `length` of 0 the last character is to be deleted. Returns non-zero when
  // the field shall apply the change and 0 when it shall not. The text need not be NUL-terminated;
  // the two numbers are for the field's own use.
  //
  // During the call the field's text may be replaced, and this object and the field may be
  // destroyed.
  virtual YWord OnModification(std::int32_t, std::int32_t, const char* text,
                               std::uint32_t length) = 0;

  // Called when the field will not call this object again, because the field is being destroyed or
  // its callback was replaced. Only the address of `field` may be used.
  virtual void OnRelease(YuiTextField* field);
};

#endif  // PLATFORM_UI_YUIMODIFICATIONCALLBACK_H_
