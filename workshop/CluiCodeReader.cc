#include "workshop/CluiCodeReader.h"

#include "foundation/YStatus.h"
#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"

namespace {

// The texts that are being read.
const std::vector<std::string>* Texts = nullptr;
std::size_t NextText = 0;
std::vector<CluiCodeProblem> Problems;

void GiveNextCode(std::uint32_t, YStatus&) {
  if (NextText == Texts->size()) return ScmVMExternal::StackPushBoolean(0);
  ScmVMExternal::StackPushString((*Texts)[NextText++].c_str());
}

void TakeProblem(std::uint32_t, YStatus& status) {
  CluiCodeProblem problem;
  const char* const text = ScmVMExternal::StackPopString(status);
  if (text != nullptr) problem.text = text;
  YStatusSetGood(status);
  const std::string kind = ScmVMExternal::StackPopString(status);
  problem.kind =
      kind == "unbound" ? CluiCodeProblem::Kind::Unbound : CluiCodeProblem::Kind::Refused;
  problem.code = static_cast<std::size_t>(ScmVMExternal::StackPopLong(status));
  Problems.push_back(problem);
}

}  // namespace

std::vector<CluiCodeProblem> CluiReadCode(const std::vector<std::string>& texts) {
  Texts = &texts;
  NextText = 0;
  Problems.clear();
  ScmVM::bindProcedure("workshop-next-code", GiveNextCode, 0, 0);
  ScmVM::bindProcedure("workshop-problem", TakeProblem, 3, 0);
  YStatus status = {0};
  char result[64];
  ScmVMExternal::ExecuteString("((@@ (yqrt workshop) check-codes))", result, sizeof result, status);
  return Problems;
}
