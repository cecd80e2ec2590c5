// The record by which the script engine tells how an operation went.

#ifndef FOUNDATION_YSTATUS_H_
#define FOUNDATION_YSTATUS_H_

#include "foundation/YTypes.h"

// Bit 0 of `word` is set while all is well. Whoever makes one of its own sets the word to 0 and
// lets the engine set the bit; a primitive gets one that is good already. Pops of the engine only
// ever clear the bit.
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
