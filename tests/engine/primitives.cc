// A script library for the tests: primitives that use the argument stack in all ways. The broken
// libraries are made with LIBRARY_NAME, WITHOUT_CLEANUP and BAD_ROW.

#include <cstdint>
#include <stdexcept>
#include <string>

#include "platform/engine/ScmVMExternal.h"

#define EXPORT extern "C" __attribute__((visibility("default")))

namespace {

using Vm = ScmVMExternal;

long Finalised = 0;

void CountFinalised(void*) {
  ++Finalised;
}

const YScmProc Rows[] = {
    {"t-add",
     [](auto, YStatus& status) {
       const long second = Vm::VMEAssertIsALong(2, status, -1);
       if (!YStatusIsGood(status)) return;
       const long first = Vm::VMEAssertIsALong(1, status, -1);
       if (YStatusIsGood(status)) Vm::StackPushLong(first + second);
     },
     2, 0},
    // All strings are used after the last pop.
    {"t-join",
     [](auto, YStatus& status) {
       const char* parts[3];
       for (int i = 2; i >= 0; --i) {
         parts[i] = Vm::StackPopString(status);
         if (!YStatusIsGood(status)) return;
       }
       Vm::StackPushString((std::string(parts[0]) + parts[1] + parts[2]).c_str());
     },
     3, 0},
    // The result of a text, as the function Eval of the tests returns it.
    {"t-eval",
     [](auto, YStatus& status) {
       const char* const text = Vm::VMEAssertIsAString(1, status, -1);
       if (!YStatusIsGood(status)) return;
       YStatus inner{0};
       char buffer[256];
       Vm::ExecuteString(text, buffer, sizeof buffer, inner);
       Vm::StackPushString(((YStatusIsGood(inner) ? "+" : "-") + std::string(buffer)).c_str());
     },
     1, 0},
    // One letter for each predicate that is true of an argument, last argument first.
    {"t-types",
     [](std::uint32_t argc, YStatus& status) {
       std::string types;
       for (; argc > 0; --argc) {
         const YWord results[] = {Vm::StackLongP(),   Vm::StackSmallLongP(), Vm::StackDoubleP(),
                                  Vm::StackFloatP(),  Vm::StackCharP(),      Vm::StackStringP(),
                                  Vm::StackHandleP(), Vm::StackPairP(),      Vm::StackNullP()};
         for (int i = 0; i < 9; ++i) {
           if (results[i] != 0) types += "lsdfcthpn"[i];
         }
         types += ".";
         Vm::StackPop(status);
       }
       Vm::StackPushString(types.c_str());
     },
     0, 1},
    // A list of the numbers of a pair, which is read as libraries read it.
    {"t-pair->list",
     [](auto, YStatus& status) {
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
     },
     1, 0},
    {"t-char", [](auto, YStatus& s) { Vm::StackPushLong(Vm::StackPopChar(s)); }, 1, 0},
    {"t-half", [](auto, YStatus& s) { Vm::StackPushDouble(Vm::StackPopDouble(s) / 2); }, 1, 0},
    {"t-not", [](auto, YStatus& s) { Vm::StackPushBoolean(1 - Vm::VMEAssertIsABoolean(1, s, -1)); },
     1, 0},
    {"t-handle",
     [](auto, YStatus& status) {
       const long number = Vm::StackPopLong(status);
       Vm::StackPushHandle(reinterpret_cast<void*>(number), nullptr,
                           number == 0 ? nullptr : CountFinalised);
     },
     1, 0},
    {"t-handle-number",
     [](auto, YStatus& status) {
       void* const first = Vm::VMEAssertIsAHandle(1, status, -1);
       if (YStatusIsGood(status)) Vm::StackPushLong(reinterpret_cast<long>(first));
     },
     1, 0},
    {"t-finalised", [](auto, YStatus&) { Vm::StackPushLong(Finalised); }, 0, 0},
    {"t-refuse", [](auto, YStatus& status) { YStatusClear(status); }, 0, 1},
    {"t-quiet", [](std::uint32_t argc, YStatus& status) { Vm::StackPopN(argc, status); }, 0, 1},
    {"t-several",
     [](auto, YStatus&) {
       for (long i = 1; i <= 1000; ++i) Vm::StackPushLong(i);
     },
     0, 0},
    {"t-greedy", [](auto, YStatus& status) { Vm::StackPopN(5, status); }, 2, 0},
    {"t-one-or-two",
     [](std::uint32_t argc, YStatus& status) {
       if (Vm::VMECheckArgCount(argc, 1, 2, status) != 0) Vm::StackPushBoolean(1);
     },
     1, 1},
    {"t-element",
     [](std::uint32_t argc, YStatus& status) {
       Vm::VMESetErrorArgNum(static_cast<YArgNum>(argc), status);
       Vm::VMESetErrorBadType(YScmArgSyntaxElement, status, -1);
       Vm::StackPopLong(status);  // may fail too; the first failure is reported
       Vm::StackPushLong(0);
     },
     1, 1},
    {"t-throw", [](auto, YStatus&) { throw std::runtime_error("no room"); }, 0, 0},
#ifdef BAD_ROW
    {"t-throw", [](auto, YStatus&) {}, 0, 0},
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
