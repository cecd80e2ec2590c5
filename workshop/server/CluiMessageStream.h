// The messages of the Language Server Protocol on two file descriptors.

#ifndef WORKSHOP_SERVER_CLUIMESSAGESTREAM_H_
#define WORKSHOP_SERVER_CLUIMESSAGESTREAM_H_

#include <cstddef>
#include <string>
#include <string_view>

// Each message is preceded by header lines, of which Content-Length is read, and a blank line.
class CluiMessageStream {
 public:
  // The longest message that is read, in bytes; longer ones are passed over.
  static constexpr std::size_t MostBytes = std::size_t{256} << 20;
  // The longest header. A client that sends more without a blank line has lost its way.
  static constexpr std::size_t MostHeaderBytes = 64 * 1024;

  // The descriptors stay open when this is destroyed. Writing must not raise SIGPIPE: the process
  // ignores it.
  CluiMessageStream(int in, int out) : in_(in), out_(out) {}

  enum class Read {
    Message,  // `body` is the message
    Broken,   // there was a header without a usable length; `body` says so. Read on
    End,      // the client has closed the stream, or it cannot be read
  };
  // Waits for the next message.
  Read read(std::string& body);

  // Waits until all of it is written. False when the client does not read any more.
  bool write(std::string_view body);

 private:
  int in_;
  int out_;
  std::string buffer_;  // what was read and not used yet, from begin_ on
  std::size_t begin_ = 0;

  bool fill();
  bool readHeader(std::string& header);
  bool readBody(std::size_t length, std::string* body);
};

#endif  // WORKSHOP_SERVER_CLUIMESSAGESTREAM_H_
