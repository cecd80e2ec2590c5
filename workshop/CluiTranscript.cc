#include "workshop/CluiTranscript.h"

#include <algorithm>

namespace {

constexpr char Prompt = '>';
constexpr char Comment = '#';
constexpr char Mark = '\\';  // before a printed line that would be read as something else
constexpr std::size_t Context = 3;
// Longer parts are not compared line by line.
constexpr std::size_t ComparedAtMost = 1000;

using Lines = std::vector<std::string>;

Lines LinesOf(std::string_view text) {
  Lines lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

bool IsTyped(const std::string& line) {
  return line.starts_with(Prompt);
}

bool IsLayout(const std::string& line) {
  return line.empty() || line.starts_with(Comment);
}

std::string Marked(const std::string& line) {
  const bool isOther = IsLayout(line) || IsTyped(line) || line.starts_with(Mark);
  return isOther ? Mark + line : line;
}

std::string TypedText(const std::string& line) {
  return line.substr(line.starts_with("> ") ? 2 : 1);
}

void Add(std::vector<CluiDifference>& all, CluiDifference::Kind kind, const std::string& line) {
  all.push_back({kind, line});
}

// The lengths of the longest common subsequences of the rests of two texts.
class CommonLengths {
 public:
  CommonLengths(const Lines& before, const Lines& after)
      : width_(after.size() + 1), lengths_((before.size() + 1) * width_) {
    for (std::size_t i = before.size(); i-- > 0;) {
      for (std::size_t j = after.size(); j-- > 0;) {
        lengths_[i * width_ + j] =
            before[i] == after[j] ? at(i + 1, j + 1) + 1 : std::max(at(i + 1, j), at(i, j + 1));
      }
    }
  }
  std::size_t at(std::size_t i, std::size_t j) const { return lengths_[i * width_ + j]; }

 private:
  std::size_t width_;
  std::vector<std::size_t> lengths_;
};

void Compare(const Lines& before, const Lines& after, std::vector<CluiDifference>& all) {
  std::size_t i = 0;
  std::size_t j = 0;
  if (before != after && before.size() < ComparedAtMost && after.size() < ComparedAtMost) {
    const CommonLengths common(before, after);
    while (i < before.size() && j < after.size()) {
      if (before[i] == after[j]) {
        Add(all, CluiDifference::Both, before[i++]);
        ++j;
      } else if (common.at(i + 1, j) >= common.at(i, j + 1)) {
        Add(all, CluiDifference::Old, before[i++]);
      } else {
        Add(all, CluiDifference::New, after[j++]);
      }
    }
  }
  const bool isSame = before == after;
  while (i < before.size()) {
    Add(all, isSame ? CluiDifference::Both : CluiDifference::Old, before[i++]);
  }
  while (!isSame && j < after.size()) Add(all, CluiDifference::New, after[j++]);
}

// The index after the last difference that is shown in one hunk with the one at `first`.
std::size_t EndOfHunk(const std::vector<CluiDifference>& all, std::size_t first) {
  std::size_t end = first;
  for (std::size_t i = first; i < all.size() && i - end <= 2 * Context; ++i) {
    if (all[i].kind != CluiDifference::Both) end = i + 1;
  }
  return end;
}

std::string Range(std::size_t begin, std::size_t count) {
  // By convention an empty range begins with the line before it.
  return std::to_string(count == 0 ? begin - 1 : begin) + "," + std::to_string(count);
}

}  // namespace

CluiTranscript::CluiTranscript(std::string_view text) : parts_(1) {
  for (std::string& line : LinesOf(text)) {
    if (IsTyped(line)) {
      parts_.emplace_back();
      parts_.back().typed = TypedText(line);
    } else if (!IsLayout(line)) {
      parts_.back().expected.push_back(line.starts_with(Mark) ? line.substr(1) : line);
    }
    parts_.back().lines.push_back(std::move(line));
  }
}

void CluiTranscript::setPrinted(Part& part, std::string_view printed) {
  part.printed = LinesOf(printed);
}

bool CluiTranscript::differs() const {
  return std::any_of(parts_.begin(), parts_.end(),
                     [](const Part& part) { return part.expected != part.printed; });
}

std::vector<std::string> CluiTranscript::updatedLines(const Part& part, bool isFirst) {
  if (part.expected == part.printed) return part.lines;
  Lines lines;
  // A heading stays above what is printed while the language is loaded.
  std::size_t next = 0;
  while (next < part.lines.size() && (isFirst ? IsLayout(part.lines[next]) : next == 0)) {
    lines.push_back(part.lines[next++]);
  }
  for (const std::string& line : part.printed) lines.push_back(Marked(line));
  for (; next < part.lines.size(); ++next) {
    if (IsLayout(part.lines[next])) lines.push_back(part.lines[next]);
  }
  return lines;
}

std::vector<CluiDifference> CluiTranscript::differences() const {
  std::vector<CluiDifference> all;
  for (const Part& part : parts_) {
    Compare(part.lines, updatedLines(part, &part == &parts_.front()), all);
  }
  return all;
}

std::string CluiTranscript::updated() const {
  std::string text;
  for (const Part& part : parts_) {
    for (const std::string& line : updatedLines(part, &part == &parts_.front())) {
      text += line + "\n";
    }
  }
  return text;
}

std::string CluiUnifiedDiff(const std::string& name,
                            const std::vector<CluiDifference>& differences) {
  std::string text;
  std::size_t oldLine = 1;
  std::size_t newLine = 1;
  std::size_t shown = 0;  // the lines before are in `text` or need not be
  const auto pass = [&](std::size_t end, std::string* hunk) {
    std::size_t olds = 0;
    std::size_t news = 0;
    for (; shown < end; ++shown) {
      const CluiDifference& difference = differences[shown];
      olds += difference.kind != CluiDifference::New ? 1 : 0;
      news += difference.kind != CluiDifference::Old ? 1 : 0;
      if (hunk != nullptr) *hunk += static_cast<char>(difference.kind) + difference.line + "\n";
    }
    if (hunk != nullptr) {
      text += "@@ -" + Range(oldLine, olds) + " +" + Range(newLine, news) + " @@\n" + *hunk;
    }
    oldLine += olds;
    newLine += news;
  };
  for (std::size_t i = 0; i < differences.size(); ++i) {
    if (i < shown || differences[i].kind == CluiDifference::Both) continue;
    if (text.empty()) text = "--- " + name + "\n+++ " + name + " as printed\n";
    pass(std::max(shown, i < Context ? 0 : i - Context), nullptr);
    std::string hunk;
    pass(std::min(EndOfHunk(differences, i) + Context, differences.size()), &hunk);
  }
  return text;
}
