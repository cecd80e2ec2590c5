#include "terminal/YcluiLineEditor.h"

#include <algorithm>
#include <utility>

#include "foundation/YAscii.h"
#include "foundation/YCharacters.h"
#include "terminal/YcluiHalfTyped.h"
#include "terminal/YcluiMistake.h"
#include "terminal/YcluiPainter.h"
#include "terminal/YcluiWrap.h"

namespace {

constexpr std::size_t Nowhere = std::string::npos;

// The earlier lines that are read for a hint, at most, and how many bytes they may have.
constexpr int MostTried = 4;
constexpr std::size_t LongestTried = 1000;

bool IsNamed(const YcluiKey& key, YcluiKeyName name) {
  return key.kind == YcluiKey::Named && key.name == name;
}

bool IsControl(const YcluiKey& key, char letter) {
  return key.kind == YcluiKey::Control && key.letter == letter;
}

// Whether nothing but white space, comments and commas follows the piece.
bool IsLast(const YcluiPreview& preview, int index) {
  for (int i = index + 1; i < preview.count(); ++i) {
    const YcluiPieceKind kind = preview.piece(i).kind;
    if (kind != YcluiPieceBlank && kind != YcluiPieceComment && kind != YcluiPiecePunctuation) {
      return false;
    }
  }
  return true;
}

// Whether the text ends after a comma between arguments, or inside a point.
bool GoesOn(const YcluiPreview& preview) {
  if (preview.ending() == YcluiEndsAfterComma || preview.ending() == YcluiEndsInPoint) return true;
  if (preview.ending() != YcluiEndsInToken) return false;
  int last = preview.count() - 1;
  while (last >= 0 && (preview.piece(last).kind == YcluiPieceBlank ||
                       preview.piece(last).kind == YcluiPieceComment)) {
    --last;
  }
  return last >= 0 && preview.piece(last).kind == YcluiPiecePunctuation;
}

}  // namespace

YcluiLineEditor::YcluiLineEditor(const YcluiParser& parser, YcluiHistory& history)
    : parser_(parser),
      history_(history),
      preview_(parser),
      hinted_(parser),
      offers_(parser),
      list_(offers_) {}

void YcluiLineEditor::setPrompts(const std::string& ready, const std::string& open) {
  ready_ = ready;
  open_ = open;
}

void YcluiLineEditor::begin() {
  sendsWords_ = false;
  sent_ = Sent();
  buffer_.clear();
  restart();
}

void YcluiLineEditor::beginAfter(const Sent& sent, const std::string& text) {
  sendsWords_ = true;
  sent_ = sent;
  buffer_.begin(text);
  restart();
}

void YcluiLineEditor::restart() {
  history_.reset();
  dropRows();
  searches_ = tabbed_ = rings_ = false;
  refresh();
}

void YcluiLineEditor::setText(const std::string& text) {
  buffer_.set(text);
  dropRows();
  refresh();
}

void YcluiLineEditor::insert(const std::string& text) {
  buffer_.insert(text);
  dropRows();
  refresh();
}

void YcluiLineEditor::moveTo(std::size_t offset) {
  buffer_.moveTo(offset);
  refresh();
}

std::string YcluiLineEditor::WithoutFirstComma(std::string text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n\v\f");
  if (first != Nowhere && text[first] == ',') text[first] = ' ';
  return text;
}

void YcluiLineEditor::dropRows() {
  message_.clear();
  note_.clear();
  list_.close();
}

YcluiLineEditor::Request YcluiLineEditor::handle(const YcluiKey& key) {
  rings_ = false;
  message_.clear();
  followsBlank_ = std::exchange(addedBlank_, false);
  const bool wasTab = IsNamed(key, YcluiKeyName::Tab);
  if (!wasTab) tabbed_ = false;
  if (!list_.selects() && !wasTab) list_.close();
  Request request = Request::None;
  if (!isForChoice(key)) {
    endChoice();
    request = edit(key);
  } else if (searches_) {
    search(key);
  } else {
    chooseFromList(key);
  }
  const bool isOver =
      request == Request::Line || request == Request::Leave || request == Request::Interrupt;
  if (isOver) return request;
  if (buffer_.text() != previewed_) preview();
  updateHint();
  return request;
}

