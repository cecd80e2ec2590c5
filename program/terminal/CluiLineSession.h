// A session in which lines are typed and sent whole.

#ifndef PROGRAM_TERMINAL_CLUILINESESSION_H_
#define PROGRAM_TERMINAL_CLUILINESESSION_H_

#include <cstddef>
#include <memory>
#include <string>

#include "program/terminal/CluiTerminalSettings.h"
#include "program/terminal/CluiTyping.h"
#include "terminal/YcluiPrompt.h"

class CluiLineSession {
 public:
  // REQUIRES: a parser.
  CluiLineSession(CluiTyping& typing, CluiTerminalSettings& settings, const std::string& language);

  ~CluiLineSession();
  CluiLineSession(const CluiLineSession&) = delete;
  CluiLineSession& operator=(const CluiLineSession&) = delete;

  // The only session, or null.
  static CluiLineSession* Current();

  // Greets the user with this line, unless it is empty, and reads lines until the user leaves.
  // False when the terminal cannot be used or the parser was deleted.
  bool run(const std::string& greeting);
  // Writes lines while a command runs, after what it wrote, in rows of their own. An empty text
  // only makes what is written next begin a row.
  void print(const std::string& text);
  // The columns of the window.
  std::size_t width() const { return prompt_->screen().width(); }
  // The signal that ended the session, or 0.
  int endingSignal() const { return prompt_->terminal().endingSignal(); }

 private:
  CluiTyping& typing_;
  CluiTerminalSettings& settings_;
  std::string language_;
  std::string halfTyped_;  // when the session stops for the language to be loaded again
  std::unique_ptr<YcluiPrompt> prompt_;  // of the present parser

  bool open();
  bool read();
  bool reload();
  void interrupted();
};

#endif  // PROGRAM_TERMINAL_CLUILINESESSION_H_
