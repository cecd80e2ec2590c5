// What it costs to play a recording, beside what its lines cost when they are given to `interpret`:
// the rest is the reader's. And the memory of it, which is that of the longest line.
//
//   playback_bench [COMMANDS]     1,000,000 unless told
//
// Times are processor times of the thread, medians of seven rounds in which each takes its turn.
// Peaks are the most bytes on the heap at a time beyond those before the playback.

#include <time.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "bench/DraftingParser.h"
#include "bench/Heap.h"
#include "bench/TemporaryFile.h"

namespace {

constexpr int Rounds = 7;
constexpr long WarmBytes = 10000;
constexpr double MostOfReader = 0.2;

double Now() {
  timespec time = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// Speaks as somebody would draw, until so many commands are recorded.
void Record(const std::string& path, long commands) {
  const DraftingText text(WarmBytes);
  DraftingParser parser;
  parser.startLogging(path.c_str(), 0);
  while (parser.commands() < commands) parser.interpret(text.text.c_str());
}

// The lines of a file one behind the other, with a NUL in the place of each end of line: read as
// the reader's are, without a cache miss for each.
std::string LinesOf(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  std::string lines = text.str();
  std::replace(lines.begin(), lines.end(), '\n', '\0');
  return lines;
}

// A parser that has read before.
struct Warm : DraftingParser {
  Warm() { interpret(DraftingText(WarmBytes).text.c_str()); }
};

void CompareRates(long commands) {
  const TemporaryFile log;
  Record(log.path(), commands);
  const std::string lines = LinesOf(log.path());
  const char* end = lines.data() + lines.size();
  std::vector<double> played;
  std::vector<double> given;
  std::vector<double> shares;
  Warm player;
  Warm taker;
  for (int round = 0; round < Rounds; ++round) {
    const double begin = Now();
    player.playbackFromLog(log.path().c_str());
    const double middle = Now();
    for (const char* line = lines.data(); line != end; line += std::strlen(line) + 1) {
      taker.interpret(line);
    }
    played.push_back(middle - begin);
    given.push_back(Now() - middle);
    shares.push_back(1 - given.back() / played.back());
  }
  const auto bytes = static_cast<double>(lines.size());
  const auto count = static_cast<double>(std::count(lines.begin(), lines.end(), '\0'));
  std::printf("%ld commands in %.0f lines, %.1f MB%s\n", taker.commands() / Rounds, count,
              bytes / 1e6, player.commands() == taker.commands() ? "" : ": not all were played");
  const auto print = [&](const char* what, const std::vector<double>& times) {
    const double time = Median(times);
    std::printf("  %-28s %10.0f lines/s %8.1f MB/s\n", what, count / time, bytes / time / 1e6);
  };
  print("played", played);
  print("the lines to interpret", given);
  const double share = Median(shares);
  std::printf("  the reader's share           %9.1f %%%s\n", share * 100,
              share > MostOfReader ? " above" : "");
}

void PrintPeak(const char* what, const std::string& path, double longest) {
  Warm parser;
  const HeapPeak peak;
  const double begin = Now();
  const bool isPlayed = parser.playbackFromLog(path.c_str()) != 0;
  std::printf("  %-44s %9.1f kB %7.1f bytes a byte of its longest line %6.2f s%s\n", what,
              static_cast<double>(peak.bytes()) / 1e3, static_cast<double>(peak.bytes()) / longest,
              Now() - begin, isPlayed ? "" : ": not played");
}

std::string Many(const char* piece, std::size_t bytes) {
  std::string text;
  while (text.size() < bytes) text += piece;
  return text;
}

void PrintPeaks(long commands) {
  std::printf("memory\n");
  const TemporaryFile file;
  for (const long count : {commands / 100, commands}) {
    Record(file.path(), count);
    const std::string what = std::to_string(count) + " commands";
    PrintPeak(what.c_str(), file.path(), 1100);
  }
  const struct {
    const char* what;
    const char* begin;
    const char* piece;
  } files[] = {
      {"words", "", "redraw undo "},
      {"a quote that is not closed", "layer:\"", "walls \n"},
      {"a string", "layer:\"\" layer:\"", "wall\x95\x5C "},
      {"a comment", "# ", "and so on "},
      {"junk", "", "\xFF\x01\x83\n\x95\"\\\"{ \n"},
      {"backslashes", "", "\\"},
  };
  for (const std::size_t megabytes : {1, 10, 100}) {
    for (const auto& f : files) {
      const std::size_t bytes = megabytes * 1000000;
      std::ofstream(file.path()) << f.begin << Many(f.piece, bytes);
      const std::string what = std::string(f.what) + ", " + std::to_string(megabytes) + " MB";
      PrintPeak(what.c_str(), file.path(), static_cast<double>(bytes));
    }
  }
}

}  // namespace

int main(int count, char** arguments) {
  const long commands = count > 1 ? std::atol(arguments[1]) : 1000000;
  CompareRates(commands);
  PrintPeaks(commands);
  return 0;
}
