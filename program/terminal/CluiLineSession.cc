#include "program/terminal/CluiLineSession.h"

#include <cstdio>
#include <utility>

#include "platform/engine/ScmVM.h"
#include "platform/engine/ScmVMExternal.h"
#include "program/CluiInterrupt.h"
#include "program/terminal/CluiColours.h"
#include "program/terminal/CluiHangup.h"

namespace {

CluiLineSession* TheSession = nullptr;

}  // namespace

CluiLineSession::CluiLineSession(CluiTyping& typing, CluiTerminalSettings& settings,
                                 const std::string& language)
    : typing_(typing),
      settings_(settings),
      language_(language),
      prompt_(std::make_unique<YcluiPrompt>(*typing.parser(), language)) {
  TheSession = this;
}

CluiLineSession::~CluiLineSession() {
  TheSession = nullptr;
}

CluiLineSession* CluiLineSession::Current() {
  return TheSession;
}

bool CluiLineSession::run(const std::string& greeting) {
  if (!open()) return false;
  if (!greeting.empty()) print(greeting + "\n");
  bool goesOn = true;
  while (goesOn && !settings_.leaves && typing_.parser() != nullptr) {
    {
      const CluiHangup hangup;
      goesOn = read();
    }
    if (goesOn && (settings_.reloads || CluiHangup::isAsked())) goesOn = reload();
  }
  CluiClearInterrupt();
  prompt_->close();
  return typing_.parser() != nullptr;
}

bool CluiLineSession::open() {
  if (!prompt_->open(ScmVM::interrupt, CluiInterruptDescriptor())) return false;
  prompt_->setStop(CluiHangup::isAsked);
  const std::string error = CluiReadColours(settings_.colours, prompt_->editor().colours());
  if (!error.empty()) print(error + "\n");
  return true;
}

// Reads lines until the language is to be loaded again or the session ends, and returns whether it
// goes on.
bool CluiLineSession::read() {
  std::string line;
  halfTyped_.clear();
  while (!settings_.leaves && !settings_.reloads && typing_.parser() != nullptr) {
    prompt_->editor().setPrompts(settings_.prompts.ready, settings_.prompts.open);
    const YcluiPrompt::Outcome outcome = prompt_->readLine(line);
    CluiClearInterrupt();  // it was a key
    if (outcome == YcluiPrompt::Outcome::Ended) return false;
    if (outcome == YcluiPrompt::Outcome::Stopped) {
      halfTyped_ = line;
      prompt_->beginWith(halfTyped_, prompt_->editor().cursor());
      return true;
    }
    if (outcome == YcluiPrompt::Outcome::Interrupted) {
      interrupted();
    } else {
      typing_.sendLine(line + "\n");
    }
    if (CluiInterrupted()) print("interrupted\n");
  }
  return true;
}

// The half-typed line is kept. Returns false when the terminal cannot be opened again.
bool CluiLineSession::reload() {
  settings_.reloads = false;
  CluiHangup::clear();
  if (!typing_.reload()) return true;
  auto next = std::make_unique<YcluiPrompt>(*typing_.parser(), language_);
  next->beginWith(halfTyped_, prompt_->editor().cursor());
  prompt_->close();
  prompt_ = std::move(next);
  typing_.dropOldParsers();
  if (!open()) {
    prompt_->history().add(halfTyped_);
    return false;
  }
  print("the language has been loaded again\n");
  return true;
}

void CluiLineSession::print(const std::string& text) {
  std::fflush(stdout);
  prompt_->screen().forget();
  prompt_->screen().print(text);
  prompt_->terminal().write(prompt_->screen().takeOutput());
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
