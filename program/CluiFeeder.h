// Feeds lines to the parser.

#ifndef PROGRAM_CLUIFEEDER_H_
#define PROGRAM_CLUIFEEDER_H_

#include <memory>
#include <string>

#include "parser/YcluiPreview.h"
#include "program/CluiDiagnostics.h"
#include "program/CluiReading.h"
#include "program/CluiTextEnd.h"

// The lexer refuses a text that ends inside a point, or after a comma that announces a further
// argument. The feeder holds such a line and feeds it together with the next one.
class CluiFeeder {
 public:
  CluiFeeder(CluiEncoding& encoding, CluiReading& reading, CluiDiagnostics& diagnostics)
      : encoding_(encoding), reading_(reading), diagnostics_(diagnostics) {}

  // Another input begins.
  void begin() { heldText_.clear(); }
  // A line in the user's encoding.
  void feed(std::string& bytes, std::size_t number);
  // The same as text of the system.
  void feedText(std::string& text, std::size_t number);
  // Feeds the held lines.
  void flush();
  // Lets the parser read what it has left unread: text after an argument without a comma is read
  // with the next text only.
  void readLeftText(std::size_t number);
  // The input has ended after that line. Reports an unfinished command and drops it.
  void end(std::size_t number);

  // The held lines, as text of the system.
  std::string& held() { return heldText_; }

 private:
  CluiEncoding& encoding_;
  CluiReading& reading_;
  CluiDiagnostics& diagnostics_;
  std::string heldText_;
  std::size_t heldNumber_ = 0;             // of the first held line
  std::unique_ptr<YcluiPreview> preview_;  // null until a line ends in a comma

  bool mustHold(const std::string& text);
  void interpret(std::string& text, std::size_t number);
  std::wstring unfinished() const;
};

#endif  // PROGRAM_CLUIFEEDER_H_
