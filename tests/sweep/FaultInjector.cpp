#include "tests/sweep/FaultInjector.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <span>

#include "simulator/object.h"

namespace sweep {
namespace {

using automation::Value;
using simulator::Crossing;

class Stranger : public simulator::TableObject<Stranger> {
 public:
  static constexpr std::u16string_view Name = u"Stranger";
  static std::span<const simulator::MemberRow<Stranger>> members() { return {}; }
};

KindSet setOf(std::initializer_list<FaultKind> kinds) {
  KindSet set;
  for (const FaultKind kind : kinds) set.set(indexOf(kind));
  return set;
}

const KindSet Errors =
    setOf({FaultKind::AutomationError, FaultKind::MemberNotFound, FaultKind::ServerGone});
const KindSet Events =
    setOf({FaultKind::Activation, FaultKind::SelectionChange, FaultKind::WindowClose,
           FaultKind::TimerTick, FaultKind::Quit, FaultKind::SwitchOff, FaultKind::Release});

/// Services that let messages through while they work, and those that can answer something else
/// than they should. An empty operation stands for the owner's others.
struct ServiceRow {
  std::u16string_view owner;
  std::u16string_view operation;
  bool events;
  bool null;
  bool wrong;
};
constexpr ServiceRow Services[] = {
    {u"Clock", u"pumpMessages", true, false, false},
    {u"Objects", u"registered", false, false, true},
    {u"Objects", u"", true, true, true},
    {u"MapiHelper", u"init", true, false, false},
    {u"MapiHelper", u"", true, false, true},
    {u"Pictures", u"setClipboard", true, false, false},
    {u"Pictures", u"awaitClipboard", true, false, false},
    {u"Pictures", u"overlay", false, true, true},
    // What it answers goes to the host unseen.
    {u"Pictures", u"icon", false, true, false},
    {u"Processes", u"shellExecute", true, false, false},
    {u"Screen", u"messageBox", true, false, false},
    {u"Screen", u"trackPopup", true, false, false},
    {u"Registry", u"read", false, false, true},
    {u"LoggingLibrary", u"createLogger", false, false, true},
};

/// A system that never again takes back what it gave leaves nothing that one could do.
bool failsOnceOnly(const Crossing& crossing) {
  return crossing.member == u"killTimer" || crossing.member == u"hideAnchor" ||
         crossing.member == u"deinit";
}

KindSet kindsOfService(const Crossing& crossing) {
  KindSet kinds = setOf({FaultKind::AutomationError});
  for (const ServiceRow& row : Services) {
    if (row.owner != crossing.owner) continue;
    if (!row.operation.empty() && row.operation != crossing.member) continue;
    if (row.events) kinds |= Events;
    if (row.null) kinds |= setOf({FaultKind::NullObject, FaultKind::ServerGone});
    if (row.wrong) kinds |= setOf({FaultKind::WrongType});
    break;
  }
  return kinds;
}

KindSet kindsOfAnswer(const Value& answer) {
  KindSet kinds = Errors | Events | setOf({FaultKind::AnswerLost});
  if (answer.isObject() && answer.toObject()) kinds |= setOf({FaultKind::NullObject});
  if (!answer.isEmpty()) kinds |= setOf({FaultKind::WrongType});
  return kinds;
}

std::string narrow(std::u16string_view text) {
  return automation::Error(0, std::u16string(text)).what();
}

}  // namespace

automation::Object stranger(simulator::Boundary& boundary) {
  return boundary.out(std::make_shared<Stranger>()->handle());
}

bool FaultInjector::arrives(const Crossing& crossing) {
  if (paused_) return false;
  if (++count_ > Endless) {
    std::fprintf(stderr, "the run does not end: last crossing %s.%s\n",
                 narrow(crossing.owner).c_str(), narrow(crossing.member).c_str());
    std::abort();
  }
  if (!fault_ || delivering_) return false;
  if (count_ == fault_->crossing) return true;
  return fault_->lasting && count_ > fault_->crossing && !failsOnceOnly(crossing);
}

void FaultInjector::mark(const Crossing& crossing) {
  if (injected_++ != 0) return;
  place_ = narrow(crossing.owner) + "." + narrow(crossing.member);
  if (crossing.kind == Crossing::Kind::Service) hitOperation_ = crossing.member;
}

void FaultInjector::record(KindSet kinds) {
  if (!fault_ && !paused_) possible_.push_back(kinds);
}

void FaultInjector::deliver(const Crossing& crossing) {
  delivering_ = true;
  const bool happened = disturb_(fault_->kind);
  delivering_ = false;
  if (happened) mark(crossing);
}

void FaultInjector::raise(const Crossing& crossing) {
  mark(crossing);
  switch (fault_->kind) {
    case FaultKind::MemberNotFound:
      throw automation::Error(automation::ErrorNumber::MemberNotFound);
    case FaultKind::ServerGone: throw automation::Error(automation::ErrorNumber::ServerUnavailable);
    default: throw automation::Error(-2147467259, u"injected");
  }
}

Value FaultInjector::altered(const Crossing& crossing, Value answer) {
  if (fault_->kind == FaultKind::NullObject) {
    if (!answer.isObject() || !answer.toObject()) return answer;
    mark(crossing);
    return automation::Object();
  }
  if (answer.isEmpty()) return answer;
  mark(crossing);
  // What can't be converted, and what only turns out to be wrong when it is used.
  if (answer.isObject() && count_ % 2 == 0) {
    return stranger(boundary_);
  }
  if (answer.isText()) return automation::Array{Value(1)};
  return u"wrong";
}

Value FaultInjector::around(const Crossing& crossing, const std::function<Value()>& proceed) {
  if (!arrives(crossing)) {
    const std::size_t place = possible_.size();
    record(Errors | Events | setOf({FaultKind::AnswerLost}));
    Value answer = proceed();
    if (!fault_ && !paused_) possible_.at(place) = kindsOfAnswer(answer);
    return answer;
  }
  switch (fault_->kind) {
    case FaultKind::AnswerLost: proceed(); raise(crossing);
    case FaultKind::NullObject:
    case FaultKind::WrongType: return altered(crossing, proceed());
    default: break;
  }
  if (!isEvent(fault_->kind)) raise(crossing);
  // Before the host does the work, or when it has done it and its answer is on the way.
  if (count_ % 2 == 0) {
    deliver(crossing);
    return proceed();
  }
  Value answer = proceed();
  deliver(crossing);
  return answer;
}

void FaultInjector::before(const Crossing& crossing) {
  const bool service = crossing.kind == Crossing::Kind::Service;
  const KindSet kinds = service ? kindsOfService(crossing) : Errors | Events;
  const bool arrived = arrives(crossing);
  record(kinds);
  if (!arrived || !kinds.test(indexOf(fault_->kind))) return;
  if (isEvent(fault_->kind)) return deliver(crossing);
  if (fault_->kind == FaultKind::NullObject || fault_->kind == FaultKind::WrongType) {
    mark(crossing);
    alteration_ = fault_->kind;
    return;
  }
  raise(crossing);
}

std::optional<FaultKind> FaultInjector::takeAlteration() {
  return std::exchange(alteration_, std::nullopt);
}

}  // namespace sweep