void YcluiLineEditor::preview() {
  previewed_ = buffer_.text();
  preview_.read(readable(previewed_).c_str());
}

std::string YcluiLineEditor::readable(const std::string& text) const {
  return sent_.endsInArgument ? WithoutFirstComma(text) : text;
}

void YcluiLineEditor::refresh() {
  accepted_.clear();
  preview();
  updateHint();
}

bool YcluiLineEditor::isForChoice(const YcluiKey& key) const {
  if (searches_) {
    return key.kind == YcluiKey::Text || IsControl(key, 'r') || IsControl(key, 's') ||
           IsControl(key, 'g') || IsControl(key, 'c') || IsNamed(key, YcluiKeyName::Backspace) ||
           IsNamed(key, YcluiKeyName::Escape);
  }
  if (!list_.selects() || key.kind != YcluiKey::Named) return false;
  switch (key.name) {
    case YcluiKeyName::Tab:
    case YcluiKeyName::BackTab:
    case YcluiKeyName::Left:
    case YcluiKeyName::Right:
    case YcluiKeyName::Up:
    case YcluiKeyName::Down:
    case YcluiKeyName::Return:
    case YcluiKeyName::Escape:
      return true;
    default:
      return false;
  }
}

void YcluiLineEditor::endChoice() {
  if (list_.selects()) list_.close();
  if (searches_) endSearch(true);
  if (buffer_.text() != previewed_) preview();
}

// --- Keys

YcluiLineEditor::Request YcluiLineEditor::edit(const YcluiKey& key) {
  switch (key.kind) {
    case YcluiKey::Text:
      type(key.bytes);
      break;
    case YcluiKey::Named:
      return editByName(key.name);
    case YcluiKey::Control:
      return editByControl(key.letter);
    case YcluiKey::Alt:
      editByAlt(key.letter);
      break;
    case YcluiKey::Paste:
      buffer_.insert(key.bytes);
      break;
    case YcluiKey::PasteEnd:
      break;
    case YcluiKey::Invalid:
      message_ = key.bytes;
      rings_ = true;
      break;
  }
  return Request::None;
}

YcluiLineEditor::Request YcluiLineEditor::editByName(YcluiKeyName name) {
  switch (name) {
    case YcluiKeyName::Return:
      return finish();
    case YcluiKeyName::Left:
      act(buffer_.left());
      break;
    case YcluiKeyName::Right:
      act(takeHint() || buffer_.right());
      break;
    case YcluiKeyName::WordLeft:
      act(buffer_.wordLeft());
      break;
    case YcluiKeyName::WordRight:
      act(buffer_.wordRight());
      break;
    case YcluiKeyName::Home:
      buffer_.home();
      break;
    case YcluiKeyName::End:
      if (!takeHint()) buffer_.end();
      break;
    case YcluiKeyName::Backspace:
      act(buffer_.eraseLeft());
      break;
    case YcluiKeyName::Delete:
      act(buffer_.eraseRight());
      break;
    case YcluiKeyName::Up:
      recall(history_.older(buffer_.text()));
      break;
    case YcluiKeyName::Down:
      recall(history_.newer(buffer_.text()));
      break;
    case YcluiKeyName::Tab:
      complete();
      break;
    default:
      break;
  }
  return Request::None;
}

YcluiLineEditor::Request YcluiLineEditor::editByControl(char letter) {
  switch (letter) {
    case 'a':
      return editByName(YcluiKeyName::Home);
    case 'b':
      return editByName(YcluiKeyName::Left);
    case 'c':
      return drop(Request::Interrupt);
    case 'd':
      if (buffer_.empty()) return drop(Request::Leave);
      return editByName(YcluiKeyName::Delete);
    case 'e':
      return editByName(YcluiKeyName::End);
    case 'f':
      return editByName(YcluiKeyName::Right);
    case 'k':
      act(buffer_.killToEnd());
      break;
    case 'l':
      return Request::Clear;
    case 'n':
      return editByName(YcluiKeyName::Down);
    case 'p':
      return editByName(YcluiKeyName::Up);
    case 'r':
      beginSearch();
      break;
    case 't':
      act(buffer_.transpose());
      break;
    case 'u':
      act(buffer_.killToBeginning());
      break;
    case 'w':
      act(buffer_.killToSpace());
      break;
    case 'y':
      act(buffer_.yank());
      break;
    case 'z':
      return Request::Suspend;
    case '_':
      act(buffer_.undo());
      break;
    default:
      rings_ = true;
  }
  return Request::None;
}

