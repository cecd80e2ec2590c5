#include "terminal/YcluiLineEditor.h"

#include <algorithm>

#include "foundation/YCharacters.h"
#include "terminal/YcluiMistake.h"
#include "terminal/YcluiPainter.h"
#include "terminal/YcluiWrap.h"

namespace {

constexpr std::size_t Nowhere = std::string::npos;

bool IsNamed(const YcluiKey& key, YcluiKeyName name) {
  return key.kind == YcluiKey::Named && key.name == name;
}

bool IsControl(const YcluiKey& key, char letter) {
  return key.kind == YcluiKey::Control && key.letter == letter;
}

bool IsInCommand(const YcluiParser& parser) {
  return parser.numberOfToken() > 0 || parser.tokenIsOpen() != 0 || parser.nestingDepth() > 1;
}

}  // namespace

YcluiLineEditor::YcluiLineEditor(const YcluiParser& parser, YcluiHistory& history)
    : parser_(parser), history_(history), preview_(parser), offers_(parser), list_(offers_) {}

void YcluiLineEditor::setPrompts(const std::string& ready, const std::string& open) {
  ready_ = ready;
  open_ = open;
}

void YcluiLineEditor::begin() {
  buffer_.clear();
  history_.reset();
  dropRows();
  searches_ = tabbed_ = rings_ = false;
  preview();
}

void YcluiLineEditor::dropRows() {
  message_.clear();
  list_.close();
}

YcluiLineEditor::Request YcluiLineEditor::handle(const YcluiKey& key) {
  rings_ = false;
  message_.clear();
  const bool wasTab = IsNamed(key, YcluiKeyName::Tab);
  if (!wasTab) tabbed_ = false;
  if (!list_.selects() && !wasTab) list_.close();
  const Request request = searches_         ? search(key)
                          : list_.selects() ? chooseFromList(key)
                                            : edit(key);
  if (buffer_.text() != previewed_) preview();
  updateHint();
  return request;
}

void YcluiLineEditor::preview() {
  previewed_ = buffer_.text();
  preview_.read(previewed_.c_str());
  updateHint();
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

void YcluiLineEditor::type(const std::string& bytes) {
  if (asksForList(bytes)) {
    openList(false);
  } else {
    buffer_.insert(bytes);
  }
}

// --- The end of the line

// A line that is certain to be refused stays, with the cursor at the mistake. After a comma it goes
// on, as it does in a file.
YcluiLineEditor::Request YcluiLineEditor::finish() {
  const YcluiTextEnding ending = preview_.ending();
  if (ending == YcluiEndsAfterComma || ending == YcluiEndsInPoint) {
    buffer_.end();
    buffer_.insert("\n");
    return Request::None;
  }
  const int mistake = YcluiFirstMistake(preview_);
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
  dropRows();
  return request;
}

// --- Completion

// A question mark is a question where it cannot be part of a text.
bool YcluiLineEditor::asksForList(const std::string& bytes) {
  if (bytes != "?") return false;
  const YcluiTyping& typing = preview_.at(static_cast<std::uint32_t>(buffer_.cursor()));
  if (typing.kind == YcluiTypingArgument) return typing.type != YcluiValueString;
  return typing.kind == YcluiTypingWord || typing.kind == YcluiTypingVariable;
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
  if (offers_.count() == 1) return takeOffer(0);
  const std::string common = offers_.common();
  if (common.size() > offers_.end() - offers_.begin()) {
    buffer_.replace(offers_.begin(), offers_.end(), common);
  } else {
    rings_ = true;
    message_ = offers_.empty() ? offers_.argumentText() : std::string();
  }
  tabbed_ = !offers_.empty();
}

void YcluiLineEditor::takeOffer(std::size_t index) {
  buffer_.replace(offers_.begin(), offers_.end(), offers_.inserted(index));
}

YcluiLineEditor::Request YcluiLineEditor::chooseFromList(const YcluiKey& key) {
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
    if (IsNamed(key, YcluiKeyName::Return)) {
      takeOffer(list_.selected());
    } else if (!IsNamed(key, YcluiKeyName::Escape)) {
      return edit(key);
    }
  }
  return Request::None;
}

// --- Hints

