// Types at a prompt that has no terminal, and times the response to each key.

#ifndef BENCH_TERMINAL_TYPIST_H_
#define BENCH_TERMINAL_TYPIST_H_

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "bench/Results.h"
#include "parser/YcluiParser.h"
#include "terminal/YcluiCapabilities.h"
#include "terminal/YcluiHistory.h"
#include "terminal/YcluiKeys.h"
#include "terminal/YcluiLineEditor.h"
#include "terminal/YcluiScreen.h"

// Does what YcluiPrompt does with a key, in a window of 120 columns and 40 rows with colours, and
// without a file for the history. A wrong response ends the program.
class Typist {
 public:
  explicit Typist(YcluiParser& parser);

  YcluiHistory& history() { return history_; }

  // One key, by the bytes that a terminal sends for it. Its time is that of the processor, from
  // these bytes to the bytes of the response.
  void press(const std::string& kind, const std::string& key);
  void type(const std::string& kind, const std::string& letters);
  // Return, after which the line is to be interpreted and a new one to begin.
  void send(const std::string& kind);
  // An empty line; not timed.
  void clear();

  const std::string& line() const { return editor_.text(); }
  // Ends the program unless there is a list or a message below the line, or none.
  void expectRows(bool areThere) const;

  // Adds the times of each kind, and their bounds.
  void addTo(Results& results) const;

 private:
  YcluiParser& parser_;
  YcluiCapabilities capabilities_;
  YcluiScreen screen_;
  YcluiKeys keys_;
  YcluiHistory history_;
  YcluiLineEditor editor_;
  std::vector<std::pair<std::string, std::vector<double>>> milliseconds_;

  std::vector<double>& timesOf(const std::string& kind);
  YcluiLineEditor::Request handle(const std::string& key);
  std::size_t respond();
  void begin();
};

#endif  // BENCH_TERMINAL_TYPIST_H_
