// Reading input line by line.

#ifndef PROGRAM_CLUISOURCE_H_
#define PROGRAM_CLUISOURCE_H_

#include <string>

enum class CluiRead { Line, End, Failed };

// One input: a file, standard input, or a text. Reads in pieces: a piece and the line being read
// are in memory.
class CluiSource {
 public:
  CluiSource() = default;
  ~CluiSource();
  CluiSource(const CluiSource&) = delete;
  CluiSource& operator=(const CluiSource&) = delete;

  // A file of that name, or standard input for "-". False, with a reason in `error`.
  bool openFile(const std::string& name, std::string& error);
  void openText(std::string text);

  // The next line, always with a newline at its end. Failed has a reason in `error`; End is also
  // returned when the run was interrupted while it waited.
  CluiRead next(std::string& line, std::string& error);

  // Bytes of the lines returned so far, and of the file; 0 for what is no regular file.
  long long bytesRead() const { return bytesRead_; }
  long long bytesOfFile() const { return bytesOfFile_; }

 private:
  int file_ = -1;
  bool ended_ = true;         // the file has been read to its end
  std::string piece_;         // the last bytes read
  std::size_t position_ = 0;  // how much of it has been returned
  long long bytesRead_ = 0;
  long long bytesOfFile_ = 0;

  bool fill(std::string& error);
};

#endif  // PROGRAM_CLUISOURCE_H_
