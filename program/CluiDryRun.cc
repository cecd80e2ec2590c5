#include "program/CluiDryRun.h"

#include <cstring>
#include <string>

#include "foundation/YNumber.h"
#include "lex/YcluiLex.h"
#include "parser/YcluiHelp.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVM.h"
#include "program/text/CluiMessages.h"

namespace {

constexpr int MostListed = 12;

std::wstring Printed(double number) {
  char room[YNumberRoom];
  const std::size_t length = YPrintDouble(number, room);
  return std::wstring(room, room + length);
}

}  // namespace

void CluiDryRun::start(const std::string& language) {
  effects_.readScript(language);
  doubt_.setEffectsOfAny(effects_.ofAny());
  diagnostics_.setDoubt(&doubt_);
  ScmVM::setTextGate(
      [](void* data, const char* text) {
        auto& dry = *static_cast<CluiDryRun*>(data);
        if (!dry.isAsking_) dry.pass(text);
        return false;
      },
      this);
}

void CluiDryRun::pass(const char* text) {
  YcluiParser& parser = *reading_.parser();
  diagnostics_.commandBegins();
  const unsigned effects = effects_.of(text);
  if (effects == 0) return;
  const bool isAside = parser.numberOfToken() == 1 && parser.lastIsIndefinite() != 0;
  const bool isWhole = (effects & CluiResets) != 0 && parser.completionList("", values_) == 0;
  if (doubt_.pass(effects, isAside, isWhole)) {
    const CluiPlace place = reading_.place();
    doubt_.describe({parser.currentLine(), place.name, place.line});
  }
  // A word that works anywhere takes itself out of the line.
  if ((effects & CluiDeletesLast) != 0 && parser.lastIsIndefinite() != 0) parser.popToken();
}

void CluiDryRun::check(const YcluiToken& token) {
  doubt_.readWord(reading_.line().number());
  for (int i = 1; i < token.argc(); ++i) {
    checkRange(token, i);
    checkValues(token, i);
  }
}

void CluiDryRun::checkRange(const YcluiToken& token, int index) {
  const YAttribValue& value = *token[index];
  if (value.tag != YAttribLong && value.tag != YAttribDouble) return;
  double low = 0;
  double high = 0;
  if (!reading_.parser()->help().range(token.id(), index, low, high)) return;
  const double number = value.tag == YAttribLong ? value.GetLong() : value.GetDouble();
  if (number >= low && number <= high) return;
  std::wstring range = L" is " + Printed(number);
  if (number < low) range += L", less than " + Printed(low);
  if (number > high) range += L", more than " + Printed(high);
  diagnostics_.warnOfArgument(token, index, range);
}

// A procedure that gives the values would have to run, so it gives none here.
void CluiDryRun::checkValues(const YcluiToken& token, int index) {
  const YcluiHelp& help = reading_.parser()->help();
  if (!help.hasValues(token.id(), index)) return;
  YAttribValue value(*token[index]);
  if (StringifyValue(value) == 0) return;
  isAsking_ = true;
  help.findValues(token.id(), index, "", values_);
  isAsking_ = false;
  if (values_.size() < 2) return;  // one value is a suggestion
  for (int i = 0; i < values_.size(); ++i) {
    if (std::strcmp(values_[i].buffer, value.GetString()) == 0) return;
  }
  std::wstring list;
  for (int i = 0; i < values_.size() && i < MostListed; ++i) {
    list += (i == 0 ? L"" : L", ") + encoding_.fromSystem(values_[i].buffer);
  }
  if (values_.size() > MostListed) list += L", ...";
  diagnostics_.warnOfArgument(token, index,
                              L" is " + CluiQuoted(encoding_.fromSystem(value.GetString())) +
                                  L", which is none of: " + list);
}
