// What a session at a terminal needs from its run.

#ifndef PROGRAM_TERMINAL_CLUITYPING_H_
#define PROGRAM_TERMINAL_CLUITYPING_H_

#include <string>

class YcluiParser;

class CluiTyping {
 public:
  // The parser that is typed into, or null when it was deleted.
  virtual YcluiParser* parser() = 0;
  // Reports from now on are about this word, which may be sent to the parser with a blank.
  virtual void beginWord(const std::string& word) = 0;
  // Reports what is still pending.
  virtual void endWord(bool wasSent) = 0;
  // Reads a whole line, in the encoding of the terminal, the `number`th of those that were pasted.
  virtual void readLine(std::string& bytes, std::size_t number) = 0;
  // The lines of a paste that have not been read because an argument must follow, as text of the
  // system. The caller types them or drops them.
  virtual std::string takeHeld() = 0;
  // Whether the half-read token ends in a comma.
  virtual bool isBehindComma() const = 0;
  // How many words and lines have been refused so far.
  virtual std::size_t refusals() const = 0;

 protected:
  ~CluiTyping() = default;
};

#endif  // PROGRAM_TERMINAL_CLUITYPING_H_
