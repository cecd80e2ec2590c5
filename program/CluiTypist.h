// Connects what is typed at a terminal to the parser and the diagnostics.

#ifndef PROGRAM_CLUITYPIST_H_
#define PROGRAM_CLUITYPIST_H_

#include <memory>
#include <string>

#include "program/CluiDiagnostics.h"
#include "program/CluiFeeder.h"
#include "program/CluiReading.h"
#include "program/CluiReport.h"
#include "program/terminal/CluiSession.h"
#include "program/terminal/CluiTyping.h"

// Typed words are read one by one and reported without a line number; a pasted text is read line by
// line.
class CluiTypist : public CluiTyping {
 public:
  CluiTypist(CluiReading& reading, CluiDiagnostics& diagnostics, CluiFeeder& feeder,
             const CluiOutcome& outcome)
      : reading_(reading), diagnostics_(diagnostics), feeder_(feeder), outcome_(outcome) {}

  // Creates the session. From now on each report clears the line being typed first.
  void open(CluiEncoding& encoding, const std::string& language, CluiReport& report);
  // Runs until the user leaves. REQUIRES: a session and a parser.
  void run();
  // Destroys the session. Ends the process when a signal ended the session.
  void close(CluiReport& report);
  // Null when input is not typed.
  CluiSession* session() { return session_.get(); }

  YcluiParser* parser() override;
  void beginWord(const std::string& word) override;
  void endWord(bool wasSent) override;
  void readLine(std::string& bytes, std::size_t number) override;
  std::string takeHeld() override;
  bool endsInComma() const override;
  std::size_t refusals() const override { return outcome_.refused; }

 private:
  CluiReading& reading_;
  CluiDiagnostics& diagnostics_;
  CluiFeeder& feeder_;
  const CluiOutcome& outcome_;
  std::string openText_;  // the typed text of the open token
  std::unique_ptr<CluiSession> session_;

  void keepOpenText();
};

#endif  // PROGRAM_CLUITYPIST_H_
