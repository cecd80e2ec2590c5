// A library for LD_PRELOAD that makes one file operation of the program fail, the one with the
// index FAIL_AT. It counts the opens, reads, writes, seeks and closes of C streams. A close that
// fails has closed the file.

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

int FailAt = -1;

[[gnu::constructor]] void Begin() {
  const char* index = std::getenv("FAIL_AT");
  FailAt = index == nullptr ? -1 : std::atoi(index);
}

bool Fails() {
  if (FailAt < 0 || FailAt-- > 0) return false;
  errno = EIO;
  return true;
}

// The functions of a stream made by fopencookie.

int FileOf(void* cookie) {
  return static_cast<int>(reinterpret_cast<std::intptr_t>(cookie));
}

ssize_t Read(void* cookie, char* bytes, std::size_t count) {
  return Fails() ? -1 : read(FileOf(cookie), bytes, count);
}

// Returns 0 for an error, as fopencookie expects.
ssize_t Write(void* cookie, const char* bytes, std::size_t count) {
  const ssize_t written = Fails() ? -1 : write(FileOf(cookie), bytes, count);
  return written < 0 ? 0 : written;
}

int Seek(void* cookie, off64_t* offset, int whence) {
  *offset = Fails() ? -1 : lseek64(FileOf(cookie), *offset, whence);
  return *offset < 0 ? -1 : 0;
}

int Close(void* cookie) {
  const int result = close(FileOf(cookie));
  return Fails() ? -1 : result;
}

}  // namespace

extern "C" {

std::FILE* fopen(const char* name, const char* mode) {
  if (Fails()) return nullptr;
  const int write = O_WRONLY | O_CREAT | (*mode == 'a' ? O_APPEND : O_TRUNC);
  const int file = open(name, *mode == 'r' ? O_RDONLY : write, 0666);
  if (file < 0) return nullptr;
  const cookie_io_functions_t functions = {Read, Write, Seek, Close};
  return fopencookie(reinterpret_cast<void*>(std::intptr_t{file}), mode, functions);
}

}  // extern "C"
