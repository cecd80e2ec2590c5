// The capabilities of the terminal and the bytes that its keys send, from terminfo.

#ifndef PROGRAM_TERMINAL_CLUICAPABILITIES_H_
#define PROGRAM_TERMINAL_CLUICAPABILITIES_H_

#include <map>
#include <string>

// The meaning of a sequence of bytes from the keyboard.
enum class CluiSequence { Up, Down, Return, Erase, PasteBegin, PasteEnd, Other };

// Each text is written as it is; it is empty when the terminal lacks the capability.
struct CluiCapabilities {
  bool wraps = false;       // the cursor moves to the next row after the last column
  bool wrapsLate = false;   // but only when the next character is written
  std::string up;           // one row up, in the same column
  std::string clearToEnd;   // from the cursor to the end of the screen
  std::string clearScreen;  // all of it, with the cursor at its beginning
  std::string ring;         // the bell
  std::string colour;       // of the prompt; empty if the user has disabled colour
  std::string plain;        // ends the colour
  std::string begin;        // written before keys are read
  std::string end;          // written after keys have been read
  std::map<std::string, CluiSequence> keys;
  int width = 80;  // used if the driver does not know the size
  int height = 24;

  // For the terminal that TERM names; without any capability if terminfo does not know it.
  static CluiCapabilities Read();
};

#endif  // PROGRAM_TERMINAL_CLUICAPABILITIES_H_
