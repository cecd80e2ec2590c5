#include "terminal/YcluiHistory.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <unordered_set>
#include <utility>

#include "foundation/YCharacters.h"
#include "foundation/YEncoding.h"

namespace {

namespace fs = std::filesystem;

bool IsWorthKeeping(const std::string& line) {
  const bool beginsBlank = line.starts_with(' ') || line.starts_with('\t');
  return !beginsBlank && line.size() <= YcluiHistory::LongestLine &&
         line.find_first_not_of(" \t\r\n") != line.npos;
}

bool BeginsLonger(const std::string& line, std::string_view beginning) {
  return line.size() > beginning.size() && line.starts_with(beginning);
}

std::string AbsoluteVariable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && *value == '/' ? value : "";
}

}  // namespace

YcluiHistory::YcluiHistory(std::string file, std::size_t maximum)
    : file_(std::move(file), maximum), maximum_(maximum) {}

bool YcluiHistory::refresh() {
  std::vector<std::string> fresh;
  const bool isRead = file_.read(fresh);
  append(std::move(fresh));
  return isRead;
}

void YcluiHistory::add(const std::string& line) {
  reset();
  if (!IsWorthKeeping(line) || (!lines_.empty() && lines_.back() == line)) return;
  std::vector<std::string> fresh;
  allWritten_ = file_.append(line, fresh) && allWritten_;
  fresh.push_back(line);
  append(std::move(fresh));
}

bool YcluiHistory::save() {
  std::vector<std::string> fresh;
  file_.shorten(fresh);
  append(std::move(fresh));
  return allWritten_;
}

// Of equal lines the newest stays. A file that was replaced is read anew, and its order counts.
void YcluiHistory::append(std::vector<std::string> fresh) {
  if (!fresh.empty()) {
    std::vector<std::string> all = std::move(lines_);
    std::ranges::move(fresh, std::back_inserter(all));
    lines_.clear();
    std::unordered_set<std::string_view> known;
    std::vector<std::size_t> kept;
    for (std::size_t i = all.size(); i > 0 && kept.size() < maximum_; --i) {
      if (known.insert(all[i - 1]).second) kept.push_back(i - 1);
    }
    for (std::size_t i = kept.size(); i > 0; --i) lines_.push_back(std::move(all[kept[i - 1]]));
  }
  reset();
}

// --- Moving

bool YcluiHistory::continues(const std::string& text) const {
  return at_ < lines_.size() && (text == lines_[at_] || text == typed_);
}

const std::string* YcluiHistory::older(const std::string& text) {
  if (!continues(text)) {
    typed_ = text;
    refresh();
  }
  for (std::size_t i = at_; i > 0; --i) {
    if (BeginsLonger(lines_[i - 1], typed_)) return &lines_[at_ = i - 1];
  }
  return nullptr;
}

const std::string* YcluiHistory::newer(const std::string& text) {
  if (!continues(text)) {
    reset();
    return nullptr;
  }
  while (++at_ < lines_.size()) {
    if (BeginsLonger(lines_[at_], typed_)) return &lines_[at_];
  }
  return &typed_;
}

// --- Searching

std::size_t YcluiHistory::search(std::string_view text, std::size_t from,
                                 Direction direction) const {
  if (direction == Direction::Older) {
    for (std::size_t i = std::min(from, lines_.size()); i > 0; --i) {
      if (Find(lines_[i - 1], text) != None) return i - 1;
    }
    return None;
  }
  for (std::size_t i = from; i < lines_.size() && ++i < lines_.size();) {
    if (Find(lines_[i], text) != None) return i;
  }
  return None;
}

// A byte of the text may be the second one of a character, so that characters are counted from the
// start of the line.
std::size_t YcluiHistory::Find(std::string_view line, std::string_view text) {
  std::size_t boundary = 0;
  for (std::size_t hit = 0; (hit = line.find(text, hit)) != line.npos; ++hit) {
    boundary += YCharacters::CutBetween(line.substr(boundary), hit - boundary);
    if (boundary == hit) return hit;
  }
  return None;
}

std::size_t YcluiHistory::lineBeginning(std::string_view text, std::size_t from) const {
  for (std::size_t i = std::min(from, lines_.size()); i > 0; --i) {
    if (BeginsLonger(lines_[i - 1], text)) return i - 1;
  }
  return None;
}

const std::string* YcluiHistory::suggestion(std::string_view beginning) const {
  const std::size_t found = lineBeginning(beginning, lines_.size());
  return found == None ? nullptr : &lines_[found];
}

std::string YcluiHistory::DefaultFile(const std::string& language) {
  const char* const ending = YEncoding::IsDoubleByte() ? ".history" : ".utf-8.history";
  const std::string name = fs::path(language).stem().string() + ending;
  std::string folder = AbsoluteVariable("XDG_STATE_HOME");
  if (folder.empty()) {
    folder = AbsoluteVariable("HOME");
    if (folder.empty()) return folder;
    folder += "/.local/state";
  }
  return folder + "/clui/" + name;
}
