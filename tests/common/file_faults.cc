// The floors open files by fopen, which the linker leads here; the streams answer to these
// functions and are else as any.
#include "tests/common/file_faults.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <utility>

namespace {

int FailAt = -1;
FileFault Fault = FileFault::Once;
bool Failed = false;

bool Fails() {
  if (FailAt < 0 || FailAt-- > 0) return false;
  if (Fault == FileFault::ForGood) FailAt = 0;
  Failed = true;
  errno = EIO;
  return true;
}

int FileOf(void* cookie) {
  return static_cast<int>(reinterpret_cast<std::intptr_t>(cookie));
}

ssize_t Read(void* cookie, char* bytes, std::size_t count) {
  return Fails() ? -1 : read(FileOf(cookie), bytes, count);
}

// Answers 0 for an error, as such a function does.
ssize_t Write(void* cookie, const char* bytes, std::size_t count) {
  const bool fails = Fails();
  if (fails && Fault != FileFault::Partly) return 0;
  const ssize_t written = write(FileOf(cookie), bytes, fails ? count / 2 : count);
  if (fails) errno = ENOSPC;
  return written < 0 ? 0 : written;
}

int Seek(void* cookie, off64_t* offset, int whence) {
  const off64_t place = Fails() ? -1 : lseek64(FileOf(cookie), *offset, whence);
  *offset = place;
  return place < 0 ? -1 : 0;
}

int Close(void* cookie) {
  const int result = close(FileOf(cookie));
  return Fails() ? -1 : result;
}

}  // namespace

bool FailFileOperation(int index, FileFault fault) {
  FailAt = index;
  Fault = fault;
  return std::exchange(Failed, false);
}

extern "C" std::FILE* __wrap_fopen(const char* name, const char* mode) {
  if (Fails()) return nullptr;
  const int write = O_WRONLY | O_CREAT | (*mode == 'a' ? O_APPEND : O_TRUNC);
  const int file = open(name, *mode == 'r' ? O_RDONLY : write, 0666);
  if (file < 0) return nullptr;
  const cookie_io_functions_t functions = {Read, Write, Seek, Close};
  return fopencookie(reinterpret_cast<void*>(std::intptr_t{file}), mode, functions);
}
