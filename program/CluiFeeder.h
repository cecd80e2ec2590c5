// Feeding lines to the parser.

#ifndef PROGRAM_CLUIFEEDER_H_
#define PROGRAM_CLUIFEEDER_H_

#include <string>

#include "program/CluiDiagnostics.h"
#include "program/CluiReading.h"
#include "program/CluiTextEnd.h"

// The lexer refuses a text that ends after the comma of an argument that is not declared, or inside
// a point. Such lines are held and given to it together with the next one.
class CluiFeeder {
 public:
  CluiFeeder(CluiEncoding& encoding, CluiReading& reading, CluiDiagnostics& diagnostics,
             CluiOutcome& outcome)
      : encoding_(encoding), reading_(reading), diagnostics_(diagnostics), outcome_(outcome) {}

  // Another input begins.
  void begin() { heldText_.clear(); }
  // A line in the user's encoding.
  void feed(std::string& bytes, std::size_t number);
  // Gives the held lines to the parser.
  void flush();
  // Lets the parser read what a text has left unread: an argument that no comma follows waits for
  // the next text.
  void readLeftText(std::size_t number);
  // The input has ended after that line. What it ended inside of is reported and dropped.
  void end(std::size_t number);

  // The held lines, as text of the system.
  std::string& held() { return heldText_; }

 private:
  CluiEncoding& encoding_;
  CluiReading& reading_;
  CluiDiagnostics& diagnostics_;
  CluiOutcome& outcome_;
  std::string heldText_;
  std::size_t heldNumber_ = 0;  // of the first held line
  CluiTextState heldState_;     // at the end of the held lines

  void feedText(std::string& text, std::size_t number);
  bool mustHold(const std::string& text);
  void interpret(std::string& text, std::size_t number);
  std::wstring unfinished() const;
};

#endif  // PROGRAM_CLUIFEEDER_H_
