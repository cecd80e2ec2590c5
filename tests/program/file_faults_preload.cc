// Loaded in front of the C library, lets one of the program's operations on files fail, the one at
// the index FAIL_AT: openings, reads, writes, seeks and closings count, as the system sees them. A
// closing that fails has closed the file all the same. Of Scheme ports, those on files open for
// writing count, and the changes of names; a writing that fails has written half of its bytes.

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <bitset>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

int FailAt = -1;
// Opened by open64, as ports are, and by none of the streams.
std::bitset<1024> Ports;

bool IsPort(int file) {
  return file >= 0 && file < static_cast<int>(Ports.size()) && Ports[file];
}

[[gnu::constructor]] void Begin() {
  const char* index = std::getenv("FAIL_AT");
  FailAt = index == nullptr ? -1 : std::atoi(index);
}

bool Fails() {
  if (FailAt < 0 || FailAt-- > 0) return false;
  errno = EIO;
  return true;
}

// The function that stands behind the one of the same name here.
template <typename Function>
Function* Real(Function*, const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// What the streams do, which are else as any.

int FileOf(void* cookie) {
  return static_cast<int>(reinterpret_cast<std::intptr_t>(cookie));
}

ssize_t Read(void* cookie, char* bytes, std::size_t count) {
  return Fails() ? -1 : read(FileOf(cookie), bytes, count);
}

// Answers 0 for an error, as such a function does.
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
