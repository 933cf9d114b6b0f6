#include "standin/proof/ProofDesk.h"

#include "simulator/data/MailboxReader.h"
#include "simulator/player/Text.h"
#include "standin/outlook/HostTypes.h"
#include "standin/outlook/Libraries.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace proof {
namespace {

using platform::RegistryRoot;
using scenario::toUtf8;

void describeHostOnce() {
  static const bool done = (standin::offerHostObjects(), true);
  static_cast<void>(done);
}

}  // namespace

const std::string_view MailboxText = R"({
  "user": "Anna Berger",
  "folders": [
    {"name": "Contacts", "holds": "contact", "items": [
      {"id": "one", "firstName": "Hans", "lastName": "Meier", "phones": {"work": "030 1"}},
      {"id": "two", "lastName": "Smith", "phones": {"work": "030 21", "home": "030 22"}}]},
    {"name": "Inbox", "holds": "mail", "items": [
      {"id": "mail", "subject": "Offer", "to": ["anna@berger.example"],
       "sender": {"name": "Smith, John", "addresses": ["js@example.net"],
                  "numbers": ["020 1", "020 2"]}}]}]})";

std::u16string beside(std::u16string_view file) {
  return standin::programFolder() + u"\\" + std::u16string(file);
}

RegisteredDll::RegisteredDll(std::u16string_view file) : path_(beside(file)) {
  EXPECT_EQ(call("DllRegisterServer"), S_OK);
}

RegisteredDll::~RegisteredDll() {
  EXPECT_EQ(call("DllUnregisterServer"), S_OK);
}

HRESULT RegisteredDll::call(const char* function) const {
  const HMODULE module = LoadLibraryW(windows::wide(path_));
  if (!module) return HRESULT_FROM_WIN32(GetLastError());
  auto* const address = reinterpret_cast<void*>(GetProcAddress(module, function));
  const HRESULT result = reinterpret_cast<HRESULT(WINAPI*)()>(address)();
  FreeLibrary(module);
  return result;
}

bool RegisteredDll::loaded() const {
  return GetModuleHandleW(windows::wide(path_)) != nullptr;
}

InstalledFile::InstalledFile(const std::u16string& source, std::u16string target)
    : target_(std::move(target)) {
  for (auto at = target_.find(u'\\', 3); at != std::u16string::npos;
       at = target_.find(u'\\', at + 1))
    CreateDirectoryW(windows::wide(target_.substr(0, at)), nullptr);
  EXPECT_TRUE(CopyFileW(windows::wide(source), windows::wide(target_), FALSE)) << toUtf8(target_);
}

InstalledFile::~InstalledFile() {
  EXPECT_TRUE(DeleteFileW(windows::wide(target_))) << "still in use: " << toUtf8(target_);
}

ProofDesk::ProofDesk()
    : client(beside(u"velnor-standin.exe")),
      session((describeHostOnce(), simulator::readMailbox(MailboxText, "mailbox")),
              std::u16string(AddinProgId)),
      watch_({[this](const auto& menu) { return onMenu ? onMenu(menu) : std::nullopt; },
              [this](std::u16string_view text) {
                boxes.push_back(toUtf8(text));
                if (onBox) onBox();
              }}) {
  client.install();
  setText(u"Software\\K9T\\Logging", u"LogFile", u"1");
  setNumber(u"Software\\K9T\\Localization\\LangID", u"LangID", 1033);
}

ProofDesk::~ProofDesk() {
  if (session.running()) quit();
  EXPECT_FALSE(dll.loaded()) << "the add-in is still in the process";
}

void ProofDesk::start(std::u16string_view version) {
  session.start(version);
  ASSERT_EQ(toUtf8(session.problem()), "");
  select(u"one");
}

void ProofDesk::quit() {
  session.quit();
}

void ProofDesk::select(const std::u16string& item) {
  host().switchFolder(1, item == u"mail" ? u"Inbox" : u"Contacts");
  host().select(1, std::vector<std::u16string>{item});
}

Lines ProofDesk::traced() {
  Lines lines;
  for (const standin::TraceEntry& entry : trace.read())
    lines.push_back(toUtf8(entry.note.level + u": " + entry.note.text));
  return lines;
}

Lines ProofDesk::complaints() {
  Lines lines = traced();
  std::erase_if(lines, [](const std::string& line) { return line.starts_with("Debug: "); });
  return lines;
}

Lines ProofDesk::told() {
  Lines lines;
  for (const standin::ToldLine& line : client.told()) lines.push_back(toUtf8(line.text));
  return lines;
}

void ProofDesk::setText(std::u16string_view key, std::u16string_view name,
                        std::u16string_view text) {
  registry.setText(RegistryRoot::CurrentUser, key, name, text);
}

void ProofDesk::setNumber(std::u16string_view key, std::u16string_view name, std::uint32_t number) {
  registry.setDword(RegistryRoot::CurrentUser, key, name, number);
}

Later::Later(std::uint32_t milliseconds, std::function<void()> action)
    : milliseconds_(milliseconds),
      action_(std::move(action)),
      thread_(CreateThread(nullptr, 0, &Later::run, this, 0, nullptr)) {}

Later::~Later() {
  WaitForSingleObject(thread_, INFINITE);
  CloseHandle(thread_);
}

DWORD WINAPI Later::run(void* self) {
  const auto& later = *static_cast<const Later*>(self);
  Sleep(later.milliseconds_);
  windows::guardedQuietly(later.action_);
  return 0;
}

}  // namespace proof
