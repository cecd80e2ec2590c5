// The primitives that control a parser: creating and deleting it, its syntax, its text, its frames.

#include <cstdint>
#include <memory>
#include <new>

#include "parser/YcluiParser.h"
#include "platform/engine/ScmVMExternal.h"
#include "script/ycscmArguments.h"
#include "script/ycscmHandles.h"
#include "script/ycscmPrimitives.h"
#include "syntax/YcluiSyntaxGraph.h"

namespace {

// Pops a parser, runs the operation and pushes the parser's long again even on failure, so that a
// script can chain such calls.
template <class Operation>
void runAndPushParser(YStatus& status, Operation operation) {
  const long address = ScmVMExternal::StackPopLong(status);
  if (YcluiParser* parser = ycscmLiveParser(address, status)) operation(*parser);
  ScmVMExternal::StackPushLong(address);
}

long newParser(long context) {
  auto* parser = new (std::nothrow) YcluiParser(static_cast<std::uint32_t>(context));
  return reinterpret_cast<long>(parser);
}

void condemn(YcluiParser& parser) {
  YcluiParser::AddDeadBody(&parser);
  parser.sysSetSynCallback(nullptr, nullptr);
  parser.sysSetEchoProcedure(nullptr, nullptr);
}

// Installs the popped graph and returns it; null, with bit 0 clear, when an argument is invalid.
YcluiSyntaxGraph* setSyntax(YStatus& status) {
  void* handle = ScmVMExternal::VMEAssertIsAHandle(2, status, -1);
  if (!YStatusIsGood(status)) return nullptr;
  YcluiParser* parser = ycscmPopParser(status);
  if (parser == nullptr) return nullptr;
  YcluiSyntaxGraph* graph = ycscmConsumeFragment(handle).release();
  if (graph == nullptr) {
    ycscmRefuse(2, YScmArgHandle, status);
    return nullptr;
  }
  parser->setSyntaxGraph(graph);
  return graph;
}

}  // namespace

void ycscmParserNew(std::uint32_t, YStatus& status) {
  const long context = ScmVMExternal::VMEAssertIsALong(1, status, -1);
  if (YStatusIsGood(status) && !ycscmFits<std::uint32_t>(context)) {
    ycscmRefuse(1, YScmArgLong, status);
  }
  ScmVMExternal::StackPushLong(YStatusIsGood(status) ? newParser(context) : 0);
}

void ycscmParserDelete(std::uint32_t, YStatus& status) {
  if (YcluiParser* parser = ycscmPopParser(status)) condemn(*parser);
  ScmVMExternal::StackPushNull();
}

void ycscmReset(std::uint32_t, YStatus& status) {
  runAndPushParser(status, [](YcluiParser& parser) { parser.reset(); });
}

void ycscmSetSyntax(std::uint32_t, YStatus& status) {
  YcluiSyntaxGraph* graph = setSyntax(status);
  if (graph == nullptr) {
    ycscmPrintError("error on (clui-set-syntax)");
    return;
  }
  ScmVMExternal::StackPushHandle(graph, nullptr, nullptr);
}

void ycscmDeleteLast(std::uint32_t, YStatus& status) {
  runAndPushParser(status, [](YcluiParser& parser) { parser.popToken(); });
}

void ycscmEval(std::uint32_t, YStatus& status) {
  const char* text = ycscmPopString(2, status);
  if (!YStatusIsGood(status)) return;
  YcluiParser* parser = ycscmPopParser(status);
  if (parser == nullptr) return;
  const int taken = parser->interpret(text);
  ycscmCleanUp(*parser);
  ScmVMExternal::StackPushLong(taken);
}

void ycscmPush(std::uint32_t, YStatus& status) {
  runAndPushParser(status, [](YcluiParser& parser) { parser.pushFrame(); });
}

void ycscmPop(std::uint32_t, YStatus& status) {
  runAndPushParser(status, [](YcluiParser& parser) { parser.popFrame(); });
}

void ycscmDepth(std::uint32_t, YStatus& status) {
  const long address = ScmVMExternal::StackPopLong(status);
  YcluiParser* parser = ycscmLiveParser(address, status);
  if (parser != nullptr) ScmVMExternal::StackPushLong(parser->nestingDepth());
}

void ycscmPutDummyToken(std::uint32_t, YStatus& status) {
  const char* text = ScmVMExternal::StackPopString(status);
  if (!YStatusIsGood(status)) return;
  const long address = ScmVMExternal::StackPopLong(status);
  YcluiParser* parser = ycscmLiveParser(address, status);
  if (parser == nullptr) return;
  parser->pushDummyToken(text);
  ScmVMExternal::StackPushLong(address);
}
