#include "terminal/YcluiFileNames.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

#include "foundation/YFileName.h"

void YcluiFindFileNames(const std::string& typed, YString_Array& names) {
  namespace fs = std::filesystem;
  names.resize(0);
  const std::size_t slash = typed.rfind('/');
  const std::string folder = slash == std::string::npos ? "" : typed.substr(0, slash + 1);
  const std::string beginning = typed.substr(folder.size());
  std::vector<std::string> found;
  std::error_code error;
  const std::string path = YFileName::FromText(folder.empty() ? "." : folder);
  for (fs::directory_iterator i(path, error); !error && i != fs::directory_iterator();
       i.increment(error)) {
    std::string name;
    if (!YFileName::ToText(i->path().filename().string(), name)) continue;
    const bool isHidden = name.starts_with('.') && !beginning.starts_with('.');
    if (isHidden || !name.starts_with(beginning)) continue;
    std::error_code unknown;
    found.push_back(folder + name + (i->is_directory(unknown) ? "/" : ""));
  }
  std::sort(found.begin(), found.end());
  for (const std::string& name : found) names.end().assign(name.c_str());
}
