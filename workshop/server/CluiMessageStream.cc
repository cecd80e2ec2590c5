#include "workshop/server/CluiMessageStream.h"

#include <strings.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>

namespace {

constexpr std::string_view LengthName = "content-length:";

// The value of the header line Content-Length; false when there is none that is a number.
bool FindLength(std::string_view header, std::size_t& length) {
  while (!header.empty()) {
    const std::size_t end = std::min(header.find('\n'), header.size() - 1);
    std::string_view line = header.substr(0, end);
    header.remove_prefix(end + 1);
    if (line.size() < LengthName.size()) continue;
    if (strncasecmp(line.data(), LengthName.data(), LengthName.size()) != 0) continue;
    line.remove_prefix(LengthName.size());
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    line = line.substr(0, line.find_last_not_of(" \t\r") + 1);
    const auto result = std::from_chars(line.data(), line.data() + line.size(), length);
    return result.ec == std::errc() && result.ptr == line.data() + line.size();
  }
  return false;
}

}  // namespace

CluiMessageStream::Read CluiMessageStream::read(std::string& body) {
  std::string header;
  if (!readHeader(header)) return Read::End;
  std::size_t length = 0;
  if (!FindLength(header, length)) {
    body = "a message has no Content-Length";
    return Read::Broken;
  }
  if (length <= MostBytes) return readBody(length, &body) ? Read::Message : Read::End;
  body = "a message is too long";
  return readBody(length, nullptr) ? Read::Broken : Read::End;
}

// Reads up to the next blank line, which is left out.
bool CluiMessageStream::readHeader(std::string& header) {
  std::size_t line = begin_;  // the start of the present line
  std::size_t end = begin_;
  for (;; ++end) {
    if (end - begin_ > MostHeaderBytes) return false;
    if (end == buffer_.size()) {
      line -= begin_;
      end -= begin_;
      if (!fill()) return false;
    }
    if (buffer_[end] != '\n') continue;
    const bool isBlank = end == line || (end == line + 1 && buffer_[line] == '\r');
    const bool isFirst = line == begin_;
    if (isBlank && !isFirst) break;
    if (isBlank) begin_ = end + 1;  // between two messages
    line = end + 1;
  }
  header.assign(buffer_, begin_, line - begin_);
  begin_ = end + 1;
  return true;
}

// Without a body, the bytes are passed over.
bool CluiMessageStream::readBody(std::size_t length, std::string* body) {
  if (body != nullptr) body->clear();
  while (length > 0) {
    if (begin_ == buffer_.size() && !fill()) return false;
    const std::size_t size = std::min(length, buffer_.size() - begin_);
    if (body != nullptr) body->append(buffer_, begin_, size);
    begin_ += size;
    length -= size;
  }
  return true;
}

// Appends to the buffer, after dropping what was used: begin_ is 0 afterwards. False at the end.
bool CluiMessageStream::fill() {
  buffer_.erase(0, begin_);
  begin_ = 0;
  const std::size_t size = buffer_.size();
  buffer_.resize(size + 64 * 1024);
  ssize_t count = 0;
  do {
    count = ::read(in_, buffer_.data() + size, buffer_.size() - size);
  } while (count < 0 && errno == EINTR);
  buffer_.resize(size + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  return count > 0;
}

bool CluiMessageStream::write(std::string_view body) {
  std::string text = "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n";
  text += body;
  for (std::size_t done = 0; done < text.size();) {
    const ssize_t count = ::write(out_, text.data() + done, text.size() - done);
    if (count > 0) done += static_cast<std::size_t>(count);
    if (count < 0 && errno != EINTR) return false;
  }
  return true;
}
