#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "standin/outlook/Session.h"
#include "standin/outlook/hand/HostWindow.h"

namespace standin {

/// Shows the simulated Outlook as real windows and carries out what the user does in them. While it
/// lives, controls that are clicked tell the add-in where they really stand on the screen.
class HandDesk : private simulator::CrossingObserver {
 public:
  /// The session must outlive the desk.
  explicit HandDesk(Session& session);
  ~HandDesk() override;
  HandDesk(const HandDesk&) = delete;
  HandDesk& operator=(const HandDesk&) = delete;

  /// Delivers messages until Outlook has ended; `beat` is called ten times a second.
  void run(std::function<void()> beat = {});

  // For the windows.
  const HostPictures& pictures() const { return session_.pictures(); }
  std::vector<std::u16string> folders() const;
  /// Whether this Outlook's inspectors have a ribbon.
  bool hasRibbon() const { return session_.host().options().version.starts_with(u"12."); }
  /// Whether this is the window in front, of all of Outlook's.
  bool isFront(int window) const { return window == front_; }
  /// Names and values of an item's properties, the names in words.
  std::vector<ItemList::Line> fieldsOf(std::u16string_view itemId) const;

  void click(int window, const simulator::ControlView& control);
  void clickRibbon(int window, const std::u16string& button);
  void type(int window, const simulator::ControlView& box, std::u16string_view text);
  void select(int window, const std::vector<std::size_t>& places);
  void openItem(std::u16string_view folder, std::size_t place);
  void switchFolder(int window, std::u16string_view folder);
  void activate(int window);
  void close(int window);
  /// A command of a window's menu.
  void command(int window, int id);

 private:
  automation::Value around(const simulator::Crossing& crossing,
                           const std::function<automation::Value()>& proceed) override;
  static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) noexcept;
  /// Makes the windows show what the host tells.
  void sync();
  /// Does something of the user's; tells what went wrong.
  template <class Action>
  void act(Action&& action);
  void switchView(int window);
  void setFront(int window);
  void clear();
  std::optional<RECT> placeOf(const Session::Click& click) const;
  /// A click that no mouse made: puts the pointer where the mouse would be.
  void pointAt(const Session::Click& click);

  Session& session_;
  std::map<int, std::unique_ptr<HostWindow>> windows_;
  /// Of which start of Outlook's they are.
  unsigned outlook_ = 0;
  std::function<void()> beat_;
  UINT_PTR timer_ = 0;
  int depth_ = 0;
  int front_ = 0;
};

}  // namespace standin
