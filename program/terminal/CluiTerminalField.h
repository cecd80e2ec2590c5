// The line that is typed, as the library sees it.

#ifndef PROGRAM_TERMINAL_CLUITERMINALFIELD_H_
#define PROGRAM_TERMINAL_CLUITERMINALFIELD_H_

#include <string>
#include <string_view>

#include "platform/ui/YuiTextField.h"
#include "program/text/CluiEncoding.h"

// A text field that is changed at its end. It only keeps its text; showing it is somebody else's.
class CluiTerminalField : public YuiTextField {
 public:
  explicit CluiTerminalField(CluiEncoding& encoding) : encoding_(encoding) {}
  // Destroys what a script has attached.
  ~CluiTerminalField() override;

  void SetText(const char* text) override;
  // The line as the parser sees it from now on; what stands behind it is the word being typed.
  void takeLine(const char* line);

  // Offers one character or key. True when whoever is asked lets the field have it; a control
  // character is not taken even then.
  bool type(std::string_view character);
  // Offers the deletion of the last character. False when there is none to be deleted.
  bool rubOut();
  // Whether anything asks to see what is typed.
  bool isAttached() const { return ModificationCallBack() != nullptr; }

  // The text, that of the system and as characters, and the word being typed in it.
  const std::string& text() const { return text_; }
  const std::wstring& characters() const { return characters_; }
  std::string word() const;

 private:
  CluiEncoding& encoding_;
  std::string text_;
  std::wstring characters_;
  std::size_t wordStart_ = 0;
};

#endif  // PROGRAM_TERMINAL_CLUITERMINALFIELD_H_
