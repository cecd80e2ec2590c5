// Prints what happens to every word, for authors of languages.

#ifndef PROGRAM_CLUITRACE_H_
#define PROGRAM_CLUITRACE_H_

#include <string>

#include "program/CluiReport.h"

class YcluiToken;

// Whether the syntax accepts a word is known only from the callback that follows, so the word is
// held until then:
//   accepted  circle:0,0
//   line      circle:0,0
//   runs      (circle 0 0)
//   refused   cirlce: no such word
class CluiTrace {
 public:
  CluiTrace(CluiReport& report, CluiEncoding& encoding) : report_(report), encoding_(encoding) {}

  void offered(const YcluiToken& token);
  void echo(const char* line);
  // `offered`: the lexer read the token whole, so it is the held one.
  void refused(const YcluiToken& token, bool offered, const std::wstring& reason);
  void runs(const char* text);
  // Prints the held word, if any, as accepted.
  void settle();

 private:
  CluiReport& report_;
  CluiEncoding& encoding_;
  bool held_ = false;
  bool expanded_ = false;  // the word is an alias
  std::string word_;
  std::string line_;
  bool hasLine_ = false;

  void settle(const wchar_t* what, const std::wstring& reason = std::wstring());
  void print(const wchar_t* what, const std::string& text,
             const std::wstring& reason = std::wstring());
};

#endif  // PROGRAM_CLUITRACE_H_
