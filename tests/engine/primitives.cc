// A script library for the tests: primitives that use the argument stack in every way.
// LIBRARY_NAME, WITHOUT_CLEANUP and BAD_ROW make the broken ones of it.

#include <cstdint>
#include <stdexcept>
#include <string>

#include "platform/engine/ScmVMExternal.h"

#define EXPORT extern "C" __attribute__((visibility("default")))

namespace {

using Vm = ScmVMExternal;

void Add(std::uint32_t, YStatus& status) {
  const long second = Vm::VMEAssertIsALong(2, status, -1);
  if (!YStatusIsGood(status)) return;
  const long first = Vm::VMEAssertIsALong(1, status, -1);
  if (!YStatusIsGood(status)) return;
  Vm::StackPushLong(first + second);
}

// Three strings that are all used after the last pop.
void Join(std::uint32_t, YStatus& status) {
  const char* const third = Vm::StackPopString(status);
  if (!YStatusIsGood(status)) return;
  const char* const second = Vm::StackPopString(status);
  if (!YStatusIsGood(status)) return;
  const char* const first = Vm::StackPopString(status);
  if (!YStatusIsGood(status)) return;
  Vm::StackPushString((std::string(first) + second + third).c_str());
}

// The printed value or message of a text, and a mark for bit 0.
void Evaluate(std::uint32_t, YStatus& status) {
  const char* const text = Vm::VMEAssertIsAString(1, status, -1);
  if (!YStatusIsGood(status)) return;
  YStatus inner{0};
  char buffer[256];
  Vm::ExecuteString(text, buffer, sizeof buffer, inner);
  Vm::StackPushString(((YStatusIsGood(inner) ? "+" : "-") + std::string(buffer)).c_str());
}

// What the predicates say of each argument, last first.
void Types(std::uint32_t argc, YStatus& status) {
  std::string types;
  for (std::uint32_t i = 0; i < argc; ++i) {
    if (Vm::StackLongP() != 0) types += "l";
    if (Vm::StackSmallLongP() != 0) types += "s";
    if (Vm::StackDoubleP() != 0) types += "d";
    if (Vm::StackFloatP() != 0) types += "f";
    if (Vm::StackCharP() != 0) types += "c";
    if (Vm::StackStringP() != 0) types += "t";
    if (Vm::StackHandleP() != 0) types += "h";
    if (Vm::StackPairP() != 0) types += "p";
    if (Vm::StackNullP() != 0) types += "n";
    types += ".";
    Vm::StackPop(status);
  }
  Vm::StackPushString(types.c_str());
}

// The numbers of a pair, taken apart as libraries do it, as a list.
void PairToList(std::uint32_t, YStatus& status) {
  Vm::StackDuplicate();
  Vm::StackCar();
  const long first = Vm::StackPopLong(status);
  if (!YStatusIsGood(status)) return;
  Vm::StackCdr();
  const long second = Vm::StackPopLong(status);
  if (!YStatusIsGood(status)) return;
  Vm::StackPushLong(first);
  Vm::StackPushLong(second);
  Vm::StackPushNull();
  Vm::StackCons();
  Vm::StackCons();
}

void Character(std::uint32_t, YStatus& status) {
  Vm::StackPushLong(Vm::StackPopChar(status));
}

void Half(std::uint32_t, YStatus& status) {
  Vm::StackPushDouble(Vm::StackPopDouble(status) / 2);
}

void Not(std::uint32_t, YStatus& status) {
  const YWord value = Vm::VMEAssertIsABoolean(1, status, -1);
  if (YStatusIsGood(status)) Vm::StackPushBoolean(value == 0 ? 1 : 0);
}

long Finalised = 0;

void CountFinalised(void*) {
  ++Finalised;
}

void MakeHandle(std::uint32_t, YStatus& status) {
  const long number = Vm::StackPopLong(status);
  Vm::StackPushHandle(reinterpret_cast<void*>(number), nullptr,
                      number == 0 ? nullptr : &CountFinalised);
}

void HandleNumber(std::uint32_t, YStatus& status) {
  void* const first = Vm::VMEAssertIsAHandle(1, status, -1);
  if (YStatusIsGood(status)) Vm::StackPushLong(reinterpret_cast<long>(first));
}

void FinalisedCount(std::uint32_t, YStatus&) {
  Vm::StackPushLong(Finalised);
}

void Refuse(std::uint32_t, YStatus& status) {
  YStatusClear(status);
}

void Quiet(std::uint32_t argc, YStatus& status) {
  Vm::StackPopN(argc, status);
}

void Several(std::uint32_t, YStatus&) {
  for (long i = 1; i <= 1000; ++i) Vm::StackPushLong(i);
}

void Greedy(std::uint32_t, YStatus& status) {
  Vm::StackPopN(5, status);
}

void OneOrTwo(std::uint32_t argc, YStatus& status) {
  if (Vm::VMECheckArgCount(argc, 1, 2, status) != 0) Vm::StackPushBoolean(1);
}

void Element(std::uint32_t argc, YStatus& status) {
  Vm::VMESetErrorArgNum(static_cast<YArgNum>(argc), status);
  Vm::VMESetErrorBadType(YScmArgSyntaxElement, status, -1);
  Vm::StackPop(status);
  Vm::StackPushLong(0);
}

void Throw(std::uint32_t, YStatus&) {
  throw std::runtime_error("no room");
}

const YScmProc Rows[] = {
    {"t-add", Add, 2, 0},
    {"t-join", Join, 3, 0},
    {"t-eval", Evaluate, 1, 0},
    {"t-types", Types, 0, 1},
    {"t-pair->list", PairToList, 1, 0},
    {"t-char", Character, 1, 0},
    {"t-half", Half, 1, 0},
    {"t-not", Not, 1, 0},
    {"t-handle", MakeHandle, 1, 0},
    {"t-handle-number", HandleNumber, 1, 0},
    {"t-finalised", FinalisedCount, 0, 0},
    {"t-refuse", Refuse, 0, 1},
    {"t-quiet", Quiet, 0, 1},
    {"t-several", Several, 0, 0},
    {"t-greedy", Greedy, 2, 0},
    {"t-one-or-two", OneOrTwo, 1, 1},
    {"t-element", Element, 1, 1},
    {"t-throw", Throw, 0, 0},
#ifdef BAD_ROW
    {"t-add", Add, 2, 0},
#endif
};

}  // namespace

int Initialized = 0;

EXPORT const char* CluiLibraryName() {
  return LIBRARY_NAME;
}
EXPORT const YScmProc* CluiLibraryProcs() {
  return Rows;
}
EXPORT std::uint32_t CluiLibraryNProcs() {
  return sizeof Rows / sizeof Rows[0];
}
EXPORT void CluiLibInitialize() {
  ++Initialized;
}
#ifndef WITHOUT_CLEANUP
EXPORT void CluiLibCleanup() {
  --Initialized;
}
#endif
EXPORT int TestInitialized() {
  return Initialized;
}
