#include "foundation/YErr.h"

constinit thread_local YErrManager YErr;

void YErrManager::pushError(unsigned int code, YErrSeverity severity) {
  if (aside_ != nullptr) {
    aside_->code_ = code;
    return;
  }
  entries_[count_ % YcluiKeptErrors] = {code, severity};
  ++count_;
  if (listener_ == nullptr || listening_) return;
  listening_ = true;
  listener_(listenerData_, code, severity);
  listening_ = false;
}

unsigned int YErrManager::code(int index) const {
  const Entry* e = entry(index);
  return e == nullptr ? YErrNothing : e->code;
}

YErrSeverity YErrManager::severity(int index) const {
  const Entry* e = entry(index);
  return e == nullptr ? YErrNote : e->severity;
}

void YErrManager::setListener(YErrListener listener, void* data) {
  listener_ = listener;
  listenerData_ = data;
}

const YErrManager::Entry* YErrManager::entry(int index) const {
  if (index < 0 || index >= YcluiKeptErrors) return nullptr;
  const std::uint64_t back = static_cast<std::uint64_t>(index);
  return back < count_ ? &entries_[(count_ - 1 - back) % YcluiKeptErrors] : nullptr;
}

YWord cluiNote(unsigned int code) {
  YErr.pushError(code, YErrNote);
  return 0;
}

YWord cluiWarning(unsigned int code) {
  YErr.pushError(code, YErrWarning);
  return 0;
}

YWord cluiError(unsigned int code) {
  YErr.pushError(code, YErrError);
  return 0;
}

YWord cluiFatal(unsigned int code) {
  YErr.pushError(code, YErrFatal);
  return 0;
}
