// A text field as a host makes it, and a user in front of it.

#ifndef TESTS_SCRIPT_TESTFIELD_H_
#define TESTS_SCRIPT_TESTFIELD_H_

#include <cctype>
#include <functional>
#include <string>

#include "foundation/YKanji.h"
#include "platform/ui/YuiTextField.h"

class TestField : public YuiTextField {
 public:
  std::string shown;
  std::function<void()> onSetText;  // what the host does when it is given a text

  void SetText(const char* text) override {
    if (OfferModification(text, 1) != 0) shown = text;
    if (onSetText) onSetText();
  }

  void endBinding() { delete ModificationCallBack(); }

  // Types the character and answers what became of it. A "<" deletes the last one; of the
  // control characters the field shows none. Nothing of the field is used when it has gone.
  YWord key(const std::string& character) {
    if (character == "<") {
      const YWord taken = OfferModification(nullptr, 0);
      if (taken != 0 && !shown.empty()) rubOut();
      return taken;
    }
    // Not terminated: what stands behind the character is none of its own.
    const std::string sent = character + "x";
    const YWord taken =
        OfferModification(sent.data(), static_cast<std::uint32_t>(character.size()));
    if (taken != 0 && std::iscntrl(static_cast<unsigned char>(character[0])) == 0) {
      shown += character;
    }
    return taken;
  }

  // The character that begins the text.
  static std::string first(const std::string& text) {
    return text.substr(0, IsKanjiStart(text.c_str()) != 0 && text.size() > 1 ? 2 : 1);
  }

 private:
  void rubOut() {
    const int last = static_cast<int>(shown.size()) - 1;
    shown.resize(shown.size() - (YCheckKanji(shown.c_str(), last) == 4 ? 2 : 1));
  }
};

#endif  // TESTS_SCRIPT_TESTFIELD_H_
