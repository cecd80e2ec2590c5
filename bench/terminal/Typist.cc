#include "bench/terminal/Typist.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "bench/Measure.h"

namespace {

constexpr int Width = 120;
constexpr int Height = 40;
constexpr double MostMedian = 1;  // milliseconds
constexpr double MostHigh = 5;

void Expect(bool isRight, const std::string& what) {
  if (isRight) return;
  std::fprintf(stderr, "wrong response: %s\n", what.c_str());
  std::exit(1);
}

YcluiCapabilities Capabilities() {
  setenv("TERM", "xterm-256color", 1);
  unsetenv("NO_COLOR");
  YcluiCapabilities capabilities = YcluiCapabilities::Read();
  Expect(!capabilities.colours.empty(), "no description of xterm-256color");
  return capabilities;
}

}  // namespace

Typist::Typist(YcluiParser& parser)
    : parser_(parser),
      capabilities_(Capabilities()),
      screen_(capabilities_, "UTF-8"),
      keys_(YcluiKeyTable(), '\x7F', "UTF-8"),
      history_(""),
      editor_(parser, history_) {
  screen_.resize(Width, Height);
  begin();
}

void Typist::begin() {
  screen_.forget();
  editor_.begin();
  respond();
}

void Typist::clear() {
  editor_.begin();
  respond();
}

// Returns the number of bytes that are to be written.
std::size_t Typist::respond() {
  YcluiPicture picture = editor_.picture();
  editor_.addRows(picture, screen_.width(), screen_.rowsBeside(picture));
  screen_.show(std::move(picture));
  return screen_.takeOutput().size();
}

YcluiLineEditor::Request Typist::handle(const std::string& bytes) {
  YcluiKey key;
  keys_.feed(bytes);
  keys_.settle();
  Expect(keys_.next(key), "no key");
  const YcluiLineEditor::Request request = editor_.handle(key);
  if (editor_.rings()) screen_.ring();
  return request;
}

void Typist::press(const std::string& kind, const std::string& key) {
  const double start = ProcessorSeconds();
  const YcluiLineEditor::Request request = handle(key);
  const std::size_t bytes = respond();
  timesOf(kind).push_back((ProcessorSeconds() - start) * 1e3);
  Expect(request == YcluiLineEditor::Request::None && bytes > 0, kind + ", " + line());
}

void Typist::type(const std::string& kind, const std::string& letters) {
  for (const char letter : letters) press(kind, std::string(1, letter));
}

void Typist::send(const std::string& kind) {
  const double start = ProcessorSeconds();
  const YcluiLineEditor::Request request = handle("\r");
  screen_.show(editor_.picture());
  screen_.leave();
  const std::string text = line() + "\n";
  parser_.interpret(text.c_str());
  begin();
  timesOf(kind).push_back((ProcessorSeconds() - start) * 1e3);
  Expect(request == YcluiLineEditor::Request::Line, kind + ", " + text);
}

void Typist::expectRows(bool areThere) const {
  Expect(editor_.hasRows() == areThere, "rows below " + line());
}

std::vector<double>& Typist::timesOf(const std::string& kind) {
  for (auto& [name, times] : milliseconds_) {
    if (name == kind) return times;
  }
  return milliseconds_.emplace_back(kind, std::vector<double>()).second;
}

void Typist::addTo(Results& results) const {
  for (auto [kind, times] : milliseconds_) {
    std::sort(times.begin(), times.end());
    const double median = times[times.size() / 2];
    const double high = times[times.size() * 99 / 100];
    const auto add = [&](const char* column, double value) {
      results.add("terminal", kind, "", column, value);
    };
    add("keys", static_cast<double>(times.size()));
    add("median ms", median);
    add("99 % ms", high);
    add("max ms", times.back());
    results.atMost(kind + ", median ms", median, MostMedian);
    results.atMost(kind + ", 99 % ms", high, MostHigh);
  }
}
