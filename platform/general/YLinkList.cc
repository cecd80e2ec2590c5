#include "platform/general/YLinkList.h"

#include <new>
#include <utility>

#include "foundation/YMemory.h"

YRing* YChain::attach(YRing* ring) {
  ring->previous_ = last_;
  (last_ == nullptr ? first_ : last_->next_) = ring;
  last_ = ring;
  return ring;
}

YRing* YChain::detach(YRing* ring) {
  (ring->previous_ == nullptr ? first_ : ring->previous_->next_) = ring->next_;
  (ring->next_ == nullptr ? last_ : ring->next_->previous_) = ring->previous_;
  ring->next_ = nullptr;
  ring->previous_ = nullptr;
  return ring;
}

void YChain::attachAll(YChain& from) {
  YRing* ring = std::exchange(from.first_, nullptr);
  if (ring == nullptr) return;
  attach(ring);
  last_ = std::exchange(from.last_, nullptr);
}

YLinkList::~YLinkList() {
  YRing* ring = first();
  while (ring != nullptr) delete std::exchange(ring, ring->next());
}

void* YLinkList::append(void* item) {
  attach(YChecked(new (std::nothrow) YRing(item)));
  return item;
}

void* YLinkList::detach(void* item) {
  YRing* ring = first();
  while (ring != nullptr && ring->item() != item) ring = ring->next();
  if (ring == nullptr) return nullptr;
  delete detach(ring);
  return item;
}
