#include "bench/peer/Contender.h"

// CMake says which peers are installed.
#ifndef PEER_HAS_LIBCLI
std::unique_ptr<Contender> (*const LibcliMaker)(const Language&) = nullptr;
#else
std::unique_ptr<Contender> (*const LibcliMaker)(const Language&) = &MakeLibcli;
#endif
#ifndef PEER_HAS_TCL
std::unique_ptr<Contender> (*const TclMaker)(const Language&) = nullptr;
#else
std::unique_ptr<Contender> (*const TclMaker)(const Language&) = &MakeTcl;
#endif

const std::vector<ContenderKind>& ContenderKinds() {
  static const std::vector<ContenderKind> kinds = {
      {"loop", &MakeHandLoop, false, false},
      {"yqrtClui", &MakeClui, true, true},
      {"libcli", LibcliMaker, true, true},
      {"Tcl", TclMaker, false, true},
  };
  return kinds;
}
