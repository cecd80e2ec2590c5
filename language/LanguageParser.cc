#include "language/LanguageParser.h"

#include <cstdlib>

#include "language/LanguageCore.h"

namespace yqrtClui {

LanguageParser::LanguageParser(LanguageCore& language) : core_(language) {
  setTokCallback(
      [](void* data, YcluiToken& token) {
        return static_cast<LanguageCore*>(data)->admits(token) ? YcluiTokenPass : YcluiTokenDrop;
      },
      &language);
  setTokRefuseCallback([](void* data, const YcluiToken& token,
                          std::uint32_t) { static_cast<LanguageCore*>(data)->refuse(token); },
                       &language);
}

YWord LanguageParser::evaluate(const char* command) {
  core_.runCommand(std::strtoul(command, nullptr, 10));
  return 1;
}

}  // namespace yqrtClui
