#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/automation.h"
#include "platform/clock.h"
#include "platform/outlook.h"
#include "simulator/addin.h"
#include "simulator/boundary.h"
#include "simulator/mailbox.h"
#include "simulator/outlook/BarStore.h"
#include "simulator/outlook/Snapshot.h"

namespace simulator {

/// The user asked for something that is not there. The text (UTF-8) is meant for a person.
class HostError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct OutlookOptions {
  std::u16string version = u"11.0.5608";
  bool wordIsMailEditor = false;
  /// The markup of a new inspector's ribbon is asked for while the window before it is still the
  /// active one, as Outlook does; else once the new one is in front.
  bool earlyRibbon = true;
  std::u16string progId = u"VelnorOutlookCOMAddIn.Connect";
};

/// What Outlook uses of the machine.
struct OutlookServices {
  /// The name of the face on the clipboard; empty when there is none or the clipboard is not free.
  std::function<std::u16string()> clipboard;
  /// The name of the face that a picture makes with its mask, or without one. Raises an error for
  /// what Office refuses.
  std::function<std::u16string(const automation::Object& picture, const automation::Object& mask)>
      face;
  /// Reads a date in the user's short format.
  std::function<std::optional<platform::LocalTime>(std::u16string_view)> parseDate;
};

/// One run of the simulated Outlook, and the user's hand on it. Windows are named by numbers, which
/// count all windows of the run from 1. Mailbox, bar store, boundary and add-in must outlive it; so
/// must the add-in's `Addin` for as long as it is connected. Destroying a running Outlook is like
/// killing its process: the add-in hears nothing of it, and objects that it still holds answer
/// with error 462. Operations raise HostError when what the user asks for is not there.
class OutlookHost {
 public:
  OutlookHost(Mailbox& mailbox, OutlookOptions options, BarStore& bars, Boundary& boundary,
              OutlookServices services);
  ~OutlookHost();
  OutlookHost(const OutlookHost&) = delete;
  OutlookHost& operator=(const OutlookHost&) = delete;

  // ---- Life.

  /// Outlook starts with one explorer, for which no NewExplorer comes, and loads the add-in; null
  /// for none. Only once.
  void start(Addin* addin);
  /// The user ticks the add-in in the add-in dialog.
  void connectAddin(Addin& addin);
  /// The user unticks it.
  void disconnectAddin();
  /// Closes every window, which ends Outlook, as closing the last one by hand does.
  void quit();
  bool running() const;
  bool addinConnected() const;
  const OutlookOptions& options() const;
  /// The application object, not counted as a handle of the add-in.
  automation::Object application() const;

  // ---- Windows.

  /// Opens a further explorer on a folder, given by name or id; empty for the first folder.
  int openExplorer(std::u16string_view folder = {});
  /// Opens an item, given by id or title, or brings its window to the front if it is open. Titles
  /// are looked for in the folder of the active explorer, then everywhere.
  int openItem(std::u16string_view item);
  /// Opens a new, unsent and unsaved item.
  int newItem(outlook::ItemType type);
  /// Brings a window to the front. One that is in front already gets its Activate once more, as
  /// when the user returns from another program.
  void activate(int window);
  void close(int window);

  std::optional<int> activeWindow() const;
  /// In the order of opening.
  std::vector<int> windows(WindowKind kind) const;

  // ---- Inside a window. What is not in front is brought there first.

  void switchFolder(int explorer, std::u16string_view folder);
  void switchView(int explorer, std::u16string_view view);
  /// Selects items of the explorer's folder by id, by title, or by a part of the title that only
  /// one item has. None clears the selection.
  void select(int explorer, std::span<const std::u16string> items);
  /// The same by place in the folder, from 1.
  void selectAt(int explorer, std::span<const std::size_t> places);
  void selectAll(int explorer);

  /// Clicks a button of a visible bar, named by tag, caption or tooltip.
  void click(int window, std::u16string_view button);
  /// Types into an edit box and presses Enter.
  void typeInto(int window, std::u16string_view box, std::u16string_view text);
  /// Clicks a button of the ribbon, named by id or label.
  void clickRibbon(int inspector, std::u16string_view button);

  // ---- For display and tests.

  /// At most `maxItems` titles in each list.
  OutlookView snapshot(std::size_t maxItems = std::numeric_limits<std::size_t>::max()) const;
  /// Event sinks connected to the window collections, the open windows and their controls.
  std::size_t sinkCount() const;
  /// From now on this member of this class raises an error, until it is restored or has done so as
  /// often as this.
  void failMember(
      std::u16string_view className, std::u16string_view member,
      automation::Error error = automation::Error(automation::ErrorNumber::AutomationFailed),
      std::size_t times = std::numeric_limits<std::size_t>::max());
  void restoreMember(std::u16string_view className, std::u16string_view member);
  /// Called inside Controls.Add, before the control is there; may act on the host.
  void setControlsAddHook(std::function<void(int window)> hook);

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace simulator
