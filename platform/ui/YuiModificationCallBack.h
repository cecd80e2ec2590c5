// What a text field asks before it applies a change.

#ifndef PLATFORM_UI_YUIMODIFICATIONCALLBACK_H_
#define PLATFORM_UI_YUIMODIFICATIONCALLBACK_H_

#include <cstdint>

#include "platform/ui/YuiBase.h"

class YuiTextField;

// Nobody here owns such an object. Whoever destroys one first takes it from the fields that have it
// (YuiTextField::SetModificationCallBack), or does so in its destructor.
class YQRT_API YuiModificationCallBack : public YuiBase {
 public:
  YuiModificationCallBack();
  ~YuiModificationCallBack() override;

  const char* IsA() const override;
  YWord IsKindOf(const char* name) const override;

  // A change of the field's text, one character that is typed or deleted at its end: the first
  // `length` bytes at `text` are to be inserted, or with a length of 0 the last character deleted.
  // Non-zero when the field is to apply the change, 0 when it is not. The text need not be
  // terminated, and the two numbers are the field's own.
  //
  // Anything may happen during the call: the field may be given another text, and the object and
  // the field may both be destroyed.
  virtual YWord OnModification(std::int32_t, std::int32_t, const char* text,
                               std::uint32_t length) = 0;

  // The field will not call this object again: it is being destroyed, or has been given another
  // one, or none. Nothing but its address may be used.
  virtual void OnRelease(YuiTextField* field);
};

#endif  // PLATFORM_UI_YUIMODIFICATIONCALLBACK_H_
