#include "lex/YcluiToken.h"

#include <cstring>
#include <new>
#include <utility>

#include "foundation/YErr.h"
#include "lex/YcluiKeyword.h"

namespace {

void AppendValue(YString& text, const YAttribValue& value) {
  YStatus status{0};
  switch (value.tag) {
    case YAttribLong:
      text << value.GetLong();
      break;
    case YAttribDouble:
      text << value.GetDouble();
      break;
    case YAttribPoint:
      text << value.GetPointX(status) << ',' << value.GetPointY(status);
      break;
    case YAttribString:
      text << '"' << value.GetString() << '"';
      break;
    default:
      break;
  }
}

}  // namespace

YcluiToken::YcluiToken() : args(2) {}

YcluiToken::YcluiToken(const char* word) : YcluiToken() {
  setArg0(word == nullptr ? "" : word);
}

YcluiToken::YcluiToken(const YcluiKeyword& keyword) {
  *this = keyword;
}

YcluiToken::YcluiToken(const YcluiToken& other) {
  *this = other;
}

YcluiToken::YcluiToken(YcluiToken&& other) noexcept : YcluiToken() {
  *this = std::move(other);
}

YcluiToken::~YcluiToken() = default;

YcluiToken& YcluiToken::operator=(const YcluiToken& source) {
  if (this == &source) return *this;
  id_ = source.id_;
  type_ = source.type_;
  underConstruction_ = source.underConstruction_;
  makeRoom(static_cast<std::size_t>(source.argc_));
  argc_ = source.argc_;
  for (std::size_t i = 0; i < static_cast<std::size_t>(argc_); ++i) args[i] = source.args[i];
  wholeWritten = source.wholeWritten;
  if (wholeWritten > 0) wholeStr.assign(source.wholeStr);
  wholeArgc = source.wholeArgc;
  hidden_ = source.hidden_;
  previousNode_ = source.previousNode_;
  presentNode_ = source.presentNode_;
  if (source.hasEcho_) {
    setEchoString(source.echoStr.get());
  } else {
    hasEcho_ = false;
  }
  return *this;
}

// Swapped, so that the source remains a valid token.
YcluiToken& YcluiToken::operator=(YcluiToken&& source) noexcept {
  std::swap(type_, source.type_);
  std::swap(id_, source.id_);
  std::swap(args, source.args);
  std::swap(argc_, source.argc_);
  std::swap(underConstruction_, source.underConstruction_);
  std::swap(hidden_, source.hidden_);
  std::swap(wholeStr, source.wholeStr);
  std::swap(wholeWritten, source.wholeWritten);
  std::swap(wholeArgc, source.wholeArgc);
  std::swap(echoStr, source.echoStr);
  std::swap(echoRoom, source.echoRoom);
  std::swap(hasEcho_, source.hasEcho_);
  std::swap(previousNode_, source.previousNode_);
  std::swap(presentNode_, source.presentNode_);
  return *this;
}

YcluiToken& YcluiToken::operator=(const YcluiKeyword& keyword) {
  id_ = keyword.id();
  type_ = keyword.type();
  makeRoom(static_cast<std::size_t>(keyword.argCount()) + 1);
  argc_ = 1;
  setArg0(keyword.nameView());
  hidden_ = 0;
  hasEcho_ = false;
  previousNode_ = nullptr;
  presentNode_ = nullptr;
  return *this;
}

const char* YcluiToken::string() const {
  return args[0].tag == YAttribString ? args[0].GetString() : nullptr;
}

const YAttribValue* YcluiToken::operator[](int index) const {
  return index >= 0 && index < argc_ ? &args[static_cast<std::size_t>(index)] : nullptr;
}

const char* YcluiToken::wholeString() const {
  if (hidden_ != 0) return nullptr;
  extendWholeStr();
  return wholeStr.buffer;
}

const char* YcluiToken::echoString() const {
  if (hidden_ == 0 && hasEcho_) return echoStr.get();
  return wholeString();
}

YWord YcluiToken::setEchoString(const char* text) {
  if (text == nullptr) text = "";
  const std::size_t needed = std::strlen(text) + 1;
  hasEcho_ = false;
  if (needed <= echoRoom) {
    std::memmove(echoStr.get(), text, needed);
  } else {
    // `text` may be the current echo text, so that is freed last.
    std::unique_ptr<char[]> bigger(new (std::nothrow) char[needed]);
    if (bigger != nullptr) std::memcpy(bigger.get(), text, needed);
    echoRoom = bigger == nullptr ? 0 : needed;
    std::swap(echoStr, bigger);
  }
  if (echoStr == nullptr) return cluiFatal(YErrNoMemory);
  hasEcho_ = true;
  return 1;
}

void YcluiToken::setArg0(std::string_view word) {
  args[0].SetString(word.data(), word.size());
  recreateWholeStr();
}

void YcluiToken::setArgC(std::uint32_t count) {
  argc_ = static_cast<std::int32_t>(count);
  resizeArgs(count);
}

YWord YcluiToken::setValue(const YAttribValue& value, int index) {
  if (index < 0) return 0;
  resizeArgs(static_cast<std::uint32_t>(index) + 1);
  args[static_cast<std::size_t>(index)] = value;
  argc_ = index + 1;
  // The text already written for the arguments before this one stays valid.
  if (index < wholeWritten) wholeWritten = 0;
  wholeArgc = argc_;
  return 1;
}

void YcluiToken::recreateWholeStr() {
  wholeWritten = 0;
  wholeArgc = argc_;
}

void YcluiToken::extendWholeStr() const {
  if (wholeWritten == 0) wholeStr.truncate(0);
  for (; wholeWritten < wholeArgc; ++wholeWritten) {
    if (wholeWritten == 0) {
      wholeStr << string();
    } else {
      if (wholeWritten > 1) wholeStr << ',';
      AppendValue(wholeStr, args[static_cast<std::size_t>(wholeWritten)]);
    }
  }
}
