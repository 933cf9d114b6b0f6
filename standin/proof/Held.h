#pragma once

#include <cstddef>
#include <string>

#include "standin/outlook/Session.h"
#include "windows/tests/HandleMarks.h"

namespace proof {

/// Memory that this process has for itself alone.
std::size_t privateBytes();
/// What is allocated in all its heaps.
std::size_t heapBytes();

/// What this process holds of the system, and the add-in of the host.
struct Held : windows::HandleMarks {
  explicit Held(standin::Session& session);

  /// Open handles; 0 where the system does not count them. The mark tells of them as well.
  DWORD handles = 0;
  std::size_t privateBytes = proof::privateBytes();
  std::size_t heapBytes = proof::heapBytes();
  /// Objects of the host that somebody holds through COM.
  std::size_t exported = 0;
  /// COM objects of this program that are alive, the former among them.
  long objects = 0;
  /// Subscriptions to events of the host.
  std::size_t sinks = 0;
  /// Windows of this thread.
  int windows = 0;

  std::string line() const;
};

}  // namespace proof
