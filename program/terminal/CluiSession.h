// A session in which each typed word is sent at its end.

#ifndef PROGRAM_TERMINAL_CLUISESSION_H_
#define PROGRAM_TERMINAL_CLUISESSION_H_

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "program/terminal/CluiSentWords.h"
#include "program/terminal/CluiTerminalField.h"
#include "program/terminal/CluiTerminalSettings.h"
#include "program/terminal/CluiTyping.h"
#include "terminal/YcluiCapabilities.h"
#include "terminal/YcluiHistory.h"
#include "terminal/YcluiKeys.h"
#include "terminal/YcluiLineEditor.h"
#include "terminal/YcluiPicture.h"
#include "terminal/YcluiScreen.h"
#include "terminal/YcluiTerminal.h"

// A line editor holds the word that has not been sent, and the field has the same text after each
// key. A key that has a byte is offered to the binding of the field first. What is bound runs its
// action, which may replace the word or send it; any other key edits.
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
  // Whether keys are being read.
  bool isRunning() const { return editor_.has_value(); }
  // The signal that ended the session, or 0.
  int endingSignal() const { return terminal_.endingSignal(); }

  CluiTerminalField& field() { return *field_; }
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
  void editByKey();
  void insert(const std::string& text);
  bool isAtEnd() const { return !editor_ || editor_->isAtEnd(); }
  // The word as the editor has it.
  std::string word() const { return editor_ ? editor_->text() : std::string(); }
  void giveUp();
  void takeBack();
  // The previous key if it was a control byte, else NUL.
  char lastKey() const { return lastKey_; }
  // Whether nothing is typed and no command is unfinished.
  bool isEmpty() { return field_->text().empty() && !commandIsOpen(); }
  bool isPasting() const { return pasting_; }
  // Whether a comma at the start of the word being typed may separate arguments.
  bool mayBeginWithComma() const { return !typing_.endsInComma(); }

 private:
  CluiTyping& typing_;
  std::string encoding_;
  CluiTerminalSettings& settings_;
  YcluiCapabilities capabilities_;
  YcluiTerminal terminal_;
  std::unique_ptr<CluiTerminalField> field_;  // of the present parser
  YcluiScreen screen_;
  YcluiHistory history_;
  std::optional<YcluiLineEditor> editor_;  // while it runs; of the present parser
  bool isLost_ = false;                    // the field cannot be attached to a new parser
  const YcluiKey* key_ = nullptr;          // being handled
  bool isEdited_ = false;                  // the editor has handled it
  bool countsQuotes_ = false;              // the binding does, since no action is bound to quotes
  char lastKey_ = '\0';
  char thisKey_ = '\0';
  // What the current key has done to the command line.
  enum class Outcome { None, Read, GivenUp, TakenBack };
  Outcome outcome_ = Outcome::None;
  CluiSentWords sent_;      // of the unfinished command
  bool wordIsNew_ = false;  // the last word has not run a script yet
  bool pasting_ = false;
  bool dropsPaste_ = false;      // an interrupt drops the rest of a paste
  std::string pasted_;           // the incomplete last line of a paste
  std::string pasteFault_;       // about a character of that line that does not exist inside
  std::size_t pastedLines_ = 0;  // number of lines of a paste
  std::string afterPaste_;       // what was after the cursor when a line was pasted

  bool attach();
  void openEditor();
  void loop();
  bool goesOn();
  void reloadIfAsked();
  bool reload();
  void take(YcluiKeys& keys);
  void checkSignals();
  void afterInterrupt(YcluiKeys& keys);
  void refresh();
  void flush();
  const std::string& prompt();
  YcluiPicture sentPicture(const std::string& prompt);
  void leaveLine(const std::string& prompt);

  void handle(const YcluiKey& key);
  void control(char byte);
  void edit(const YcluiKey& key);
  void stop();
  void closeQuote();
  bool offer(const std::string& bytes);
  void beginWord(const std::string& text);
  void setWord(const std::string& text);
  void followField();
  void updateField();
  std::optional<std::string> takeLast();
  void takeLastToEdit(bool keeps);
  void remember(const std::string& word, const CluiSentWords::Extent& before, bool refused);
  void addSentToHistory();
  void keepComment(const std::string& comment);
  void keepUnfinished();
  void clearStaleLine();
  bool commandIsOpen();

  void handlePasted(const YcluiKey& key);
  void beginPaste();
  void paste(const std::string& bytes);
  void pasteLine();
  void pasteRest();
  bool skipsLine();
  std::string takeBeforeCursor();
};

#endif  // PROGRAM_TERMINAL_CLUISESSION_H_
