#include "program/CluiReading.h"

#include "foundation/YFileName.h"
#include "parser/YcluiParser.h"
#include "platform/engine/ScmVM.h"

bool CluiReading::isAlive() const {
  return YcluiParser::FindLive(reinterpret_cast<long>(parser_)) != nullptr;
}

CluiSpot CluiReading::spot() {
  return spotAt(parser_->lastTokenOffset());
}

CluiSpot CluiReading::spotAt(int offset) {
  static const std::string none;
  YcluiPlayedToken token;
  CluiSpot spot;
  if (parser_->playedToken(token, offset) != 0 && findPlayed(token, spot)) return spot;
  if (isPlayed()) return {0, 0, 0, &none};
  return line_.spotOf(offset);
}

// False for a token of a text that a command has appended.
bool CluiReading::findPlayed(const YcluiPlayedToken& token, CluiSpot& spot) {
  if (playedNumber_ != token.number) {
    std::string text = token.text;
    playedFile_ = token.file;
    playedNumber_ = token.number;
    playedLine_.restart();
    playedLine_.advance(text, static_cast<std::size_t>(token.line));
  }
  if (static_cast<std::size_t>(token.offset) >= playedLine_.text().size()) return false;
  spot = playedLine_.spotOf(static_cast<int>(token.offset));
  return true;
}

CluiLine& CluiReading::lineOf(const CluiSpot& spot) {
  return isInPlayed(spot) ? playedLine_ : line_;
}

CluiPlace CluiReading::placeOf(const CluiSpot& spot) const {
  if (isInPlayed(spot)) return {nameOfPlayed(playedFile_), spot.line, spot.character + 1};
  if (isPlayed()) return playbackPlace();
  return {input_, spot.line, spot.line == 0 ? 0 : spot.character + 1};
}

CluiPlace CluiReading::place() {
  if (parser_ != nullptr) return placeOf(spot());
  CluiPlace place;
  int line = 0;
  ScmVM::place(place.name, line);
  if (place.name.empty()) place.name = "clui";
  place.line = static_cast<std::size_t>(line);
  return place;
}

CluiTokenStart CluiReading::tokenStart() const {
  if (parser_ == nullptr) return {};
  return {parser_->lex()->tokenOffset(), parser_->lex()->suspendedTexts()};
}

bool CluiReading::isPlayed() const {
  if (parser_ == nullptr || parser_->isPlaybackRun() == 0) return false;
  const long length = static_cast<long>(line_.text().size());
  return line_.number() == 0 || parser_->lastTokenOffset() >= length;
}

bool CluiReading::isPlayingInput() const {
  const char* name = parser_->playbackName();
  return line_.number() == 0 && name != nullptr && playedName_ == name;
}

CluiPlace CluiReading::playbackPlace() const {
  return {nameOfPlayed(parser_->playbackName()), static_cast<std::size_t>(parser_->playbackLine()),
          0};
}

// The name that the user gave the input; for another file, its full name.
std::string CluiReading::nameOfPlayed(const std::string& file) const {
  return file == playedName_ ? input_ : YFileName::FromText(file);
}
