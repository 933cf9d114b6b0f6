#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/outlook.h"
#include "platform/registry.h"
#include "platform/screen.h"
#include "simulator/client/PlayedClient.h"
#include "simulator/outlook/Snapshot.h"

/// Scenarios: lines that play a user's and a telephone's part. The player reads them and acts on a
/// Stage only, so that the same lines run on the simulated host and on a host behind real COM.
namespace scenario {

using simulator::BarView;
using simulator::ControlView;
using simulator::WindowView;

/// A line that can't be carried out: what is wrong and what would have been right, in UTF-8.
class Mistake : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct ItemEntry {
  std::u16string id;
  std::u16string title;
};

struct Snapshot {
  /// In the order of their numbers.
  std::vector<WindowView> windows;
  /// State of client and line in a few words: "not running", "running, connected: 0711 123".
  std::u16string telephone;
};

/// A control of a window.
struct ControlPlace {
  int window = 0;
  bool ribbon = false;
  /// Its tag or id; where that is empty, its caption.
  std::u16string name;
};

enum class HelperState { Present, Missing, Failing };

/// How long a member of an object of Outlook raises an error.
enum class FailureSpan { Lasting, Once, Over };

/// A command bar that Outlook has kept from earlier runs.
struct BarPreset {
  bool inspector = false;
  std::u16string name;
  std::vector<std::u16string> tags;
  /// The bar has no controls until it was shown in this many activations.
  int emptyActivations = 0;
  bool refusesControls = false;
};

/// Something that happened, told in the order of happening.
struct Note {
  enum class Kind {
    Told,   ///< the client was told something
    Trace,  ///< a trace line was written
  };
  Kind kind = Kind::Told;
  std::u16string text;
  /// Of a trace line: "Debug", "Warning", "Error", and the moment as "14:05:09.042".
  std::u16string level;
  std::u16string time;
};

/// Told by a stage while an action runs.
class Listener {
 public:
  virtual ~Listener() = default;
  virtual void note(const Note& note) = 0;
  /// A message box is up; it is closed by OK when this returns.
  virtual void messageBox(std::u16string_view text) = 0;
  /// A popup menu is open; returns the id of the entry that the user chooses, nothing when the
  /// menu is left. May act on the stage while it is open.
  virtual std::optional<int> popup(const std::vector<platform::PopupEntry>& menu) = 0;
};

/// Where a scenario plays: Outlook, the telephone and the machine. Actions that can't be done here
/// raise Mistake.
class Stage {
 public:
  virtual ~Stage() = default;
  /// Null for none; must outlive its time in office.
  virtual void setListener(Listener* listener) = 0;
  /// Whether the whole world is simulated: a clock that can be set, references that are counted.
  virtual bool native() const = 0;

  // Outlook and its user.
  virtual void startOutlook(std::u16string_view version) = 0;
  virtual void quitOutlook() = 0;
  virtual bool outlookRuns() const = 0;
  virtual void openExplorer(std::u16string_view folder) = 0;
  virtual void openItem(std::u16string_view itemId) = 0;
  /// Opens a new, unsent and unsaved item.
  virtual void newItem(outlook::ItemType type) = 0;
  virtual void activate(int window) = 0;
  virtual void close(int window) = 0;
  virtual void switchFolder(int window, std::u16string_view folder) = 0;
  virtual void switchView(int window) = 0;
  virtual void select(int window, const std::vector<std::u16string>& itemIds) = 0;
  virtual void click(const ControlPlace& place) = 0;
  /// Types into an edit box and presses Enter.
  virtual void type(const ControlPlace& place, std::u16string_view text) = 0;
  virtual void switchAddin(bool on) = 0;
  virtual void setWordMail(bool on) = 0;
  /// Whether a new window's ribbon is asked for before the window is in front.
  virtual void setEarlyRibbon(bool on) = 0;
  virtual void presetBar(const BarPreset& bar) = 0;
  /// Until Outlook ends at most.
  virtual void failMember(std::u16string_view className, std::u16string_view member,
                          FailureSpan span) = 0;

  /// Somebody plays the telephony client and its telephone.
  virtual void playClient(const std::function<void(simulator::PlayedClient&)>& action) = 0;

  // The machine.
  virtual void setLanguage(std::int32_t langId) = 0;
  /// Nothing as the value deletes it.
  virtual void setRegistry(platform::RegistryRoot root, std::u16string_view key,
                           std::u16string_view name,
                           const std::optional<platform::RegistryValue>& value) = 0;
  virtual void setLoggingLibrary(bool present) = 0;
  virtual void setMapiHelper(HelperState state) = 0;
  /// The user copies a text.
  virtual void copy(std::u16string_view text) = 0;
  /// Another program opens the clipboard for so long whenever something new is on it; 0 for none.
  virtual void watchClipboard(std::uint32_t milliseconds) = 0;
  virtual void setTime(int hour, int minute, int second) = 0;
  /// The lines of the diagnosis of this machine, after what it can put right was put right if so
  /// wanted.
  virtual std::vector<std::u16string> diagnose([[maybe_unused]] bool putRight) {
    throw Mistake("there is no diagnosis here; on Windows velnor-doctor makes it");
  }
  /// Lets time pass; timers tick and messages are delivered meanwhile.
  virtual void wait(std::uint32_t milliseconds) = 0;

  // What can be seen.
  virtual Snapshot snapshot() = 0;
  /// What the user has copied; empty when something else has taken its place.
  virtual std::u16string copied() = 0;
  virtual std::vector<std::u16string> folders() = 0;
  virtual std::vector<ItemEntry> items(std::u16string_view folder) = 0;
  /// Objects and subscriptions that the add-in holds at this moment.
  virtual std::size_t references() = 0;
};

}  // namespace scenario
