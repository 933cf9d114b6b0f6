#include "addin/Connect.h"

#include "addin/wrappers.h"
#include "explorer/SDKTimer.h"
#include "explorer/modSelectionTimer.h"
#include "infra/modK9TLog.h"
#include "infra/modRes.h"
#include "items/Helpers.h"
#include "platform/conversions.h"
#include "ribbon/Form1.h"
#include "state/globals.h"
#include "state/settings.h"

namespace cxol {
namespace {

/// ext_ConnectMode, ext_DisconnectMode
constexpr std::int32_t AfterStartup = 0;
constexpr std::int32_t UserClosed = 1;

constexpr std::int32_t ProductName = 1001;

bool readAndLog(const Option& option, std::u16string_view text) {
  const bool value = ReadOption(option);
  LogDebug(concat(text, u" = ", boolText(value)));
  return value;
}

/// A user's "on" stands; a machine's "on" stands for every user who has not said so himself.
bool readIgnoreSelChange() {
  const bool value =
      ReadOption(options::IgnoreSelChange) || ReadOption(options::IgnoreSelChangeOfMachine);
  LogDebug(concat(u"Ignore selection change events = ", boolText(value)));
  return value;
}

}  // namespace

std::shared_ptr<Connect> Connect::create() {
  std::shared_ptr<Connect> connect(new Connect);
  connect->AddinInstance_Initialize();
  return connect;
}

Connect::~Connect() {
  LogDebug(u"AddinInstance_Terminate");
}

void Connect::AddinInstance_Initialize() noexcept {
  trapAndLog(u"AddinInstance_Initialize: ", [] {
    LogDebug(
        u"############################## AddinInstance_Initialize ##############################");
    auto& g = globals();
    g.g_colExplorers.clear();
    g.g_colInspectors.clear();
    SelectLanguage();
    g.g_product = GetResString(ProductName);
    g.g_bUseMapi = readAndLog(options::UseMapi, u"UseMapi");
    g.g_bStartWithOutlook = readAndLog(options::StartWithOutlook, u"Start Velnor with Outlook");
    g.g_bStopWithOutlook = readAndLog(options::StopWithOutlook, u"Terminate Velnor with Outlook");
    g.g_bIgnoreSelChange = readIgnoreSelChange();
    g.g_bShowInspectorToolBar = ReadOption(options::ShowInspectorToolBar);
    g.g_frmMenus = std::make_shared<Form1>();
  });
}

void Connect::AddinInstance_OnConnection(const automation::Object& application,
                                         std::int32_t connectMode,
                                         const automation::Object& addInInst) noexcept {
  connected_ = true;
  ResumeNext resume;
  resume([&] {
    LogDebug(
        concat(u"AddinInstance_OnConnection, ConnectMode = ", automation::int32Text(connectMode)));
  });
  resume([&] { globals().g_sProgId = outlook::ComAddIn(addInInst).progId(); });
  resume([&] { globals().g_olApp = outlook::Application(application); });
  resume([&] {
    myOlExplorers_ = globals().g_olApp.explorers().object().connect(
        outlook::ExplorersEventInterface,
        std::make_shared<automation::ReceiverSink<outlook::ExplorersEvents>>(weak_from_this()));
  });
  resume([&] {
    if (!globals().g_bShowInspectorToolBar) return;
    myOlInspectors_ = globals().g_olApp.inspectors().object().connect(
        outlook::InspectorsEventInterface,
        std::make_shared<automation::ReceiverSink<outlook::InspectorsEvents>>(weak_from_this()));
  });
  if (!connected_) return release();
  // Outlook raises no start-up event any more.
  if (connectMode == AfterStartup) AddinInstance_OnStartupComplete();
}

void Connect::AddinInstance_OnStartupComplete() noexcept {
  LogDebug(u"AddinInstance_OnStartupComplete");
  ResumeNext resume;
  // Outlook raises no event for its first window.
  resume([&] {
    const auto explorer = globals().g_olApp.activeExplorer();
    if (!explorer) return;
    LogDebug(u"Handle g_olApp.ActiveExplorer in AddinInstance_OnStartupComplete");
    myOlExplorers_NewExplorer(explorer);
  });
  if (connected_) StartTimer(StartupInterval);
}

void Connect::AddinInstance_OnBeginShutdown() noexcept {
  LogDebug(u"AddinInstance_OnBeginShutdown");
  StopSelectionTimer();
  StopTimer();
}

void Connect::AddinInstance_OnDisconnection(std::int32_t removeMode) noexcept {
  ResumeNext resume;
  resume([&] {
    LogDebug(
        concat(u"AddinInstance_OnDisconnection, RemoveMode = ", automation::int32Text(removeMode)));
  });
  // The caller's reference may be the last one, and go away in the middle.
  const auto self = shared_from_this();
  connected_ = false;
  ShutdownAll(removeMode == UserClosed);
  resume([] {
    if (const auto form = std::exchange(globals().g_frmMenus, nullptr)) form->Unload();
  });
}

void Connect::ShutdownAll(bool deleteBars) noexcept {
  MAPI_Deinit();
  DeInitAllWrappers(deleteBars);
  release();
}

void Connect::release() noexcept {
  myOlInspectors_.close();
  myOlExplorers_.close();
  trapQuietly([] {
    auto& g = globals();
    g.g_colExplorers.clear();
    g.g_colInspectors.clear();
    g.g_olApp = {};
  });
}

void Connect::myOlExplorers_NewExplorer(const outlook::Explorer& explorer) noexcept {
  trapAndLog(u"...failed: ", [&] {
    LogDebug(u"myOlExplorers_NewExplorer...");
    AddExplorerWrapper(explorer);
    LogDebug(u"...done!");
  });
}

void Connect::myOlInspectors_NewInspector(const outlook::Inspector& inspector) noexcept {
  bool ribbonServes = false;
  trapAndLog(u"...failed: ", [&] {
    LogDebug(u"myOlInspectors_NewInspector...");
    SuspendTimer();
    if (!globals().g_bShowInspectorToolBar) return;
    if (!UseCommandBars()) {
      LogDebug(u"Create Ribbon instead of CommandBar");
      ribbonServes = true;
      return;
    }
    LogDebug(u"Create CommandBar instead of Ribbon");
    AddInspectorWrapper(inspector);
    LogDebug(u"...done!");
  });
  // Where the ribbon serves the inspectors, the general timer stays suspended from the first one
  // on.
  if (!ribbonServes) ResumeTimer();
}

clsRibbon& Connect::ribbon() {
  if (!m_ribbon) throw automation::Error(automation::ErrorNumber::ObjectNotSet);
  return *m_ribbon;
}

std::u16string Connect::IRibbonExtensibility_GetCustomUI(std::u16string_view ribbonId) noexcept {
  std::u16string description;
  trapQuietly([&] {
    if (!m_ribbon) m_ribbon = std::make_unique<clsRibbon>();
    LogDebug(concat(u"IRibbonExtensibility_GetCustomUI called - RibbonID: ", ribbonId));
    description = m_ribbon->GetRibbonDescription(ribbonId);
    m_ribbon->RemoveNotNecessaryCommandBar();
  });
  return description;
}

void Connect::OnLoad(const automation::Object&) noexcept {}

automation::Object Connect::GetImage(const automation::Object& control) noexcept {
  automation::Object picture;
  trapAndLog(u"Ribbon Callback method GetImage - ",
             [&] { picture = ribbon().GetImageByControlId(office::RibbonControl(control).id()); });
  return picture;
}

void Connect::cmdCommonRibbonBttn(const automation::Object& control) noexcept {
  trapAndLog(u"Ribbon Callback method cmdCommonRibbonBttn - ",
             [&] { ribbon().ButtonHandler(office::RibbonControl(control)); });
}

}  // namespace cxol