void YcluiLineEditor::editByAlt(char letter) {
  switch (letter) {
    case 'b':
      return act(buffer_.wordLeft());
    case 'd':
      return act(buffer_.killWordRight());
    case 'f':
      return act(buffer_.wordRight());
    case 'y':
      return act(buffer_.yankPop());
    case '_':
      return act(buffer_.redo());
    case '\x7F':
      return act(buffer_.killWordLeft());
    default:
      rings_ = true;
  }
}

// The blank that a completed word has got is often typed, too.
void YcluiLineEditor::type(const std::string& bytes) {
  if (bytes == " " && followsBlank_) return;
  if (asksForList(bytes)) {
    openList(false);
  } else {
    buffer_.insert(bytes);
  }
}

// --- The end of the line

// A line that is certain to be refused stays, with the cursor at the mistake. After a comma it goes
// on, as it does in a file; what is missing there is no mistake yet.
YcluiLineEditor::Request YcluiLineEditor::finish() {
  const int mistake = YcluiFirstMistake(preview_);
  if (GoesOn(preview_) && (mistake < 0 || IsLast(preview_, mistake))) {
    buffer_.end();
    buffer_.insert("\n");
    return Request::None;
  }
  if (mistake < 0) return drop(Request::Line);
  const YcluiPiece piece = preview_.piece(mistake);
  message_ = YcluiMistakeText(preview_, offers_, buffer_.text(), mistake);
  buffer_.moveTo(piece.kind == YcluiPieceOpenQuote ? piece.end : piece.begin);
  rings_ = true;
  return Request::None;
}

YcluiLineEditor::Request YcluiLineEditor::drop(Request request) {
  history_.add(buffer_.text());
  hint_.clear();
  unfinished_ = Nowhere;
  dropRows();
  return request;
}

// --- Completion

// A question mark is a question where it cannot continue a text or a word.
bool YcluiLineEditor::asksForList(const std::string& bytes) {
  if (bytes != "?") return false;
  const YcluiTyping& typing = preview_.at(static_cast<std::uint32_t>(buffer_.cursor()));
  if (typing.kind == YcluiTypingArgument) return typing.type != YcluiValueString;
  if (typing.kind != YcluiTypingWord) return typing.kind == YcluiTypingVariable;
  offers_.find(preview_, buffer_.text(), buffer_.cursor());
  for (std::size_t i = 0; i < offers_.count() && !offers_.isFresh(); ++i) {
    if (offers_.at(i).name[offers_.end() - offers_.begin()] == '?') return false;
  }
  return true;
}

void YcluiLineEditor::openList(bool selects) {
  offers_.find(preview_, buffer_.text(), buffer_.cursor());
  message_ = offers_.argumentText();
  if (!offers_.empty()) {
    list_.open(selects);
  } else if (message_.empty()) {
    rings_ = true;
  }
}

// As far as all offers agree; then a second time opens the list.
void YcluiLineEditor::complete() {
  if (tabbed_ || list_.isOpen()) return openList(true);
  offers_.find(preview_, buffer_.text(), buffer_.cursor());
  if (offers_.count() == 1 && takeOffer(0)) return;
  const std::string common = offers_.common();
  if (common.size() > offers_.end() - offers_.begin()) {
    buffer_.replace(offers_.begin(), offers_.end(), common);
  } else {
    rings_ = true;
    message_ = offers_.empty() ? offers_.argumentText() : std::string();
  }
  tabbed_ = !offers_.empty();
}

