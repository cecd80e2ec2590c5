// Compares previews with what a parser then does.

#ifndef TESTS_SUPPORT_PREVIEWCHECK_H_
#define TESTS_SUPPORT_PREVIEWCHECK_H_

#include <map>
#include <string>

#include "foundation/YErr.h"
#include "parser/YcluiParser.h"
#include "parser/YcluiPreview.h"
#include "tests/support/Choices.h"

// A parser of a language that the choices make, whose commands do nothing. Each text is previewed,
// then interpreted.
class PreviewCheck final : public YcluiParser {
 public:
  explicit PreviewCheck(Choices& choices);
  ~PreviewCheck() { YErr.setListener(nullptr, nullptr); }

  // A text, or a frame more or less. Empty when everything agrees, else the difference.
  std::string step();
  // The same for a text.
  std::string read(const std::string& text);

 private:
  // What happened to the token of the text at an offset, and to those of its expansion.
  struct Outcome {
    bool isRefused = false;
    unsigned code = YErrNothing;
    bool endsCommand = false;
    bool isExpanded = false;
  };

  Choices& choices_;
  YcluiPreview preview_;
  // Reads all texts, each in the state after the one before.
  YcluiPreview onward_;
  YcluiPreviewState state_;
  std::map<int, Outcome> outcomes_;
  std::uint64_t errors_ = 0;
  int firstCommand_ = 0;  // the offset of the token that ran it
  int events_ = 0;

  std::string language();
  std::string text();
  std::string observed() const;
  bool followsForm(int index) const;
  std::string differences(const std::string& text);
  std::string wrongCandidates(const std::string& text);
  std::string readOn(const std::string& text);
  std::string readFromStates();
  std::string readLinesAsOne();
  void refuse(unsigned code);
  YWord evaluate(const char* text) override;
};

#endif  // TESTS_SUPPORT_PREVIEWCHECK_H_
