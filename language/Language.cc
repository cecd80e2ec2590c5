#include "language/Language.h"

#include "language/LanguageCore.h"

namespace yqrtClui {

// --- Feeds

LanguageFeed::LanguageFeed(std::shared_ptr<LanguageCore> core, Result& result)
    : core_(std::move(core)), result_(result), outer_(nullptr) {
  core_->begin(*this);
}

LanguageFeed::~LanguageFeed() {
  core_->release(*this);
}

std::exception_ptr LanguageFeed::read(std::string_view lines) {
  return core_->read(*this, lines);
}

bool LanguageFeed::isOver() const {
  return core_->isOver(*this);
}

void LanguageFeed::end(bool isWhole) {
  core_->end(*this, isWhole);
}

// --- The language

Language::Language() : core_(std::make_shared<LanguageCore>()) {}

Language::Language(Language&& other) noexcept = default;

Language& Language::operator=(Language&& other) noexcept {
  if (this == &other) return *this;
  if (core_ != nullptr) core_->abandon();
  core_ = std::move(other.core_);
  return *this;
}

Language::~Language() {
  if (core_ != nullptr) core_->abandon();
}

void Language::add(const Syntax& syntax, std::unique_ptr<detail::Command> command,
                   bool isAnywhere) {
  core_->add(syntax, std::move(command), isAnywhere);
}

bool Language::remove(const Syntax& word) {
  return core_->remove(word);
}

const std::string& Language::error() const {
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
