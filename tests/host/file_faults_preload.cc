// Loaded in front of the C library, lets one of the program's operations on files fail, the one at
// the index FAIL_AT. Of Scheme ports, those on files open for writing count, and the changes of
// names; a writing that fails has written half of its bytes.

#define __wrap_fopen fopen
#include "tests/common/file_faults.cc"

#include <dlfcn.h>

#include <bitset>
#include <cstdarg>
#include <cstdlib>

namespace {

// Opened by open64, as ports are, and by none of the streams.
std::bitset<1024> Ports;

bool IsPort(int file) {
  return file >= 0 && file < static_cast<int>(Ports.size()) && Ports[file];
}

[[gnu::constructor]] void Begin() {
  const char* index = std::getenv("FAIL_AT");
  FailFileOperation(index == nullptr ? -1 : std::atoi(index));
}

// The function that stands behind the one of the same name here.
template <typename Function>
Function* Real(Function*, const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

int open64(const char* name, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  const bool writes = (flags & O_ACCMODE) != O_RDONLY;
  if (writes && Fails()) return -1;
  const int file = Real(open64, "open64")(name, flags, mode);
  if (file >= 0 && file < static_cast<int>(Ports.size())) Ports[file] = writes;
  return file;
}

ssize_t write(int file, const void* bytes, std::size_t count) {
  const bool fails = IsPort(file) && Fails();
  const ssize_t written = Real(write, "write")(file, bytes, fails ? count / 2 : count);
  if (fails) errno = ENOSPC;
  return fails ? -1 : written;
}

int close(int file) {
  const bool fails = IsPort(file) && Fails();
  if (IsPort(file)) Ports[file] = false;
  const int result = Real(close, "close")(file);
  if (fails) errno = EIO;
  return fails ? -1 : result;
}

int rename(const char* from, const char* to) {
  return Fails() ? -1 : Real(rename, "rename")(from, to);
}

}  // extern "C"
