#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulator/player/Stage.h"
#include "standin/client/LineFile.h"

namespace standin {

/// One line of the add-in's trace.
struct TraceEntry {
  scenario::Note note;
  /// Size of the file once the entry was written.
  std::uint64_t fileSize = 0;
};

/// The lines that the add-in writes to its own trace file from now on. The file may come and go;
/// each entry is written at once.
class TraceFile {
 public:
  TraceFile();
  /// The entries that were added since the last call.
  std::vector<TraceEntry> read();
  const std::u16string& path() const { return path_; }

 private:
  std::u16string path_;
  std::uint64_t position_ = 0;
};

/// The lines that the logging library's stand-in gets from now on.
class LibraryLog {
 public:
  /// Tells the library where to write.
  LibraryLog();
  ~LibraryLog();
  LibraryLog(const LibraryLog&) = delete;
  LibraryLog& operator=(const LibraryLog&) = delete;

  std::vector<TraceEntry> read();
  const std::u16string& path() const { return lines_.path(); }

 private:
  LineReader lines_;
  std::uint64_t position_ = 0;
};

}  // namespace standin
