// The terminal: its modes, signals, input and output.

#ifndef TERMINAL_YCLUITERMINAL_H_
#define TERMINAL_YCLUITERMINAL_H_

#include <string>

#include "foundation/YTypes.h"

// Standard input and output as a terminal from which single keys are read. One is open at a time in
// a process.
//
// The former modes of the terminal are restored whenever the process ends or stops, by a signal,
// exit() or abort(), and ours are set again when it continues. While the terminal is open,
// SIGWINCH, SIGTSTP, SIGCONT, SIGTERM and SIGHUP are handled here, unless the process ignores them,
// and so are those other signals that end a process for which it has no handler.
class YQRT_API YcluiTerminal {
 public:
  enum class Event { Bytes, Nothing, Gone };

  YcluiTerminal() = default;
  ~YcluiTerminal() { close(); }
  YcluiTerminal(const YcluiTerminal&) = delete;
  YcluiTerminal& operator=(const YcluiTerminal&) = delete;

  // False when the terminal cannot be set up. Writes `begin` whenever our modes are set, and `end`
  // whenever the former ones are restored.
  //
  // `onEnding` is called in the handler of the signal that requests the end of the process, to stop
  // what runs; it must be async-signal-safe and may be null. `wake` is a descriptor for reading, or
  // -1: when it has bytes, they are read and read() returns.
  bool open(const std::string& begin, const std::string& end, void (*onEnding)() = nullptr,
            int wake = -1);
  // Restores the former modes and the former signal handlers. May be called twice.
  void close();

  // The erase byte of the driver, 0 for none.
  char eraseKey() const;
  // False when the driver does not know the size.
  bool size(int& width, int& height) const;

  // Waits for input, at most so many milliseconds, or without limit for -1, and stores it. Nothing
  // also means that a signal has arrived or that `wake` had bytes; Gone, that the terminal was
  // closed.
  Event read(std::string& bytes, int milliseconds);
  // Returns when all is written, also on a terminal that does not block.
  void write(const std::string& bytes);

  // Makes Control-C, Control-Z and Control-\ send signals, as they do while commands run, or be
  // keys, as they are at first.
  void enableSignalKeys(bool enable);
  // Stops the process as Control-Z does.
  void stop();

  // Whether the window was resized, or the process was stopped and has continued, since the last
  // call.
  bool wasResized();
  bool wasStopped();
  // The signal that requests the end of the process, or 0. A second one ends it at once.
  int endingSignal() const;
  // Ends the process by the signal's default action.
  [[noreturn]] static void EndBy(int signal);

 private:
  bool isOpen_ = false;
};

#endif  // TERMINAL_YCLUITERMINAL_H_
