// The terminal: its modes, its signals, and the bytes that come and go.

#ifndef PROGRAM_TERMINAL_CLUITERMINAL_H_
#define PROGRAM_TERMINAL_CLUITERMINAL_H_

#include <string>

// Standard input and output as a terminal from which single keys are read. One a process.
//
// However the process ends or stops, by a signal, by exit() or by abort(), the terminal gets its
// modes back first, and its own again when the process goes on.
class CluiTerminal {
 public:
  enum class Event { Bytes, Nothing, Gone };

  CluiTerminal() = default;
  ~CluiTerminal() { close(); }
  CluiTerminal(const CluiTerminal&) = delete;
  CluiTerminal& operator=(const CluiTerminal&) = delete;

  // False when it cannot be set up. The texts are written now and at each return to this terminal,
  // and at the end and at each leave.
  bool open(const std::string& begin, const std::string& end);
  // May be called twice.
  void close();

  // What the driver takes for the key that deletes.
  char eraseKey() const;
  // False when it does not tell.
  bool size(int& width, int& height) const;

  // Appends what was typed. Nothing when so many milliseconds have passed (-1 is for ever), or when
  // there is something else to look after; Gone when there is no terminal any more.
  Event read(std::string& bytes, int milliseconds);
  void write(const std::string& bytes);

  // While scripts run, Control-C and Control-Z are signals and not keys.
  void letKeysSignal(bool let);
  // Stops the process as Control-Z does.
  void stop();

  // Whether the window has changed its size, or the process was stopped and goes on, since the last
  // question.
  bool wasResized();
  bool wasStopped();
  // The signal that asks the process to end, or 0. A second one ends it at once.
  int endingSignal() const;
  // Ends the process by that signal, as if nobody had caught it.
  [[noreturn]] static void EndBy(int signal);
};

#endif  // PROGRAM_TERMINAL_CLUITERMINAL_H_
