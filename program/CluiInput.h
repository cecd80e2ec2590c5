// Lines that a task of the program feeds to a language.

#ifndef PROGRAM_CLUIINPUT_H_
#define PROGRAM_CLUIINPUT_H_

#include <string>

class CluiInput {
 public:
  // The next line, with its end; false after the last one. It is called when everything before has
  // been read and what it printed has been written. The first call follows the loading of the
  // language.
  virtual bool next(std::string& line) = 0;

 protected:
  ~CluiInput() = default;
};

#endif  // PROGRAM_CLUIINPUT_H_
