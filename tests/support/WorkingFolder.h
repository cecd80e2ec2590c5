// A folder of the test's own, which is the working folder until it is destroyed with all files.

#ifndef TESTS_SUPPORT_WORKINGFOLDER_H_
#define TESTS_SUPPORT_WORKINGFOLDER_H_

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

class WorkingFolder {
 public:
  WorkingFolder() {
    path = (std::filesystem::temp_directory_path() / "clui-XXXXXX").string();
    if (mkdtemp(path.data()) == nullptr) std::abort();
    path = std::filesystem::canonical(path).string();
    std::filesystem::current_path(path);
  }
  ~WorkingFolder() {
    // The next folder must not trip over what a test has made unreadable in this one.
    std::error_code ignored;
    std::filesystem::current_path(before_, ignored);
    std::filesystem::remove_all(path, ignored);
  }

  std::string path;

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
};

// The whole of a file.
inline void WriteFile(const std::string& name, const std::string& text) {
  std::ofstream(name, std::ios::binary) << text;
}
inline std::string ReadFile(const std::string& name) {
  std::ostringstream text;
  text << std::ifstream(name, std::ios::binary).rdbuf();
  return text.str();
}

#endif  // TESTS_SUPPORT_WORKINGFOLDER_H_
