// File names between the bytes that the file system has and UTF-8, by the locale of the process.
// Bytes that are no text of that locale cross and come back as they were.

#ifndef PLATFORM_ENGINE_YSEFILENAME_H_
#define PLATFORM_ENGINE_YSEFILENAME_H_

#include <string>

namespace yse {

// The encoding of the locale; UTF-8 in a process that has set none.
const char* LocaleEncoding();

std::string Utf8FromFileName(const std::string& name);
std::string FileNameFromUtf8(const std::string& utf8);

}  // namespace yse

#endif  // PLATFORM_ENGINE_YSEFILENAME_H_
