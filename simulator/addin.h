#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/automation.h"

namespace simulator {

/// The add-in as a host sees it: what Outlook calls on the object that it creates from the add-in's
/// registration. The native program puts the logic behind it, the Windows stand-in a COM object.
class Addin {
 public:
  virtual ~Addin() = default;
  /// `connectMode` 0 after Outlook had started, 1 at its start.
  virtual void onConnection(const automation::Object& application, std::int32_t connectMode,
                            const automation::Object& addInInst) = 0;
  virtual void onStartupComplete() = 0;
  virtual void onBeginShutdown() = 0;
  /// `removeMode` 0 when Outlook closes, 1 when the user switched the add-in off.
  virtual void onDisconnection(std::int32_t removeMode) = 0;

  /// The ribbon markup for a kind of inspector; empty for none.
  virtual std::u16string getCustomUi(std::u16string_view ribbonId) = 0;
  /// A callback that the markup names, with its arguments; raises error 438 when the add-in has
  /// none of that name.
  virtual automation::Value ribbonCallback(std::u16string_view name,
                                           std::span<const automation::Value> args) = 0;
};

}  // namespace simulator
