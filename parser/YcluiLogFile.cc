#include "parser/YcluiLogFile.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "foundation/YErr.h"
#include "foundation/YFileName.h"
#include "platform/containers/YPathName.h"

YcluiLogFile::YcluiLogFile(const char* path) {
  YPathName full(path);
  full.expand();
  full.pack();
  name = full.path;
}

YWord YcluiLogFile::open(const char* mode) {
  std::FILE* opened = std::fopen(YFileName::FromText(name.buffer).c_str(), mode);
  if (opened == nullptr) return cluiError(YErrNotOpened);
  stream = opened;
  lineLength_ = 0;
  return 1;
}

YWord YcluiLogFile::close() {
  if (stream == nullptr) return 1;
  if (std::fflush(stream) != 0 || std::ferror(stream) != 0) {
    std::clearerr(stream);
    return cluiError(YErrNotClosed);
  }
  const int failed = std::fclose(stream);
  stream = nullptr;
  lineLength_ = 0;
  return failed == 0 ? 1 : cluiError(YErrNotClosed);
}

void YcluiLogFile::giveUp() {
  if (stream != nullptr) std::fclose(stream);
  stream = nullptr;
}

void YcluiLogFile::putString(const char* text) {
  if (text == nullptr) {
    lineLength_ = 0;
    return;
  }
  const std::size_t room =
      static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max() - lineLength_);
  lineLength_ += static_cast<std::int32_t>(std::min(std::strlen(text), room));
}
