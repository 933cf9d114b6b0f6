#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "demo/NativeAddin.h"
#include "simulator/World.h"
#include "state/globals.h"

namespace tests {

using outlook::ItemType;
using outlook::ObjectClass;
using platform::RegistryRoot;
using Texts = std::vector<std::u16string>;

inline constexpr std::u16string_view AddInKey = u"Software\\K9T\\CXComAddIn";
/// The English product name, also that of the toolbar, ends with a blank.
inline constexpr std::u16string_view Product = u"Velnor ";
inline constexpr std::u16string_view ClientKey = u"Software\\K9T\\Velnor30\\AddIn001";

/// Chooses from each menu the entry whose caption begins with `choice`, also in submenus; leaves
/// the menu without one.
class Chooser : public simulator::ScreenUser {
 public:
  std::u16string choice;
  /// Runs while the menu is open.
  std::function<void()> whileOpen;

  std::optional<int> popup(const std::vector<platform::PopupEntry>& menu, platform::Point) override;
};

/// One simulated machine with an Outlook, a client and a small mailbox: what a test plays in.
/// English, the trace file switched on, client installed.
class World : public simulator::World {
 public:
  explicit World(simulator::AddinFactory makeAddin = makeNativeAddin);
  ~World() { stop(); }

  /// The trace file, which is on at first.
  void switchTrace(bool on);
  /// The first window's toolbar is there.
  void startWithToolbar(std::u16string_view version = u"11.0.5608");
  /// The client runs and is in service.
  void startClient() { machine.client.startReady(true); }

  /// Adds an item and gives its id, which is its subject or full name as well.
  simulator::MailboxItem& add(std::u16string_view folder, ObjectClass kind, std::u16string_view id);
  simulator::MailboxItem& addContact(
      std::u16string_view id,
      const std::map<std::u16string_view, std::u16string_view>& phones = {});
  void select(std::u16string_view folder, std::u16string_view item);
  void option(std::u16string_view key, std::u16string_view name, std::uint32_t value) {
    machine.registry.setDword(RegistryRoot::CurrentUser, key, name, value);
  }

  /// The trace without its times, and whether a line stands in it.
  Texts trace() const;
  bool traced(std::u16string_view line) const { return count(line) > 0; }
  std::size_t count(std::u16string_view line) const;
  /// Forgets what was traced, told and shown so far.
  void forget();
  Texts told() const;
  /// Captions of the visible entries of the menu shown last; a disabled one in brackets.
  Texts menu() const;

  /// A control of a window's bar by its tag; fails the test when it is not there.
  simulator::ControlView control(int window, std::u16string_view tag) const;
  /// Tags of the controls of a window's bar of this name; nothing when there is no such bar.
  std::optional<Texts> tagsOf(int window, std::u16string_view bar) const;
  std::optional<simulator::BarView> bar(int window, std::u16string_view name) const;
  simulator::WindowView window(int number) const;

  Chooser user;

 private:
  std::size_t forgottenTrace_ = 0;
  Texts allTrace() const;
};

}  // namespace tests
