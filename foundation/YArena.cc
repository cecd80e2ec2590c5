#include "foundation/YArena.h"

#include <cstdlib>

namespace {

// Small enough that malloc can reuse memory that was freed elsewhere.
constexpr std::size_t BlockSize = 16 * 1024;
constexpr std::size_t Alignment = 8;

}  // namespace

void* YArena::take(std::size_t size) {
  size = (size + Alignment - 1) / Alignment * Alignment;
  if (size > left_) {
    const bool isLarge = size > BlockSize / 4;
    blocks_.push_back(YChecked(std::malloc(isLarge ? size : BlockSize)));
    if (isLarge) return blocks_.back();
    free_ = static_cast<char*>(blocks_.back());
    left_ = BlockSize;
  }
  char* piece = free_;
  free_ += size;
  left_ -= size;
  return piece;
}

void YArena::clear() {
  for (void* block : blocks_) std::free(block);
  blocks_.clear();
  free_ = nullptr;
  left_ = 0;
}
