// A server of the Language Server Protocol for the command files of a language.

#ifndef WORKSHOP_SERVER_CLUILANGUAGESERVER_H_
#define WORKSHOP_SERVER_CLUILANGUAGESERVER_H_

#include <memory>
#include <string>

#include "parser/YcluiParser.h"
#include "workshop/server/CluiMessageStream.h"

class CluiServerCore;

// Serves an editor that has a file of the language open: diagnostics, completion, hover, semantic
// tokens, document symbols, signature help. Nothing of the files is run; the language's procedures
// for values of arguments are. Version 3.17 of the protocol, positions in UTF-16.
class CluiLanguageServer {
 public:
  // The stream and the parser outlive it. `script` is the file that made the parser's language.
  CluiLanguageServer(YcluiParser& parser, const std::string& script, CluiMessageStream& stream);
  CluiLanguageServer(const CluiLanguageServer&) = delete;
  CluiLanguageServer& operator=(const CluiLanguageServer&) = delete;
  ~CluiLanguageServer();

  // Serves until the client says "exit", closes the stream or does not read any more. Returns
  // whether it had asked for the shutdown before, as it should.
  bool serve();

 private:
  CluiMessageStream& stream_;
  std::unique_ptr<CluiServerCore> core_;
};

#endif  // WORKSHOP_SERVER_CLUILANGUAGESERVER_H_
