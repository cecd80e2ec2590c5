#include "language/LanguageParser.h"

#include "foundation/YAscii.h"

#include "language/LanguageCore.h"

namespace yqrtClui {

LanguageParser::LanguageParser(LanguageCore& language) : core_(language) {
  setTokRefuseCallback([](void* data, const YcluiToken& token,
                          std::uint32_t) { static_cast<LanguageCore*>(data)->refuse(token); },
                       &language);
}

YWord LanguageParser::admits(const YcluiToken& token) {
  return core_.admits(token) ? 1 : 0;
}

YWord LanguageParser::evaluate(const char* command) {
  std::size_t number = 0;
  for (; YIsDigit(*command); ++command) {
    number = number * 10 + static_cast<std::size_t>(*command - '0');
  }
  core_.runCommand(number);
  return 1;
}

}  // namespace yqrtClui
