#include "packaging/settings/generated.h"

#include "packaging/settings/pieces.h"
#include "simulator/data/Utf8.h"

namespace packaging {

std::string text(const resources::BilingualText& text, Language language) {
  return simulator::toUtf8(language == Language::English ? text.english : text.german);
}

std::string rootName(platform::RegistryRoot root) {
  switch (root) {
    case platform::RegistryRoot::ClassesRoot: return "HKEY_CLASSES_ROOT";
    case platform::RegistryRoot::CurrentUser: return "HKEY_CURRENT_USER";
    default: return "HKEY_LOCAL_MACHINE";
  }
}

std::string keyOf(const resources::Setting& setting) {
  std::u16string key(setting.place.key);
  if (key.ends_with(u'\\')) key += resources::HostProgram;
  return simulator::toUtf8(key);
}

std::string nameOf(const resources::Setting& setting) {
  return simulator::toUtf8(setting.place.name);
}

std::string windowsLines(const std::string& lines) {
  std::string result;
  for (const char c : lines) {
    if (c == '\n') result += '\r';
    result += c;
  }
  return result;
}

Files generatedFiles() {
  Files files;
  addPolicies(files);
  addDocuments(files);
  return files;
}

}  // namespace packaging
