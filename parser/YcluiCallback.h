// A callback of the host. Internal to the parser.

#ifndef PARSER_YCLUICALLBACK_H_
#define PARSER_YCLUICALLBACK_H_

#include <utility>

// A function and the data that is its first argument. Calling an unset callback does nothing. The
// function may replace the callback while it runs.
template <class Proc>
struct YcluiCallback {
  Proc proc = nullptr;
  void* data = nullptr;

  bool isSet() const { return proc != nullptr; }
  // Returns the previous function.
  Proc replace(Proc newProc, void* newData) {
    data = newData;
    return std::exchange(proc, newProc);
  }
  template <class... Arguments>
  void operator()(const Arguments&... arguments) const {
    if (proc != nullptr) proc(data, arguments...);
  }
};

#endif  // PARSER_YCLUICALLBACK_H_
