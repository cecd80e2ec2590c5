#include "foundation/YBlockPool.h"

#include <algorithm>
#include <new>
#include <utility>

namespace {

// AddressSanitizer finds an object used after its end by the memory that it was given back to, so
// each has memory of its own there.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool IsWatched = true;
#elif defined(__has_feature)
constexpr bool IsWatched = __has_feature(address_sanitizer);
#else
constexpr bool IsWatched = false;
#endif

constexpr std::size_t Line = 64;
constexpr std::align_val_t Alignment{Line};

}  // namespace

void* YBlockPool::take(std::size_t size) {
  if (IsWatched || size != blockSize_) return ::operator new(size, Alignment, std::nothrow);
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
  free_ = new (block) Free{free_};
  if (--used_ == 0) releaseAll();
}

// The first line of a slab tells where the one before it lies.
bool YBlockPool::addSlab() {
  const std::size_t size = nextCount_ * blockSize_;
  void* memory = ::operator new(Line + size, Alignment, std::nothrow);
  if (memory == nullptr) return false;
  slabs_ = new (memory) Slab{slabs_};
  fresh_ = static_cast<char*>(memory) + Line;
  freshEnd_ = fresh_ + size;
  nextCount_ = std::min(2 * nextCount_, MostCount);
  return true;
}

void YBlockPool::releaseAll() {
  while (slabs_ != nullptr) ::operator delete(std::exchange(slabs_, slabs_->next), Alignment);
  *this = YBlockPool(blockSize_);
}
