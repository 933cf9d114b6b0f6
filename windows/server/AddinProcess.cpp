#include "windows/server/AddinProcess.h"

#include "platform/velnor.h"
#include "windows/com/EntryHold.h"
#include "windows/server/Module.h"

namespace windows {
namespace {

/// The client's main window.
constexpr std::u16string_view ClientWindow = u"SfFrameOrView";

/// Not an owner: the objects are.
std::weak_ptr<AddinProcess>& current() {
  static std::weak_ptr<AddinProcess> process;
  return process;
}

}  // namespace

std::shared_ptr<AddinProcess> AddinProcess::acquire() {
  auto process = current().lock();
  if (!process) {
    process = std::make_shared<AddinProcess>();
    current() = process;
    EntryHold::setKeeper([]() -> std::shared_ptr<void> { return current().lock(); });
  }
  return process;
}

AddinProcess::AddinProcess()
    : machine_(Module::instance(),
               {{velnor::ApplicationClass, ClientWindow}, {velnor::RemoteClass, ClientWindow}}),
      process_(machine_.platform()) {}

}  // namespace windows
