#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "simulator/boundary.h"

namespace simulator {

/// A file system in memory with one drive, "C:", that paths without a drive mean as well. Files
/// hold ANSI bytes; names are found without regard to case.
class SimFiles : public platform::Files {
 public:
  explicit SimFiles(Boundary& boundary) : boundary_(boundary) {}

  /// Nothing also when an observer fails it.
  std::optional<std::u16string> commonFilesFolder() override;
  /// What follows the last backslash counts as a file name and is left out. False also when an
  /// observer fails it.
  bool makeSureDirectoryPathExists(std::u16string_view folder) override;
  /// Raises error 76 when the folder is missing, 70 when the file can't be written.
  void append(std::u16string_view path, std::u16string_view text) override;

  // Not crossings: for the program that plays the machine.

  void setCommonFilesFolder(std::optional<std::u16string> folder) { common_ = std::move(folder); }
  /// From now on no folder can be made, or no file be written.
  void setFoldersFail(bool fail) { foldersFail_ = fail; }
  void setWritesFail(bool fail) { writesFail_ = fail; }
  /// Called after each append, with path and text as they were given.
  using Listener = std::function<void(std::u16string_view path, std::u16string_view text)>;
  void setListener(Listener listener) { listener_ = std::move(listener); }

  bool folderExists(std::u16string_view folder) const;
  /// Whether an append to a new file would succeed in the folder once it was made.
  bool canWrite(std::u16string_view folder) const {
    return !writesFail_ && (folderExists(folder) || !foldersFail_);
  }
  /// False when the path leads through a file or is none of this machine.
  bool makeFolder(std::u16string_view folder);
  /// Puts a file there, making its folders; replaces one that is there.
  void put(std::u16string_view path, std::string bytes);
  void remove(std::u16string_view path);
  /// Nothing when there is no such file.
  std::optional<std::string> bytes(std::u16string_view path) const;
  std::optional<std::u16string> text(std::u16string_view path) const;
  /// Full paths of all files, in the order of the alphabet.
  std::vector<std::u16string> paths() const;

 private:
  struct File {
    std::u16string path;
    std::string bytes;
  };

  Boundary& boundary_;
  std::optional<std::u16string> common_ = u"C:\\Program Files\\Common Files";
  std::set<std::u16string> folders_;      // folded full paths without a final backslash
  std::map<std::u16string, File> files_;  // by folded full path
  Listener listener_;
  bool foldersFail_ = false;
  bool writesFail_ = false;
};

}  // namespace simulator
