// A session in which each typed word is sent at its end.

#ifndef PROGRAM_TERMINAL_CLUISESSION_H_
#define PROGRAM_TERMINAL_CLUISESSION_H_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "program/terminal/CluiTerminalField.h"
#include "program/terminal/CluiTerminalSettings.h"
#include "program/terminal/CluiTypedWord.h"
#include "program/terminal/CluiTyping.h"
#include "terminal/YcluiCapabilities.h"
#include "terminal/YcluiColours.h"
#include "terminal/YcluiHistory.h"
#include "terminal/YcluiKeys.h"
#include "terminal/YcluiPicture.h"
#include "terminal/YcluiScreen.h"
#include "terminal/YcluiTerminal.h"

// Passes keys to the field and shows the field's text on the screen. The binding of the field
// decides what a key does; the session itself only closes an open quote before Return.
//
// Other output to the terminal must be preceded by clearLine(). The line of a complete command
// stays on the screen.
class CluiSession {
 public:
  // `encoding` is that of the terminal.
  CluiSession(CluiTyping& typing, const std::string& encoding, CluiTerminalSettings& settings,
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

  CluiTerminalField& field() { return field_; }
  YcluiScreen& screen() { return screen_; }
  YcluiHistory& history() { return history_; }
  // Prints what can continue the word, as far as the window has room. False when there is nothing.
  bool list(const YcluiParser& parser, const std::string& word);

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
  // Whether a comma at the start of the word being typed may separate arguments.
  bool mayBeginWithComma() const { return !typing_.endsInComma(); }

 private:
  CluiTyping& typing_;
  std::string encoding_;
  CluiTerminalSettings& settings_;
  YcluiCapabilities capabilities_;
  YcluiColours colours_;
  YcluiTerminal terminal_;
  CluiTerminalField field_;
  YcluiScreen screen_;
  YcluiHistory history_;
  std::unique_ptr<CluiTypedWord> typedWord_;  // of the parser; keeps the order of its words
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
  std::string pasteFault_;       // about a character of that line that does not exist inside
  std::size_t pastedLines_ = 0;  // number of lines of a paste

  bool attach();
  void loop();
  void take(YcluiKeys& keys);
  void checkSignals();
  void afterInterrupt(YcluiKeys& keys);
  void refresh();
  void flush();
  const std::string& prompt();
  YcluiPicture picture(const std::string& prompt, bool isPainted);
  void leaveLine(const std::string& prompt);

  void handle(const YcluiKey& key);
  void erase();
  void control(char byte);
  void stop();
  void closeQuote();
  bool offer(const std::string& bytes);
  void remember(const std::string& word, bool refused);
  void addTypedToHistory();
  void clearStaleLine();
  bool commandIsOpen();

  void handlePasted(const YcluiKey& key);
  void beginPaste();
  void paste(const std::string& bytes);
  void pasteLine();
  void pasteRest();
  bool skipsLine();
  std::string takeWord();
};

#endif  // PROGRAM_TERMINAL_CLUISESSION_H_
