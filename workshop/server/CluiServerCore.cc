#include "workshop/server/CluiServerCore.h"

#include <array>
#include <utility>

using Json = nlohmann::json;

namespace {

Json PositionAt(std::size_t line, std::size_t column) {
  return {{"line", line}, {"character", column}};
}

Json RangeOf(std::size_t line, std::size_t begin, std::size_t end) {
  return {{"start", PositionAt(line, begin)}, {"end", PositionAt(line, end)}};
}

// The severities: error, warning, information.
Json DiagnosticOf(const CluiServedFinding& finding) {
  return {{"range", RangeOf(finding.line, finding.begin, finding.end)},
          {"severity", 1 + static_cast<int>(finding.kind)},
          {"source", "clui"},
          {"message", finding.text}};
}

const Json& Part(const Json& object, const char* name) {
  static const Json null;
  if (!object.is_object()) return null;
  const auto found = object.find(name);
  return found == object.end() ? null : *found;
}

}  // namespace

CluiServerCore::CluiServerCore(YcluiParser& parser, const std::string& script,
                               CluiMessageStream& stream)
    : parser_(parser),
      hold_(parser),
      stream_(stream),
      vocabulary_(parser),
      changing_(parser, script) {}

// --- Messages

bool CluiServerCore::handle(const std::string& body) {
  const Json message = Json::parse(body, nullptr, false);
  const Json& id = Part(message, "id");
  const Json& method = Part(message, "method");
  const bool isId = id.is_null() || id.is_string() || id.is_number_integer();
  if (message.is_discarded()) {
    sendError(nullptr, {ParseError, "the message is no JSON"});
  } else if (message.is_object() && !message.contains("method")) {
    // An answer to a request, of which this server makes none.
  } else if (!method.is_string() || !isId) {
    sendError(nullptr, {InvalidRequest, "the message is no request"});
  } else if (id.is_null()) {
    notify(method, Part(message, "params"));
  } else {
    request(id, method, Part(message, "params"));
  }
  return isRead_;
}

bool CluiServerCore::refuse(const std::string& why) {
  sendError(nullptr, {InvalidRequest, why});
  return isRead_;
}

void CluiServerCore::request(const Json& id, const std::string& method, const Json& params) {
  static const std::map<std::string, Answer> answers = {
      {"initialize", &CluiServerCore::initialize},
      {"shutdown", &CluiServerCore::shutDown},
      {"textDocument/completion", &CluiServerCore::complete},
      {"textDocument/hover", &CluiServerCore::hover},
      {"textDocument/signatureHelp", &CluiServerCore::signature},
      {"textDocument/documentSymbol", &CluiServerCore::symbols},
      {"textDocument/semanticTokens/full", &CluiServerCore::allTokens},
      {"textDocument/semanticTokens/full/delta", &CluiServerCore::changedTokens},
      {"textDocument/semanticTokens/range", &CluiServerCore::tokensOfRange},
  };
  const bool isFirst = method == "initialize";
  if (phase_ == Phase::New && !isFirst) {
    return sendError(id, {NotInitialized, "expected \"initialize\" first"});
  }
  if (phase_ == Phase::ShutDown || (phase_ == Phase::Initialized && isFirst)) {
    return sendError(id, {InvalidRequest, "\"" + method + "\" is not allowed now"});
  }
  const auto found = answers.find(method);
  if (found == answers.end()) return sendError(id, {MethodNotFound, "no such method"});
  try {
    send({{"jsonrpc", "2.0"}, {"id", id}, {"result", (this->*found->second)(params)}});
  } catch (const Refusal& refusal) {
    sendError(id, refusal);
  } catch (const Json::exception& error) {
    sendError(id, {InvalidParams, error.what()});
  }
}

// A notification that is wrong is ignored: the protocol has no error for one.
void CluiServerCore::notify(const std::string& method, const Json& params) {
  static const std::map<std::string, Notice> notices = {
      {"textDocument/didOpen", &CluiServerCore::open},
      {"textDocument/didChange", &CluiServerCore::change},
      {"textDocument/didClose", &CluiServerCore::close},
  };
  if (method == "exit") hasEnded_ = true;
  const auto found = notices.find(method);
  if (phase_ != Phase::Initialized || found == notices.end()) return;
  try {
    (this->*found->second)(params);
  } catch (const Refusal&) {
  } catch (const Json::exception&) {
  }
}

// Text that is no UTF-8 is shown with replacement characters.
void CluiServerCore::send(const Json& message) {
  const std::string text = message.dump(-1, ' ', false, Json::error_handler_t::replace);
  if (!stream_.write(text)) isRead_ = false;
}

void CluiServerCore::sendError(const Json& id, const Refusal& refusal) {
  send({{"jsonrpc", "2.0"},
        {"id", id},
        {"error", {{"code", static_cast<int>(refusal.code)}, {"message", refusal.text}}}});
}

// --- Documents

CluiServerCore::Document& CluiServerCore::documentOf(const Json& params) {
  const auto found = documents_.find(params.at("textDocument").at("uri").get<std::string>());
  if (found == documents_.end()) throw Refusal{InvalidParams, "the document is not open"};
  return *found->second;
}

CluiTextPosition CluiServerCore::positionOf(const Json& position) {
  return {position.at("line").get<std::uint32_t>(), position.at("character").get<std::uint32_t>()};
}

void CluiServerCore::open(const Json& params) {
  const Json& item = params.at("textDocument");
  const std::string uri = item.at("uri");
  auto document = std::make_unique<Document>(*this);
  document->text.set(item.at("text").get<std::string>());
  document->version = Part(item, "version");
  publish(uri, (documents_[uri] = std::move(document)).get());
}

void CluiServerCore::change(const Json& params) {
  Document& document = documentOf(params);
  for (const Json& change : params.at("contentChanges")) {
    const std::string text = change.at("text");
    const Json& range = Part(change, "range");
    if (range.is_null()) {
      document.text.set(text);
    } else {
      document.text.replace(positionOf(range.at("start")), positionOf(range.at("end")), text);
    }
  }
  document.version = Part(params.at("textDocument"), "version");
  publish(params.at("textDocument").at("uri"), &document);
}

void CluiServerCore::close(const Json& params) {
  documentOf(params);
  const std::string uri = params.at("textDocument").at("uri");
  documents_.erase(uri);
  publish(uri, nullptr);
}

// Sends the diagnostics; none without a document.
void CluiServerCore::publish(const std::string& uri, const Document* document) {
  Json params = {{"uri", uri}, {"diagnostics", Json::array()}};
  if (document != nullptr) {
    if (document->version.is_number()) params["version"] = document->version;
    for (const CluiServedFinding& finding : document->text.findings()) {
      params["diagnostics"].push_back(DiagnosticOf(finding));
    }
  }
  send({{"jsonrpc", "2.0"}, {"method", "textDocument/publishDiagnostics"}, {"params", params}});
}
