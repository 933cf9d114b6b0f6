#include "simulator/machine/SimFacts.h"

#include "platform/velnor.h"
#include "simulator/caseless.h"
#include "simulator/machine/ansi.h"

namespace simulator {
namespace {

constexpr std::u16string_view OutlookWindow = u"rctrl_renwnd32";
constexpr std::u16string_view MapiPath = u"C:\\WINDOWS\\system32\\cxmapihlp.dll";

}  // namespace

std::optional<std::string> SimFacts::content(std::u16string_view path) {
  if (auto bytes = machine_.files.bytes(path)) return bytes;
  const bool client = machine_.client.installed() && sameName(path, machine_.client.path());
  const bool helper = machine_.mapiHelper.present() && sameName(path, MapiPath);
  if (client || helper || machine_.loggingLibrary.presentAt(path)) return programImage(true, 3);
  return std::nullopt;
}

std::optional<std::uint64_t> SimFacts::fileSize(std::u16string_view path) {
  const auto bytes = content(path);
  return bytes ? std::optional<std::uint64_t>(bytes->size()) : std::nullopt;
}

std::string SimFacts::lastBytes(std::u16string_view path, std::size_t most) {
  const auto bytes = content(path).value_or(std::string());
  return bytes.size() > most ? bytes.substr(bytes.size() - most) : bytes;
}

std::u16string SimFacts::fromAnsi(std::string_view bytes) {
  return simulator::fromAnsi(bytes);
}

std::u16string SimFacts::findLibrary(std::u16string_view name) {
  const bool found = machine_.mapiHelper.present() && MapiPath.ends_with(name);
  return found ? std::u16string(MapiPath) : std::u16string();
}

bool SimFacts::writable(std::u16string_view path) {
  return machine_.files.canWrite(path.substr(0, path.rfind(u'\\') + 1));
}

std::u16string SimFacts::commonFilesFolder() {
  return machine_.files.commonFilesFolder().value_or(u"");
}

bool SimFacts::windowExists(std::u16string_view windowClass) {
  if (sameName(windowClass, OutlookWindow)) return outlookRuns_;
  return sameName(windowClass, velnor::MainWindowClass) && machine_.client.hasWindow();
}

platform::ObjectState SimFacts::object(std::u16string_view, std::u16string_view) {
  if (!machine_.client.answers()) return platform::ObjectState::Busy;
  return machine_.client.hasObject() ? platform::ObjectState::Runs : platform::ObjectState::None;
}

std::int32_t SimFacts::userLanguage() {
  return machine_.language.userDefaultLangId();
}

std::string programImage(bool is32Bit, std::uint16_t major) {
  // The old head, which tells where the new one lies, the new one, and the fixed part of a version.
  std::string image(0x40, '\0');
  image.replace(0, 2, "MZ");
  image[0x3C] = 0x40;
  image += std::string("PE\0\0", 4) + (is32Bit ? "\x4C\x01" : "\x64\x86") + std::string(8, '\0');
  image += std::string("\xBD\x04\xEF\xFE\0\0\1\0\0\0", 10);
  image += static_cast<char>(major & 0xFF);
  image += static_cast<char>(major >> 8);
  return image + std::string(4, '\0');
}

void installAddin(Machine& machine) {
  using enum platform::RegistryRoot;
  constexpr std::u16string_view Folder = u"C:\\Program Files\\Velnor Outlook AddIn\\";
  constexpr std::u16string_view Outlook =
      u"C:\\Program Files\\Microsoft Office\\OFFICE11\\OUTLOOK.EXE";
  const std::u16string file = std::u16string(Folder) + u"cxolcom.dll";
  const std::u16string entry =
      u"Software\\Microsoft\\Office\\Outlook\\Addins\\VelnorOutlookCOMAddIn.Connect";
  const std::u16string id = u"{873C647F-502B-4863-9F93-A83F43C0E12B}";
  auto& registry = machine.registry;
  machine.files.put(file, programImage(true, 1));
  machine.files.put(Outlook, programImage(true, 11));
  registry.setString(LocalMachine,
                     u"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\OUTLOOK.EXE", u"",
                     Outlook);
  registry.setString(ClassesRoot, u"VelnorOutlookCOMAddIn.Connect\\CLSID", u"", id);
  for (const std::u16string& key :
       {u"CLSID\\" + id + u"\\InprocServer32",
        std::u16string(u"CLSID\\{2A15A0D6-A49C-44AC-B751-B0C97D0F249F}\\InprocServer32"),
        std::u16string(u"TypeLib\\{303DF69F-DB02-48B8-B932-1DC32C79BDCC}\\1.0\\0\\win32")}) {
    registry.setString(ClassesRoot, key, u"", file);
  }
  registry.setString(CurrentUser, entry, u"FriendlyName", u"Velnor Outlook AddIn");
  registry.setString(CurrentUser, entry, u"Description", u"Velnor Outlook CTI Control");
  registry.setDword(CurrentUser, entry, u"LoadBehavior", 3);
}

}  // namespace simulator
