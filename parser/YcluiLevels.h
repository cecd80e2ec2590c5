// One object per level of a recursion. Internal to the parser.

#ifndef PARSER_YCLUILEVELS_H_
#define PARSER_YCLUILEVELS_H_

#include <new>

#include "foundation/YArray.h"
#include "foundation/YMemory.h"

// Keeps one T for each level of a recursion, and reuses it, with its memory, for the next call at
// that depth. A T does not move.
template <class T>
class YcluiLevels {
 public:
  YcluiLevels() = default;
  YcluiLevels(const YcluiLevels&) = delete;
  YcluiLevels& operator=(const YcluiLevels&) = delete;
  ~YcluiLevels() {
    for (int i = 0; i < items_.size(); ++i) delete items_.at(i);
  }

  // Borrows the T of the next level during its lifetime.
  class Use {
   public:
    explicit Use(YcluiLevels& levels) : levels_(levels), item_(levels.enter()) {}
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;
    ~Use() { --levels_.depth_; }
    T& operator*() const { return item_; }
    T* operator->() const { return &item_; }

   private:
    YcluiLevels& levels_;
    T& item_;
  };

 private:
  YArray<T*> items_;
  int depth_ = 0;

  T& enter() {
    if (depth_ == items_.size()) items_.end() = YChecked(new (std::nothrow) T);
    return *items_.at(depth_++);
  }
};

#endif  // PARSER_YCLUILEVELS_H_
