#include "platform/containers/YPathName.h"

#include <iconv.h>
#include <langinfo.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "foundation/YKanji.h"

namespace {

constexpr const char* TextCharset = "CP932";

// A link that leads to a link that leads on is followed so far, as the file system does it.
constexpr int LongestChain = 40;

// The length in bytes of the character at `p` in one of the two charsets.
using CharacterLength = std::size_t (*)(const char* p);

std::size_t TextCharacter(const char* p) {
  return IsKanjiStart(p) != 0 && p[1] != '\0' ? 2 : 1;
}

std::size_t SingleByte(const char*) {
  return 1;
}

// Converts what it can of `in` and appends it to `out`; answers where it stopped.
char* ConvertRun(iconv_t converter, char* in, YString& out) {
  std::size_t left = std::strlen(in);
  while (left != 0) {
    char piece[256];
    char* end = piece;
    std::size_t room = sizeof piece;
    const std::size_t result = iconv(converter, &in, &left, &end, &room);
    out.concat(piece, static_cast<unsigned long>(end - piece));
    if (result == static_cast<std::size_t>(-1) && end == piece) break;
  }
  return in;
}

// `text` in another charset; a character that does not convert passes byte for byte.
YString Convert(const char* text, const char* from, const char* to, CharacterLength length) {
  const iconv_t converter = iconv_open(to, from);
  if (converter == reinterpret_cast<iconv_t>(-1)) return YString(text);
  YString in(text);
  YString out;
  for (char* p = ConvertRun(converter, in.buffer, out); *p != '\0';) {
    const std::size_t n = length(p);
    out.concat(p, n);
    p = ConvertRun(converter, p + n, out);
  }
  iconv_close(converter);
  return out;
}

// The charset of file names, null while that is plain ASCII: then names pass as they are.
const char* FileSystemCharset() {
  const char* charset = nl_langinfo(CODESET);
  const bool ascii = std::strcmp(charset, "ANSI_X3.4-1968") == 0 ||
                     std::strcmp(charset, "US-ASCII") == 0 || std::strcmp(charset, "ASCII") == 0;
  return ascii || *charset == '\0' ? nullptr : charset;
}

// Puts a name of the file system into `path`, unless no text stands for it: a folder can have a
// name in characters that the encoding of texts has not, and its bytes would mean another file.
bool TakeName(const char* name, YString& path) {
  const char* charset = FileSystemCharset();
  YString text =
      charset == nullptr ? YString(name) : Convert(name, charset, TextCharset, SingleByte);
  if (YFileSystemName(text.buffer) != name) return false;
  path = std::move(text);
  return true;
}

// A text in memory of malloc, as the C library answers it; empty for null.
YString Taken(char* text) {
  YString s(text);
  std::free(text);
  return s;
}

// Where the link at `name` leads, empty when it is none.
YString LinkTarget(const YString& name) {
  char target[PATH_MAX];
  const ssize_t n = readlink(name.buffer, target, sizeof target);
  return n < 1 ? YString() : YString(target, static_cast<int>(n));
}

// The one name of the file that `name` stands for, which may be one that is still to be made, also
// behind a link that leads nowhere yet. Empty when its folder cannot be resolved.
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

// The path without doubled slashes and single dots. Double dots stay, since a link may stand in
// front of them, and so does a slash at the end, which says that a folder is meant.
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
  const YString resolved = Resolve(YFileSystemName(path.buffer));
  if (resolved.length == 0 || !TakeName(resolved.buffer, path)) path = Tidy(path.buffer);
}

YString YFileSystemName(const char* path) {
  const char* charset = FileSystemCharset();
  return charset == nullptr ? YString(path) : Convert(path, TextCharset, charset, TextCharacter);
}
