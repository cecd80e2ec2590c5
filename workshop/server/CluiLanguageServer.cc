#include "workshop/server/CluiLanguageServer.h"

#include "workshop/server/CluiServerCore.h"

CluiLanguageServer::CluiLanguageServer(YcluiParser& parser, const std::string& script,
                                       CluiMessageStream& stream)
    : stream_(stream), core_(std::make_unique<CluiServerCore>(parser, script, stream)) {}

CluiLanguageServer::~CluiLanguageServer() = default;

bool CluiLanguageServer::serve() {
  std::string body;
  while (!core_->hasEnded()) {
    const CluiMessageStream::Read read = stream_.read(body);
    if (read == CluiMessageStream::Read::End) break;
    const bool isMessage = read == CluiMessageStream::Read::Message;
    if (!(isMessage ? core_->handle(body) : core_->refuse(body))) break;
  }
  return core_->wasShutDown();
}
