#include "bench/peer/ScriptRow.h"

#include <libguile.h>

#include <cstdio>

#include "bench/peer/SideBySide.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"

namespace {

constexpr const char* Text = "(zorvane-run 17 \"abc\")";
constexpr const char* Typed = "zorvane on:17,\"abc\"\n";
constexpr long Number = 17;

long Sum = 0;

void Run(std::uint32_t, YStatus& status) {
  ScmVMExternal::StackPopString(status);
  Sum += ScmVMExternal::StackPopLong(status);
  if (YStatusIsGood(status)) ScmVMExternal::StackPushBoolean(1);
}

// Runs its commands through the engine, as every parser does that does not replace `evaluate`.
void BuildLanguage(YcluiParser& parser) {
  const YcluiValueType values[] = {YcluiValueInteger, YcluiValueString};
  const std::uint32_t on = parser.lex()->addKeyword("on:", 2, values, 0);
  const std::uint32_t word = parser.lex()->addKeyword("zorvane", nullptr, 0);
  auto* commands = new YcluiSyntaxGraph;
  commands->insertAnd(new YcluiSyntaxNode(on, "($0-run $1[0] \"$1[1]\")"));
  commands->insertAnd(new YcluiSyntaxNode(word));
  parser.setSyntaxGraph(commands);
}

template <class Call>
PeerWork Calls(int count, Call call) {
  return [count, call] {
    Sum = 0;
    for (int i = 0; i < count; ++i) call();
    return Sum == count * Number;
  };
}

}  // namespace

double PrintScriptTable(int calls, int repetitions) {
  std::string error;
  if (ScmVM::start(ScmVM::DefaultMemoryLimit, error) == 0) {
    std::printf("\nno script engine: %s\n", error.c_str());
    return 0;
  }
  ScmVM::bindProcedure("zorvane-run", &Run, 2, 0);
  YcluiParser parser;
  BuildLanguage(parser);
  const auto evaluated = [] { scm_c_eval_string(Text); };
  const auto executed = [] {
    YStatus status{0};
    char printed[256];
    ScmVMExternal::ExecuteString(Text, printed, sizeof printed, status);
  };
  const auto typed = [&parser] { parser.interpret(Typed); };
  SideTable table("a command run by the script engine, ns a call (ratio to Guile's own evaluation)",
                  {"eval-string", "ExecuteString", "typed line"});
  const WorkRow row{{Calls(calls, evaluated), Calls(calls, executed), Calls(calls, typed)}, calls};
  table.add(Text, SideBySide({row}, repetitions).front());
  table.print();
  return table.worstRatio(1, 0);
}
