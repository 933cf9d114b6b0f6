#pragma once

#include "windows/com/api.h"

namespace standin {

/// The thread of its own that a library may have. It runs until the process ends: who takes the
/// library out of the process before then pulls the code from under it.
class Worker {
 public:
  void start() {
    if (thread_) return;
    stop_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    thread_ = CreateThread(nullptr, 0, &Worker::run, stop_, 0, nullptr);
  }
  /// What the end of the process does.
  void end() {
    if (!thread_) return;
    SetEvent(stop_);
    WaitForSingleObject(thread_, INFINITE);
    CloseHandle(thread_);
    CloseHandle(stop_);
    thread_ = stop_ = nullptr;
  }

 private:
  static DWORD WINAPI run(void* stop) {
    constexpr DWORD Beat = 2;
    while (WaitForSingleObject(stop, Beat) == WAIT_TIMEOUT) {
    }
    return 0;
  }

  HANDLE stop_ = nullptr;
  HANDLE thread_ = nullptr;
};

inline Worker worker;

}  // namespace standin
