#include "fuzz/OneItemHost.h"

#include "infra/modRes.h"
#include "ribbon/Form1.h"

namespace fuzz {

OneItemHost::OneItemHost() {
  cxol::SetLanguage(u"EN");
  machine.installClient();
  machine.client.startReady();
  machine.mapiHelper.setFacts([this](const auto&) { return &facts; });
  machine.mapiHelper.init();
  const auto inspector = std::make_shared<Record>(u"Inspector");
  inspector->set(u"CurrentItem", item->handle());
  const auto inspectors = std::make_shared<Record>(u"Inspectors");
  inspectors->set(u"Count", 1);
  inspectors->set(u"Item", inspector->handle());
  const auto application = std::make_shared<Record>(u"Application");
  application->set(u"ActiveWindow", inspector->handle());
  application->set(u"ActiveInspector", inspector->handle());
  application->set(u"Inspectors", inspectors->handle());
  auto& state = cxol::globals();
  state.g_olApp = outlook::Application(boundary.out(application->handle()));
  state.g_frmMenus = std::make_shared<cxol::Form1>();
  state.g_product = u"Velnor ";
  state.g_bMapiInitialized = true;
}

}  // namespace fuzz
