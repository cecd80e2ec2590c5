#include "program/terminal/CluiHistory.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr off_t ReadAtMost = 8 << 20;  // at the end of a longer file
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

bool IsWorthKeeping(const std::string& line) {
  return line.size() <= CluiHistory::LongestLine &&
         line.find_first_not_of(" \t\r\n") != std::string::npos;
}

// The open file, locked against writing and replacement by another program. Waits a second at most
// for the lock and then goes on without it, since the other program may have been suspended.
class LockedFile {
 public:
  LockedFile(const std::string& name, int flags) : name_(name) {
    for (int attempt = 0; attempt < 500 && !isLocked_ && open(flags); ++attempt) tryLock();
  }
  LockedFile(const LockedFile&) = delete;
  LockedFile& operator=(const LockedFile&) = delete;
  ~LockedFile() { close(); }

  bool isOpen() const { return file_ >= 0; }
  bool isLocked() const { return isLocked_; }
  bool exists() const { return exists_; }

  bool write(const std::string& text) {
    return ::write(file_, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  }
  // Whether the last line lacks its newline, after an incomplete write.
  bool endsInsideLine() const {
    const off_t length = lengthOf();
    char last = '\n';
    return length > 0 && pread(file_, &last, 1, length - 1) == 1 && last != '\n';
  }
  std::string text() const {
    const off_t length = lengthOf();
    const off_t from = std::max<off_t>(0, length - ReadAtMost);
    std::string bytes(static_cast<std::size_t>(length - from), '\0');
    const ssize_t count = pread(file_, bytes.data(), bytes.size(), from);
    bytes.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    if (from > 0) bytes.erase(0, bytes.find('\n') + 1);
    return bytes;
  }

 private:
  std::string name_;
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
  void close() {
    if (file_ >= 0) ::close(file_);
    file_ = -1;
  }
  // The lock counts only if the file has not been replaced since it was opened.
  void tryLock() {
    struct stat mine {};
    struct stat named {};
    const bool locked = flock(file_, LOCK_EX | LOCK_NB) == 0;
    isLocked_ = locked && fstat(file_, &mine) == 0 && stat(name_.c_str(), &named) == 0 &&
                mine.st_ino == named.st_ino && mine.st_dev == named.st_dev;
    if (!locked) usleep(2000);
  }
  off_t lengthOf() const {
    struct stat state {};
    return fstat(file_, &state) == 0 ? state.st_size : 0;
  }
};

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    if (end > 0) lines.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

// Replaces the file atomically, also in a crash of the machine.
bool Replace(const fs::path& file, const std::string& text) {
  const std::string fresh = file.string() + ".new";
  const int handle =
      open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0600);
  if (handle < 0) return false;
  const bool written =
      write(handle, text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
      fsync(handle) == 0;
  close(handle);
  if (written && rename(fresh.c_str(), file.c_str()) == 0) return true;
  unlink(fresh.c_str());
  return false;
}

// Creates the folder and its parents where they are missing, accessible to the user only.
void MakeFolder(const fs::path& folder) {
  if (folder.empty() || folder == folder.root_path()) return;
  if (access(folder.c_str(), F_OK) == 0) return;
  MakeFolder(folder.parent_path());
  mkdir(folder.c_str(), 0700);
}

std::string AbsoluteVariable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && *value == '/' ? value : "";
}

}  // namespace

CluiHistory::CluiHistory(std::string file, std::size_t maximum)
    : file_(std::move(file)), maximum_(maximum) {}

bool CluiHistory::load() {
  if (file_.empty()) return true;
  const LockedFile file(file_, O_RDONLY);
  if (!file.isOpen()) return !file.exists();
  const std::string text = file.text();
  const std::vector<std::string_view> lines = LinesOf(text);
  const std::size_t first = lines.size() - std::min(lines.size(), maximum_);
  lines_.clear();
  for (std::size_t i = first; i < lines.size(); ++i) lines_.push_back(Unescaped(lines[i]));
  surplus_ = first;
  reset();
  return true;
}

void CluiHistory::add(const std::string& line) {
  reset();
  if (!IsWorthKeeping(line) || (!lines_.empty() && lines_.back() == line)) return;
  lines_.push_back(line);
  if (lines_.size() > maximum_) lines_.pop_front();
  if (file_.empty()) return;
  allWritten_ = append(line) && allWritten_;
  if (++surplus_ > maximum_) shorten();
}

bool CluiHistory::append(const std::string& line) {
  MakeFolder(fs::path(file_).parent_path());
  LockedFile file(file_, O_RDWR | O_CREAT | O_APPEND);
  if (!file.isOpen()) return false;
  return file.write((file.endsInsideLine() ? "\n" : "") + Escaped(line) + "\n");
}

// Keeps the newest lines of the file, not of lines_, since other programs may have added some.
bool CluiHistory::shorten() {
  surplus_ = 0;
  const LockedFile file(file_, O_RDONLY);
  if (!file.isLocked()) return false;
  const std::string text = file.text();
  const std::vector<std::string_view> lines = LinesOf(text);
  if (lines.size() <= maximum_) return true;
  std::string kept;
  for (std::size_t i = lines.size() - maximum_; i < lines.size(); ++i) {
    kept.append(lines[i]) += '\n';
  }
  std::error_code error;
  const fs::path target = fs::canonical(file_, error);  // follows links, so that they stay
  return !error && Replace(target, kept);
}

const std::string* CluiHistory::older(const std::string& current) {
  if (back_ >= lines_.size()) return nullptr;
  if (back_ == 0) current_ = current;
  return &lines_[lines_.size() - ++back_];
}

const std::string* CluiHistory::newer() {
  if (back_ == 0) return nullptr;
  return --back_ == 0 ? &current_ : &lines_[lines_.size() - back_];
}

void CluiHistory::reset() {
  back_ = 0;
}

bool CluiHistory::save() {
  if (surplus_ > 0 && !file_.empty()) shorten();
  return allWritten_;
}

std::string CluiHistory::DefaultFile(const std::string& language) {
  const std::string name = fs::path(language).stem().string() + ".history";
  std::string folder = AbsoluteVariable("XDG_STATE_HOME");
  if (folder.empty()) {
    folder = AbsoluteVariable("HOME");
    if (folder.empty()) return folder;
    folder += "/.local/state";
  }
  return folder + "/clui/" + name;
}
