#include "platform/containers/YPathName.h"

#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>

#include "foundation/YFileName.h"

namespace {

// The number of links to links that are followed; the file system follows as many.
constexpr int LongestChain = 40;

// Sets `path` to the text of a file name, if it can be converted.
bool TakeName(const char* name, YString& path) {
  std::string text;
  if (!YFileName::ToText(name, text)) return false;
  path = text.c_str();
  return true;
}

// Copies and frees a text that the C library has allocated; null gives an empty string.
YString Taken(char* text) {
  YString s(text);
  std::free(text);
  return s;
}

// The target of the link `name`; empty when it is not a link.
YString LinkTarget(const YString& name) {
  char target[PATH_MAX];
  const ssize_t n = readlink(name.buffer, target, sizeof target);
  return n < 1 ? YString() : YString(target, static_cast<int>(n));
}

// The resolved name of a file. Neither the file nor the target of a link needs to exist. Empty when
// the folder cannot be resolved.
YString Resolve(YString name) {
  for (int links = 0; links < LongestChain; ++links) {
    YString whole = Taken(realpath(name.buffer, nullptr));
    if (whole.length != 0) return whole;
    const char* slash = std::strrchr(name.buffer, '/');
    if (slash == nullptr) break;
    const YString folder(name.buffer, static_cast<int>(slash + 1 - name.buffer));
    YString file = Taken(realpath(folder.buffer, nullptr));
    if (file.length == 0) break;
    if (file != "/") file << '/';
    const std::uint32_t folderLength = file.length;
    file << slash + 1;
    const YString target = LinkTarget(file);
    if (target.length == 0) return file;
    file.truncate(*target.buffer == '/' ? 0 : folderLength);
    name = file << target;
  }
  return YString();
}

// The path without doubled slashes and single dots. Double dots are kept, because the part before
// them may be a link, and so is a slash at the end, because it means a folder.
YString Tidy(const char* path) {
  YString tidy;
  for (const char* p = path; *p != '\0';) {
    const std::size_t n = std::strcspn(p, "/");
    const bool dot = n == 1 && *p == '.';
    if (!dot) tidy.concat(p, n);
    p += n;
    const bool slashed = tidy.length != 0 && tidy.buffer[tidy.length - 1] == '/';
    if (*p == '/' && !slashed && !(dot && tidy.length == 0)) tidy << '/';
    p += std::strspn(p, "/");
  }
  return tidy;
}

}  // namespace

void YPathName::expand() {
  if (path.length == 0 || *path.buffer == '/') return;
  YString folder;
  if (!TakeName(Taken(getcwd(nullptr, 0)).buffer, folder) || *folder.buffer != '/') return;
  path = folder << '/' << path;
}

void YPathName::pack() {
  const YString resolved = Resolve(YFileName::FromText(path.buffer).c_str());
  if (resolved.length == 0 || !TakeName(resolved.buffer, path)) path = Tidy(path.buffer);
}
