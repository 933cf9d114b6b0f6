#include "tests/sweep/Actor.h"
#include "tests/sweep/Scenario.h"

namespace sweep {
namespace {

using outlook::ObjectClass;
using simulator::storedBar;

constexpr std::u16string_view Outlook2007 = u"12.0.4518.1014";

void contacts(Actor& a) {
  a.addContact(u"Meier",
               {{u"HomeTelephoneNumber", u"0711 1"}, {u"MobileTelephoneNumber", u"0711 2"}});
  a.addContact(u"Smith").links = {u"Meier"};
}

void openAndClose(Actor& a) {
  a.startOutlook();
  a.open(u"Meier");
  a.bringToFront(2);
  a.wait(13'000);
  a.closeActive();
}

constexpr Scenario Scenarios[] = {
    {"inspector, new bar", contacts, openAndClose},
    {"inspector, found bar",
     [](Actor& a) {
       contacts(a);
       a.bars.inspectors = {storedBar(u"Velnor ", {u"CxBtDial", u"CxBtDrop", u"CxBtAction"})};
     },
     openAndClose},
    {"inspector, old layout",
     [](Actor& a) {
       contacts(a);
       a.bars.inspectors = {storedBar(u"Ondaris Station 2/3", {u"CxBtTransfer", u"x"})};
     },
     openAndClose},
    {"inspector, old layout without a dial button",
     [](Actor& a) {
       contacts(a);
       a.bars.inspectors = {storedBar(u"Velnor ", {u"CxBtTransfer", u"CxBtDrop"})};
     },
     openAndClose},
    {"inspector, found bar without a dial button",
     [](Actor& a) {
       contacts(a);
       a.bars.inspectors = {storedBar(u"Velnor ", {u"CxBtDrop"})};
     },
     openAndClose},
    {"inspector, protected bar",
     [](Actor& a) {
       contacts(a);
       a.bars.inspectors = {storedBar(u"Velnor", {u"CxBtDrop", u"CxBtIncognito"})};
       a.bars.inspectors[0].refusesControls = true;
     },
     openAndClose},
    {"inspector, empty bar",
     [](Actor& a) {
       contacts(a);
       a.bars.inspectors = {storedBar(u"Velnor ")};
     },
     [](Actor& a) {
       a.startOutlook();
       a.open(u"Meier");
       a.wait(19'000);
     }},
    {"inspector, clicks", contacts,
     [](Actor& a) {
       a.startClient();
       a.startOutlook();
       a.open(u"Smith");
       a.click(u"CxBtDial");
       a.open(u"Meier");
       a.user.choice = u"Home";
       a.click(u"CxBtDial");
       a.click(u"CxBtDrop");
       a.user.choice = u"Mobile";
       a.click(u"CxBtAction");
       a.user.choice = u"Actions";
       a.click(u"CxBtAction");
     }},
    {"inspector, call task",
     [](Actor& a) {
       contacts(a);
       auto& mail = a.add(u"Inbox", ObjectClass::Mail, u"mail");
       mail.properties[u"Subject"] = u"Tel. 0711 3";
       mail.links = {u"Meier", u"Smith"};
     },
     [](Actor& a) {
       a.startClient();
       a.startOutlook();
       a.showFolder(u"Inbox");
       a.open(u"Tel. 0711 3");
       a.chooseTask();
       a.click(u"CxBtDial");
     }},
    {"ribbon", contacts,
     [](Actor& a) {
       a.startClient();
       a.startOutlook(Outlook2007);
       a.open(u"Meier");
       a.user.choice = u"Home";
       a.clickRibbon(u"IDS_WaehlenCombo");
       a.clickRibbon(u"IDS_Auflegen");
       a.user.choice = u"Actions";
       a.clickRibbon(u"IDS_Aktionen");
       a.closeActive();
     }},
    {"ribbon, mails",
     [](Actor& a) {
       a.addContact(u"Meier");
       auto& sent = a.add(u"Inbox", ObjectClass::Mail, u"sent");
       sent.properties[u"Sent"] = true;
       auto& fax = a.add(u"Inbox", ObjectClass::Mail, u"fax");
       fax.properties[u"Sent"] = false;
       fax.properties[u"MessageClass"] = u"IPM.Note.K9T.FAX";
       a.add(u"Notes", ObjectClass::Note, u"note");
       a.bars.inspectors = {storedBar(u"Velnor", {u"CxBtDial"})};
     },
     [](Actor& a) {
       a.startOutlook(Outlook2007);
       for (const auto item : {u"Meier", u"sent", u"fax", u"note"}) a.open(item);
       a.wait(21'000);
     }},
};

}  // namespace

std::span<const Scenario> inspectorScenarios() {
  return Scenarios;
}

}  // namespace sweep