// False when all of it is there already.
bool YcluiLineEditor::takeOffer(std::size_t index) {
  std::string text = offers_.inserted(index);
  if (sendsWords_ && text.ends_with(' ')) text.pop_back();
  const std::size_t end = offers_.begin() + text.size();
  if (!buffer_.replace(offers_.begin(), offers_.endFor(text), text) && !buffer_.moveTo(end)) {
    return false;
  }
  addedBlank_ = text.ends_with(' ');
  return true;
}

void YcluiLineEditor::chooseFromList(const YcluiKey& key) {
  const bool isTab = IsNamed(key, YcluiKeyName::Tab);
  if (isTab || IsNamed(key, YcluiKeyName::Right)) {
    list_.next();
  } else if (IsNamed(key, YcluiKeyName::BackTab) || IsNamed(key, YcluiKeyName::Left)) {
    list_.previous();
  } else if (IsNamed(key, YcluiKeyName::Down)) {
    list_.rowDown();
  } else if (IsNamed(key, YcluiKeyName::Up)) {
    list_.rowUp();
  } else {
    list_.close();
    if (IsNamed(key, YcluiKeyName::Return)) takeOffer(list_.selected());
  }
}

// --- Hints

// The rest of the only word that can come, else of the newest line that begins so; where an
// argument begins, what it is.
void YcluiLineEditor::updateHint() {
  hint_.clear();
  hintTakes_ = Taken::Nothing;
  unfinished_ = Nowhere;
  note_.clear();
  if (searches_) return;
  updateNotes();
  if (list_.isOpen()) {
    unfinished_ = buffer_.cursor();
    return;
  }
  offers_.locate(preview_, buffer_.text(), buffer_.cursor());
  if (!offers_.isFresh()) offers_.findHere(preview_);
  if (!offers_.empty()) unfinished_ = buffer_.cursor();
  if (preview_.ending() == YcluiEndsInPoint) unfinished_ = buffer_.text().size();
  if (!buffer_.isAtEnd() || !message_.empty() || !hint_.empty()) return;
  if (offers_.isFresh() && offers_.typing().kind == YcluiTypingArgument) {
    const bool isApart = buffer_.empty() || YIsWhiteSpace(buffer_.text().back());
    hint_ = (isApart ? "" : " ") + offers_.argumentText();
    return;
  }
  if (buffer_.empty() && sent_.typed.empty()) return;
  if (offers_.count() == 1) {
    hint_ = offers_.rest(0);
    hintTakes_ = Taken::Offer;
  }
  if (hint_.empty()) {
    hint_ = restOfEarlierLine();
    hintTakes_ = hint_.empty() ? Taken::Nothing : Taken::Hint;
  }
}

// Of the newest lines that begin so, the first one that is not certain to be refused.
std::string YcluiLineEditor::restOfEarlierLine() {
  const std::string beginning = sent_.typed + buffer_.text();
  std::size_t at = history_.size();
  for (int tried = 0; tried < MostTried; ++tried) {
    at = history_.lineBeginning(beginning, at);
    if (at == YcluiHistory::None) break;
    const std::string& line = history_[at];
    if (line.size() > LongestTried) continue;
    const std::string rest = line.substr(beginning.size());
    if (line == accepted_) return rest;
    hinted_.read(readable(buffer_.text() + rest).c_str());
    if (YcluiFirstMistake(hinted_) >= 0) continue;
    accepted_ = line;
    return rest;
  }
  return std::string();
}

// A value out of its range is a hint while it is being typed at the end of the line, and a note
// elsewhere.
void YcluiLineEditor::updateNotes() {
  for (int i = 0; i < preview_.count(); ++i) {
    const std::string range = YcluiRangeFault(parser_.help(), preview_.piece(i), previewed_);
    if (range.empty()) continue;
    const YcluiPiece& piece = preview_.piece(i);
    if (piece.end == buffer_.cursor() && buffer_.isAtEnd()) {
      hint_ = "  out of range: " + range;
    } else if (note_.empty()) {
      const std::string value = previewed_.substr(piece.begin, piece.end - piece.begin);
      note_ = value + " is out of range: " + range;
    }
  }
}

bool YcluiLineEditor::takeHint() {
  if (hintTakes_ == Taken::Nothing || !buffer_.isAtEnd()) return false;
  if (hintTakes_ == Taken::Hint) return buffer_.insert(hint_);
  takeOffer(0);
  return true;
}

