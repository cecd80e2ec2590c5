// The terminal: its modes, signals, input and output.

#ifndef PROGRAM_TERMINAL_CLUITERMINAL_H_
#define PROGRAM_TERMINAL_CLUITERMINAL_H_

#include <string>

// Standard input and output as a terminal from which single keys are read. One per process.
//
// The former modes of the terminal are restored whenever the process ends or stops, by a signal,
// exit() or abort(), and ours are set again when it continues.
class CluiTerminal {
 public:
  enum class Event { Bytes, Nothing, Gone };

  CluiTerminal() = default;
  ~CluiTerminal() { close(); }
  CluiTerminal(const CluiTerminal&) = delete;
  CluiTerminal& operator=(const CluiTerminal&) = delete;

  // False when the terminal cannot be set up. Writes `begin` whenever our modes are set, and `end`
  // whenever the former ones are restored.
  bool open(const std::string& begin, const std::string& end);
  // May be called twice.
  void close();

  // The erase character of the driver.
  char eraseKey() const;
  // False when the driver does not know the size.
  bool size(int& width, int& height) const;

  // Waits for input, at most so many milliseconds, or without limit for -1. Nothing also means that
  // a signal has arrived; Gone, that the terminal was closed.
  Event read(std::string& bytes, int milliseconds);
  void write(const std::string& bytes);

  // Makes Control-C and Control-Z send signals, as they do while scripts run, or be keys.
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
};

#endif  // PROGRAM_TERMINAL_CLUITERMINAL_H_
