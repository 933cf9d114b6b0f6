#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "simulator/outlook/OutlookHost.h"
#include "simulator/outlook/Ribbons.h"
#include "simulator/outlook/WindowObjects.h"

namespace simulator {

class ItemObject;

/// The state behind an OutlookHost and everything that its objects ask for. Objects hold it weakly:
/// it ends with Outlook.
class HostCore : public std::enable_shared_from_this<HostCore> {
 public:
  using Window = std::shared_ptr<WindowObject>;

  HostCore(Mailbox& mailbox, OutlookOptions options, BarStore& store, Boundary& boundary,
           OutlookServices services);

  // ---- For the objects.
  void checkFailing(std::u16string_view className, std::u16string_view member);
  Value itemById(std::u16string_view id);
  /// One object an item for as long as somebody holds it.
  Value itemObject(MailboxFolder& folder, MailboxItem& item);
  Value folderObject(MailboxFolder& folder);
  Value defaultFolder(std::int32_t type);
  Value createItem(outlook::ItemType type);
  /// Empty when there is none to paste.
  std::u16string clipboardFace() const;
  /// The name of a face for a button. Raises an error for pictures that Office refuses; Office 2000
  /// knows neither.
  std::u16string faceOf(const automation::Object& picture, const automation::Object& mask) const;
  /// A date in the user's short format as the mailbox writes it.
  std::u16string isoDate(std::u16string_view date) const;
  void controlsAddHook(int window);
  std::u16string captionOf(const WindowState& state) const;
  /// Counted windows in the order of opening. Whoever opens or closes on the way takes a copy.
  const std::vector<Window>& windowsOf(WindowKind kind) const;
  /// The front window, of this kind if one is given.
  Window top(std::optional<WindowKind> kind) const;

  // ---- Life of windows.
  Window openExplorer(MailboxFolder& folder, bool announce);
  Window openInspector(MailboxFolder& folder, MailboxItem& item);
  void activate(const Window& window);
  void close(const Window& window);
  void toFront(const Window& window);
  Window window(int number) const;
  Window windowOf(int number, WindowKind kind) const;
  MailboxFolder& folder(std::u16string_view nameOrId) const;

  // ---- Bars and ribbon.
  std::vector<std::shared_ptr<ControlObject>> controls() const;
  std::shared_ptr<ControlObject> findControl(const Window& window, std::u16string_view name) const;
  void click(const std::shared_ptr<ControlObject>& control);
  bool hasRibbons() const;

  Mailbox& mailbox;
  OutlookOptions options;
  BarStore& store;
  Boundary& boundary;
  OutlookServices services;

  Addin* addin = nullptr;
  bool running = false;
  std::shared_ptr<ApplicationObject> application;
  std::shared_ptr<WindowsObject> explorers;
  std::shared_ptr<WindowsObject> inspectors;
  /// The topmost first.
  std::vector<Window> zorder;
  std::shared_ptr<Bars> explorerBars;
  struct Failure {
    automation::Error error;
    std::size_t times;
  };
  std::map<std::pair<std::u16string, std::u16string>, Failure> failing;
  std::function<void(int)> addHook;
  Ribbons ribbons{*this};
  /// Items that were made and not saved in a folder.
  std::vector<std::shared_ptr<MailboxItem>> newItems;

 private:
  std::vector<Window>& counted(WindowKind kind);
  void storeExplorerBars(int window);
  void storeInspectorBars(const WindowState& state);

  std::vector<Window> openExplorers_;
  std::vector<Window> openInspectors_;
  int lastWindow_ = 0;
  int lastItem_ = 0;
  std::unordered_map<const MailboxItem*, std::weak_ptr<ItemObject>> itemObjects_;
  std::map<std::u16string_view, std::pair<MailboxFolder*, MailboxItem*>> byId_;
};

}  // namespace simulator
