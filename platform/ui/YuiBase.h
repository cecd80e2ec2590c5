// The base class of user interface objects that a host shares with the library.

#ifndef PLATFORM_UI_YUIBASE_H_
#define PLATFORM_UI_YUIBASE_H_

#include <cstddef>

#include "foundation/YTypes.h"

// The order of the virtual functions is part of the binary interface; new ones are added at the
// end.
class YQRT_API YuiBase {
 public:
  // Returns null when there is no memory; a new expression is then null too.
  static void* operator new(std::size_t size) noexcept;
  static void operator delete(void* memory);

  YuiBase(const YuiBase&) = delete;
  YuiBase& operator=(const YuiBase&) = delete;
  virtual ~YuiBase();

  // The name of the class, and whether `name` is that of the class or of one of its bases.
  virtual const char* IsA() const;
  virtual YWord IsKindOf(const char* name) const;
  // A description of the object's state, for debugging; empty in this class.
  virtual const char* GetState();
  // The object as scripts refer to it.
  virtual YuiBase* Handle();
  // A name that the host chooses; it is copied. Empty at first, for null, and when there was no
  // memory.
  virtual void SetName(const char* name);
  virtual const char* GetName() const;
  // The host's number of the window that contains the object; 0 in this class.
  virtual int GetWindowID() const;
  // A use count for the host. It does not fall below 0, and reaching 0 destroys nothing.
  virtual int GetUseCount() const;
  virtual void IncrUseCount() const;
  virtual void DecrUseCount() const;

 protected:
  YuiBase();

 private:
  char* name_ = nullptr;
  mutable int useCount_ = 0;
};

#endif  // PLATFORM_UI_YUIBASE_H_
