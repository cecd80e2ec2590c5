#include <tcl.h>

#include "bench/peer/Implementation.h"

namespace {

int Switch(ClientData sum, Tcl_Interp* interpreter, int count, Tcl_Obj* const words[]) {
  static const char* const States[] = {"off", "on", nullptr};
  int state = 0;
  int number = 0;
  if (count != 4) return TCL_ERROR;
  if (Tcl_GetIndexFromObj(interpreter, words[1], States, "state", TCL_EXACT, &state) != TCL_OK) {
    return TCL_ERROR;
  }
  if (Tcl_GetIntFromObj(interpreter, words[2], &number) != TCL_OK) return TCL_ERROR;
  *static_cast<long*>(sum) += state == 1 ? number : -number;
  return TCL_OK;
}

class Tcl : public Implementation {
 public:
  explicit Tcl(const Language& language) : interpreter_(Tcl_CreateInterp()) {
    for (const std::string& word : language.words) {
      Tcl_CreateObjCommand(interpreter_, word.c_str(), &Switch, &outcome_.sum, nullptr);
    }
  }
  Tcl(const Tcl&) = delete;
  Tcl& operator=(const Tcl&) = delete;
  ~Tcl() override { Tcl_DeleteInterp(interpreter_); }

  Outcome read(const TypedLines& lines) override {
    outcome_ = Outcome();
    lines.forEach([this](const char* line, std::size_t) {
      if (Tcl_Eval(interpreter_, line) != TCL_OK) ++outcome_.refused;
    });
    return outcome_;
  }

  long complete(const char* prefix) override {
    const std::string command = "info commands " + std::string(prefix) + "*";
    int count = 0;
    if (Tcl_Eval(interpreter_, command.c_str()) != TCL_OK) return 0;
    Tcl_ListObjLength(interpreter_, Tcl_GetObjResult(interpreter_), &count);
    return count;
  }

 private:
  Tcl_Interp* interpreter_;
  Outcome outcome_;
};

}  // namespace

std::unique_ptr<Implementation> MakeTcl(const Language& language) {
  return std::make_unique<Tcl>(language);
}
