// A command line for a parser, at the terminal.

#ifndef TERMINAL_YCLUIPROMPT_H_
#define TERMINAL_YCLUIPROMPT_H_

#include <optional>
#include <string>
#include <string_view>

#include "foundation/YTypes.h"
#include "parser/YcluiParser.h"
#include "terminal/YcluiCapabilities.h"
#include "terminal/YcluiHalfTyped.h"
#include "terminal/YcluiHistory.h"
#include "terminal/YcluiKeys.h"
#include "terminal/YcluiLineEditor.h"
#include "terminal/YcluiScreen.h"
#include "terminal/YcluiStyledText.h"
#include "terminal/YcluiTerminal.h"

// Lets a user type lines, with the editor's preview, completion and history, on standard input and
// output:
//
//   YcluiPrompt prompt(parser, "calculator");
//   prompt.run();
//
// Nothing of a line runs before Return. One prompt is open at a time in a process.
class YQRT_API YcluiPrompt {
 public:
  // The parser must outlive it. The history is kept in the file of that language, see
  // YcluiHistory::DefaultFile; an empty name keeps none.
  YcluiPrompt(YcluiParser& parser, const std::string& language);
  YcluiPrompt(const YcluiPrompt&) = delete;
  YcluiPrompt& operator=(const YcluiPrompt&) = delete;
  ~YcluiPrompt();

  YcluiLineEditor& editor() { return editor_; }
  YcluiHistory& history() { return history_; }
  YcluiScreen& screen() { return screen_; }
  const YcluiScreen& screen() const { return screen_; }
  YcluiTerminal& terminal() { return terminal_; }
  const YcluiTerminal& terminal() const { return terminal_; }

  // Sets up the terminal, as YcluiTerminal::open does. False when there is none.
  bool open(void (*onEnding)() = nullptr, int wake = -1);
  // Shortens the history and gives the terminal back. The destructor does the same.
  void close();

  // Sets a function that is called whenever a signal or `wake` ends the wait for a key. When it
  // returns true, readLine returns Stopped.
  void setStop(bool (*isAsked)()) { isStopAsked_ = isAsked; }
  // Makes the next line begin with this text, the cursor at the offset, instead of empty.
  void beginWith(const std::string& text, std::size_t cursor);

  enum class Outcome {
    Line,         // `line` is what was typed
    Interrupted,  // Control-C: what was typed is dropped
    Stopped,      // as setStop says; `line` is what is typed so far, hidden from the screen
    Ended,        // the user left, the terminal or the process ends, or the parser is condemned
  };
  // Lets the user edit a line. What others wrote to the terminal meanwhile is left as it is. A
  // script that gives values of an argument may condemn the parser; it lives until this returns.
  // REQUIRES: it is open.
  Outcome readLine(std::string& line);

  // Reads lines and interprets each, until the user leaves or leave() is called. Control-C drops a
  // half-typed command. A line with a mistake stays, with a message below it; what the parser
  // refuses of a line that was sent, its host reports. False when there is no terminal.
  bool run();
  // Makes run() return after the present line; for a command.
  void leave() { leaves_ = true; }

  // Shows a text, in the encoding inside the process, above the line that is edited or after the
  // one that was sent. REQUIRES: it is open.
  void print(const YcluiStyledText& text);

 private:
  YcluiParser& parser_;
  YcluiCapabilities capabilities_;
  YcluiTerminal terminal_;
  YcluiScreen screen_;
  YcluiHistory history_;
  YcluiLineEditor editor_;
  std::optional<YcluiKeys> keys_;  // while it is open
  bool (*isStopAsked_)() = nullptr;
  std::string firstText_;  // what the next line begins with
  std::size_t firstCursor_ = 0;
  bool isOpen_ = false;
  bool leaves_ = false;

  bool readKeys(YcluiKey& key);
  void checkWindow();
  void flush();
  void stop();
  void finish(YcluiLineEditor::Request request);
  bool isStopped() const { return isStopAsked_ != nullptr && isStopAsked_(); }
  Outcome endWithoutKey(std::string& line);
};

#endif  // TERMINAL_YCLUIPROMPT_H_
