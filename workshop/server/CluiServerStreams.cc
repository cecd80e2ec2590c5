#include "workshop/server/CluiServerStreams.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

CluiServerStreams::CluiServerStreams()
    : in_(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3)),
      out_(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3)),
      messages_(in_, out_) {
  const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
  dup2(nothing, STDIN_FILENO);
  close(nothing);
  dup2(STDERR_FILENO, STDOUT_FILENO);
  std::signal(SIGPIPE, SIG_IGN);
}

CluiServerStreams::~CluiServerStreams() {
  close(in_);
  close(out_);
}
