#include "simulator/machine/SimObjects.h"

#include <utility>

#include "platform/velnor.h"
#include "simulator/caseless.h"
#include "simulator/client/Client.h"

namespace simulator {
namespace {

bool isClients(std::u16string_view className) {
  return sameName(className, velnor::ApplicationClass) || sameName(className, velnor::RemoteClass);
}

}  // namespace

bool SimObjects::registered(std::u16string_view className) {
  try {
    boundary_.service(u"Objects", u"registered");
  } catch (const automation::Error&) {
    return false;
  }
  return isClients(className) || classes_.contains(folded(className));
}

automation::Object SimObjects::running(std::u16string_view className) {
  boundary_.service(u"Objects", u"running");
  if (!sameName(className, velnor::ApplicationClass)) {
    throw automation::Error(automation::ErrorNumber::CannotCreateObject);
  }
  lookAtClient();
  return boundary_.out(client_.applicationObject());
}

automation::Object SimObjects::create(std::u16string_view className) {
  boundary_.service(u"Objects", u"create");
  if (isClients(className)) lookAtClient();
  if (sameName(className, velnor::RemoteClass)) return boundary_.out(client_.newRemote());
  // The running client is the one instance of its class.
  if (sameName(className, velnor::ApplicationClass)) {
    return boundary_.out(client_.applicationObject());
  }
  const auto found = classes_.find(folded(className));
  if (found == classes_.end()) {
    throw automation::Error(automation::ErrorNumber::CannotCreateObject);
  }
  return boundary_.out(found->second());
}

bool SimObjects::answers(std::u16string_view className) {
  boundary_.service(u"Objects", u"answers");
  return !isClients(className) || client_.answers();
}

void SimObjects::lookAtClient() {
  if (!client_.answers()) throw automation::Error(automation::ErrorNumber::ServerBusy);
}

void SimObjects::offer(std::u16string_view className, std::function<automation::Object()> factory) {
  classes_.insert_or_assign(folded(className), std::move(factory));
}

void SimObjects::withdraw(std::u16string_view className) {
  classes_.erase(folded(className));
}

}  // namespace simulator
