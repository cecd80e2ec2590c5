// SIGHUP as a request to load the language again.

#ifndef PROGRAM_TERMINAL_CLUIHANGUP_H_
#define PROGRAM_TERMINAL_CLUIHANGUP_H_

// While one exists, SIGHUP is a request if the terminal is still there. When the terminal is gone,
// which is what the signal was made for, the handler that was set before is called. An ignored
// signal stays ignored. At most one exists, and only between the opening and the closing of the
// terminal.
class CluiHangup {
 public:
  CluiHangup();
  CluiHangup(const CluiHangup&) = delete;
  CluiHangup& operator=(const CluiHangup&) = delete;
  ~CluiHangup();

  // Whether there was a request since clear(). A request wakes CluiInterruptDescriptor().
  static bool isAsked();
  static void clear();
};

#endif  // PROGRAM_TERMINAL_CLUIHANGUP_H_
