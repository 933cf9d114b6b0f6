#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "client/UntaggedControl.h"
#include "platform/clock.h"
#include "platform/office.h"
#include "platform/outlook.h"
#include "state/ExplorerWrapper.h"
#include "state/identity.h"

namespace cxol {

/// The wrapper of one explorer window: builds its toolbar, follows its selection and carries out
/// the clicks of its buttons. No event handler raises.
class OlCmdEvents : public ExplorerWrapper,
                    public outlook::ExplorerEvents,
                    public std::enable_shared_from_this<OlCmdEvents> {
 public:
  OlCmdEvents();
  ~OlCmdEvents() override;

  const outlook::Explorer& thisExplorer() const noexcept override { return explorer_; }
  void setThisExplorer(const outlook::Explorer& explorer) override;
  void InitFromTimer() noexcept override;
  bool MustInit() noexcept override;
  void onExplorerSelectionChange() noexcept override;

  void BtCallInfo_Click(const office::CommandBarControl& ctrl) noexcept;
  void BtDial_Click(const office::CommandBarControl& ctrl) noexcept;
  void BtDrop_Click(const office::CommandBarControl& ctrl) noexcept;
  void BtAction_Click(const office::CommandBarControl& ctrl) noexcept;
  void BtTransfer_Click(const office::CommandBarControl& ctrl) noexcept;
  void BtIncognito_Click(const office::CommandBarControl& ctrl) noexcept;
  void BtPickup_Click(const office::CommandBarControl& ctrl) noexcept;
  void BtVelnor_Click(const office::CommandBarControl& ctrl) noexcept;
  void CbDial_Change(const office::CommandBarControl& ctrl) noexcept;

  void thisExplorer_Activate() noexcept override;
  void thisExplorer_Close() noexcept override;
  void thisExplorer_FolderSwitch() noexcept override;
  void thisExplorer_SelectionChange() noexcept override;
  void thisExplorer_ViewSwitch() noexcept override;

  /// Builds or refreshes the toolbar. A step that fails leaves its target as it was; raises the
  /// last failure when there is no bar in the end.
  void InitVelnorBarExplorer();
  void DeInitVelnorBarExplorer(bool deleteBar) noexcept override;

 private:
  /// The controls by their place in `controls_`. Those from `BtTransfer` on belong to older layouts
  /// and are looked up for removal only.
  enum ControlIndex : std::size_t {
    CbDial,
    BtDial,
    BtDrop,
    BtVelnor,
    BtAction,
    BtTransfer,
    BtIncognito,
    BtPickup,
    BtCallInfo,
    ControlCount
  };
  using Handler = void (OlCmdEvents::*)(const office::CommandBarControl&) noexcept;
  struct Layout;
  struct Obsolete;
  static const Layout Controls[];
  static const Obsolete ObsoleteControls[];

  /// A control and the delivery of its event.
  struct EventControl {
    office::CommandBarControl control;
    automation::Connection events;
  };

  void onNewExplorer() noexcept;
  void SetActionButtonCaption() noexcept;
  void selectionMayHaveChanged() noexcept;
  /// Whether the clicked control bears this window's identity.
  bool isOwn(const office::CommandBarControl& ctrl) const;
  /// The window is gone. It may be closed in the middle of any host call: what that call has handed
  /// over must not be kept then.
  bool isClosed() const noexcept { return !explorer_; }

  /// Lets the bar and its controls go.
  void release() noexcept;
  office::CommandBar findBar() const;
  void addBar();
  void clearOldLayout();
  /// Finds or creates a control; true when it is new.
  bool initControl(const Layout& layout);
  void configure(const Layout& layout, const office::CommandBarControl& control);
  void removeObsolete(const Obsolete& obsolete);
  void keep(ControlIndex index, const office::CommandBarControl& control, Handler handler);

  outlook::Explorer explorer_;
  office::CommandBar explorerBar_;
  UntaggedControl untagged_;
  /// Identity of this window's controls, new at every build.
  InstanceIdentity parameter_;
  bool mustInitPending_ = true;
  platform::LocalTime createdAt_;
  /// Entry id of the item that the action button names.
  std::u16string selectedEntryId_;
  // Last, so that no event is delivered into a half-gone wrapper.
  std::array<EventControl, ControlCount> controls_;
  automation::Connection explorerEvents_;
};

/// The release year of the host Outlook; 0 when its version is unknown.
std::int16_t GetOutlookVersion() noexcept;

}  // namespace cxol
