#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/automation.h"
#include "platform/outlook.h"
#include "ribbon/clsRibbon.h"

namespace cxol {

/// The add-in's entry object, which Outlook creates: reads the settings, gives each window its
/// wrapper, starts the general timer and tears everything down again. Needs a `Process`. Nothing
/// raises.
class Connect : public outlook::ExplorersEvents,
                public outlook::InspectorsEvents,
                public std::enable_shared_from_this<Connect> {
 public:
  /// Creates and initializes the object.
  static std::shared_ptr<Connect> create();
  ~Connect() override;

  /// `connectMode` 0: Outlook had started before.
  void AddinInstance_OnConnection(const automation::Object& application, std::int32_t connectMode,
                                  const automation::Object& addInInst) noexcept;
  void AddinInstance_OnStartupComplete() noexcept;
  void AddinInstance_OnBeginShutdown() noexcept;
  /// `removeMode` 1: the user switched the add-in off, its toolbars go for good.
  void AddinInstance_OnDisconnection(std::int32_t removeMode) noexcept;

  void myOlExplorers_NewExplorer(const outlook::Explorer& explorer) noexcept override;
  void myOlInspectors_NewInspector(const outlook::Inspector& inspector) noexcept override;

  /// The markup for a kind of inspector; empty for none.
  std::u16string IRibbonExtensibility_GetCustomUI(std::u16string_view ribbonId) noexcept;
  /// The add-in never invalidates its ribbon: it keeps no reference.
  void OnLoad(const automation::Object& ribbon) noexcept;
  automation::Object GetImage(const automation::Object& control) noexcept;
  void cmdCommonRibbonBttn(const automation::Object& control) noexcept;

 private:
  Connect() = default;
  void AddinInstance_Initialize() noexcept;
  void ShutdownAll(bool deleteBars) noexcept;
  /// Lets everything of the host go.
  void release() noexcept;
  clsRibbon& ribbon();

  /// Between connection and disconnection. Outlook may disconnect in the middle of a host call of
  /// the connection or of start-up: what would last is asked for this flag behind such calls.
  bool connected_ = false;
  automation::Connection myOlExplorers_;
  automation::Connection myOlInspectors_;
  std::unique_ptr<clsRibbon> m_ribbon;
};

}  // namespace cxol
