// A folder of the process's own, which goes with it.

#ifndef FUZZ_FOLDER_H_
#define FUZZ_FOLDER_H_

#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/support/Choices.h"

class Folder {
 public:
  Folder() : path_((std::filesystem::temp_directory_path() / "fuzz-XXXXXX").string()) {
    Require(mkdtemp(path_.data()) != nullptr, "a folder for files");
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { std::filesystem::remove_all(path_); }

  const std::string& path() const { return path_; }
  void clear() const {
    for (const auto& file : std::filesystem::directory_iterator(path_)) {
      std::filesystem::remove_all(file.path());
    }
  }

 private:
  std::string path_;
};

#endif  // FUZZ_FOLDER_H_
