// What a language sets for its users at the terminal.

#ifndef PROGRAM_TERMINAL_CLUITERMINALSETTINGS_H_
#define PROGRAM_TERMINAL_CLUITERMINALSETTINGS_H_

#include <string>

// Texts of the system.
struct CluiPrompts {
  std::string ready = "> ";   // no command has begun
  std::string open = "... ";  // a command is unfinished
};

struct CluiTerminalSettings {
  bool sendsWords = false;  // each word at its end; otherwise lines at Return
  CluiPrompts prompts;
  std::string colours;   // see YcluiColours::read
  bool leaves = false;   // the session is to end
  bool reloads = false;  // the language is to be loaded again
};

#endif  // PROGRAM_TERMINAL_CLUITERMINALSETTINGS_H_
