// Prints a picture or a page of the language that was loaded.

#ifndef PROGRAM_CLUIDRAW_H_
#define PROGRAM_CLUIDRAW_H_

#include <cstddef>
#include <optional>
#include <string>

#include "program/CluiDiagnostics.h"
#include "program/CluiOptions.h"
#include "program/CluiReading.h"
#include "program/text/CluiEncoding.h"
#include "workshop/CluiGrammarRecorder.h"
#include "workshop/CluiManual.h"

class CluiDraw {
 public:
  CluiDraw(const CluiOptions& options, CluiEncoding& encoding, CluiReading& reading,
           CluiDiagnostics& diagnostics, const CluiGrammarRecorder& grammars)
      : options_(options),
        encoding_(encoding),
        reading_(reading),
        diagnostics_(diagnostics),
        grammars_(grammars) {}

  // Called when the language is loaded, and after each text that was read. A manual gets a chapter
  // of the syntax that was set.
  void loaded();
  void hasRead(const std::string& text);

  // Prints. Returns false after a message when there is no syntax or a word is unknown, and when
  // the output cannot be written.
  bool print();

 private:
  const CluiOptions& options_;
  CluiEncoding& encoding_;
  CluiReading& reading_;
  CluiDiagnostics& diagnostics_;
  const CluiGrammarRecorder& grammars_;
  std::optional<CluiManual> manual_;
  std::size_t syntaxes_ = 0;  // that were replaced when the last chapter was added

  const CluiGrammar* grammar() const;
  void addChapter(const std::string& heading);
  bool makeOutput(std::string& output);
  bool makeDiagram(const CluiGrammar& grammar, std::string& output);
};

#endif  // PROGRAM_CLUIDRAW_H_
