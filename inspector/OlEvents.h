#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "client/UntaggedControl.h"
#include "client/clsVelnorCmds.h"
#include "platform/office.h"
#include "platform/outlook.h"
#include "state/InspectorWrapper.h"
#include "state/identity.h"

namespace cxol {

/// The wrapper of one inspector window before Outlook 2007: builds its toolbar when the window is
/// activated, and again at each activation until that succeeds; hands the clicks of its buttons to
/// the command object. No event handler raises.
class OlEvents : public InspectorWrapper,
                 public outlook::InspectorEvents,
                 public std::enable_shared_from_this<OlEvents> {
 public:
  OlEvents();
  ~OlEvents() override;

  bool NeedConnect() noexcept override { return !isConnected_; }
  void Connect() noexcept override;

  void BtAction2_Click(const office::CommandBarControl& ctrl) noexcept;
  void BtDial2_Click(const office::CommandBarControl& ctrl) noexcept;
  void BtDrop2_Click(const office::CommandBarControl& ctrl) noexcept;
  void BtTransfer2_Click(const office::CommandBarControl& ctrl) noexcept;
  void BtVelnor2_Click(const office::CommandBarControl& ctrl) noexcept;

  /// Starts the delivery of the inspector's events; a host that refuses them leaves the wrapper to
  /// the general timer.
  void Init(const outlook::Inspector& inspector) noexcept;
  void Deinit(bool deleteBar) noexcept override;

  void thisInspector_Activate() noexcept override;
  void thisInspector_Close() noexcept override;

  const outlook::Inspector& thisInspector() const noexcept override { return inspector_; }

 private:
  /// The buttons by their place in `buttons_`. The last two belong to older layouts: this layout
  /// never creates them.
  enum ButtonIndex : std::size_t {
    BtDial2,
    BtDrop2,
    BtAction2,
    BtTransfer2,
    BtVelnor2,
    ButtonCount
  };
  using Handler = void (OlEvents::*)(const office::CommandBarControl&) noexcept;
  struct Layout;
  static const Layout DialButton;
  static const Layout DropButton;
  static const Layout ActionButton;

  /// A button and the delivery of its clicks.
  struct EventButton {
    office::CommandBarControl control;
    automation::Connection clicks;
  };

  /// Builds or refreshes the toolbar; true also when the item gets none. Never raises.
  bool CBAddVelnorBarInspector() noexcept;
  void DeInitVelnorBarInspector(bool deleteBar) noexcept;
  /// Lets the bar and its buttons go.
  void release() noexcept;

  /// Whether the build goes on: false while a bar that is found empty may still be filled by
  /// Office.
  bool prepareBar();
  bool prepareFoundBar();
  office::CommandBar findBar() const;
  void addBar();
  void logFoundButtons(const office::CommandBarControls& controls, std::int32_t count) const;
  void replaceBarIfProtected();
  void configureBar();
  void clearOldLayout();
  /// Finds or creates a button; true when it is new.
  bool initButton(const Layout& layout);
  office::CommandBarControl addButton(const Layout& layout);
  void configure(const Layout& layout, const office::CommandBarControl& button);
  void removeObsolete();
  /// Starts the delivery of a button's clicks.
  void keep(const Layout& layout, const office::CommandBarControl& button);
  /// Whether the clicked button bears this window's identity, without regard to case.
  bool isOwn(const office::CommandBarControl& ctrl) const;
  /// The window is gone. It may be closed in the middle of any host call: what that call has handed
  /// over must not be kept then.
  bool isClosed() const noexcept { return !inspector_; }

  outlook::Inspector inspector_;
  office::CommandBar inspectorBar_;
  /// At first the one that showed that a found bar takes new buttons: it becomes the dial button.
  UntaggedControl untagged_;
  /// Identity of this window's buttons, new at every build.
  InstanceIdentity instanceId_;
  /// Builds that met a found bar without buttons, over the wrapper's whole life.
  std::int32_t emptyBarRetries_ = 0;
  bool isConnected_ = false;
  bool isConnecting_ = false;
  clsVelnorCmds cmds_;
  // Last, so that no event is delivered into a half-gone wrapper.
  std::array<EventButton, ButtonCount> buttons_;
  automation::Connection inspectorEvents_;
};

}  // namespace cxol
