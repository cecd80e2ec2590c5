#include "terminal/YcluiHistoryFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t ReadAtMost = 8 << 20;  // at the end of a longer file
constexpr int LockAttempts = 500;
constexpr useconds_t LockPause = 2000;
constexpr char Digits[] = "0123456789abcdef";

std::string Escaped(const std::string& line) {
  std::string text;
  for (const char c : line) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\\') {
      text += "\\\\";
    } else if (c == '\n') {
      text += "\\n";
    } else if ((byte < 0x20 && c != '\t') || byte == 0x7F) {
      text.append("\\x") += Digits[byte >> 4];
      text += Digits[byte & 15];
    } else {
      text += c;
    }
  }
  return text;
}

int DigitAt(std::string_view text, std::size_t offset) {
  const char* digit =
      offset < text.size() ? std::find(Digits, Digits + 16, text[offset]) : Digits + 16;
  return digit == Digits + 16 ? -1 : static_cast<int>(digit - Digits);
}

std::string Unescaped(std::string_view text) {
  std::string line;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char next = text[i] == '\\' && i + 1 < text.size() ? text[i + 1] : '\0';
    const int high = next == 'x' ? DigitAt(text, i + 2) : -1;
    const int low = high >= 0 ? DigitAt(text, i + 3) : -1;
    if (next == '\\' || next == 'n') {
      line += next == 'n' ? '\n' : '\\';
      i += 1;
    } else if (low >= 0) {
      line += static_cast<char>(high * 16 + low);
      i += 3;
    } else {
      line += text[i];
    }
  }
  return line;
}

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    if (end > 0) lines.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

std::size_t LengthOf(int file) {
  struct stat state {};
  return fstat(file, &state) == 0 ? static_cast<std::size_t>(state.st_size) : 0;
}

bool IsSame(int file, int other) {
  struct stat one {};
  struct stat two {};
  return fstat(file, &one) == 0 && fstat(other, &two) == 0 && one.st_ino == two.st_ino &&
         one.st_dev == two.st_dev;
}

std::string TextFrom(int file, std::size_t begin, std::size_t end) {
  std::string bytes(end - begin, '\0');
  const ssize_t count = pread(file, bytes.data(), bytes.size(), static_cast<off_t>(begin));
  bytes.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
  return bytes;
}

bool Write(int file, const std::string& text) {
  return write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

// Creates the folder and its parents where they are missing, accessible to the user only.
void MakeFolder(const fs::path& folder) {
  if (folder.empty() || folder == folder.root_path()) return;
  if (access(folder.c_str(), F_OK) == 0) return;
  MakeFolder(folder.parent_path());
  mkdir(folder.c_str(), 0700);
}

}  // namespace

// The open file, locked against writing and replacement by another session. Without a lock after
// some time it goes on all the same, since the other session may have been suspended.
class YcluiHistoryFile::Locked {
 public:
  Locked(const std::string& name, int flags) : name_(name) {
    bool goesOn = true;
    for (int attempt = 0; goesOn && attempt < LockAttempts; ++attempt) {
      goesOn = open(flags) && tryLock();
    }
  }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;
  ~Locked() { close(); }

  bool isOpen() const { return file_ >= 0; }
  bool isLocked() const { return isLocked_; }
  bool exists() const { return exists_; }
  int descriptor() const { return file_; }

 private:
  const std::string& name_;
  int file_ = -1;
  bool exists_ = true;
  bool isLocked_ = false;

  bool open(int flags) {
    close();
    // O_NONBLOCK, so that opening a pipe does not wait.
    file_ = ::open(name_.c_str(), flags | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, 0600);
    exists_ = file_ >= 0 || errno != ENOENT;
    struct stat state {};
    if (file_ >= 0 && (fstat(file_, &state) != 0 || !S_ISREG(state.st_mode))) close();
    if (file_ >= 0 && (state.st_mode & 077) != 0) fchmod(file_, 0600);
    return file_ >= 0;
  }
  // The lock ends here also if the file stays open in a copy of the descriptor.
  void close() {
    if (isLocked_) flock(file_, LOCK_UN);
    if (file_ >= 0) ::close(file_);
    file_ = -1;
  }
  // Whether to try again. The lock counts only if the file has not been replaced since it was
  // opened. Some file systems have no locks.
  bool tryLock() {
    if (flock(file_, LOCK_EX | LOCK_NB) != 0) {
      const bool isHeld = errno == EWOULDBLOCK || errno == EINTR;
      if (isHeld) usleep(LockPause);
      return isHeld;
    }
    struct stat mine {};
    struct stat named {};
    isLocked_ = fstat(file_, &mine) == 0 && stat(name_.c_str(), &named) == 0 &&
                mine.st_ino == named.st_ino && mine.st_dev == named.st_dev;
    return !isLocked_;
  }
};

