// Reading input line by line.

#ifndef PROGRAM_CLUISOURCE_H_
#define PROGRAM_CLUISOURCE_H_

#include <string>

enum class CluiRead { Line, End, Failed };

// One input: a file, standard input, or a text. Reads in pieces: what is held is a piece and the
// line being read.
class CluiSource {
 public:
  CluiSource() = default;
  ~CluiSource();
  CluiSource(const CluiSource&) = delete;
  CluiSource& operator=(const CluiSource&) = delete;

  // A file of that name, or standard input for "-". False, with a reason in `error`.
  bool openFile(const std::string& name, std::string& error);
  void openText(std::string text);

  // The next line, always with a newline at its end. Failed comes with a reason in `error`; End
  // comes too when the run was interrupted while it waited.
  CluiRead next(std::string& line, std::string& error);

  // Bytes of the lines answered so far, and bytes of the file; 0 for what is no regular file.
  long long bytesRead() const { return bytesRead_; }
  long long bytesOfFile() const { return bytesOfFile_; }

 private:
  int file_ = -1;
  bool ended_ = true;         // nothing more can be had from the file
  std::string piece_;         // what was read last
  std::size_t position_ = 0;  // what of it has been answered
  long long bytesRead_ = 0;
  long long bytesOfFile_ = 0;

  bool fill(std::string& error);
};

#endif  // PROGRAM_CLUISOURCE_H_
