// A list of the live objects of a class.

#ifndef FOUNDATION_YLIVELIST_H_
#define FOUNDATION_YLIVELIST_H_

#include <mutex>
#include <thread>

// The existing objects of a class, for finding one by an address that may be anything. An object
// belongs to the thread in which it joined and is found in that thread only, so that an address in
// a script of one thread never leads to an object that another thread uses. Thread-safe; an object
// may leave in any thread.
template <class T>
class YLiveList {
 public:
  // The membership of an object, which owns it and outlives it.
  class Member {
   public:
    explicit Member(T& object) : object_(object) {}
    Member(const Member&) = delete;
    Member& operator=(const Member&) = delete;

   private:
    friend class YLiveList;

    T& object_;
    std::thread::id thread_;
    Member* previous_ = nullptr;
    Member* next_ = nullptr;
  };

  constexpr YLiveList() = default;
  YLiveList(const YLiveList&) = delete;
  YLiveList& operator=(const YLiveList&) = delete;

  // REQUIRES: it is not in the list.
  void join(Member& member) {
    const std::lock_guard<std::mutex> lock(mutex_);
    member.thread_ = std::this_thread::get_id();
    member.previous_ = last_;
    (last_ == nullptr ? first_ : last_->next_) = &member;
    last_ = &member;
  }

  // REQUIRES: it is in the list.
  void leave(Member& member) {
    const std::lock_guard<std::mutex> lock(mutex_);
    (member.previous_ == nullptr ? first_ : member.previous_->next_) = member.next_;
    (member.next_ == nullptr ? last_ : member.next_->previous_) = member.previous_;
  }

  // The first object of this thread, in the order of joining, for which `accepts(T&)` is true; null
  // without one. `accepts` must not use the list. Linear in the number of objects.
  template <class Accepts>
  T* find(Accepts accepts) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const std::thread::id here = std::this_thread::get_id();
    for (Member* member = first_; member != nullptr; member = member->next_) {
      if (member->thread_ == here && accepts(member->object_)) return &member->object_;
    }
    return nullptr;
  }
  // The object of this thread at that address.
  T* find(const void* address) {
    return find([address](const T& object) { return &object == address; });
  }

 private:
  std::mutex mutex_;
  Member* first_ = nullptr;
  Member* last_ = nullptr;
};

#endif  // FOUNDATION_YLIVELIST_H_