// --- History

void YcluiLineEditor::recall(const std::string* line) {
  act(line != nullptr);
  if (line != nullptr) buffer_.set(std::string(*line));
}

void YcluiLineEditor::beginSearch() {
  history_.refresh();
  searches_ = true;
  before_ = buffer_;
  sought_.clear();
  found_ = history_.size();
}

// The lines that were looked at leave nothing to be undone but the one that is taken.
void YcluiLineEditor::endSearch(bool takesLine) {
  searches_ = false;
  const std::string line = buffer_.text();
  const std::size_t cursor = buffer_.cursor();
  buffer_ = before_;
  if (!takesLine || line == buffer_.text()) return;
  buffer_.set(line);
  buffer_.moveTo(cursor);
}

void YcluiLineEditor::seek(std::size_t from, YcluiHistory::Direction direction) {
  const std::size_t found = history_.search(sought_, from, direction);
  act(found != YcluiHistory::None);
  if (found == YcluiHistory::None) {
    const char* which = found_ == history_.size() ? "no line" : "no further line";
    message_ = which + std::string(" contains \"") + sought_ + "\"";
    return;
  }
  found_ = found;
  const std::string line = history_[found];
  buffer_.set(line);
  buffer_.moveTo(YcluiHistory::Find(line, sought_));
}

void YcluiLineEditor::search(const YcluiKey& key) {
  constexpr auto Older = YcluiHistory::Direction::Older;
  if (key.kind == YcluiKey::Text) {
    sought_ += key.bytes;
    seek(std::min(found_ + 1, history_.size()), Older);
  } else if (IsControl(key, 'r')) {
    seek(found_, Older);
  } else if (IsControl(key, 's')) {
    seek(found_, YcluiHistory::Direction::Newer);
  } else if (IsNamed(key, YcluiKeyName::Backspace)) {
    act(!sought_.empty());
    sought_.resize(YCharacters::CutBetween(sought_, sought_.empty() ? 0 : sought_.size() - 1));
    found_ = history_.size();
    if (sought_.empty()) {
      buffer_ = before_;
    } else {
      seek(found_, Older);
    }
  } else if (IsControl(key, 'g') || IsControl(key, 'c')) {
    endSearch(false);
  } else {
    endSearch(true);
  }
}

// --- The picture

YcluiPicture YcluiLineEditor::picture() const {
  YcluiPicture picture;
  const YcluiStyle promptStyle = colours_.of(YcluiTextKind::Prompt);
  if (searches_) {
    picture.prompt.add("search \"" + sought_ + "\": ", promptStyle);
  } else {
    picture.prompt.add(YcluiIsHalfTyped(parser_) ? open_ : ready_, promptStyle);
  }
  if (!sent_.shown.empty()) picture.prompt.add(sent_.shown + " ");
  picture.line = YcluiPaint(preview_, buffer_.text(), unfinished_, colours_);
  picture.cursor = buffer_.cursor();
  if (!hint_.empty()) picture.hint.add(hint_, colours_.of(YcluiTextKind::Hint));
  return picture;
}

void YcluiLineEditor::addRows(YcluiPicture& picture, std::size_t width, std::size_t room) {
  const std::string& message = message_.empty() && !list_.isOpen() ? note_ : message_;
  if (!message.empty()) {
    const YcluiCells cells(message);
    for (const YcluiWrappedRow& row : YcluiWrap::Rows(cells, width)) {
      if (room == 0 || row.begin == row.end) break;
      const std::size_t begin = cells[row.begin].begin;
      // A word that is wider than the row is cut.
      std::size_t end = row.begin + 1;
      while (end < row.end &&
             cells[end].column + cells[end].width <= cells[row.begin].column + width)
        ++end;
      const std::string part = message.substr(begin, cells[end - 1].end - begin);
      picture.rows.emplace_back(part, colours_.of(YcluiTextKind::Message));
      --room;
    }
  }
  if (!list_.isOpen() || room == 0) return;
  for (YcluiStyledText& row : list_.rows(width, room, colours_)) {
    picture.rows.push_back(std::move(row));
  }
}
