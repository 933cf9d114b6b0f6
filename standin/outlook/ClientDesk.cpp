#include "standin/outlook/ClientDesk.h"

#include "windows/com/errors.h"
#include "windows/com/text.h"

#include <tlhelp32.h>

namespace standin {

using scenario::ClientGap;
using scenario::ClientState;
using scenario::Mistake;

namespace {

/// How long a process may take from its start to its first answer, in milliseconds.
constexpr DWORD Patience = 5000;

/// Whether a process of a program of this name runs.
bool processExists(const std::u16string& name) {
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  if (snapshot == INVALID_HANDLE_VALUE) return false;
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  bool found = false;
  for (BOOL more = Process32FirstW(snapshot, &entry); more && !found;
       more = Process32NextW(snapshot, &entry))
    found = windows::sameName(windows::utf16(entry.szExeFile), name);
  CloseHandle(snapshot);
  return found;
}

}  // namespace

ClientDesk::ClientDesk(const std::u16string& program)
    : programName_(program.substr(program.rfind(u'\\') + 1)) {
  if (program.empty()) return;
  control_.emplace(program);
  control_->uninstall();
}

ClientDesk::~ClientDesk() {
  windows::guardedQuietly([this] {
    if (!control_) return;
    control_->uninstall();
    ClientSettings::clear();
  });
}

ClientControl& ClientDesk::control() {
  if (!control_) throw Mistake("the client's stand-in is not there; name it with --client");
  return *control_;
}

ClientControl& ClientDesk::runningControl() {
  if (!control().running()) throw Mistake("the client does not run");
  return *control_;
}

void ClientDesk::setState(ClientState state) {
  if (!control_ && state == ClientState::Missing) return;
  if (control().running()) control().vanish();
  installed_ = state != ClientState::Missing;
  if (!installed_) return control().uninstall();
  if (!control().installed()) control().install();
  if (state == ClientState::Installed) return;
  if (!control().startReady(state == ClientState::Hidden))
    throw Mistake("the client's stand-in does not come up");
}

void ClientDesk::setGap(ClientGap gap) {
  simulator::Client::Gaps gaps;
  gaps.window = gap == ClientGap::Window;
  gaps.object = gap == ClientGap::Object;
  gaps.service = gap == ClientGap::Service;
  control().setGaps(gaps);
}

void ClientDesk::setErrors(bool on) {
  control().setErrors(on);
}

void ClientDesk::hang(bool on) {
  runningControl().hang(on);
}

void ClientDesk::freeze(bool on) {
  runningControl().freeze(on);
}

void ClientDesk::vanish() {
  runningControl().vanish();
}

void ClientDesk::ring(std::u16string_view number) {
  if (!control().ring(number)) throw Mistake("no line is free, or the client is not in service");
}

void ClientDesk::connectCall() {
  if (!control().connect()) throw Mistake("there is no call to connect");
}

void ClientDesk::endCall() {
  if (!control().endCall()) throw Mistake("there is no call to end");
}

void ClientDesk::settle() {
  if (!control_ || control_->running()) return;
  const DWORD start = GetTickCount();
  while (processExists(programName_) && !control_->running() && GetTickCount() - start < Patience)
    Sleep(5);
}

std::u16string ClientDesk::status() const {
  if (control_ && control_->running()) return control_->status();
  return installed_ ? u"not running" : u"not installed";
}

void ClientDesk::watch(const std::u16string& file) {
  if (control_) control_->watch(file);
}

std::vector<ToldLine> ClientDesk::told() {
  return control_ ? control_->told() : std::vector<ToldLine>();
}

}  // namespace standin
