// For authors of languages: what happens to every word.

#ifndef PROGRAM_CLUITRACE_H_
#define PROGRAM_CLUITRACE_H_

#include <string>

#include "program/CluiReport.h"

class YcluiToken;

// Whether the syntax accepts a word shows only in what happens next, so a word is held until then:
//   taken    circle:0,0
//   line     circle:0,0
//   runs     (circle 0 0)
class CluiTrace {
 public:
  CluiTrace(CluiReport& report, CluiEncoding& encoding) : report_(report), encoding_(encoding) {}

  void offered(const YcluiToken& token);
  void echo(const char* line);
  // `offered`: it is the held word, and not one that could not be read.
  void refused(const YcluiToken& token, bool offered);
  void runs(const char* text);
  // The held word, if any, was accepted.
  void settle();

 private:
  CluiReport& report_;
  CluiEncoding& encoding_;
  bool held_ = false;
  bool expanded_ = false;  // the word is an alias
  std::string word_;
  std::string line_;
  bool hasLine_ = false;

  void settle(const wchar_t* what);
  void print(const wchar_t* what, const std::string& text);
};

#endif  // PROGRAM_CLUITRACE_H_
