// The interface through which a terminal session reaches the parser and the diagnostics.

#ifndef PROGRAM_TERMINAL_CLUITYPING_H_
#define PROGRAM_TERMINAL_CLUITYPING_H_

#include <string>

class YcluiParser;

class CluiTyping {
 public:
  // Null when the parser was deleted.
  virtual YcluiParser* parser() = 0;
  // Loads the language again. On success parser() is the new one, and the old one is destroyed by
  // dropOldParsers(). Otherwise nothing has changed, and the reason was reported.
  virtual bool reload() = 0;
  virtual void dropOldParsers() = 0;
  // A key follows that may send this word to the parser; faults are reported in this text.
  virtual void beginWord(const std::string& word) = 0;
  // The key has been handled; reports the pending codes.
  virtual void endWord(bool wasSent) = 0;
  // Reads line `number` of a paste, with its end, as text of the system.
  virtual void readLine(std::string line, std::size_t number) = 0;
  // Reads a typed line, with its end, as text of the system.
  virtual void sendLine(std::string line) = 0;
  // Removes and returns the lines of a paste that are held until the next argument, as text of the
  // system.
  virtual std::string takeHeld() = 0;
  // Whether the typed text of the open token ends in a comma.
  virtual bool endsInComma() const = 0;
  // The number of words and lines refused so far.
  virtual std::size_t refusals() const = 0;

 protected:
  ~CluiTyping() = default;
};

#endif  // PROGRAM_TERMINAL_CLUITYPING_H_
