#include "parser/YcluiWorkToken.h"

#include <new>

#include "foundation/YMemory.h"

YcluiWorkToken::YcluiWorkToken() : token_(new (std::nothrow) YcluiToken) {}

YcluiWorkToken::~YcluiWorkToken() {
  delete token_;
  for (; spares_.isEmpty() == 0; spares_.drop()) delete spares_.topSlot();
}

void YcluiWorkToken::renew() {
  const YcluiToken* used = token_;
  if (spares_.isEmpty() != 0) {
    token_ = YChecked(new (std::nothrow) YcluiToken);
  } else {
    token_ = spares_.topSlot();
    spares_.drop();
  }
  *token_ = *used;
  isUsed_ = false;
}
