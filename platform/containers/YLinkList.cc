#include "platform/containers/YLinkList.h"

#include <utility>

#include "foundation/YBlockPool.h"

template class YPooled<YRing>;

YRing* YChain::attach(YRing* ring) {
  ring->next_ = last_ == nullptr ? ring : std::exchange(last_->next_, ring);
  return last_ = ring;
}

YRing* YChain::detach(YRing* ring) {
  YRing* before = last_;
  while (before->next_ != ring) before = before->next_;
  return detachAfter(before);
}

YRing* YChain::detachAfter(YRing* ring) {
  YRing* detached = ring->next_;
  ring->next_ = detached->next_;
  if (detached == last_) last_ = detached == ring ? nullptr : ring;
  detached->next_ = nullptr;
  return detached;
}

void YChain::attachAll(YChain& from) {
  YRing* added = std::exchange(from.last_, nullptr);
  if (added == nullptr) return;
  if (last_ != nullptr) std::swap(last_->next_, added->next_);
  last_ = added;
}

YLinkList::~YLinkList() {
  while (last() != nullptr) delete detachAfter(last());
}

void* YLinkList::append(void* item) {
  attach(new YRing(item));
  return item;
}

void* YLinkList::detach(void* item) {
  YRing* before = last();
  for (YRing* ring = first(); ring != nullptr; before = ring, ring = next(ring)) {
    if (ring->item() != item) continue;
    delete detachAfter(before);
    return item;
  }
  return nullptr;
}
