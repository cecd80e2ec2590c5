#include "program/terminal/CluiCompletion.h"

#include "foundation/YKanji.h"
#include "parser/YcluiParser.h"

CluiCompletion::CluiCompletion(const YcluiParser& parser, const char* beginning) {
  if (parser.openToken() != nullptr) return;
  parser.eachPossibleWord(
      beginning,
      [](void* word, const char* name) { static_cast<CluiCompletion*>(word)->add(name); }, this);
  cutAtCharacter();
}

void CluiCompletion::add(const char* name) {
  if (common_.empty()) {
    common_ = name;
    areSame_ = true;
    return;
  }
  std::size_t same = 0;
  while (same < common_.size() && common_[same] == name[same]) ++same;
  if (same < common_.size() || name[same] != '\0') areSame_ = false;
  common_.resize(same);
}

void CluiCompletion::cutAtCharacter() {
  const int last = static_cast<int>(common_.size()) - 1;
  if (last >= 0 && YCheckKanji(common_.c_str(), last) == 1) common_.pop_back();
}
