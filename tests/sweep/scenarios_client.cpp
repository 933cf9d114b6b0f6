#include "tests/sweep/Actor.h"
#include "tests/sweep/Scenario.h"

namespace sweep {
namespace {

void contact(Actor& a) {
  a.addContact(u"Meier", {{u"HomeTelephoneNumber", u"0711 1"}});
}

/// Outlook with its toolbar and a contact selected.
void begin(Actor& a) {
  a.startOutlook();
  a.pick(u"Contacts", u"Meier");
}

constexpr Scenario Scenarios[] = {
    {"client missing",
     [](Actor& a) {
       contact(a);
       a.machine.client.uninstall(a.machine.registry);
     },
     [](Actor& a) {
       begin(a);
       a.click(u"CxBtDial");
       a.click(u"CxBtVelnor");
       a.type(u"0711 2");
     }},
    {"client started by its button", contact,
     [](Actor& a) {
       begin(a);
       a.click(u"CxBtVelnor");
       a.wait(2'000);
       a.click(u"CxBtDial");
     }},
    {"client without its window", contact,
     [](Actor& a) {
       a.machine.client.setGaps({true, false, false});
       a.startClient();
       begin(a);
       a.click(u"CxBtDial");
     }},
    {"client window gone and not to be started", contact,
     [](Actor& a) {
       a.machine.client.setGaps({true, false, false});
       a.startClient();
       begin(a);
       a.machine.registry.remove(platform::RegistryRoot::ClassesRoot,
                                 simulator::Client::RegistryKey, u"");
       a.click(u"CxBtDial");
     }},
    {"client never in service", contact,
     [](Actor& a) {
       a.machine.client.setGaps({false, false, true});
       a.startClient();
       begin(a);
       a.click(u"CxBtDial");
     }},
    {"client frozen", contact,
     [](Actor& a) {
       a.startClient();
       begin(a);
       a.machine.client.freeze(true);
       a.click(u"CxBtVelnor");
       a.click(u"CxBtDial");
       a.machine.client.freeze(false);
       a.click(u"CxBtVelnor");
     }},
    {"client hanging", contact,
     [](Actor& a) {
       a.startClient();
       begin(a);
       a.machine.client.hang(true);
       a.click(u"CxBtDial");
       a.machine.client.hang(false);
       a.click(u"CxBtDial");
     }},
};

}  // namespace

std::span<const Scenario> clientScenarios() {
  return Scenarios;
}

}  // namespace sweep
