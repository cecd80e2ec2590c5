#include "parser/YcluiLineParser.h"

#include <algorithm>
#include <cstring>
#include <utility>

YcluiLineParser::YcluiLineParser(const char* prefixText) : whole(prefixText), prefix(prefixText) {}

YWord YcluiLineParser::reset() {
  if (YcluiNfa::reset() == 0) return 0;
  own.isShowing = false;
  tokens.clear();
  passed = 0;
  if (shown > 0) cutTexts(0);
  shown = 0;
  return 1;
}

YcluiSyntaxNode* YcluiLineParser::next(const YcluiToken& token) {
  hideToken();
  YcluiSyntaxNode* previous = currentNode;
  YcluiSyntaxNode* accepted = stepNext(token.id());
  if (accepted == nullptr) return nullptr;
  storeToken(token);
  tokens.topSlot().previousNode(previous);
  tokens.topSlot().presentNode(currentNode);
  return accepted;
}

const YcluiToken* YcluiLineParser::currentToken() const {
  return tokens.isEmpty() != 0 ? nullptr : &tokens.topSlot();
}

const YcluiToken* YcluiLineParser::tokenAt(YWord index) const {
  return index < numberOfToken() ? &tokens.at(static_cast<int>(index)) : nullptr;
}

int YcluiLineParser::findToken(const YcluiToken& token) const {
  for (int i = 0; i < tokens.count(); ++i) {
    if (tokens.at(i) == token) return i;
  }
  return -1;
}

const YcluiToken* YcluiLineParser::popLastToken() {
  hideToken();
  if (tokens.isEmpty() != 0) return nullptr;
  YcluiSyntaxNode* previous = tokens.topSlot().previousNode();
  if (previous != nullptr && lastIsIndefinite() == 0) goBack(previous);
  return popToken();
}

YWord YcluiLineParser::lastIsIndefinite() const {
  if (tokens.isEmpty() != 0) return 0;
  const YcluiToken& last = tokens.topSlot();
  return last.previousNode() == last.presentNode() && indefiniteNode(last.id()) != nullptr ? 1 : 0;
}

YWord YcluiLineParser::removeToken(YWord index) {
  hideToken();
  if (index >= numberOfToken()) return 0;
  YcluiToken_Array saved(tokens.count());
  for (int i = 0; i < saved.size(); ++i) saved[i] = tokens.at(i);
  reset();
  if (stepAgain(saved, static_cast<int>(index))) return 1;
  reset();
  for (int i = 0; i < saved.size(); ++i) next(saved[i]);
  return 0;
}

// Stops and returns false at the first token that is refused.
bool YcluiLineParser::stepAgain(const YcluiToken_Array& saved, int without) {
  for (int i = 0; i < saved.size(); ++i) {
    if (i != without && next(saved.at(i)) == nullptr) return false;
  }
  return true;
}

const char* YcluiLineParser::currentLine() const {
  showAll();
  return line.buffer;
}

const char* YcluiLineParser::wholeLine() const {
  showAll();
  return whole.buffer;
}

const YcluiSyntaxNode* YcluiLineParser::firstNode() const {
  for (; passed < tokens.count(); ++passed) {
    const YcluiSyntaxNode* node = tokens.at(passed).presentNode();
    if (node != nullptr && node->tokenId != 0 && node->kind != YcluiNodeIndefinite) return node;
  }
  return nullptr;
}

void YcluiLineParser::pushToken(const YcluiToken& token) {
  hideToken();
  storeToken(token);
}

const YcluiToken* YcluiLineParser::popToken() {
  hideToken();
  if (tokens.isEmpty() == 0) dropToken();
  return currentToken();
}

void YcluiLineParser::showToken(const YcluiToken& token) {
  pushToken(token);
  own.isShowing = true;
}

void YcluiLineParser::hideToken() {
  if (!own.isShowing) return;
  own.isShowing = false;
  dropToken();
}

void YcluiLineParser::storeToken(const YcluiToken& token) {
  // Grows by half, since the steps of the stack are at most 256 and a line may be much longer.
  if (tokens.count() == tokens.size()) {
    YcluiToken kept(token);  // `token` may be one of `tokens`, which are about to move
    tokens.resize(tokens.count() + tokens.count() / 2 + 1);
    tokens.extend() = std::move(kept);
  } else {
    tokens.extend() = token;
  }
  YcluiToken& stored = tokens.topSlot();
  stored.previousNode(nullptr);
  stored.presentNode(nullptr);
}

void YcluiLineParser::dropToken() {
  if (shown == tokens.count()) {
    const char* echo = currentToken()->echoString();
    const std::size_t echoLength = echo == nullptr ? 0 : std::strlen(echo);
    const std::size_t blank = shown > 1 ? 1 : 0;
    cutTexts(line.length - static_cast<std::uint32_t>(echoLength + blank));
    --shown;
  }
  tokens.drop();
  passed = std::min(passed, tokens.count());
}

void YcluiLineParser::showAll() const {
  if (shown == tokens.count()) return;
  keepHeldTexts();
  for (; shown < tokens.count(); ++shown) extendTexts(tokens.at(shown).echoString());
}

void YcluiLineParser::extendTexts(const char* echo) const {
  const std::uint32_t before = line.length;
  if (shown > 0) line << ' ';
  if (echo != nullptr) line << echo;
  if (prefix.length > 0 && before == 0 && line.length > 0) whole << ' ';
  whole.concat(line.buffer + before, line.length - before);
}

void YcluiLineParser::cutTexts(std::uint32_t lineLength) {
  keepHeldTexts();
  const std::uint32_t blank = prefix.length > 0 && lineLength > 0 ? 1 : 0;
  line.truncate(lineLength);
  whole.truncate(prefix.length + blank + lineLength);
}

std::uint32_t YcluiLineParser::holdTexts() {
  showAll();
  ++own.holders;
  ++own.presentHolders;
  return own.textVersion;
}

void YcluiLineParser::releaseTexts(std::uint32_t held) {
  if (held == own.textVersion) --own.presentHolders;
  if (--own.holders == 0) own.keptTexts.removeAll();
}

void YcluiLineParser::keepHeldTexts() const {
  if (own.presentHolders == 0) return;
  own.presentHolders = 0;
  ++own.textVersion;
  for (YString* text : {&line, &whole}) {
    YString copy(*text);
    own.keptTexts.end() = std::move(*text);
    *text = std::move(copy);
  }
}
