// A line editor with a small language, driven by keys that are written as text.

#ifndef TESTS_TERMINAL_EDITORSESSION_H_
#define TESTS_TERMINAL_EDITORSESSION_H_

#include <string>
#include <string_view>
#include <vector>

#include "parser/YcluiParser.h"
#include "terminal/YcluiHistory.h"
#include "terminal/YcluiLineEditor.h"

// Keys: characters are typed; "<Left>" and the like are named keys, "<C-a>" and "<M-b>" those with
// Control and Alt, "<M-BS>" Alt-Backspace, and "<P:a\nb>" pastes.
std::vector<YcluiKey> KeysOf(std::string_view keys);

class EditorSession {
 public:
  // Its history has these lines, one below the other.
  explicit EditorSession(const std::string& history = "");

  // Types keys into a new line and returns what is seen after the last one:
  //   go sto|{p } / row / row = Line !
  // the line with the cursor, the hint, the rows below with the selected offer in brackets, the
  // request, and "!" for the bell. A line that is finished before the last key is interpreted.
  std::string type(const std::string& keys);
  // The same without the keys, for the request of the last one.
  std::string seen(YcluiLineEditor::Request request = YcluiLineEditor::Request::None);

  YcluiParser parser;
  YcluiHistory history{""};
  YcluiLineEditor editor;
  std::size_t room = 8;  // for the rows

 private:
  void declare();
};

#endif  // TESTS_TERMINAL_EDITORSESSION_H_
