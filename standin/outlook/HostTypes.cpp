#include "standin/outlook/HostTypes.h"

#include "platform/office.h"
#include "platform/outlook.h"
#include "simulator/data/ItemKinds.h"
#include "standin/com/DispatchExport.h"
#include "standin/com/ExportType.h"
#include "standin/com/namedTypeInfo.h"

namespace standin {
namespace {

struct TypeRow {
  std::u16string_view className;
  std::u16string_view interfaceName;
  const automation::EventInterface* events = nullptr;
};

constexpr TypeRow Types[] = {
    {u"Application", u"_Application"},
    {u"NameSpace", u"_NameSpace"},
    {u"Explorers", u"_Explorers", &outlook::ExplorersEventInterface},
    {u"Explorer", u"_Explorer", &outlook::ExplorerEventInterface},
    {u"Inspectors", u"_Inspectors", &outlook::InspectorsEventInterface},
    {u"Inspector", u"_Inspector", &outlook::InspectorEventInterface},
    {u"MAPIFolder", u"MAPIFolder"},
    {u"Items", u"_Items"},
    {u"Selection", u"Selection"},
    {u"Links", u"Links"},
    {u"Link", u"Link"},
    {u"Attachments", u"Attachments"},
    {u"UserProperties", u"UserProperties"},
    {u"UserProperty", u"UserProperty"},
    {u"CommandBars", u"_CommandBars"},
    {u"CommandBar", u"CommandBar"},
    {u"CommandBarControls", u"CommandBarControls"},
    {u"CommandBarButton", u"_CommandBarButton", &office::CommandBarButtonEvents},
    {u"CommandBarComboBox", u"_CommandBarComboBox", &office::CommandBarComboBoxEvents},
    {u"COMAddIn", u"COMAddIn"},
    {u"IRibbonUI", u"IRibbonUI"},
    {u"IRibbonControl", u"IRibbonControl"},
};

}  // namespace

void offerHostObjects() {
  DispatchExport::offerOwnObjects();
  for (const TypeRow& row : Types) {
    ExportType type{namedTypeInfo(row.interfaceName), {}};
    if (row.events) type.events.push_back(row.events);
    ExportTypes::add(row.className, std::move(type));
  }
  for (const simulator::ItemKind& kind : simulator::itemKinds())
    ExportTypes::add(kind.typeName, {namedTypeInfo(u"_" + std::u16string(kind.typeName)), {}});
}

}  // namespace standin
