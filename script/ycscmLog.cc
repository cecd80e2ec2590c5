// The primitives for the command log and its playback.

#include <cstdint>

#include "parser/YcluiParser.h"
#include "platform/engine/ScmVMExternal.h"
#include "script/ycscmArguments.h"
#include "script/ycscmPrimitives.h"

void ycscmStartLogging(std::uint32_t argc, YStatus& status) {
  if (ScmVMExternal::VMECheckArgCount(argc, 2, 3, status) == 0) return;
  const YWord append = argc == 3 ? ScmVMExternal::VMEAssertIsABoolean(3, status, -1) : 0;
  if (!YStatusIsGood(status)) return;
  const char* name = ycscmPopString(2, status);
  if (!YStatusIsGood(status)) return;
  YcluiParser* parser = ycscmPopParser(status);
  if (parser == nullptr) return;
  ScmVMExternal::StackPushBoolean(parser->startLogging(name, append));
}

void ycscmShutLogging(std::uint32_t, YStatus& status) {
  YcluiParser* parser = ycscmPopParser(status);
  if (parser == nullptr) {
    ycscmPrintError("error on (clui-shut-logging)");
    return;
  }
  ScmVMExternal::StackPushBoolean(parser->shutLogging());
}

void ycscmPlaybackFromFile(std::uint32_t, YStatus& status) {
  const char* name = ycscmPopString(2, status);
  if (!YStatusIsGood(status)) return;
  YcluiParser* parser = ycscmPopParser(status);
  if (parser == nullptr) return;
  const YWord played = parser->playbackFromLog(name);
  ycscmCleanUp(*parser);
  ScmVMExternal::StackPushBoolean(played);
}
