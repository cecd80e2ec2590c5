#include "program/CluiShow.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "program/CluiRun.h"
#include "program/CluiSource.h"
#include "program/text/CluiEncoding.h"

namespace {

bool Report(const std::string& name, const std::string& problem) {
  std::fprintf(stderr, "%s: %s\n", name.c_str(), problem.c_str());
  return false;
}

bool ShowFile(CluiEncoding& encoding, const std::string& name) {
  CluiSource source;
  std::string error;
  if (!source.openFile(name, error)) return Report(name, error);
  std::string line;
  CluiRead result = CluiRead::End;
  while ((result = source.next(line, error)) == CluiRead::Line) {
    const std::string text = encoding.toUser(encoding.fromSystem(line));
    std::fwrite(text.data(), 1, text.size(), stdout);
    if (std::ferror(stdout) != 0) return false;
  }
  return result == CluiRead::End || Report(name, error);
}

}  // namespace

int CluiShow(const CluiOptions& options) {
  CluiEncoding encoding;
  std::string error;
  if (!encoding.open(options.encoding, error)) {
    Report("clui", error);
    return CluiRun::Unable;
  }
  bool good = true;
  for (const std::string& file : options.files) {
    good = ShowFile(encoding, file) && good && std::ferror(stdout) == 0;
    if (std::ferror(stdout) != 0) break;
  }
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
    good = Report("clui", std::string("cannot write: ") + std::strerror(errno));
  }
  return good ? CluiRun::AllAccepted : CluiRun::Unable;
}
