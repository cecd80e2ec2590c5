// A text field of a host, and the keys of its user.

#ifndef TESTS_SCRIPT_TESTFIELD_H_
#define TESTS_SCRIPT_TESTFIELD_H_

#include <gtest/gtest.h>

#include <cctype>
#include <functional>
#include <string>

#include "foundation/YCharacters.h"
#include "platform/ui/YuiTextField.h"

class TestField : public YuiTextField {
 public:
  std::string shown;
  std::function<void()> onSetText;  // called when a text was set

  void SetText(const char* text) override {
    const std::string given = text;
    if (OfferModification(text, 1) != 0) shown = given;
    if (onSetText) onSetText();
    EXPECT_EQ(given, text);
  }
  void endBinding() { delete ModificationCallBack(); }

  // Types a character, or with "<" deletes the last one. Returns 1 when the field applied it; after
  // 0 the field may have been destroyed. Control characters are not shown.
  YWord key(const std::string& character) {
    const bool isDeletion = character == "<";
    const std::string sent = character + "x";  // not terminated
    const auto length = static_cast<std::uint32_t>(isDeletion ? 0 : character.size());
    if (OfferModification(sent.data(), length) == 0) return 0;
    if (isDeletion) {
      shown.resize(YCharacters::CutBetween(shown, shown.size() - 1));
    } else if (std::iscntrl(static_cast<unsigned char>(character[0])) == 0) {
      shown += character;
    }
    return 1;
  }
};

#endif  // TESTS_SCRIPT_TESTFIELD_H_
