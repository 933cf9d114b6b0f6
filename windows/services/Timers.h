#pragma once

#include <deque>
#include <map>
#include <memory>

#include "platform/timers.h"
#include "windows/com/api.h"

namespace windows {

/// Timers without a window. One object at a time, of the thread whose message loop delivers them.
/// Its end kills what still runs and takes back what is on its way.
class Timers : public platform::Timers {
 public:
  Timers();
  ~Timers() override;
  Timers(const Timers&) = delete;
  Timers& operator=(const Timers&) = delete;

  std::uint32_t setTimer(std::uint32_t milliseconds, std::function<void()> tick) override;
  void killTimer(std::uint32_t id) override;

 private:
  static void CALLBACK onTimer(HWND, UINT, UINT_PTR id, DWORD) noexcept;
  void dropPending() const;

  using Tick = std::shared_ptr<std::function<void()>>;
  std::map<UINT_PTR, Tick> ticks_;
  /// Of the timers that were killed last: a message of theirs may still be on its way.
  std::deque<UINT_PTR> killed_;
};

}  // namespace windows
