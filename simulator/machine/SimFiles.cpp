#include "simulator/machine/SimFiles.h"

#include <cstddef>
#include <utility>

#include "simulator/caseless.h"
#include "simulator/machine/ansi.h"

namespace simulator {
namespace {

constexpr std::u16string_view Drive = u"C:";

/// The full path, folded and without empty parts: "c:\a\b". Nothing for a path that is none of this
/// machine.
std::optional<std::u16string> fullPath(std::u16string_view path) {
  if (path.empty() || path.starts_with(u"\\\\")) return std::nullopt;
  if (path.size() >= Drive.size() && path[1] == u':') {
    if (!sameName(path.substr(0, Drive.size()), Drive)) return std::nullopt;
    path.remove_prefix(Drive.size());
  }
  std::u16string full = folded(Drive);
  while (!path.empty()) {
    const std::size_t end = path.find(u'\\');
    if (end != 0) (full += u'\\') += folded(path.substr(0, end));
    path = end == std::u16string_view::npos ? std::u16string_view() : path.substr(end + 1);
  }
  return full;
}

std::u16string_view parentOf(std::u16string_view path) {
  const std::size_t end = path.rfind(u'\\');
  return path.substr(0, end == std::u16string_view::npos ? 0 : end);
}

bool isDrive(std::u16string_view full) {
  return sameName(full, Drive);
}

}  // namespace

std::optional<std::u16string> SimFiles::commonFilesFolder() {
  try {
    boundary_.service(u"Files", u"commonFilesFolder");
  } catch (const automation::Error&) {
    return std::nullopt;
  }
  return common_;
}

bool SimFiles::makeSureDirectoryPathExists(std::u16string_view folder) {
  try {
    boundary_.service(u"Files", u"makeSureDirectoryPathExists");
  } catch (const automation::Error&) {
    return false;
  }
  const std::size_t end = folder.rfind(u'\\');
  if (end == std::u16string_view::npos) return false;
  const std::u16string_view wanted = folder.substr(0, end + 1);
  return folderExists(wanted) || (!foldersFail_ && makeFolder(wanted));
}

void SimFiles::append(std::u16string_view path, std::u16string_view text) {
  boundary_.service(u"Files", u"append");
  const auto full = fullPath(path);
  if (!full || !folderExists(parentOf(*full))) {
    throw automation::Error(76, u"Path not found");
  }
  if (writesFail_ || folderExists(*full)) {
    throw automation::Error(automation::ErrorNumber::PermissionDenied);
  }
  File& file = files_.try_emplace(*full, File{std::u16string(path), {}}).first->second;
  file.bytes += toAnsi(text);
  if (listener_) listener_(path, text);
}

bool SimFiles::folderExists(std::u16string_view folder) const {
  const auto full = fullPath(folder);
  return full && (isDrive(*full) || folders_.contains(*full));
}

bool SimFiles::makeFolder(std::u16string_view folder) {
  const auto full = fullPath(folder);
  if (!full) return false;
  std::vector<std::u16string_view> missing;
  for (std::u16string_view path = *full; !isDrive(path); path = parentOf(path)) {
    if (files_.contains(std::u16string(path))) return false;
    missing.push_back(path);
  }
  folders_.insert(missing.begin(), missing.end());
  return true;
}

void SimFiles::put(std::u16string_view path, std::string bytes) {
  const auto full = fullPath(path);
  if (!full || !makeFolder(parentOf(*full)) || folderExists(*full)) {
    throw automation::Error(76, u"Path not found");
  }
  files_.insert_or_assign(*full, File{std::u16string(path), std::move(bytes)});
}

void SimFiles::remove(std::u16string_view path) {
  if (const auto full = fullPath(path)) files_.erase(*full);
}

std::optional<std::string> SimFiles::bytes(std::u16string_view path) const {
  const auto full = fullPath(path);
  if (!full) return std::nullopt;
  const auto found = files_.find(*full);
  if (found == files_.end()) return std::nullopt;
  return found->second.bytes;
}

std::optional<std::u16string> SimFiles::text(std::u16string_view path) const {
  const auto found = bytes(path);
  return found ? std::optional(fromAnsi(*found)) : std::nullopt;
}

std::vector<std::u16string> SimFiles::paths() const {
  std::vector<std::u16string> result;
  for (const auto& [full, file] : files_) result.push_back(file.path);
  return result;
}

}  // namespace simulator
