// Somebody types at a terminal.

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
#include "program/terminal/CluiTyping.h"
#include "program/text/CluiEncoding.h"

struct CluiPrompts {
  std::wstring ready = L"> ";   // a command may begin
  std::wstring open = L"... ";  // one is under way
};

// Keys go to the field, and what the field holds goes to the screen. What a key does is not decided
// here but by what is bound to the field; only an open quote is closed from here before the key
// Return.
//
// Whoever else writes to the terminal calls makeWay() first. What a complete command looked like
// stays on the screen; everything else that is typed makes way.
class CluiSession {
 public:
  CluiSession(CluiTyping& typing, CluiEncoding& encoding, const std::string& language);
  ~CluiSession();
  CluiSession(const CluiSession&) = delete;
  CluiSession& operator=(const CluiSession&) = delete;

  // The one that there is, or null.
  static CluiSession* Current();

  // Reads keys until somebody wants to leave. False when there is no terminal to be had, or when
  // the parser went.
  bool run();
  // The signal that ended it, or 0.
  int endingSignal() const { return terminal_.endingSignal(); }

  CluiEncoding& encoding() { return encoding_; }
  CluiTerminalField& field() { return field_; }
  CluiScreen& screen() { return screen_; }
  CluiHistory& history() { return history_; }
  CluiPrompts& prompts() { return prompts_; }

  // What happens meanwhile.
  void makeWay();
  void lineIs(const char* wholeLine);
  void wordComes() { wordIsNew_ = true; }
  void commandIsComplete();
  void scriptRuns();
  // Whether a text that runs is a key's of the prelude, which prints through the session, if at
  // all.
  static bool IsKey(std::string_view text) { return text.starts_with("(terminal-"); }

  // What keys can ask for.
  void leave() { leaves_ = true; }
  void giveUp();
  void takeBack();
  // The control byte that came before the one at hand, without anything typed between; else NUL.
  char lastKey() const { return lastKey_; }
  // Whether nothing is typed and no command is under way.
  bool isEmpty() { return field_.text().empty() && !commandIsOpen(); }
  bool isPasting() const { return pasting_; }
  // The state in which the parser would read the word that is typed.
  CluiTextState textState(const YcluiParser& parser) const {
    return CluiStateOf(parser, !typing_.isBehindComma());
  }

 private:
  CluiTyping& typing_;
  CluiEncoding& encoding_;
  CluiCapabilities capabilities_;
  CluiTerminal terminal_;
  CluiTerminalField field_;
  CluiScreen screen_;
  CluiHistory history_;
  CluiPrompts prompts_;
  bool leaves_ = false;
  char lastKey_ = '\0';
  char thisKey_ = '\0';
  // For the history.
  enum class Outcome { None, Read, GivenUp, TakenBack };
  Outcome outcome_ = Outcome::None;  // of the key at hand, for the command under way
  std::vector<std::string> typed_;   // the words of that command
  bool wordIsNew_ = false;           // and has not run anything yet
  bool pasting_ = false;
  bool dropsPaste_ = false;      // the rest of it, since it was interrupted
  std::string pasted_;           // the last line, as far as it has come
  std::size_t pastedLines_ = 0;  // complete ones of this paste

  bool attach();
  void loop();
  void take(CluiKeys& keys);
  void lookAround();
  void afterInterrupt(CluiKeys& keys);
  void refresh();
  void flush();
  const std::wstring& promptNow();

  void handle(const CluiKey& key);
  void control(char byte);
  void stop();
  void closeQuote();
  void text(const std::string& character);
  bool offer(const std::string& bytes);
  void remember(const std::string& word, bool refused);
  void keepTyped();
  void clearStaleLine();
  bool commandIsOpen();
  static void giveUpFrame(YcluiParser& parser);

  void paste(const std::string& bytes);
  void pasteLine();
  void pasteRest();
  std::string takeWord();
};

#endif  // PROGRAM_TERMINAL_CLUISESSION_H_
