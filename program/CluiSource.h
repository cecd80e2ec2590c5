// Reads input line by line.

#ifndef PROGRAM_CLUISOURCE_H_
#define PROGRAM_CLUISOURCE_H_

#include <string>

enum class CluiRead { Line, End, Failed };

// One input: a file, standard input, or a text. Holds no more in memory than one piece of the file
// and the current line.
class CluiSource {
 public:
  CluiSource() = default;
  ~CluiSource();
  CluiSource(const CluiSource&) = delete;
  CluiSource& operator=(const CluiSource&) = delete;

  // Opens a file, or standard input for "-". Returns false, with a reason in `error`, on failure.
  bool openFile(const std::string& name, std::string& error);
  void openText(std::string text);

  // Reads the next line; it always ends with a newline. Failed sets `error`; End is also returned
  // when the run is interrupted during the wait for input.
  CluiRead next(std::string& line, std::string& error);

  // Bytes of the lines returned so far, and of the whole file; the latter is 0 unless it is a
  // regular file.
  long long bytesRead() const { return bytesRead_; }
  long long bytesOfFile() const { return bytesOfFile_; }

 private:
  int file_ = -1;
  bool ended_ = true;         // the file has been read to its end
  std::string piece_;         // the bytes read last
  std::size_t position_ = 0;  // in piece_, after the last line returned
  long long bytesRead_ = 0;
  long long bytesOfFile_ = 0;

  bool fill(std::string& error);
};

#endif  // PROGRAM_CLUISOURCE_H_
