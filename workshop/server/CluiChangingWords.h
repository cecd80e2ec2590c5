// The words whose commands may change the language.

#ifndef WORKSHOP_SERVER_CLUICHANGINGWORDS_H_
#define WORKSHOP_SERVER_CLUICHANGINGWORDS_H_

#include <cstdint>
#include <string>
#include <unordered_set>

class YcluiParser;

// Words of the parser's syntax whose code may declare words or aliases, set a syntax, begin or end
// a frame, or set variables: what follows them in a text may be read otherwise in a run.
class CluiChangingWords {
 public:
  // The script is read for what its procedures do (CluiEffects).
  CluiChangingWords(const YcluiParser& parser, const std::string& script);

  bool contains(std::uint32_t tokenId) const { return ids_.contains(tokenId); }

 private:
  std::unordered_set<std::uint32_t> ids_;
};

#endif  // WORKSHOP_SERVER_CLUICHANGINGWORDS_H_
