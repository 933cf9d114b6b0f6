#pragma once

#include <functional>

#include "platform/automation.h"
#include "windows/com/api.h"

namespace windows {

/// A thread with an apartment and a message loop of its own. What lives there is reached through
/// COM's marshalling, as an object of another process is.
class ServerThread {
 public:
  ServerThread();
  /// Ends the apartment; objects that are still held outside are cut off.
  ~ServerThread();
  ServerThread(const ServerThread&) = delete;
  ServerThread& operator=(const ServerThread&) = delete;

  /// Runs a function there and delivers this thread's messages meanwhile.
  void run(const std::function<void()>& function);

  /// Begins a function there and does not wait for it.
  void start(std::function<void()> function);

  /// Has an object made there and brings it here.
  automation::Object bring(const std::function<automation::Object()>& maker);

 private:
  static DWORD WINAPI main(void* self);
  void post(std::function<void()> function, HANDLE done);

  HANDLE ready_;
  DWORD id_ = 0;
  HANDLE thread_;
};

/// Delivers messages to this thread until the handle is signalled.
void waitAndPump(HANDLE handle);

}  // namespace windows
