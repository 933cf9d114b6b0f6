#include "standin/outlook/Libraries.h"

#include "standin/libraries/environment.h"
#include "windows/com/text.h"
#include "windows/services/Files.h"

namespace standin {
namespace {

using scenario::HelperState;
using scenario::Mistake;
using windows::wide;

bool exists(const std::u16string& path) {
  return GetFileAttributesW(wide(path)) != INVALID_FILE_ATTRIBUTES;
}

/// Whether the file is a stand-in, left behind by a program that was killed.
bool isStandin(const std::u16string& path) {
  const HMODULE library = LoadLibraryExW(wide(path), nullptr, DONT_RESOLVE_DLL_REFERENCES);
  if (!library) return false;
  const bool marked = GetProcAddress(library, StandinMark) != nullptr;
  FreeLibrary(library);
  return marked;
}

std::u16string loggingTarget() {
  const std::u16string folder =
      windows::Files().commonFilesFolder().value_or(u"c:\\Programme\\Gemeinsame Dateien");
  return folder + u"\\K9T\\K9tLogVB.dll";
}

}  // namespace

void endLibraries() {
  for (const wchar_t* name : {L"k9tlogvb.dll", L"cxmapihlp.dll"}) {
    const HMODULE library = GetModuleHandleW(name);
    auto* const mark = library ? GetProcAddress(library, StandinMark) : nullptr;
    if (!mark) continue;
    reinterpret_cast<void (*)()>(reinterpret_cast<void*>(mark))();
    while (GetModuleHandleW(name) == library) FreeLibrary(library);
  }
}

std::u16string programFolder() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::u16string_view whole = windows::utf16(path);
  return std::u16string(whole.substr(0, whole.rfind(u'\\')));
}

std::u16string fullPath(const std::string& path) {
  wchar_t full[MAX_PATH] = {};
  if (!path.empty()) GetFullPathNameW(wide(windows::fromAnsi(path)), MAX_PATH, full, nullptr);
  return std::u16string(windows::utf16(full));
}

Libraries::Libraries(std::u16string source, const std::u16string& mailbox)
    : source_(std::move(source)),
      logging_{loggingTarget()},
      mapiHelper_{programFolder() + u"\\cxmapihlp.dll"} {
  SetEnvironmentVariableW(MailboxVariable, wide(mailbox));
}

Libraries::~Libraries() {
  for (Place* place : {&logging_, &mapiHelper_})
    if (place->ours) DeleteFileW(wide(place->target));
}

void Libraries::put(Place& place, std::u16string_view file) {
  const std::u16string from = source_ + u"\\" + std::u16string(file);
  if (source_.empty() || !exists(from))
    throw Mistake("the library's stand-in is not there; name its folder with --libraries");
  take(place);
  if (isStandin(place.target)) DeleteFileW(wide(place.target));
  if (exists(place.target)) throw Mistake("a library of that name is installed");
  windows::Files().makeSureDirectoryPathExists(
      place.target.substr(0, place.target.rfind(u'\\') + 1));
  if (!CopyFileW(wide(from), wide(place.target), TRUE))
    throw Mistake("the library's stand-in can't be copied to where it is looked for");
  place.ours = true;
}

void Libraries::take(Place& place) {
  if (!place.ours) return;
  // One that is in use can't go away.
  if (!DeleteFileW(wide(place.target)))
    throw Mistake("the library is in use; it can be taken away when Outlook does not run");
  place.ours = false;
}

void Libraries::setLogging(bool present) {
  if (present)
    put(logging_, u"K9tLogVB.dll");
  else
    take(logging_);
}

void Libraries::setMapiHelper(HelperState state) {
  switch (state) {
    case HelperState::Present: return put(mapiHelper_, u"cxmapihlp.dll");
    case HelperState::Failing: return put(mapiHelper_, u"cxmapihlp-failing.dll");
    case HelperState::Missing: return take(mapiHelper_);
  }
}

}  // namespace standin
