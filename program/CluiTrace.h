// For authors: what becomes of every word.

#ifndef PROGRAM_CLUITRACE_H_
#define PROGRAM_CLUITRACE_H_

#include <string>

#include "program/CluiReport.h"

class YcluiToken;

// Whether the syntax took a word shows only in what happens next, so a word is held back until
// then:
//   taken    circle:0,0
//   line     circle:0,0
//   runs     (circle 0 0)
class CluiTrace {
 public:
  CluiTrace(CluiReport& report, CluiEncoding& encoding) : report_(report), encoding_(encoding) {}

  void offered(const YcluiToken& token);
  void echo(const char* line);
  // `offered`: it is the word held back, and none that could not be read.
  void refused(const YcluiToken& token, bool offered);
  void runs(const char* text);
  // The word held back, if any, was taken.
  void settle();

 private:
  CluiReport& report_;
  CluiEncoding& encoding_;
  bool held_ = false;
  bool expanded_ = false;  // it stands for other text
  std::string word_;
  std::string line_;
  bool hasLine_ = false;

  void answer(const wchar_t* what);
  void tell(const wchar_t* what, const std::string& text);
};

#endif  // PROGRAM_CLUITRACE_H_
