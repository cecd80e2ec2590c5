// A file of a benchmark.

#ifndef BENCH_TEMPORARYFILE_H_
#define BENCH_TEMPORARYFILE_H_

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

// An empty file, and the end of it.
class TemporaryFile {
 public:
  TemporaryFile() {
    std::string name = (std::filesystem::temp_directory_path() / "clui_bench.XXXXXX").string();
    const int file = mkstemp(name.data());
    if (file >= 0) close(file);
    path_ = name;
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() { std::filesystem::remove(path_); }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

#endif  // BENCH_TEMPORARYFILE_H_
