#include "tests/sweep/Actor.h"
#include "tests/sweep/Scenario.h"

namespace sweep {
namespace {

void contact(Actor& a) {
  a.addContact(u"Meier", {{u"HomeTelephoneNumber", u"0711 1"}});
  a.addContact(u"Smith", {{u"HomeTelephoneNumber", u"0711 2"}});
}

constexpr Scenario Scenarios[] = {
    {"switched off with windows open", contact,
     [](Actor& a) {
       a.startOutlook();
       a.pick(u"Contacts", u"Meier");
       a.open(u"Smith");
       a.switchOff();
       a.wait(1'000);
     }},
    {"switched off and on again", contact,
     [](Actor& a) {
       a.startClient();
       a.startOutlook();
       a.switchOff();
       a.wait(15'000);
       a.switchOn();
       a.pick(u"Contacts", u"Smith");
       a.wait(500);
       a.click(u"CxBtDial");
     }},
    {"quitting with the client",
     [](Actor& a) {
       contact(a);
       a.option(tests::ClientKey, u"StopWithOutlook", 1);
     },
     [](Actor& a) {
       a.startClient();
       a.startOutlook();
       a.pick(u"Contacts", u"Meier");
       a.open(u"Smith");
       a.quit();
     }},
    {"Outlook 2000, windows closing one by one",
     [](Actor& a) {
       contact(a);
       a.option(tests::ClientKey, u"StopWithOutlook", 1);
     },
     [](Actor& a) {
       a.startClient();
       a.startOutlook(u"9.0.0.2711");
       a.openSecondExplorer(u"Contacts");
       a.pick(u"Contacts", u"Meier");
       a.closeWindow(1);
       a.openSecondExplorer(u"Inbox");
       a.open(u"Smith");
       a.closeWindow(3);
       a.wait(500);
       a.closeWindow(2);
     }},
};

}  // namespace

std::span<const Scenario> lifeScenarios() {
  return Scenarios;
}

}  // namespace sweep
