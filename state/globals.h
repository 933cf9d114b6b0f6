#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "infra/collection.h"
#include "platform/outlook.h"
#include "state/ExplorerWrapper.h"
#include "state/InspectorWrapper.h"
#include "state/MenuForm.h"
#include "state/identity.h"

namespace cxol {

/// The add-in's process-wide state. `Connect` fills and releases it.
struct Globals {
  outlook::Application g_olApp;
  /// The add-in's ProgId; every toolbar button's action names it.
  std::u16string g_sProgId;
  /// One wrapper a window, in order of arrival.
  Collection<std::shared_ptr<ExplorerWrapper>> g_colExplorers;
  Collection<std::shared_ptr<InspectorWrapper>> g_colInspectors;
  std::shared_ptr<MenuForm> g_frmMenus;

  /// The localized product name.
  std::u16string g_product;

  /// Settings, read once at the start.
  bool g_bUseMapi = false;
  bool g_bStartWithOutlook = false;
  bool g_bStopWithOutlook = false;
  bool g_bIgnoreSelChange = false;
  bool g_bShowInspectorToolBar = false;

  /// A new inspector is being equipped: the general timer does nothing.
  bool g_bCreatingInspector = false;
  /// The MAPI helper is ready.
  bool g_bMapiInitialized = false;
  /// Entry id of the default Outbox; empty until first needed, never refreshed.
  std::u16string g_sOutboxEntryID;

  /// The general timer; 0 while it does not run. Its interval is in milliseconds.
  std::uint32_t TimerId = 0;
  std::uint32_t TimerInterval = 0;
  bool TimerBusy = false;
  /// The selection timer; 0 while it does not run.
  std::uint32_t SelTimerId = 0;
  std::shared_ptr<ExplorerWrapper> SelTimerTarget;

  /// Those given out, of which some may have gone.
  std::vector<std::weak_ptr<const InstanceIdentity::Shared>> identities;
};

/// Raises error 91 outside the life of a `Process`.
Globals& globals();

/// The hidden form, to be held while it is used: it may be unloaded in the middle of a call. Raises
/// error 91 without one.
std::shared_ptr<MenuForm> LoadedMenuForm();

}  // namespace cxol
