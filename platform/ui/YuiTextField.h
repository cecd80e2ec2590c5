// A text field of a host's user interface, as the library sees it.

#ifndef PLATFORM_UI_YUITEXTFIELD_H_
#define PLATFORM_UI_YUITEXTFIELD_H_

#include <cstdint>

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
//       if (OfferModification(nullptr, 0) != 0) ...    // take the last character of `shown` out
//     }
//   };
//
// A script gets the field as a handle on the address of this very class. The field is its host's
// and may be destroyed at any time, also while it is being told something.
class YQRT_API YuiTextField : public YuiBase {
 public:
  // A field is alive, for FindLive, from the beginning of this constructor to the beginning of this
  // destructor, which releases the object that the field asks.
  YuiTextField();
  ~YuiTextField() override;

  const char* IsA() const override;
  YWord IsKindOf(const char* name) const override;

  // Replaces the text that the field shows. The text is the caller's and good during the call. The
  // field may offer this change too: it will be let pass.
  virtual void SetText(const char* text) = 0;

  // From now on every change is first offered to this object; null ends that. The object of before
  // is told by OnRelease.
  void SetModificationCallBack(YuiModificationCallBack* callBack);

  // The live field at that address, or null. Any address can be asked. Costs the number of fields.
  static YuiTextField* FindLive(const void* handle);

 protected:
  // The object that the field asks, or null. A host that wants to end what a script has attached to
  // the field deletes it.
  YuiModificationCallBack* ModificationCallBack() const { return callBack_; }

  // What OnModification answers for the change; 1 when the field asks nobody. A field that may be
  // destroyed by what a user types looks at itself again only when it knows that it was not.
  YWord OfferModification(const char* text, std::uint32_t length);

 private:
  YuiModificationCallBack* callBack_ = nullptr;
  YuiTextField* previous_ = nullptr;  // in the list of all live fields
  YuiTextField* next_;

  static YuiTextField* First;
};

#endif  // PLATFORM_UI_YUITEXTFIELD_H_
