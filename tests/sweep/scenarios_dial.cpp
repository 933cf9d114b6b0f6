#include "tests/sweep/Actor.h"
#include "tests/sweep/Scenario.h"

namespace sweep {
namespace {

using outlook::ObjectClass;

/// Plays one choice from the menu of one item.
void dialFrom(Actor& a, std::u16string_view folder, std::u16string_view item,
              std::u16string_view choice) {
  a.startClient();
  a.startOutlook();
  a.pick(folder, item);
  a.user.choice = choice;
  a.click(u"CxBtDial");
}

void person(simulator::MailboxItem& item) {
  item.mapi.name = u"Smith";
  item.mapi.receivedBy = u"me";
  item.mapi.senderAddresses = {u"a@x", u"b@x"};
  item.mapi.recipients = {tests::Texts{u"c@x"}, tests::Texts{}, tests::Texts{u"d@x"},
                          tests::Texts{}};
  item.mapi.telephoneNames = {u"Smith & Sons", u"Jones"};
  item.mapi.telephoneNumbers = {u"0711 21", u"0711 22"};
}

constexpr Scenario Scenarios[] = {
    {"dial, contact with one number",
     [](Actor& a) {
       a.addContact(u"Meier", {{u"HomeTelephoneNumber", u"0711 1"}});
     },
     [](Actor& a) {
       dialFrom(a, u"Contacts", u"Meier", u"");
       a.click(u"CxBtDrop");
     }},
    {"dial, contact with a menu",
     [](Actor& a) {
       a.addContact(u"Meier", {{u"HomeTelephoneNumber", u"0711 1"},
                               {u"MobileTelephoneNumber", u"0711 2"},
                               {u"PagerNumber", u"0711 3"}});
     },
     [](Actor& a) { dialFrom(a, u"Contacts", u"Meier", u"Mobile"); }},
    {"dial, contact without a number", [](Actor& a) { a.addContact(u"Meier"); },
     [](Actor& a) { dialFrom(a, u"Contacts", u"Meier", u"<No"); }},
    {"dial, mail", [](Actor& a) { person(a.add(u"Inbox", ObjectClass::Mail, u"mail")); },
     [](Actor& a) { dialFrom(a, u"Inbox", u"mail", u"Jones"); }},
    {"dial, mail with a number and a caller",
     [](Actor& a) {
       auto& mail = a.add(u"Inbox", ObjectClass::Mail, u"mail");
       mail.properties[u"Subject"] = u"Tel. 0711 31 [x]";
       mail.userProperties[u"CxCallerData"] = u"1=Doe;2=Jane;20=0711 32;22=0711 33;";
     },
     [](Actor& a) { dialFrom(a, u"Inbox", u"Tel. 0711 31 [x]", u"Jane Doe: 0711 33"); }},
    {"dial, other kinds",
     [](Actor& a) {
       a.add(u"Calendar", ObjectClass::Appointment, u"review Tel. 0711 41");
       a.add(u"Tasks", ObjectClass::Task, u"task Tel. 0711 42");
       a.add(u"Journal", ObjectClass::Journal, u"journal Tel. 0711 43");
       a.add(u"Inbox", ObjectClass::MeetingRequest, u"meeting Tel. 0711 44");
       a.add(u"Notes", ObjectClass::Note, u"note");
     },
     [](Actor& a) {
       a.startClient();
       a.startOutlook();
       const std::u16string_view picks[][2] = {{u"Calendar", u"review Tel. 0711 41"},
                                               {u"Tasks", u"task Tel. 0711 42"},
                                               {u"Journal", u"journal Tel. 0711 43"},
                                               {u"Inbox", u"meeting Tel. 0711 44"},
                                               {u"Notes", u"note"}};
       for (const auto& [folder, item] : picks) {
         a.pick(folder, item);
         a.click(u"CxBtDial");
         a.machine.client.telephone().endAll();
       }
     }},
    {"dial, nothing selected", [](Actor&) {},
     [](Actor& a) {
       a.startClient();
       a.startOutlook();
       a.wait(21'000);
       a.click(u"CxBtDial");
       a.click(u"CxBtVelnor");
     }},
    {"dial box",
     [](Actor& a) {
       a.machine.client.telephone().setLines({});
       a.machine.client.setLinesAnswer(automation::Value(5));
     },
     [](Actor& a) {
       a.startClient();
       a.startOutlook();
       a.wait(21'000);
       a.type(u" 0711 51 ");
       a.type(u"Meier");
       a.type(u"");
     }},
    {"dial, remote object", [](Actor& a) { a.option(tests::AddInKey, u"DialRemote", 1); },
     [](Actor& a) {
       a.startClient();
       a.startOutlook();
       a.wait(21'000);
       a.type(u"0711 61");
     }},
    {"dial, calls coming in and connected",
     [](Actor& a) {
       a.addContact(u"Meier", {{u"HomeTelephoneNumber", u"0711 1"}});
     },
     [](Actor& a) {
       a.startClient();
       a.startOutlook();
       a.pick(u"Contacts", u"Meier");
       a.machine.client.ring(u"089 1");
       a.click(u"CxBtDial");
       a.click(u"CxBtDial");
       a.click(u"CxBtDrop");
     }},
    {"actions of all kinds",
     [](Actor& a) {
       a.addContact(u"Meier").links = {u"Smith"};
       a.addContact(u"Smith");
       person(a.add(u"Contacts", ObjectClass::Mail, u"mail"));
       a.add(u"Contacts", ObjectClass::Mail, u"sent").mapi.senderAddresses = {u"e@x", u""};
       a.add(u"Contacts", ObjectClass::Task, u"task").links = {u"Meier", u"mail"};
       person(a.add(u"Calendar", ObjectClass::Appointment, u"review"));
       a.add(u"Contacts", ObjectClass::MeetingRequest, u"meeting").associatedAppointment =
           u"review";
     },
     [](Actor& a) {
       a.startClient();
       a.startOutlook();
       a.pickAll(u"Contacts");
       a.click(u"CxBtAction");
       a.showFolder(u"Calendar");
       a.click(u"CxBtAction");
     }},
};

}  // namespace

std::span<const Scenario> dialScenarios() {
  return Scenarios;
}

}  // namespace sweep
