#include "standin/client/ClientServer.h"

#include "platform/conversions.h"
#include "standin/client/names.h"
#include "standin/com/DispatchExport.h"
#include "windows/com/EventSinkAdapter.h"
#include "windows/com/text.h"

namespace standin {
namespace {

windows::ComPtr<ITypeLib> ownTypeLibrary() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  windows::ComPtr<ITypeLib> library;
  windows::check(LoadTypeLibEx(path, REGKIND_NONE, library.receive()));
  return library;
}

/// The interface of each class, in the type library.
constexpr struct {
  std::u16string_view className;
  std::u16string_view interfaceId;
} Types[] = {
    {u"Application", u"{4C08FE4F-119F-42F1-94CB-72CFCCCE5AE4}"},
    {u"PhoneCommand", u"{BFB449E4-1B9B-4BC4-AAED-332A6B0D87C7}"},
    {u"AuxiliaryService", u"{C9B15C9E-1EDF-4951-876E-E216392BB0D6}"},
    {u"Remote", u"{347AB345-4079-4099-9689-3582D004A80B}"},
};

}  // namespace

struct ClientServer::Request {
  std::u16string_view name;
  bool (ClientServer::*carryOut)(std::u16string_view argument);
};

/// What follows the name is the argument. Answered by whether it could be done; `status` is
/// answered by a text.
constexpr ClientServer::Request ClientServer::Requests[] = {
    {u"ring", &ClientServer::ring},         {u"connect", &ClientServer::connect},
    {u"end call", &ClientServer::endCall},  {u"hang", &ClientServer::hang},
    {u"freeze", &ClientServer::freeze},     {u"die in", &ClientServer::dieIn},
    {VanishRequest, &ClientServer::vanish}, {ReloadRequest, &ClientServer::reload},
    {ShowRequest, &ClientServer::show},     {u"quit", &ClientServer::quit},
    {u"ready", &ClientServer::ready},
};

ClientServer::ClientServer(RequestPipe& pipe, bool hidden, bool ready)
    : pipe_(pipe), settings_(ClientSettings::read()), types_(ownTypeLibrary()) {
  client_.setListener([this](const simulator::Told& told) { note(told); });
  client_.setBeforeCall([this](std::u16string_view member) { enter(member); });
  DispatchExport::offerOwnObjects();
  describeTypes();
  applySettings();
  if (ready) {
    client_.startReady(hidden);
  } else {
    client_.start(hidden);
  }
}

void ClientServer::describeTypes() const {
  if (settings_.withoutTypes) return;
  for (const auto& row : Types) {
    ExportType type;
    windows::check(types_->GetTypeInfoOfGuid(windows::iidOf(row.interfaceId), type.info.receive()));
    ExportTypes::add(row.className, std::move(type));
  }
}

void ClientServer::applySettings() {
  client_.setDelays(settings_.delays);
  client_.setGaps(settings_.gaps);
  client_.setRaisesBeforeService(settings_.raisesBeforeService);
  client_.setErrors(settings_.errors);
  // New lines end all calls.
  if (client_.telephone().lines() != settings_.lines) {
    client_.telephone().setLines(settings_.lines);
  }
}

void ClientServer::note(const simulator::Told& told) {
  constexpr std::size_t Kept = 12;
  const std::u16string line = told.line();
  lately_.push_back(settings_.journalTold(line) + u"  " + line);
  if (lately_.size() > Kept) lately_.pop_front();
}

void ClientServer::live() {
  uptime_.reach(GetTickCount() - startedAt_);
  pipe_.serve([this](std::u16string_view text) { return answer(text); });
}

std::u16string ClientServer::answer(std::u16string_view text) {
  if (text == u"status") return Done + client_.status();
  for (const Request& request : Requests) {
    if (!text.starts_with(request.name)) continue;
    std::u16string_view argument = text.substr(request.name.size());
    if (argument.starts_with(u' ')) argument.remove_prefix(1);
    bool done = false;
    windows::guardedQuietly([&] { done = (this->*request.carryOut)(argument); });
    return std::u16string(1, done ? Done : Refused);
  }
  return std::u16string(1, Refused);
}

// ---- Requests.

bool ClientServer::ring(std::u16string_view number) {
  return client_.ring(number);
}
bool ClientServer::connect(std::u16string_view) {
  return client_.connect();
}
bool ClientServer::endCall(std::u16string_view) {
  return client_.endCall();
}

bool ClientServer::hang(std::u16string_view milliseconds) {
  const auto time = automation::parseNumber(milliseconds);
  hangs_ = time ? std::optional(static_cast<DWORD>(*time)) : std::nullopt;
  // The time is spent here, the error is raised there.
  client_.hang(hangs_.has_value(), 0);
  return true;
}

bool ClientServer::freeze(std::u16string_view onOff) {
  frozen_ = onOff == u"on";
  client_.freeze(frozen_);
  return true;
}

bool ClientServer::vanish(std::u16string_view) {
  die();
  return true;
}

bool ClientServer::dieIn(std::u16string_view member) {
  dieIn_ = member;
  return true;
}

bool ClientServer::reload(std::u16string_view) {
  settings_ = ClientSettings::read();
  applySettings();
  return true;
}

bool ClientServer::show(std::u16string_view) {
  client_.start(false);
  return true;
}

bool ClientServer::quit(std::u16string_view) {
  client_.vanish();
  return true;
}

bool ClientServer::ready(std::u16string_view) {
  const auto& gaps = settings_.gaps;
  return settled_ && (gaps.window || client_.hasWindow()) && (gaps.object || client_.hasObject()) &&
         (gaps.service || client_.inService());
}

// ---- Calls of the objects.

void ClientServer::enter(std::u16string_view member) {
  uptime_.reach(GetTickCount() - startedAt_);
  if (!dieIn_.empty() && windows::sameName(dieIn_, member)) {
    die();
  }
  if (hangs_) waitWhileHanging();
}

void ClientServer::die() {
  if (lastWill_) windows::guardedQuietly(lastWill_);
  TerminateProcess(GetCurrentProcess(), 1);
}

void ClientServer::waitWhileHanging() {
  const DWORD start = GetTickCount();
  for (DWORD spent = 0; hangs_ && spent < *hangs_; spent = GetTickCount() - start) {
    WaitForSingleObject(pipe_.waiting(), *hangs_ - spent);
    live();
  }
}

windows::ComPtr<IDispatch> ClientServer::application() {
  return DispatchExport::of(client_.applicationObject());
}

windows::ComPtr<IDispatch> ClientServer::newRemote() {
  return DispatchExport::of(client_.newRemote());
}

}  // namespace standin
