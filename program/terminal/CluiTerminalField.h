// The text field of the terminal.

#ifndef PROGRAM_TERMINAL_CLUITERMINALFIELD_H_
#define PROGRAM_TERMINAL_CLUITERMINALFIELD_H_

#include <string>
#include <string_view>

#include "platform/ui/YuiTextField.h"

// A text field that is edited at its end. It stores the text and does not draw it.
class CluiTerminalField : public YuiTextField {
 public:
  CluiTerminalField() = default;
  // Deletes the binding that a script has attached.
  ~CluiTerminalField() override;

  void SetText(const char* text) override;
  // Sets the command line of the parser; the text after it is the word being typed.
  void setLine(const char* line);

  // Offers one character or control byte to the binding and returns whether the field may apply it.
  // Appends the character then; a control byte is never appended.
  bool type(std::string_view character);
  // Deletes the last character with the marks on it, one by one. False when there is none, or the
  // binding refuses the deletion.
  bool rubOut();
  // The binding that a script has attached, or null.
  YuiModificationCallBack* binding() const { return ModificationCallBack(); }

  // The text; the command line at its beginning, without a blank; and the word being typed after
  // it.
  const std::string& text() const { return text_; }
  std::string line() const;
  std::string word() const;

 private:
  std::string text_;
  std::size_t wordStart_ = 0;

  bool rubOutCharacter();
};

#endif  // PROGRAM_TERMINAL_CLUITERMINALFIELD_H_
