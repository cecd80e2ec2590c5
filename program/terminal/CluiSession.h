// The line editor: an interactive session in a terminal.

#ifndef PROGRAM_TERMINAL_CLUISESSION_H_
#define PROGRAM_TERMINAL_CLUISESSION_H_

#include <string>
#include <string_view>
#include <vector>

#include "program/CluiTextEnd.h"
#include "program/terminal/CluiCapabilities.h"
#include "program/terminal/CluiHistory.h"
#include "program/terminal/CluiKeys.h"
#include "program/terminal/CluiScreen.h"
#include "program/terminal/CluiTerminal.h"
#include "program/terminal/CluiTerminalField.h"
#include "program/terminal/CluiTerminalSettings.h"
#include "program/terminal/CluiTyping.h"
#include "program/text/CluiEncoding.h"

// Passes keys to the field and shows the field's text on the screen. The binding of the field
// decides what a key does; the session itself only closes an open quote before Return.
//
// Other output to the terminal must be preceded by clearLine(). The line of a complete command
// stays on the screen.
class CluiSession {
 public:
  CluiSession(CluiTyping& typing, CluiEncoding& encoding, CluiTerminalSettings& settings,
              const std::string& language);
  ~CluiSession();
  CluiSession(const CluiSession&) = delete;
  CluiSession& operator=(const CluiSession&) = delete;

  // The only session, or null.
  static CluiSession* Current();

  // Reads keys until the user leaves. False when the terminal cannot be used or the parser was
  // deleted.
  bool run();
  // The signal that ended the session, or 0.
  int endingSignal() const { return terminal_.endingSignal(); }

  CluiEncoding& encoding() { return encoding_; }
  CluiTerminalField& field() { return field_; }
  CluiScreen& screen() { return screen_; }
  CluiHistory& history() { return history_; }

  // Hides the line for other output.
  void clearLine();

  // Call these on events of the parser and the engine.
  void lineChanges(const char* wholeLine);
  void wordArrives() { wordIsNew_ = true; }
  void commandCompletes();
  void scriptRuns();
  // Whether the text is one of the prelude's key actions. These print through the session only.
  static bool IsKey(std::string_view text) { return text.starts_with("(terminal-"); }

  // Actions of keys, see CluiTerminalProcedures.h.
  void giveUp();
  void takeBack();
  // The previous key if it was a control byte, else NUL.
  char lastKey() const { return lastKey_; }
  // Whether nothing is typed and no command is unfinished.
  bool isEmpty() { return field_.text().empty() && !commandIsOpen(); }
  bool isPasting() const { return pasting_; }
  // The state in which the parser will read the word being typed.
  CluiTextState textState(const YcluiParser& parser) const {
    return CluiStateOf(parser, !typing_.endsInComma());
  }

 private:
  CluiTyping& typing_;
  CluiEncoding& encoding_;
  CluiTerminalSettings& settings_;
  CluiCapabilities capabilities_;
  CluiTerminal terminal_;
  CluiTerminalField field_;
  CluiScreen screen_;
  CluiHistory history_;
  char lastKey_ = '\0';
  char thisKey_ = '\0';
  // What the current key has done to the command line.
  enum class Outcome { None, Read, GivenUp, TakenBack };
  Outcome outcome_ = Outcome::None;
  std::vector<std::string> typed_;  // the words of the unfinished command, for the history
  bool wordIsNew_ = false;          // the last word has not run a script yet
  bool pasting_ = false;
  bool dropsPaste_ = false;      // an interrupt drops the rest of a paste
  std::string pasted_;           // the incomplete last line of a paste
  std::size_t pastedLines_ = 0;  // number of complete lines of a paste

  bool attach();
  void loop();
  void take(CluiKeys& keys);
  void checkSignals();
  void afterInterrupt(CluiKeys& keys);
  void refresh();
  void flush();
  std::wstring prompt();

  void handle(const CluiKey& key);
  void control(char byte);
  void stop();
  void closeQuote();
  void text(const std::string& character);
  bool offer(const std::string& bytes);
  void remember(const std::string& word, bool refused);
  void addTypedToHistory();
  void clearStaleLine();
  bool commandIsOpen();

  void paste(const std::string& bytes);
  void pasteLine();
  void pasteRest();
  std::string takeWord();
};

#endif  // PROGRAM_TERMINAL_CLUISESSION_H_
