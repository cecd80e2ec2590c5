// The record in which operations of the script engine report success or failure.

#ifndef FOUNDATION_YSTATUS_H_
#define FOUNDATION_YSTATUS_H_

#include "foundation/YTypes.h"

// Bit 0 of `word` is set while no operation has failed. A caller that creates a status sets `word`
// to 0 and the engine sets the bit; a primitive receives one that is already good. Pops of the
// engine only clear the bit.
struct YQRT_API YStatus {
  std::uint32_t word;
};

// True while bit 0 is set.
inline bool YStatusIsGood(const YStatus& status) {
  return (status.word & 1U) != 0;
}
inline void YStatusSetGood(YStatus& status) {
  status.word |= 1U;
}
inline void YStatusClear(YStatus& status) {
  status.word &= ~static_cast<std::uint32_t>(1);
}

#endif  // FOUNDATION_YSTATUS_H_
