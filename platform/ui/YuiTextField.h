// A text field of a host's user interface, as the library sees it.

#ifndef PLATFORM_UI_YUITEXTFIELD_H_
#define PLATFORM_UI_YUITEXTFIELD_H_

#include <cstdint>

#include "foundation/YLiveList.h"
#include "platform/ui/YuiBase.h"
#include "platform/ui/YuiModificationCallBack.h"

// A host derives its field from this and offers each change before it applies it:
//
//   class Field : public YuiTextField {
//     void SetText(const char* text) override { shown = text; }
//     void typed(const char* c, std::uint32_t n) {
//       if (OfferModification(c, n) != 0) shown.append(c, n);
//     }
//     void rubbedOut() {
//       if (OfferModification(nullptr, 0) != 0) ...    // delete the last character of `shown`
//     }
//   };
//
// Scripts refer to the field by a handle on the address of its YuiTextField part. The host owns the
// field and may destroy it at any time, even during a call of one of its functions.
class YQRT_API YuiTextField : public YuiBase {
 public:
  // FindLive finds a field from the start of this constructor to the start of this destructor. The
  // destructor calls OnRelease of the callback.
  YuiTextField();
  ~YuiTextField() override;

  const char* IsA() const override;
  YWord IsKindOf(const char* name) const override;

  // Replaces the text that the field shows. `text` is valid during the call only. The field may
  // offer this change too; it will be accepted.
  virtual void SetText(const char* text) = 0;

  // Sets the object to which every change is offered first, or none for null. Calls OnRelease of
  // the previous one.
  void SetModificationCallBack(YuiModificationCallBack* callBack);

  // The existing field at that address, if this thread constructed it, or null; the address may be
  // anything. Linear in the number of fields.
  static YuiTextField* FindLive(const void* handle);

 protected:
  // The object to which changes are offered, or null. A host that wants to undo what a script has
  // attached to the field deletes it.
  YuiModificationCallBack* ModificationCallBack() const { return callBack_; }

  // Returns what OnModification returns for the change, or 1 when the field has no callback. A
  // field that typed commands may destroy must not use its members afterwards without knowing that
  // it still exists.
  YWord OfferModification(const char* text, std::uint32_t length);

 private:
  YuiModificationCallBack* callBack_ = nullptr;
  YLiveList<YuiTextField>::Member membership_{*this};

  static YLiveList<YuiTextField> All;
};

#endif  // PLATFORM_UI_YUITEXTFIELD_H_
