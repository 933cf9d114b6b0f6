#include "simulator/client/Client.h"

#include <algorithm>

#include "platform/velnor.h"
#include "simulator/client/ClientObjects.h"

namespace simulator {
namespace {

using automation::Error;
using automation::ErrorNumber;
using platform::RegistryRoot;

Error rejected() {
  return Error(static_cast<std::int32_t>(0x80010001), u"Call was rejected by callee.");
}

/// What becomes of a call, for the client's status.
std::u16string_view callWord(Telephone::State state) {
  switch (state) {
    case Telephone::State::Dialling: return u", dialling: ";
    case Telephone::State::Signalling: return u", ringing: ";
    case Telephone::State::Connected: return u", connected: ";
    case Telephone::State::Idle: break;
  }
  return {};
}

}  // namespace

Client::Client(Uptime& uptime, SimRegistry& registry)
    : uptime_(uptime),
      registry_(registry),
      conversion_(defaultConversion),
      isNumber_(defaultIsNumber) {}

Client::~Client() = default;

void Client::install(std::u16string_view path) {
  installed_ = true;
  path_ = path;
  registry_.setString(RegistryRoot::ClassesRoot, RegistryKey, u"", path);
}

void Client::uninstall() {
  vanish();
  installed_ = false;
  registry_.remove(RegistryRoot::ClassesRoot, RegistryKey, u"");
}

void Client::launch(bool hidden, std::int64_t startedAt) {
  hidden_ = hidden;
  startedAt_ = startedAt;
  stages_ = delays_;
  process_ = ClientProcess::start(*this);
}

void Client::start(bool hidden) {
  if (!running()) {
    launch(hidden, uptime_.now());
  } else if (!hidden) {
    hidden_ = false;
  }
}

bool Client::startReady(bool hidden) {
  const std::int64_t longest = std::max({delays_.window, delays_.object, delays_.inService});
  if (!running()) launch(hidden, uptime_.now() - longest);
  return true;
}

bool Client::reached(bool never, std::uint32_t delay) const {
  return running() && !never && uptime_.now() - startedAt_ >= delay;
}

bool Client::hasWindow() const {
  return reached(gaps_.window, stages_.window);
}

bool Client::hasObject() const {
  return reached(gaps_.object, stages_.object);
}

bool Client::inService() const {
  return reached(gaps_.service, stages_.inService);
}

void Client::vanish() {
  process_.reset();
  hangs_.reset();
  frozen_ = false;
  telephone_.endAll();
}

std::u16string Client::status() const {
  if (!running()) return installed_ ? u"not running" : u"not installed";
  std::u16string text = hidden_ ? u"running hidden" : u"running";
  if (!inService()) text += u", not in service";
  if (hangs_) text += u", hanging";
  if (frozen_) text += u", frozen";
  text += callWord(telephone_.state());
  text += telephone_.number();
  return text;
}

bool Client::ring(std::u16string_view number) {
  return inService() && telephone_.ring(number);
}

bool Client::connect() {
  return inService() && telephone_.connect();
}

bool Client::endCall() {
  return inService() && telephone_.end();
}

bool Client::hang(bool on, std::uint32_t milliseconds) {
  hangs_ = on && running() ? std::optional(milliseconds) : std::nullopt;
  return running();
}

bool Client::freeze(bool on) {
  frozen_ = on && running();
  return running();
}

bool Client::answers() {
  if (frozen_) uptime_.pass(FrozenLook);
  return !frozen_;
}

void Client::answerWithError(std::size_t count, automation::Error error) {
  errorsLeft_ = count;
  error_ = std::move(error);
}

void Client::failMember(std::u16string_view member, automation::Error error) {
  failing_.insert_or_assign(std::u16string(member), std::move(error));
}

void Client::restoreMember(std::u16string_view member) {
  failing_.erase(std::u16string(member));
}

std::u16string Client::defaultConversion(std::u16string_view number) {
  constexpr std::u16string_view TrunkZero = u"(0)";
  // A menu's caption comes with its label: "Home: 030 1".
  if (const auto label = number.rfind(u": "); label != number.npos) number.remove_prefix(label + 2);
  std::u16string result;
  for (std::size_t at = 0; at < number.size();) {
    if (number.substr(at).starts_with(TrunkZero)) {
      at += TrunkZero.size();
      continue;
    }
    const char16_t c = number[at++];
    if (c != u' ' && c != u'/' && c != u'-') result += c;
  }
  return result;
}

bool Client::defaultIsNumber(std::u16string_view text) {
  constexpr std::u16string_view Allowed = u"0123456789*#Ii/-+ ().";
  return text.find_first_not_of(Allowed) == std::u16string_view::npos;
}

void Client::setConversion(std::function<std::u16string(std::u16string_view)> rule) {
  conversion_ = rule ? std::move(rule) : defaultConversion;
}

void Client::setIsNumber(std::function<bool(std::u16string_view)> rule) {
  isNumber_ = rule ? std::move(rule) : defaultIsNumber;
}

std::size_t Client::calls(std::u16string_view member) const {
  const auto found = calls_.find(member);
  return found == calls_.end() ? 0 : found->second;
}

automation::Object Client::applicationObject() const {
  if (!hasObject()) throw Error(ErrorNumber::CannotCreateObject);
  return process_->application->handle();
}

automation::Object Client::newRemote() const {
  if (!hasObject()) throw Error(ErrorNumber::CannotCreateObject);
  return std::make_shared<ClientRemote>(process_)->handle();
}

void Client::enter(std::u16string_view member) {
  if (beforeCall_) {
    beforeCall_(member);
    if (!running()) throw Error(ErrorNumber::ServerUnavailable);
  }
  const auto counted = calls_.try_emplace(std::u16string(member), 0).first;
  ++counted->second;
  if (frozen_) {
    uptime_.pass(FrozenCall);
    throw Error(ErrorNumber::ServerBusy);
  }
  if (hangs_) {
    uptime_.pass(*hangs_);
    throw Error(ErrorNumber::ServerBusy);
  }
  if (errorsLeft_ > 0) {
    --errorsLeft_;  // from the most that it can be, it never gets to 0
    throw error_;
  }
  if (const auto failing = failing_.find(member); failing != failing_.end()) throw failing->second;
}

automation::Object Client::phoneCommandObject() const {
  if (inService()) return process_->phoneCommand->handle();
  if (raisesBeforeService_) throw rejected();
  return {};
}

automation::Object Client::auxiliaryServiceObject() const {
  return process_->auxiliaryService->handle();
}

automation::Value Client::lines() const {
  if (linesAnswer_) return *linesAnswer_;
  automation::Array ids;
  for (const std::int32_t id : telephone_.lines()) ids.emplace_back(id);
  return ids;
}

void Client::execute(const Told& told) {
  using Kind = Told::Kind;
  const bool dials = told.kind == Kind::Dial || told.kind == Kind::DirectDial;
  if (dials && !inService()) throw rejected();
  switch (told.kind) {
    case Kind::Dial:
    case Kind::DirectDial: telephone_.dial(told.firstLine, told.chosenLine, told.text); break;
    case Kind::HangUp: telephone_.hangUp(told.chosenLine); break;
    case Kind::PickUp: telephone_.pickUp(told.chosenLine); break;
    case Kind::ShowNumber:
    case Kind::ShowActions:
    case Kind::ShowCallInfo: hidden_ = false; break;
    case Kind::Stop:
      if (told.code == velnor::StopWithHost) vanish();
      break;
    default: break;
  }
  told_.push_back(told);
  if (listener_) listener_(told);
}

}  // namespace simulator
