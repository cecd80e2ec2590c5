// The error manager, which records the failures of the library.

#ifndef FOUNDATION_YERR_H_
#define FOUNDATION_YERR_H_

#include "foundation/YErrCodes.h"
#include "foundation/YTypes.h"
#include "foundation/YcluiLimits.h"

enum YErrSeverity : std::uint32_t {
  YErrNote = 1,     // something unexpected; the operation continues
  YErrWarning = 2,  // a request that cannot be carried out
  YErrError = 3,    // bad input text, or a file that failed
  YErrFatal = 4,    // out of memory
};

// Called for each error as it is recorded, with the data given to setListener.
using YErrListener = void (*)(void* data, unsigned int code, YErrSeverity severity);

class YErrAside;

// Keeps the last YcluiKeptErrors errors and counts all of them. It is never cleared.
//
// Not every failure records a code: a refused token, for instance, records none. To find out
// whether an operation recorded one, compare count() before and after it.
class YQRT_API YErrManager {
 public:
  void pushError(unsigned int code, YErrSeverity severity);

  // The code and the severity of a recorded error, 0 being the latest. For an index at which no
  // error is kept, code returns 0 and severity returns YErrNote.
  unsigned int code(int index) const;
  YErrSeverity severity(int index) const;

  // The number of errors recorded so far.
  std::uint64_t count() const { return count_; }

  // Installs the host's listener; null removes it. The listener may call any function of the
  // library; an error that is recorded while it runs is kept without calling it again.
  void setListener(YErrListener listener, void* data);

 private:
  struct Entry {
    unsigned int code;
    YErrSeverity severity;
  };

  Entry entries_[YcluiKeptErrors] = {};
  std::uint64_t count_ = 0;
  YErrListener listener_ = nullptr;
  void* listenerData_ = nullptr;
  bool listening_ = false;  // while the listener runs
  YErrAside* aside_ = nullptr;

  friend class YErrAside;

  const Entry* entry(int index) const;
};

// The manager of the calling thread: each thread has its own errors and its own listener.
extern YQRT_API thread_local YErrManager YErr;

// As long as one exists, it receives the errors that would be recorded: the manager does not keep
// or count them, and the listener is not called. For operations that try what would happen. They
// end in the reverse order of their creation.
class YQRT_API YErrAside {
 public:
  YErrAside() : outer_(YErr.aside_) { YErr.aside_ = this; }
  YErrAside(const YErrAside&) = delete;
  YErrAside& operator=(const YErrAside&) = delete;
  ~YErrAside() { YErr.aside_ = outer_; }

  // The latest code, YErrNothing without one.
  unsigned int code() const { return code_; }

 private:
  friend class YErrManager;

  YErrAside* outer_;
  unsigned int code_ = YErrNothing;
};

// Record a code with the severity in the name. Each returns 0, so that a failing operation can
// `return` the call.
YQRT_API YWord cluiNote(unsigned int code);
YQRT_API YWord cluiWarning(unsigned int code);
YQRT_API YWord cluiError(unsigned int code);
YQRT_API YWord cluiFatal(unsigned int code);

#endif  // FOUNDATION_YERR_H_
