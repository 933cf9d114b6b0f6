#include <gtest/gtest.h>

#include <chrono>

#include "simulator/data/Utf8.h"
#include "tests/HostTest.h"

namespace tests::outlook_host {
namespace {

TEST_F(HostTest, LoadsAndUnloadsTheAddIn) {
  host =
      std::make_unique<OutlookHost>(mailbox, OutlookOptions{}, bars, boundary, OutlookServices{});
  host->start(&addin);
  EXPECT_EQ(log, (Texts{u"connect 1 VelnorOutlookCOMAddIn.Connect", u"startup complete"}));
  log.clear();
  host->disconnectAddin();
  EXPECT_EQ(boundary.liveHandles(), 0u);
  host->connectAddin(addin);
  EXPECT_EQ(log, (Texts{u"disconnect 1", u"connect 0 VelnorOutlookCOMAddIn.Connect"}));

  log.clear();
  watch(addin.application.activeExplorer().object(), outlook::ExplorerEventInterface, u"1");
  const auto kept = addin.application.explorers();
  const int second = host->openExplorer(u"Contacts");
  host->close(second);
  EXPECT_TRUE(log.empty());
  EXPECT_EQ(kept.count(), 1);
  host->quit();
  EXPECT_EQ(log, (Texts{u"1 Close", u"shutdown", u"disconnect 0"}));
  EXPECT_FALSE(host->running());
  EXPECT_FALSE(host->addinConnected());
  EXPECT_EQ(host->sinkCount(), 0u);
  EXPECT_EQ(errorOf([&] { kept.count(); }), 462) << "Outlook is gone";
  host.reset();
  EXPECT_EQ(errorOf([&] { kept.count(); }), 462);
}

TEST_F(HostTest, ASourceThatIsLetGoTellsNothingAnyMore) {
  start();
  Object explorers = addin.application.explorers().object();
  // Past the handle that would hold it.
  const auto connection = explorers.dispatch()->connect(
      outlook::ExplorersEventInterface,
      std::make_shared<Recorder>([this](auto, auto) { log.push_back(u"new explorer"); }));
  host->openExplorer(u"Contacts");
  explorers = {};
  host->openExplorer(u"Contacts");
  explorers = addin.application.explorers().object();
  host->openExplorer(u"Contacts");
  EXPECT_EQ(log, Texts{u"new explorer"});
}

TEST_F(HostTest, NewWindowsAreToldBeforeTheyAreShown) {
  add(1, ObjectClass::Contact, u"Meier");
  start();
  const auto app = addin.application;
  const auto newWindow = [&](const automation::EventInterface& events) {
    return [&, app](std::span<Value> args) {
      log.push_back(u"in front: " + app.activeWindow().typeName());
      EXPECT_FALSE(app.activeWindow() == args[0].toObject());
      watch(args[0].toObject(), events, u"new one's");
    };
  };
  watch(app.explorers().object(), outlook::ExplorersEventInterface, u"explorers",
        newWindow(outlook::ExplorerEventInterface));
  watch(app.inspectors().object(), outlook::InspectorsEventInterface, u"inspectors",
        newWindow(outlook::InspectorEventInterface));
  const int contact = host->openItem(u"Meier");
  EXPECT_EQ(log, (Texts{u"inspectors NewInspector", u"in front: Explorer", u"new one's Activate"}));
  EXPECT_EQ(app.activeWindow().typeName(), u"Inspector");
  EXPECT_EQ(app.activeInspector().currentItem().text(u"FullName"), u"Meier");
  log.clear();
  host->openExplorer(u"Contacts");
  EXPECT_EQ(log, (Texts{u"explorers NewExplorer", u"in front: Inspector", u"new one's Activate"}));
  EXPECT_EQ(app.activeExplorer().currentFolder().entryId(), u"folder Contacts");
  EXPECT_EQ(app.explorers().count(), 2);

  log.clear();
  EXPECT_EQ(host->openItem(u"Meier"), contact) << "an open item has one window";
  host->activate(contact);
  EXPECT_EQ(log, (Texts{u"new one's Activate", u"new one's Activate"}));
}

TEST_F(HostTest, CountsTheClosingExplorerInOutlook2000Only) {
  for (const auto& [version, counted] :
       {std::pair{u"9.0.0.2711", 1}, {u"10.0.2627", 0}, {u"11.0.5608", 0}, {u"12.0.4518", 0}}) {
    start(version);
    const auto app = addin.application;
    const auto explorer = app.activeExplorer();
    std::int32_t seen = -1;
    watch(explorer.object(), outlook::ExplorerEventInterface, u"1", [&](std::span<Value>) {
      seen = app.explorers().count();
      explorer.commandBars().add(u"Late");
    });
    host->close(1);
    EXPECT_NE(findBar(bars.explorers, u"Late"), nullptr) << "the closing window still serves";
    EXPECT_EQ(seen, counted);
    bars = {};
  }
}

TEST_F(HostTest, SelectionsAreSnapshotsOfTheVeryItems) {
  for (const auto* name : {u"Meier, Hans", u"Meier, Anna", u"Smith"}) {
    add(1, ObjectClass::Contact, name);
  }
  start();
  const auto explorer = addin.application.activeExplorer();
  watch(explorer.object(), outlook::ExplorerEventInterface, u"1");
  host->switchFolder(1, u"Contacts");
  EXPECT_EQ(log, Texts{u"1 FolderSwitch"}) << "nothing had been selected";
  const Texts words{u"Smith", u"Hans"};
  host->select(1, words);
  const auto before = explorer.selection();
  const std::size_t places[] = {1};
  host->selectAt(1, places);
  ASSERT_EQ(before.count(), 2);
  EXPECT_EQ(before.item(1).entryId(), u"Smith");
  EXPECT_TRUE(before.item(2) == explorer.selection().item(1)) << "one object an item";
  EXPECT_FALSE(before.item(1) == before.item(2));
  EXPECT_EQ(errorOf([&] { before.item(0); }), 9);
  EXPECT_EQ(errorOf([&] { before.item(3); }), 9);
  EXPECT_EQ(before.item(2).parent(), explorer.currentFolder());
  log.clear();
  host->switchFolder(1, u"folder Inbox");
  host->switchView(1, u"Unread");
  EXPECT_EQ(log, (Texts{u"1 FolderSwitch", u"1 SelectionChange", u"1 ViewSwitch"}));
  EXPECT_EQ(explorer.selection().count(), 0);
}

TEST_F(HostTest, TakesAHundredThousandItems) {
  for (int i = 0; i < 100'000; ++i) add(0, ObjectClass::Mail, Value(i).toText());
  start();
  const auto began = std::chrono::steady_clock::now();
  host->selectAll(1);
  const auto selection = addin.application.activeExplorer().selection();
  const std::int32_t count = selection.count();
  std::size_t length = 0;
  for (std::int32_t i = 1; i <= count; ++i) length += selection.item(i).entryId().size();
  EXPECT_EQ(length, 10u + 90 * 2 + 900 * 3 + 9'000 * 4 + 90'000 * 5);
  // Some tenths of a second; far from it only when every step looks through all items.
  EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(20));
}

TEST_F(HostTest, ItemsHaveTheMembersOfTheirKind) {
  auto& mail = add(0, ObjectClass::Mail, u"mail");
  mail.userProperties[u"CxCallerData"] = u"number=1";
  mail.links = {u"contact", u"nobody"};
  mail.attachments = {u"a.txt"};
  add(0, ObjectClass::MeetingRequest, u"request").associatedAppointment = u"meeting";
  add(1, ObjectClass::Contact, u"contact");
  add(2, ObjectClass::Appointment, u"meeting");
  add(3, ObjectClass::Note, u"note");
  start();
  const auto item = [&](std::u16string_view id) {
    host->openItem(id);
    return addin.application.activeInspector().currentItem();
  };
  const struct {
    const char16_t* id;
    const char16_t* member;
    std::int32_t error;
  } cases[] = {
      {u"mail", u"SenderName", 0},
      {u"mail", u"HomeTelephoneNumber", 438},
      {u"mail", u"GetAssociatedAppointment", 438},
      {u"request", u"SenderName", 0},
      {u"request", u"GetAssociatedAppointment", 0},
      {u"contact", u"CallbackTelephoneNumber", 0},
      {u"contact", u"SenderName", 438},
      {u"contact", u"UserProperties", 0},
      {u"meeting", u"Subject", 0},
      {u"meeting", u"FullName", 438},
      {u"note", u"Links", 0},
      {u"note", u"UserProperties", 438},
      {u"note", u"Attachments", 438},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(errorOf([&] { item(c.id).object().get(c.member); }), c.error)
        << toUtf8(c.id) << " " << toUtf8(c.member);
  }
  EXPECT_TRUE(outlook::MailItem(item(u"mail").object()).sent());
  EXPECT_EQ(item(u"mail").object().typeName(), u"MailItem");
  EXPECT_EQ(item(u"mail").userProperty(u"CxCallerData"), u"number=1");
  EXPECT_NE(errorOf([&] { item(u"mail").userProperty(u"Other"); }), 0);
  EXPECT_EQ(item(u"mail").attachments().count(), 1);
  EXPECT_EQ(item(u"mail").links().item(1).item().objectClass(), ObjectClass::Contact);
  EXPECT_NE(errorOf([&] { item(u"mail").links().item(2).item(); }), 0);
  const auto appointment = outlook::MeetingItem(item(u"request").object()).associatedAppointment();
  EXPECT_EQ(appointment.entryId(), u"meeting");
}

TEST_F(HostTest, FindsTheNextAppointment) {
  const std::pair<const char16_t*, const char16_t*> appointments[] = {
      {u"late", u"2008-04-01T10:00"}, {u"past", u"2008-03-13T23:59"}, {u"today", u"2008-03-14"}};
  for (const auto& [id, begin] : appointments) {
    add(2, ObjectClass::Appointment, id).properties[u"Start"] = begin;
  }
  start();
  host->switchFolder(1, u"Calendar");
  const auto folder = addin.application.activeExplorer().currentFolder();
  EXPECT_EQ(folder.defaultItemType(), ItemType::Appointment);
  const auto items = folder.items();
  EXPECT_EQ(items.getFirst().entryId(), u"late");
  items.sort(u"[Start]", false);
  items.setIncludeRecurrences(false);
  EXPECT_EQ(items.getFirst().entryId(), u"past");
  EXPECT_EQ(items.find(u"([Start] >= '3/14/2008')").entryId(), u"today");
  EXPECT_EQ(errorOf([&] { items.find(u"([Start] >= 'some day')"); }), 5);
  // An endless series has an appointment on each day.
  mailbox.folders[2].items[1].properties[u"IsRecurring"] = true;
  EXPECT_EQ(items.find(u"([Start] >= '3/14/2008')").entryId(), u"today");
  items.setIncludeRecurrences(true);
  EXPECT_EQ(items.find(u"([Start] >= '3/14/2008')").entryId(), u"past");
  items.setIncludeRecurrences(false);
  mailbox.folders[2].items[2].properties.clear();
  mailbox.folders[2].items[0].properties.clear();
  EXPECT_FALSE(items.find(u"([Start] >= '3/14/2008')"));
  EXPECT_FALSE(addin.application.getNamespace()
                   .getDefaultFolder(outlook::DefaultFolder::Outbox)
                   .items()
                   .getFirst());
}

TEST_F(HostTest, ANewTaskIsShownAndLeavesTheMailboxAlone) {
  start();
  const auto task = addin.application.createTask();
  task.setSubject(u"Call back");
  EXPECT_EQ(task.parent().entryId(), u"folder Tasks");
  task.display();
  EXPECT_EQ(view(*host->activeWindow()).caption, u"Call back - Microsoft Outlook");
  EXPECT_TRUE(mailbox.folders[4].items.empty());
  EXPECT_EQ(errorOf([&] { addin.application.object().call(u"CreateItem", 99); }), 5);
}

TEST_F(HostTest, WordEditsTheMailsThatAreItsOwn) {
  add(0, ObjectClass::Mail, u"plain");
  add(0, ObjectClass::Mail, u"word").wordMail = true;
  add(1, ObjectClass::Contact, u"contact").wordMail = true;
  for (const bool word : {false, true}) {
    start(u"11.0.5608", word);
    for (const auto* id : {u"plain", u"word", u"contact"}) {
      host->openItem(id);
      EXPECT_EQ(addin.application.activeInspector().isWordMail(),
                word && id == mailbox.folders[0].items[1].id);
    }
    host->newItem(ItemType::Mail);
    EXPECT_EQ(addin.application.activeInspector().isWordMail(), word);
    host->quit();
  }
}

TEST_F(HostTest, MembersFailOnDemand) {
  add(1, ObjectClass::Contact, u"a");
  start();
  host->openItem(u"a");
  const auto explorer = addin.application.activeExplorer();
  const auto contact = addin.application.activeInspector().currentItem();
  host->failMember(u"Explorer", u"CommandBars", Error(70, u"not now"));
  host->failMember(u"Explorers", u"Count");
  host->failMember(u"ContactItem", u"FullName");
  host->failMember(u"Selection", u"Count");
  EXPECT_EQ(errorOf([&] { explorer.commandBars(); }), 70);
  EXPECT_EQ(errorOf([&] { addin.application.activeInspector().commandBars(); }), 0);
  EXPECT_EQ(errorOf([&] { addin.application.explorers().count(); }), 440);
  EXPECT_EQ(errorOf([&] { contact.text(u"FullName"); }), 440);
  EXPECT_EQ(errorOf([&] { explorer.selection().count(); }), 440);
  host->restoreMember(u"Explorer", u"CommandBars");
  EXPECT_EQ(errorOf([&] { explorer.commandBars(); }), 0);

  int calls = 0;
  host->setControlsAddHook([&](int window) {
    if (++calls == 1) host->activate(window);
  });
  watch(explorer.object(), outlook::ExplorerEventInterface, u"1");
  addButton(1, u"t");
  EXPECT_EQ(log, Texts{u"1 Activate"}) << "in the middle of the call";
}

TEST_F(HostTest, TellsTheUserWhatIsNotThere) {
  for (const auto* name : {u"Meier, Hans", u"Meier, Anna"}) add(1, ObjectClass::Contact, name);
  start();
  host->switchFolder(1, u"Contacts");
  const int inspector = host->openItem(u"Meier, Hans");
  const std::pair<std::function<void()>, const char*> cases[] = {
      {[&] { host->activate(7); }, "there is no window 7"},
      {[&] { host->switchFolder(inspector, u"Inbox"); }, "window 2 is no explorer"},
      {[&] { host->switchFolder(1, u"Büro"); }, "there is no folder \"Büro\""},
      {[&] { host->openItem(u"Meier"); }, "there is no item \"Meier\""},
      {[&] { host->click(1, u"Dial"); }, "window 1 shows no button \"Dial\""},
      {[&] { host->start(nullptr); }, "this Outlook was started already"},
      {[&] { host->connectAddin(addin); }, "the add-in is switched on already"},
      {[&] {
         const Texts words{u"Meier"};
         host->select(1, words);
       },
       "folder \"Contacts\" has more than one item \"Meier\""},
      {[&] {
         const std::size_t places[] = {3};
         host->selectAt(1, places);
       },
       "the folder has no item 3"},
  };
  for (const auto& [action, text] : cases) {
    try {
      action();
      ADD_FAILURE() << "no error: " << text;
    } catch (const HostError& error) {
      EXPECT_STREQ(error.what(), text);
    }
  }
  host->quit();
  EXPECT_THROW(host->openExplorer(), HostError);
  EXPECT_THROW(host->disconnectAddin(), HostError);
  EXPECT_TRUE(host->snapshot().windows.empty());
}

}  // namespace
}  // namespace tests::outlook_host
