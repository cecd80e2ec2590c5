#include "workshop/CluiDoubt.h"

#include "workshop/CluiEffects.h"

bool CluiDoubt::pass(unsigned effects, bool isAside, bool isWhole) {
  // A frame without other words, or at the end of a command, is emptied anyway.
  const bool movesBack = (effects & CluiDeletesLast) != 0 && !isAside;
  const bool drops = (effects & CluiResets) != 0 && !isAside && !isWhole;
  if (movesBack || drops) effects |= CluiChangesSyntax;
  effects &= CluiChangesWords | CluiChangesVariables | CluiChangesSyntax;
  added_ = effects & ~effects_;
  effects_ |= effects;
  return added_ != 0;
}

void CluiDoubt::describe(const CluiPassed& command) {
  if ((added_ & CluiChangesWords) != 0) words_ = command;
  if ((added_ & CluiChangesVariables) != 0) variables_ = command;
  if ((added_ & CluiChangesSyntax) != 0) doubtPlace(command);
  added_ = 0;
}

void CluiDoubt::doubtPlace(const CluiPassed& command) {
  if (!place_.line.empty()) return;
  place_ = command;
  if ((any_ & CluiChangesWords) != 0 && words_.line.empty()) words_ = command;
  if ((any_ & CluiChangesVariables) != 0 && variables_.line.empty()) variables_ = command;
  effects_ |= any_;
}

const CluiPassed* CluiDoubt::refuse(CluiRests rests, std::size_t number) {
  if (rests == CluiRests::OnPlace) return ofPlace();
  const CluiPassed* reason = nullptr;
  if (isLineInDoubt_) reason = &doubted_;
  if (rests == CluiRests::OnWords && !words_.line.empty()) reason = &words_;
  if (rests == CluiRests::OnVariables) {
    if (!words_.line.empty()) reason = &words_;
    if (!variables_.line.empty()) reason = &variables_;
  }
  if (reason == nullptr) return nullptr;
  isLineInDoubt_ = true;
  lineInDoubt_ = number;
  doubted_ = *reason;
  doubtPlace(doubted_);
  return &doubted_;
}
