#include "tests/sweep/Actor.h"
#include "tests/sweep/Scenario.h"

namespace sweep {
namespace {

using outlook::ObjectClass;
using simulator::storedBar;

void contacts(Actor& a) {
  a.addContact(u"Meier", {{u"BusinessTelephoneNumber", u"0711 1"}});
  a.addContact(u"Smith & Sons", {{u"HomeTelephoneNumber", u"0711 2"}});
}

void buildAndLook(Actor& a) {
  a.startOutlook();
  a.wait(20'800);
  a.pick(u"Contacts", u"Meier");
  a.wait(500);
}

constexpr Scenario Scenarios[] = {
    {"start-up", [](Actor&) {},
     [](Actor& a) {
       a.startOutlook();
       a.wait(12'700);
     }},
    {"start-up with the client and the trace file",
     [](Actor& a) {
       a.machine.loggingLibrary.setPresent(false);
       a.option(tests::ClientKey, u"StartWithOutlook", 1);
     },
     [](Actor& a) {
       a.startOutlook();
       a.wait(12'700);
     }},
    {"toolbar, new", contacts, buildAndLook},
    {"toolbar, new in Outlook 2000 beside a watched clipboard",
     [](Actor& a) { a.machine.pictures.watchClipboard(30); },
     [](Actor& a) {
       a.startOutlook(u"9.0.0.3821");
       a.wait(20'800);
     }},
    {"toolbar, found",
     [](Actor& a) {
       contacts(a);
       a.bars.explorers = {storedBar(
           u"Velnor ", {u"CxCbDial", u"CxBtDial", u"CxBtDrop", u"CxBtVelnor", u"CxBtAction"})};
     },
     buildAndLook},
    {"toolbar, old layout",
     [](Actor& a) {
       contacts(a);
       a.bars.explorers = {storedBar(u"Ondaris Station 1",
                                     {u"CxBtDial", u"CxBtTransfer", u"CxBtPickup", u"Other"})};
     },
     buildAndLook},
    {"toolbar, obsolete buttons",
     [](Actor& a) {
       contacts(a);
       a.bars.explorers = {storedBar(u"Ondaris Station 2/3", {u"CxBtDrop", u"CxBtIncognito",
                                                              u"CxBtPickup", u"CxBtCallInfo"})};
     },
     buildAndLook},
    {"selections",
     [](Actor& a) {
       contacts(a);
       a.add(u"Inbox", ObjectClass::Mail, u"mail").mapi.displayTo = u"someone";
       a.add(u"Calendar", ObjectClass::Appointment, u"review & talk");
       a.add(u"Journal", ObjectClass::Journal, u"journal");
       a.add(u"Notes", ObjectClass::Note, u"note");
       a.add(u"Inbox", ObjectClass::MeetingRequest, u"meeting");
     },
     [](Actor& a) {
       a.startOutlook();
       const std::u16string_view picks[][2] = {
           {u"Contacts", u"Smith & Sons"}, {u"Inbox", u"mail"}, {u"Calendar", u"review & talk"},
           {u"Journal", u"journal"},       {u"Notes", u"note"}, {u"Inbox", u"meeting"},
       };
       for (const auto& [folder, item] : picks) {
         a.pick(folder, item);
         a.wait(500);
       }
       a.showFolder(u"Outbox");
       a.wait(500);
       a.showFolder(u"Calendar");
       a.wait(500);
     }},
};

}  // namespace

std::span<const Scenario> toolbarScenarios() {
  return Scenarios;
}

}  // namespace sweep
