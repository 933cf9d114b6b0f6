#include <span>

#include "doctor/Examiner.h"
#include "platform/conversions.h"

namespace doctor {
namespace {

constexpr std::u16string_view ProgId = u"VelnorOutlookCOMAddIn.Connect";
constexpr std::u16string_view AddinFile = u"cxolcom.dll";
constexpr std::u16string_view EntryKey =
    u"Software\\Microsoft\\Office\\Outlook\\Addins\\VelnorOutlookCOMAddIn.Connect";
constexpr std::u16string_view LoadBehavior = u"LoadBehavior";
constexpr std::int32_t LoadAtStart = 3;
/// Where the add-in's file stands: for its entry class, and besides.
constexpr std::u16string_view EntryServer =
    u"CLSID\\{873C647F-502B-4863-9F93-A83F43C0E12B}\\InprocServer32";
constexpr std::u16string_view CommandServer =
    u"CLSID\\{2A15A0D6-A49C-44AC-B751-B0C97D0F249F}\\InprocServer32";
constexpr std::u16string_view TypeLibrary =
    u"TypeLib\\{303DF69F-DB02-48B8-B932-1DC32C79BDCC}\\1.0\\0\\win32";

}  // namespace

bool isOwnDisabledItem(const platform::RegistryValue& value) {
  // Kind, lengths of path and name in bytes, path, name.
  constexpr std::size_t Head = 12;
  constexpr std::uint32_t KindAddin = 1;
  const std::span bytes(value.bytes);
  if (bytes.size() < Head || platform::numberOf(bytes.first(4)) != KindAddin) return false;
  const std::uint64_t length = platform::numberOf(bytes.subspan(4, 4));
  if (length > bytes.size() - Head) return false;
  std::u16string path;
  for (std::size_t at = Head; at + 1 < Head + length; at += 2) {
    const auto unit = static_cast<char16_t>(platform::numberOf(bytes.subspan(at, 2)));
    if (unit == u'\0') break;
    path.push_back(unit);
  }
  return cxol::equalsIgnoringCase(path.substr(path.rfind(u'\\') + 1), AddinFile);
}

bool Examiner::isThere(std::u16string_view path, Text remedy) {
  if (facts_.fileSize(path)) return true;
  found(Verdict::Failed, text(Text::FileMissing, path), remedy);
  return false;
}

std::optional<Program> Examiner::program32(std::u16string_view path, Text remedy) {
  if (!isThere(path, remedy)) return std::nullopt;
  auto program = programAt(facts_, path);
  if (program.is32Bit) return program;
  found(Verdict::Failed, text(Text::FileNot32, path), remedy);
  return std::nullopt;
}

void Examiner::outlook() {
  const auto path = std::u16string(cxol::programOf(
      textAt(registry_, LocalMachine,
             u"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\OUTLOOK.EXE", u"")));
  if (path.empty()) {
    return found(Verdict::Failed, text(Text::OutlookMissing), Text::InstallOutlook);
  }
  outlookFolder_ = path.substr(0, path.rfind(u'\\') + 1);
  const auto program = program32(path, Text::InstallOutlook);
  if (!program) return;
  constexpr int Outlook2000 = 9;
  constexpr int Outlook2007 = 12;
  if (program->major < Outlook2000 || program->major > Outlook2007) {
    return found(Verdict::Odd, text(Text::OutlookVersion, program->version), Text::InstallOutlook);
  }
  well(Text::OutlookWell, program->version, path);
}

void Examiner::addin() {
  const auto file = textAt(registry_, ClassesRoot, EntryServer, u"");
  const auto classOfName = textAt(registry_, ClassesRoot, cxol::concat(ProgId, u"\\CLSID"), u"");
  if (file.empty() ||
      !cxol::equalsIgnoringCase(cxol::concat(u"CLSID\\", classOfName, u"\\InprocServer32"),
                                EntryServer)) {
    return found(Verdict::Failed, text(Text::AddinMissing), Text::Reinstall);
  }
  if (const auto program = program32(file, Text::Reinstall)) {
    well(Text::AddinWell, file, program->version);
  }
  leftovers(file);
}

/// Every other place must name the same file. What a user's own registration says hides what the
/// machine's does.
void Examiner::leftovers(std::u16string_view file) {
  constexpr std::u16string_view Classes = u"Software\\Classes\\";
  const auto compare = [&](platform::RegistryRoot root, std::u16string key) {
    const auto other = textAt(registry_, root, key, u"");
    if (other.empty() || cxol::equalsIgnoringCase(other, file)) return;
    found(Verdict::Odd, text(Text::Leftover, placeName(root, key, u""), other), Text::Reinstall);
  };
  compare(ClassesRoot, std::u16string(CommandServer));
  compare(ClassesRoot, std::u16string(TypeLibrary));
  compare(CurrentUser, cxol::concat(Classes, EntryServer));
  compare(LocalMachine, cxol::concat(Classes, EntryServer));
}

void Examiner::loading() {
  // The user's choice counts before the machine's.
  auto root = CurrentUser;
  auto value = cxol::RegOp(registry_, root, EntryKey).value(LoadBehavior);
  if (!value) {
    root = LocalMachine;
    value = cxol::RegOp(registry_, root, EntryKey).value(LoadBehavior);
  }
  if (!value) return found(Verdict::Failed, text(Text::LoadNowhere), Text::Reinstall);
  const auto shown = value->toText();
  const auto number = automation::parseNumber(shown);
  if (number == LoadAtStart) return well(Text::LoadWell, shown, hiveName(root));
  // Loaded all the same, but when one of its buttons is pressed, which is not there yet.
  constexpr std::int32_t OnDemand = 8;
  const bool sometimes = number && *number >= OnDemand;
  auto what = text(sometimes ? Text::LoadOdd : Text::LoadOff, shown, hiveName(root));
  if (root == CurrentUser) {
    report_.cures.push_back(
        {what, std::u16string(EntryKey), std::u16string(LoadBehavior), LoadAtStart});
  }
  found(sometimes ? Verdict::Odd : Verdict::Failed, std::move(what),
        root == CurrentUser ? Text::PutRight : Text::AskAdministrator);
}

void Examiner::disabledItems() {
  bool none = true;
  for (const std::u16string_view version : {u"10.0", u"11.0", u"12.0"}) {
    const auto key = cxol::concat(u"Software\\Microsoft\\Office\\", version,
                                  u"\\Outlook\\Resiliency\\DisabledItems");
    for (const auto& name : registry_.valueNames(CurrentUser, key)) {
      const auto value = registry_.read(CurrentUser, key, name);
      if (!value || !isOwnDisabledItem(*value)) continue;
      none = false;
      auto what = text(Text::Disabled, version);
      report_.cures.push_back({what, key, name, std::nullopt});
      found(Verdict::Failed, std::move(what), Text::PutRight);
    }
  }
  if (none) well(Text::DisabledNot);
}

}  // namespace doctor
