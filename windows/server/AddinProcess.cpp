#include "windows/server/AddinProcess.h"

#include "platform/velnor.h"
#include "windows/com/EntryHold.h"
#include "windows/com/Lock.h"
#include "windows/com/errors.h"
#include "windows/server/Module.h"

namespace windows {
namespace {

/// Not an owner: the objects are.
std::weak_ptr<AddinProcess>& current() {
  static std::weak_ptr<AddinProcess> process;
  return process;
}

/// The thread whose objects hold the process.
DWORD ownerThread = 0;

Lock& acquireLock() {
  static Lock lock;
  return lock;
}

}  // namespace

std::shared_ptr<AddinProcess> AddinProcess::acquire() {
  const Locked locked(acquireLock());
  const DWORD thread = GetCurrentThreadId();
  // Asked before it is held: a foreign thread must not be the last one to let it go.
  if (!current().expired() && ownerThread != thread) check(RPC_E_WRONG_THREAD);
  ownerThread = thread;
  auto process = current().lock();
  if (!process) {
    process = std::make_shared<AddinProcess>();
    current() = process;
    EntryHold::setKeeper([]() -> std::shared_ptr<void> { return current().lock(); });
  }
  return process;
}

AddinProcess::AddinProcess()
    : machine_(Module::instance(), {{velnor::ApplicationClass, velnor::MainWindowClass},
                                    {velnor::RemoteClass, velnor::MainWindowClass}}),
      process_(machine_.platform()) {}

}  // namespace windows
