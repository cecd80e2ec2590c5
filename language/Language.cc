#include "language/Language.h"

#include <utility>

#include "language/LanguageCore.h"

namespace yqrtClui {

// --- Feeds

LanguageFeed::LanguageFeed(LanguageCore& core, Result& result) : core_(core), result_(result) {
  core_.begin(*this);
}

LanguageFeed::~LanguageFeed() {
  if (core_.release(*this)) delete &core_;
}

std::exception_ptr LanguageFeed::read(std::string_view lines) {
  return core_.read(*this, lines);
}

bool LanguageFeed::isOver() const {
  return core_.isOver(*this);
}

void LanguageFeed::end(bool isWhole) {
  core_.end(*this, isWhole);
}

// --- The language

namespace {

// A text that is being read destroys the core when it ends.
void Destroy(LanguageCore* core) {
  if (core == nullptr) return;
  if (core->isReading()) return core->abandon();
  delete core;
}

}  // namespace

Language::Language() : core_(new LanguageCore) {}

Language::Language(Language&& other) noexcept : core_(std::exchange(other.core_, nullptr)) {}

Language& Language::operator=(Language&& other) noexcept {
  if (this == &other) return *this;
  Destroy(std::exchange(core_, std::exchange(other.core_, nullptr)));
  return *this;
}

Language::~Language() {
  Destroy(core_);
}

std::exception_ptr Language::readText(LanguageCore& core, std::string_view text, Result& result) {
  LanguageFeed feed(core, result);
  std::exception_ptr thrown = feed.read(text);
  if (thrown == nullptr) feed.end(false);
  return thrown;
}

void Language::add(const Syntax& syntax, std::unique_ptr<detail::Command> command,
                   bool isAnywhere) {
  core_->add(syntax, std::move(command), isAnywhere);
}

bool Language::remove(const Syntax& word) {
  return core_->remove(word);
}

const std::string& Language::error() const {
  core_->update();
  return core_->error();
}

void Language::leave() {
  core_->leave();
}

bool Language::isLeft() const {
  return core_->isLeft();
}

void Language::drop() {
  core_->drop();
}

void Language::setHandler(Handler handler) {
  core_->setHandler(std::move(handler));
}

bool Language::hasHandler() const {
  return core_->hasHandler();
}

std::vector<Candidate> Language::complete(std::string_view text) const {
  return core_->complete(text);
}

YcluiParser& Language::parser() {
  core_->update();
  return core_->parser();
}

Result Language::notOpened(const std::string& path) {
  Result result;
  Refusal refusal;
  refusal.kind = Refusal::Kind::NotOpened;
  refusal.found = path;
  refusal.message = "the file \"" + path + "\" cannot be opened";
  result.refusals.push_back(std::move(refusal));
  result.refused = 1;
  return result;
}

}  // namespace yqrtClui
