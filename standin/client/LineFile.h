#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Files in which one program writes what happened and another one reads it: lines of fields, in
/// UTF-8. Fields may hold any text.
namespace standin {

using Fields = std::vector<std::u16string>;

std::string toUtf8(std::u16string_view text);
std::u16string fromUtf8(std::string_view bytes);

/// The local time as "14:05:09.042".
std::u16string timeOfDay();

/// Bytes of a file; 0 for one that is not there.
std::uint64_t fileSize(const std::u16string& path);
/// All of a file; empty for one that can't be read.
std::string readFile(const std::u16string& path);

/// Appends one line, and is done with it when it returns. False when the file can't be written.
bool appendLine(const std::u16string& path, std::span<const std::u16string> fields);

/// Reads a file of lines as it grows. A file that is not there has no lines; one that became
/// shorter is a new one.
class LineReader {
 public:
  explicit LineReader(std::u16string path) : path_(std::move(path)) {}
  /// The whole lines that were added since the last time.
  std::vector<Fields> read();
  const std::u16string& path() const { return path_; }

 private:
  std::u16string path_;
  std::uint64_t offset_ = 0;
};

}  // namespace standin