YcluiHistoryFile::YcluiHistoryFile(std::string name, std::size_t maximum)
    : name_(std::move(name)), maximum_(maximum) {}

YcluiHistoryFile::~YcluiHistoryFile() {
  if (seen_ >= 0) close(seen_);
}

bool YcluiHistoryFile::read(std::vector<std::string>& lines) {
  if (name_.empty()) return true;
  const Locked file(name_, O_RDONLY);
  if (!file.isOpen()) return !file.exists();
  read(file, lines);
  return true;
}

bool YcluiHistoryFile::append(const std::string& line, std::vector<std::string>& lines) {
  if (name_.empty()) return true;
  MakeFolder(fs::path(name_).parent_path());
  const Locked file(name_, O_RDWR | O_CREAT | O_APPEND);
  if (!file.isOpen()) return false;
  read(file, lines);
  // After an incomplete write the last line lacks its newline.
  const std::size_t length = LengthOf(file.descriptor());
  const bool isBroken = length > 0 && TextFrom(file.descriptor(), length - 1, length) != "\n";
  const bool isWritten = Write(file.descriptor(), (isBroken ? "\n" : "") + Escaped(line) + "\n");
  position_ = LengthOf(file.descriptor());
  if (++lineCount_ > 2 * maximum_) shorten(file);
  return isWritten;
}

void YcluiHistoryFile::shorten(std::vector<std::string>& lines) {
  if (name_.empty()) return;
  const Locked file(name_, O_RDONLY);
  if (!file.isOpen()) return;
  read(file, lines);
  if (lineCount_ > maximum_) shorten(file);
}

void YcluiHistoryFile::see(int file, std::size_t position, std::size_t lineCount) {
  if (seen_ >= 0) close(seen_);
  seen_ = file;
  position_ = position;
  lineCount_ = lineCount;
}

void YcluiHistoryFile::read(const Locked& file, std::vector<std::string>& lines) {
  const std::size_t length = LengthOf(file.descriptor());
  const bool goesOn = seen_ >= 0 && IsSame(seen_, file.descriptor()) && length >= position_;
  if (!goesOn) see(fcntl(file.descriptor(), F_DUPFD_CLOEXEC, 0), 0, 0);
  const bool isCut = length - position_ > ReadAtMost;
  std::string text = TextFrom(file.descriptor(), isCut ? length - ReadAtMost : position_, length);
  if (isCut) text.erase(0, text.find('\n'));
  for (const std::string_view raw : LinesOf(text)) {
    std::string line = Unescaped(raw);
    if (line.size() <= LongestLine) lines.push_back(std::move(line));
    ++lineCount_;
  }
  position_ = length;
}

// Keeps the newest lines of the file, and not those of this session, since others may have added
// some.
bool YcluiHistoryFile::shorten(const Locked& file) {
  if (!file.isLocked()) return false;
  const std::size_t length = LengthOf(file.descriptor());
  const std::string text =
      TextFrom(file.descriptor(), length - std::min(length, ReadAtMost), length);
  std::vector<std::string_view> kept;
  std::unordered_set<std::string_view> known;
  const std::vector<std::string_view> all = LinesOf(text);
  for (std::size_t i = all.size(); i > 0 && kept.size() < maximum_; --i) {
    if (known.insert(all[i - 1]).second) kept.push_back(all[i - 1]);
  }
  std::string shortened;
  for (std::size_t i = kept.size(); i > 0; --i) shortened.append(kept[i - 1]) += '\n';
  return replace(shortened, kept.size());
}

// Replaces the file at once, also in a crash of the machine.
bool YcluiHistoryFile::replace(const std::string& text, std::size_t lineCount) {
  std::error_code error;
  const fs::path target = fs::canonical(name_, error);  // follows links, so that they stay
  if (error) return false;
  const std::string fresh = target.string() + ".new";
  const int file = open(fresh.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0600);
  if (file < 0) return false;
  const bool isReplaced =
      Write(file, text) && fsync(file) == 0 && rename(fresh.c_str(), target.c_str()) == 0;
  if (isReplaced) return see(file, text.size(), lineCount), true;
  close(file);
  unlink(fresh.c_str());
  return false;
}
