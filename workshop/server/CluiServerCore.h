// The requests that the language server handles. Internal to it.

#ifndef WORKSHOP_SERVER_CLUISERVERCORE_H_
#define WORKSHOP_SERVER_CLUISERVERCORE_H_

#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "parser/YcluiParser.h"
#include "workshop/CluiVocabulary.h"
#include "workshop/server/CluiMessageStream.h"
#include "workshop/server/CluiServedText.h"

class CluiServerCore {
 public:
  using Json = nlohmann::json;

  CluiServerCore(YcluiParser& parser, const std::string& script, CluiMessageStream& stream);

  // Handles one message. False when the client does not read any more.
  bool handle(const std::string& body);
  // Reports a message that could not be read.
  bool refuse(const std::string& why);

  bool hasEnded() const { return hasEnded_; }  // the client has said "exit"
  bool wasShutDown() const { return phase_ == Phase::ShutDown; }

 private:
  enum class Phase { New, Initialized, ShutDown };
  // The codes of the protocol.
  enum Code {
    ParseError = -32700,
    InvalidRequest = -32600,
    MethodNotFound = -32601,
    InvalidParams = -32602,
    NotInitialized = -32002,
  };
  // Why a request is refused.
  struct Refusal {
    Code code;
    std::string text;
  };
  struct Document {
    explicit Document(CluiServerCore& core) : text(core.parser_, core.changing_) {}

    CluiServedText text;
    Json version;
    std::vector<std::uint32_t> tokens;  // the semantic tokens of the last answer
    int tokensId = 0;
  };
  using Answer = Json (CluiServerCore::*)(const Json& params);
  using Notice = void (CluiServerCore::*)(const Json& params);

  YcluiParser& parser_;
  YcluiParser::Hold hold_;
  CluiMessageStream& stream_;
  CluiVocabulary vocabulary_;
  CluiChangingWords changing_;
  std::map<std::string, std::unique_ptr<Document>> documents_;  // by URI
  Phase phase_ = Phase::New;
  bool hasEnded_ = false;
  bool isRead_ = true;  // by the client

  void send(const Json& message);
  void sendError(const Json& id, const Refusal& refusal);
  void request(const Json& id, const std::string& method, const Json& params);
  void notify(const std::string& method, const Json& params);

  Document& documentOf(const Json& params);
  static CluiTextPosition positionOf(const Json& position);
  void publish(const std::string& uri, const Document* document);

  Json initialize(const Json& params);
  Json shutDown(const Json& params);
  void open(const Json& params);
  void change(const Json& params);
  void close(const Json& params);

  Json complete(const Json& params);
  Json hover(const Json& params);
  Json signature(const Json& params);
  Json symbols(const Json& params);
  Json allTokens(const Json& params);
  Json changedTokens(const Json& params);
  Json tokensOfRange(const Json& params);
};

#endif  // WORKSHOP_SERVER_CLUISERVERCORE_H_
