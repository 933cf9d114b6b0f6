#include "standin/client/ClientControl.h"

#include "platform/conversions.h"
#include "standin/client/RequestPipe.h"
#include "standin/client/names.h"
#include "standin/client/registration.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"

#include <tlhelp32.h>

namespace standin {
namespace {

/// How long a client may take for what it does at once, in milliseconds.
constexpr DWORD Patience = 10000;

/// Whether it comes true in good time.
template <class Condition>
bool waitUntil(const Condition& condition) {
  const DWORD start = GetTickCount();
  while (!condition()) {
    if (GetTickCount() - start > Patience) return false;
    Sleep(5);
  }
  return true;
}

/// Whether a process of a program of this name runs.
bool processExists(std::u16string_view name) {
  const auto snapshot = windows::ownFile(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = snapshot && Process32FirstW(snapshot.get(), &entry); more;
       more = Process32NextW(snapshot.get(), &entry))
    if (windows::sameName(windows::utf16(entry.szExeFile), name)) return true;
  return false;
}

}  // namespace

ClientControl::ClientControl(std::u16string program)
    : program_(std::move(program)), journal_(settings_.journal) {
  uninstall();
  journal_.read();
  apply();
}

ClientControl::~ClientControl() {
  windows::guardedQuietly([this] {
    uninstall();
    ClientSettings::clear();
  });
}

void ClientControl::install() {
  registerClient(program_);
  installed_ = true;
}

void ClientControl::uninstall() {
  vanish();
  unregisterClient();
  installed_ = false;
}

bool ClientControl::running() const {
  return !request(u"status").empty();
}

void ClientControl::launch(std::u16string_view arguments) const {
  std::u16string line = u"\"" + program_ + u"\"";
  line += arguments;
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessW(nullptr, reinterpret_cast<wchar_t*>(line.data()), nullptr, nullptr, FALSE, 0,
                      nullptr, nullptr, &startup, &process)) {
    windows::check(HRESULT_FROM_WIN32(GetLastError()));
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

void ClientControl::start(bool hidden) {
  launch(hidden ? u" " + std::u16string(simulator::Client::HideParameter) : std::u16string());
  waitUntil([this] { return running(); });
}

bool ClientControl::startReady(bool hidden) {
  std::u16string arguments = u" " + std::u16string(ReadyArgument);
  if (hidden) arguments += u" " + std::u16string(simulator::Client::HideParameter);
  launch(arguments);
  return waitUntil([this] { return ask(u"ready"); });
}

void ClientControl::vanish() {
  request(VanishRequest);
  waitUntil([this] { return !running(); });
}

std::u16string ClientControl::status() const {
  const std::u16string answer = request(u"status");
  if (!answer.empty()) return answer.substr(1);
  return installed_ ? u"not running" : u"not installed";
}

void ClientControl::settle() const {
  const std::u16string_view path = program_;
  const auto name = path.substr(path.rfind(u'\\') + 1);
  waitUntil([&] { return running() || !processExists(name); });
}

bool ClientControl::ask(std::u16string_view text) const {
  return request(text).starts_with(Done);
}

bool ClientControl::ring(std::u16string_view number) {
  return ask(u"ring " + std::u16string(number));
}
bool ClientControl::connect() {
  return ask(u"connect");
}
bool ClientControl::endCall() {
  return ask(u"end call");
}

bool ClientControl::hang(bool on, std::uint32_t milliseconds) {
  return ask(u"hang " + (on ? automation::doubleText(milliseconds) : std::u16string(u"off")));
}
bool ClientControl::freeze(bool on) {
  return ask(on ? u"freeze on" : u"freeze off");
}
bool ClientControl::dieIn(std::u16string_view member) {
  return ask(u"die in " + std::u16string(member));
}

void ClientControl::set(const ClientSettings& settings) {
  settings_ = settings;
  apply();
}

void ClientControl::apply() {
  settings_.write();
  request(ReloadRequest);
  if (journal_.path() != settings_.journal) journal_ = LineReader(settings_.journal);
}

void ClientControl::setDelays(const simulator::Client::Delays& delays) {
  settings_.delays = delays;
  apply();
}
void ClientControl::setGaps(const Gaps& gaps) {
  settings_.gaps = gaps;
  apply();
}
void ClientControl::setErrors(bool on) {
  settings_.errors = on;
  apply();
}
void ClientControl::setLines(const std::vector<std::int32_t>& lines) {
  settings_.lines = lines;
  apply();
}
void ClientControl::watch(const std::u16string& file) {
  settings_.watched = file;
  apply();
}

std::vector<ToldLine> ClientControl::told() {
  std::vector<ToldLine> lines;
  for (const Fields& fields : journal_.read()) {
    if (fields.size() != 3) continue;
    const double size = automation::parseNumber(fields[1]).value_or(0);
    lines.push_back({fields[2], fields[0], static_cast<std::uint64_t>(size)});
  }
  return lines;
}

}  // namespace standin
