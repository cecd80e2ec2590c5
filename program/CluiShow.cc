#include "program/CluiShow.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "foundation/YErrCodes.h"
#include "parser/YcluiLogEncoding.h"
#include "program/CluiRun.h"
#include "program/CluiSource.h"
#include "program/text/CluiEncoding.h"
#include "program/text/CluiMessages.h"

namespace {

bool Report(const std::string& name, const std::string& problem) {
  std::fprintf(stderr, "%s: %s\n", name.c_str(), problem.c_str());
  return false;
}

bool ShowFile(CluiEncoding& encoding, const std::string& name) {
  CluiSource source;
  std::string error;
  if (!YcluiLogEncoding::Fits(name)) {
    return Report(name, encoding.toUser(CluiCodeText(YErrOtherEncoding)));
  }
  if (!source.openFile(name, error)) return Report(name, error);
  std::string line;
  YcluiLogEncoding log;
  CluiRead result = CluiRead::End;
  while ((result = source.next(line, error)) == CluiRead::Line) {
    for (const char byte : line) log.add(byte);
    if (!log.fits()) return Report(name, encoding.toUser(CluiCodeText(YErrOtherEncoding)));
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
