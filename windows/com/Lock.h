#pragma once

#include "windows/com/api.h"

namespace windows {

/// A mutual exclusion of threads, which the compiler's run-time library lacks here.
class Lock {
 public:
  Lock() { InitializeCriticalSection(&section_); }
  ~Lock() { DeleteCriticalSection(&section_); }
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;

 private:
  friend class Locked;
  CRITICAL_SECTION section_;
};

/// Holds a lock as long as it lives.
class [[nodiscard]] Locked {
 public:
  explicit Locked(Lock& lock) : section_(lock.section_) { EnterCriticalSection(&section_); }
  ~Locked() { LeaveCriticalSection(&section_); }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;

 private:
  CRITICAL_SECTION& section_;
};

}  // namespace windows
