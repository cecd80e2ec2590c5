// Connects what is typed at a terminal to the parser and the diagnostics.

#ifndef PROGRAM_CLUITYPIST_H_
#define PROGRAM_CLUITYPIST_H_

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "program/CluiDiagnostics.h"
#include "program/CluiFeeder.h"
#include "program/CluiReading.h"
#include "program/CluiReport.h"
#include "program/terminal/CluiLineSession.h"
#include "program/terminal/CluiSession.h"
#include "program/terminal/CluiTerminalSettings.h"
#include "program/terminal/CluiTyping.h"

// A session sends words one by one or whole lines. Faults in either are reported without a line
// number; a text that is pasted between words is read line by line.
class CluiTypist : public CluiTyping {
 public:
  CluiTypist(CluiReading& reading, CluiDiagnostics& diagnostics, CluiFeeder& feeder,
             const CluiOutcome& outcome)
      : reading_(reading), diagnostics_(diagnostics), feeder_(feeder), outcome_(outcome) {}

  // Creates the session, in which words are sent unless the language chooses lines. From now on
  // each report clears the line being typed first.
  void open(CluiEncoding& encoding, const std::string& language, CluiReport& report);
  // Runs until the user leaves, after a greeting unless `isQuiet`. REQUIRES: a session and a
  // parser.
  void run(bool isQuiet);
  // Destroys the session. Ends the process when a signal ended the session.
  void close();
  CluiTerminalSettings& settings() { return settings_; }
  // Whether input is typed.
  bool isOpen() const { return session_ != nullptr || lines_ != nullptr; }
  // The session that sends words; null for another one.
  CluiSession* session() { return session_.get(); }

  // Sets the function by which the language is loaded again.
  void setReload(std::function<bool()> reload) { reload_ = std::move(reload); }

  YcluiParser* parser() override;
  bool reload() override;
  void dropOldParsers() override;
  void beginWord(const std::string& word) override;
  void endWord(bool wasSent) override;
  void readLine(std::string line, std::size_t number) override;
  void sendLine(std::string line) override;
  std::string takeHeld() override;
  bool endsInComma() const override;
  std::size_t refusals() const override { return outcome_.refused; }

 private:
  CluiReading& reading_;
  CluiDiagnostics& diagnostics_;
  CluiFeeder& feeder_;
  const CluiOutcome& outcome_;
  CluiTerminalSettings settings_;
  std::function<bool()> reload_;
  std::string language_;  // the file name of the script
  std::string openText_;  // the typed text of the open token
  CluiReport* report_ = nullptr;
  std::unique_ptr<CluiSession> session_;
  std::unique_ptr<CluiLineSession> lines_;

  void listen();
  bool runWords();
  bool runLines(bool isQuiet);
  std::string greeting() const;
  void keepOpenText();
};

#endif  // PROGRAM_CLUITYPIST_H_
