#include "script/ycscmArguments.h"

#include <cstdio>

#include "foundation/YErr.h"
#include "foundation/YcluiLimits.h"
#include "parser/YcluiParser.h"

void ycscmRefuse(YArgNum position, YScmArgType expected, YStatus& status) {
  ScmVMExternal::VMESetErrorArgNum(position, status);
  ScmVMExternal::VMESetErrorBadType(expected, status, -1);
}

bool ycscmLongIsOnTop() {
  return ScmVMExternal::StackLongP() != 0 || ScmVMExternal::StackSmallLongP() != 0;
}

YcluiParser* ycscmLiveParser(long address, YStatus& status) {
  if (!YStatusIsGood(status)) return nullptr;
  YcluiParser* parser = YcluiParser::FindLive(address);
  if (parser == nullptr) {
    cluiWarning(YErrNotAlive);
    ycscmRefuse(1, YScmArgLong, status);
  }
  return parser;
}

YcluiParser* ycscmPopParser(YStatus& status) {
  return ycscmLiveParser(ScmVMExternal::VMEAssertIsALong(1, status, -1), status);
}

const char* ycscmPopString(YArgNum position, YStatus& status) {
  return ScmVMExternal::VMEAssertIsAString(position, status, -1);
}

std::uint32_t ycscmPopTokenId(YArgNum position, YStatus& status) {
  const long id = ScmVMExternal::VMEAssertIsALong(position, status, -1) & YcluiIdMask;
  if (YStatusIsGood(status) && id == 0) ycscmRefuse(position, YScmArgSyntaxElement, status);
  if (!YStatusIsGood(status)) return cluiWarning(YErrBadSyntaxArgument);
  return static_cast<std::uint32_t>(id);
}

void ycscmCleanUp(const YcluiParser& parser) {
  if (parser.isPlaybackRun() == 0) YcluiParser::CleanupMortuary();
}

void ycscmPrintError(const char* text) {
  std::fprintf(stderr, "CLUI Error: %s\n", text);
}
