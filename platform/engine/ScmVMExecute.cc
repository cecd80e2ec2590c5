// ScmVMExternal::ExecuteString.

#include <cstring>

#include "foundation/YCharacters.h"
#include "platform/engine/YseEngine.h"

namespace {

// Returns the number of bytes copied, without the NUL.
long CopyOut(const std::string& bytes, char* buffer, long size) {
  if (buffer == nullptr || size <= 0) return 0;
  const std::size_t length = YCharacters::CutBetween(bytes, static_cast<std::size_t>(size) - 1);
  std::memcpy(buffer, bytes.data(), length);
  buffer[length] = '\0';
  return static_cast<long>(length);
}

}  // namespace

long ScmVMExternal::ExecuteString(const char* text, char* buffer, long size, YStatus& status) {
  YStatusClear(status);
  if (!yse::MayRun()) return CopyOut("", buffer, size);
  const yse::Engine& engine = yse::TheEngine();
  if (engine.textGate != nullptr && !engine.textGate(engine.gateData, text)) {
    YStatusSetGood(status);
    return CopyOut("", buffer, size);
  }
  if (engine.textListener != nullptr) engine.textListener(engine.textData, text);
  yse::Text running;
  running.source = text != nullptr ? text : "";
  running.room = buffer != nullptr && size > 1 ? static_cast<std::size_t>(size) : 0;
  yse::RunGuarded(running);
  if (running.ending != yse::Text::Good) {
    return CopyOut(YCharacters::BytesFromUtf8(running.error.message), buffer, size);
  }
  YStatusSetGood(status);
  return CopyOut(running.printed, buffer, size);
}
