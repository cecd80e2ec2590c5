#include "program/terminal/CluiLineSession.h"

#include <cstdio>

#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"
#include "program/CluiInterrupt.h"
#include "program/terminal/CluiColours.h"

namespace {

CluiLineSession* TheSession = nullptr;

}  // namespace

CluiLineSession::CluiLineSession(CluiTyping& typing, CluiTerminalSettings& settings,
                                 const std::string& language)
    : typing_(typing), settings_(settings), prompt_(*typing.parser(), language) {
  TheSession = this;
}

CluiLineSession::~CluiLineSession() {
  TheSession = nullptr;
}

CluiLineSession* CluiLineSession::Current() {
  return TheSession;
}

bool CluiLineSession::run(const std::string& greeting) {
  if (!prompt_.open(ScmVM::interrupt, CluiInterruptDescriptor())) return false;
  const std::string error = CluiReadColours(settings_.colours, prompt_.editor().colours());
  if (!error.empty()) print(error + "\n");
  if (!greeting.empty()) print(greeting + "\n");
  std::string line;
  while (!settings_.leaves && typing_.parser() != nullptr) {
    prompt_.editor().setPrompts(settings_.prompts.ready, settings_.prompts.open);
    const YcluiPrompt::Outcome outcome = prompt_.readLine(line);
    CluiClearInterrupt();  // it was a key
    if (outcome == YcluiPrompt::Outcome::Ended) break;
    if (outcome == YcluiPrompt::Outcome::Interrupted) {
      interrupted();
    } else {
      typing_.sendLine(line + "\n");
    }
    if (CluiInterrupted()) print("interrupted\n");
  }
  CluiClearInterrupt();
  prompt_.close();
  return typing_.parser() != nullptr;
}

void CluiLineSession::print(const std::string& text) {
  std::fflush(stdout);
  prompt_.screen().forget();
  prompt_.screen().print(text);
  prompt_.terminal().write(prompt_.screen().takeOutput());
}

// The language decides what that means for a question that it asked; a word without its arguments
// is dropped first.
void CluiLineSession::interrupted() {
  if (typing_.parser()->tokenIsOpen() != 0) return YcluiGiveUp(*typing_.parser());
  YStatus status = {0};
  char result[64];
  const std::string text =
      "(terminal-interrupt " + std::to_string(reinterpret_cast<long>(typing_.parser())) + ")";
  ScmVMExternal::ExecuteString(text.c_str(), result, sizeof result, status);
}
