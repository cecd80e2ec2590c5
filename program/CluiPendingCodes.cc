#include "program/CluiPendingCodes.h"

#include <utility>

unsigned int CluiPendingCodes::takeOf(const CluiTokenStart& token) {
  unsigned int code = 0;
  while (!codes_.empty() && codes_.back().token == token) {
    if (code == 0) code = codes_.back().code;
    codes_.pop_back();
  }
  return code;
}

void CluiPendingCodes::dropLast() {
  const unsigned int code = last();
  while (!codes_.empty() && codes_.back().code == code) codes_.pop_back();
}

void CluiPendingCodes::drop(unsigned int code) {
  std::erase_if(codes_, [code](const CluiCode& c) { return c.code == code; });
}

std::vector<CluiCode> CluiPendingCodes::takeAll() {
  return std::exchange(codes_, {});
}
