// The error manager: where every failure that the system notices is recorded.

#ifndef FOUNDATION_YERR_H_
#define FOUNDATION_YERR_H_

#include "foundation/YErrCodes.h"
#include "foundation/YTypes.h"
#include "foundation/YcluiLimits.h"

enum YErrSeverity : std::uint32_t {
  YErrNote = 1,     // something odd in a walk that still goes on
  YErrWarning = 2,  // a request that cannot be carried out
  YErrError = 3,    // bad input text, or a file that failed
  YErrFatal = 4,    // out of memory
};

// Called for each error as it is recorded, with the word given to setListener.
using YErrListener = void (*)(void* word, unsigned int code, YErrSeverity severity);

// Keeps the last YcluiKeptErrors errors and the number of all. Nothing in the system clears it.
//
// Not every failure records a code: a refused token, for instance, records none. To tell whether an
// operation recorded one, compare count() from before with count() behind it.
class YQRT_API YErrManager {
 public:
  void pushError(unsigned int code, YErrSeverity severity);

  // The code and the severity of a recorded error, 0 being the latest. For an index that is
  // negative, or at which nothing is kept, code answers 0 and severity YErrNote.
  unsigned int code(int index) const;
  YErrSeverity severity(int index) const;

  // The number of errors recorded since the library was loaded.
  std::uint64_t count() const { return count_; }

  // Installs the host's listener; null removes it. It may call anything, and an error that is
  // recorded while it runs is kept but not told to it again.
  void setListener(YErrListener listener, void* word);

 private:
  struct Entry {
    unsigned int code;
    YErrSeverity severity;
  };

  Entry entries_[YcluiKeptErrors] = {};
  std::uint64_t count_ = 0;
  YErrListener listener_ = nullptr;
  void* listenerWord_ = nullptr;
  bool listening_ = false;

  const Entry* entry(int index) const;
};

// The one manager of the process.
extern YQRT_API YErrManager YErr;

// Record a code with the severity of the name. Each answers 0, so that a failing operation can
// answer with the call itself.
YQRT_API YWord cluiNote(unsigned int code);
YQRT_API YWord cluiWarning(unsigned int code);
YQRT_API YWord cluiError(unsigned int code);
YQRT_API YWord cluiFatal(unsigned int code);

#endif  // FOUNDATION_YERR_H_
