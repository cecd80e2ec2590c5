// What the terminal can do and what its keys send, as terminfo tells.

#ifndef PROGRAM_TERMINAL_CLUICAPABILITIES_H_
#define PROGRAM_TERMINAL_CLUICAPABILITIES_H_

#include <map>
#include <string>

// What a sequence of bytes from the keyboard stands for.
enum class CluiSequence { Up, Down, Return, Erase, PasteBegin, PasteEnd, Other };

// A text is empty when the terminal has no such thing. All are ready to be written.
struct CluiCapabilities {
  bool wraps = false;       // goes on in the next row behind the last column
  bool wrapsLate = false;   // but only when another character comes
  std::string up;           // one row up, in the same column
  std::string clearToEnd;   // from the cursor to the end of the screen
  std::string clearScreen;  // all of it, with the cursor at its beginning
  std::string ring;         // the bell
  std::string colour;       // of the prompt; empty where the user wants none
  std::string plain;        // ends that
  std::string begin;        // to be written before keys are read
  std::string end;          // and when that is over
  std::map<std::string, CluiSequence> keys;
  int width = 80;  // of a terminal that does not tell its size
  int height = 24;

  // Of the terminal that TERM names; the poorest one when terminfo does not know it.
  static CluiCapabilities Read();
};

#endif  // PROGRAM_TERMINAL_CLUICAPABILITIES_H_
