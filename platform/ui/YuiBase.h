// The root of the objects of a user interface that a host shares with the library.

#ifndef PLATFORM_UI_YUIBASE_H_
#define PLATFORM_UI_YUIBASE_H_

#include <cstddef>

#include "foundation/YTypes.h"

// The order of the virtual operations is fixed; further ones are added behind the last.
class YQRT_API YuiBase {
 public:
  // Null when there is no memory; a new expression is then null too.
  static void* operator new(std::size_t size) noexcept;
  static void operator delete(void* memory);

  YuiBase(const YuiBase&) = delete;
  YuiBase& operator=(const YuiBase&) = delete;
  virtual ~YuiBase();

  // The name of the class, and whether a name is that of the class or of one that it derives from.
  virtual const char* IsA() const;
  virtual YWord IsKindOf(const char* name) const;
  // A text about the state of the object, for whoever looks for a fault; empty here.
  virtual const char* GetState();
  // What a script holds of the object.
  virtual YuiBase* Handle();
  // A name that the host gives, copied; empty at first, for null, and when there was no memory.
  virtual void SetName(const char* name);
  virtual const char* GetName() const;
  // The host's number of the window that the object is in; 0 here.
  virtual int GetWindowID() const;
  // A count that the host keeps. It does not fall below 0, and nothing is destroyed at 0.
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