// The rest of the only word that can come, else of the newest line that begins so; where an
// argument begins, what it is.
void YcluiLineEditor::updateHint() {
  hint_.clear();
  hintIsText_ = false;
  if (list_.isOpen() || searches_) return;
  unfinished_ = Nowhere;
  offers_.find(preview_, buffer_.text(), buffer_.cursor());
  if (!offers_.isFresh() && !offers_.empty()) unfinished_ = buffer_.cursor();
  if (preview_.ending() == YcluiEndsInPoint) unfinished_ = buffer_.text().size();
  if (!buffer_.isAtEnd() || buffer_.empty()) return;
  const std::size_t typed = offers_.end() - offers_.begin();
  if (offers_.isFresh() && offers_.typing().kind == YcluiTypingArgument) {
    const bool isApart = buffer_.text().ends_with(' ');
    hint_ = (isApart ? "" : " ") + offers_.argumentText();
    return;
  }
  if (typed > 0 && offers_.count() == 1) {
    hint_ = offers_.inserted(0).substr(typed);
    if (hint_ == " ") hint_.clear();
  }
  if (hint_.empty()) {
    const std::string* line = history_.suggestion(buffer_.text());
    if (line != nullptr) hint_ = line->substr(buffer_.text().size());
  }
  hintIsText_ = !hint_.empty();
}

bool YcluiLineEditor::takeHint() {
  if (!hintIsText_ || !buffer_.isAtEnd()) return false;
  return buffer_.replace(buffer_.cursor(), buffer_.cursor(), hint_);
}

// --- History

void YcluiLineEditor::recall(const std::string* line) {
  act(line != nullptr);
  if (line != nullptr) buffer_.set(std::string(*line));
}

void YcluiLineEditor::beginSearch() {
  history_.refresh();
  searches_ = true;
  before_ = buffer_.text();
  sought_.clear();
  found_ = history_.size();
}

void YcluiLineEditor::seek(std::size_t from, YcluiHistory::Direction direction) {
  const std::size_t found = history_.search(sought_, from, direction);
  act(found != YcluiHistory::None);
  if (found == YcluiHistory::None) return;
  found_ = found;
  const std::string line = history_[found];
  buffer_.set(line);
  buffer_.moveTo(YcluiHistory::Find(line, sought_));
}

// Any other key ends the search with the line that was found, and acts on it.
YcluiLineEditor::Request YcluiLineEditor::search(const YcluiKey& key) {
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
    if (!sought_.empty()) seek(history_.size(), Older);
  } else if (IsControl(key, 'g') || IsControl(key, 'c')) {
    searches_ = false;
    buffer_.set(before_);
  } else {
    searches_ = false;
    if (!IsNamed(key, YcluiKeyName::Escape)) {
      if (buffer_.text() != previewed_) preview();
      return edit(key);
    }
  }
  return Request::None;
}

// --- The picture

YcluiPicture YcluiLineEditor::picture() const {
  YcluiPicture picture;
  const YcluiStyle promptStyle = colours_.of(YcluiTextKind::Prompt);
  if (searches_) {
    picture.prompt.add("search \"" + sought_ + "\": ", promptStyle);
  } else {
    picture.prompt.add(IsInCommand(parser_) ? open_ : ready_, promptStyle);
  }
  picture.line = YcluiPaint(preview_, buffer_.text(), unfinished_, colours_);
  picture.cursor = buffer_.cursor();
  if (!hint_.empty()) picture.hint.add(hint_, colours_.of(YcluiTextKind::Hint));
  return picture;
}

void YcluiLineEditor::addRows(YcluiPicture& picture, std::size_t width, std::size_t room) {
  if (!message_.empty()) {
    const YcluiCells cells(message_);
    for (const YcluiWrappedRow& row : YcluiWrap::Rows(cells, width)) {
      if (room == 0 || row.begin == row.end) break;
      const std::size_t begin = cells[row.begin].begin;
      const std::string part = message_.substr(begin, cells[row.end - 1].end - begin);
      picture.rows.emplace_back(part, colours_.of(YcluiTextKind::Message));
      --room;
    }
  }
  if (!list_.isOpen() || room == 0) return;
  for (YcluiStyledText& row : list_.rows(width, room, colours_)) {
    picture.rows.push_back(std::move(row));
  }
}
