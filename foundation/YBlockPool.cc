#include "foundation/YBlockPool.h"

#include <algorithm>
#include <new>
#include <utility>

namespace {

// Under AddressSanitizer every block is allocated on its own, so that a use after its release is
// detected.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool IsWatched = true;
#elif defined(__has_feature)
constexpr bool IsWatched = __has_feature(address_sanitizer);
#else
constexpr bool IsWatched = false;
#endif

constexpr std::size_t CacheLine = 64;
constexpr std::align_val_t Alignment{CacheLine};

}  // namespace

void* YBlockPool::take(std::size_t size) {
  if (IsWatched || size != blockSize_) return ::operator new(size, Alignment, std::nothrow);
  const std::lock_guard<std::mutex> lock(mutex_);
  if (free_ == nullptr && fresh_ == freshEnd_ && !addSlab()) return nullptr;
  ++used_;
  if (free_ != nullptr) return std::exchange(free_, free_->next);
  return std::exchange(fresh_, fresh_ + blockSize_);
}

void YBlockPool::give(void* block, std::size_t size) {
  if (block == nullptr) return;
  if (IsWatched || size != blockSize_) {
    ::operator delete(block, Alignment);
    return;
  }
  const std::lock_guard<std::mutex> lock(mutex_);
  free_ = new (block) Free{free_};
  if (--used_ == 0) releaseAll();
}

// The first cache line of a slab holds the link to the previous slab.
bool YBlockPool::addSlab() {
  const std::size_t size = nextCount_ * blockSize_;
  void* memory = ::operator new(CacheLine + size, Alignment, std::nothrow);
  if (memory == nullptr) return false;
  slabs_ = new (memory) Slab{slabs_};
  fresh_ = static_cast<char*>(memory) + CacheLine;
  freshEnd_ = fresh_ + size;
  nextCount_ = std::min(2 * nextCount_, MostCount);
  return true;
}

void YBlockPool::releaseAll() {
  while (slabs_ != nullptr) ::operator delete(std::exchange(slabs_, slabs_->next), Alignment);
  free_ = nullptr;
  fresh_ = freshEnd_ = nullptr;
  nextCount_ = FirstCount;
}
