#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "platform/platform.h"
#include "simulator/addin.h"
#include "simulator/boundary.h"
#include "simulator/machine/Machine.h"
#include "simulator/mailbox.h"
#include "simulator/outlook/OutlookHost.h"

namespace simulator {

/// Makes the add-in as Outlook does when it loads it. The object's end is its unloading.
using AddinFactory = std::function<std::unique_ptr<Addin>(const platform::Platform& services)>;

/// A simulated machine with a mailbox and an Outlook that loads the add-in. Mailbox, bars and
/// machine stay from one run of Outlook to the next.
class World {
 public:
  explicit World(AddinFactory makeAddin, Mailbox items = {});
  ~World();
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  /// Outlook of this version starts, with the other options as they are, and loads the add-in,
  /// unless the user has switched it off. No other may run.
  void start(std::u16string_view version = u"11.0.5608");
  /// Outlook ends, if it runs, and the add-in with it.
  void stop();
  /// Lets go of an Outlook that has ended by itself.
  void settle();
  /// The user ticks or unticks the add-in of the running Outlook.
  void switchAddin(bool on);
  bool addinOn() const { return addinOn_; }

  Boundary boundary;
  Machine machine{boundary};
  Mailbox mailbox;
  BarStore bars;
  OutlookOptions options;
  /// Null while Outlook does not run or the add-in is off.
  std::unique_ptr<Addin> addin;
  /// Null while Outlook does not run.
  std::unique_ptr<OutlookHost> host;

 protected:
  void loadAddin();

 private:
  AddinFactory makeAddin_;
  bool addinOn_ = true;
};

}  // namespace simulator
