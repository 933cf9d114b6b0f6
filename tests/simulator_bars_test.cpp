#include <gtest/gtest.h>

#include "tests/HostTest.h"

namespace tests::outlook_host {
namespace {

using BarsTest = HostTest;

TEST_F(BarsTest, ExplorersShareTheirBarsButNotTheirLook) {
  start();
  const int second = host->openExplorer();
  const auto button = addButton(1, u"CxBtDial");
  button.setParameter(u"first");
  const auto other = barsOf(second).item(u"Bar").findControl(u"CxBtDial");
  other.setParameter(u"second");
  EXPECT_EQ(button.parameter(), u"second");
  EXPECT_TRUE(view(1).bars[0].visible);
  EXPECT_FALSE(view(second).bars[0].visible);
  EXPECT_THROW(host->click(second, u"CxBtDial"), HostError) << "it is hidden there";

  barsOf(second).item(u"Bar").setName(u"Renamed");
  barsOf(second).item(u"Renamed").setPosition(office::BarPosition::Top);
  host->close(1);
  host->close(second);
  ASSERT_EQ(bars.explorers.size(), 1u);
  EXPECT_EQ(bars.explorers[0].name, u"Renamed");
  EXPECT_FALSE(bars.explorers[0].visible) << "as the last window had it";
  EXPECT_EQ(bars.explorers[0].position, office::BarPosition::Top);

  start();
  EXPECT_EQ(barsOf(1).item(u"Renamed").findControl(u"CxBtDial").parameter(), u"second");
  barsOf(1).item(u"Renamed").remove();
  host->quit();
  EXPECT_TRUE(bars.explorers.empty());
}

TEST_F(BarsTest, InspectorsHaveCopiesThatAreKeptWhenTheyClose) {
  for (const auto* name : {u"a", u"b"}) add(1, ObjectClass::Contact, name);
  bars.inspectors = {storedBar(u"Old", {u"x"}), storedBar(u"Foreign")};
  start();
  const int a = host->openItem(u"a");
  const int b = host->openItem(u"b");
  barsOf(a).item(u"Old").findControl(u"x").setTag(u"changed");
  EXPECT_TRUE(barsOf(b).item(u"Old").findControl(u"x")) << "the other has its own";
  barsOf(a).item(u"Old").setName(u"New");
  barsOf(a).item(u"New").setVisible(true);
  EXPECT_NE(findBar(bars.inspectors, u"Old"), nullptr) << "until it closes";
  host->close(a);
  ASSERT_EQ(findBar(bars.inspectors, u"Old"), nullptr);
  ASSERT_NE(findBar(bars.inspectors, u"New"), nullptr);
  EXPECT_TRUE(findBar(bars.inspectors, u"New")->visible);
  EXPECT_EQ(findBar(bars.inspectors, u"New")->controls[0].tag, u"changed");
  // The other window never heard of the new bar, so it does not take it away.
  barsOf(b).item(u"Old").remove();
  host->close(b);
  EXPECT_EQ(bars.inspectors.size(), 2u);
  EXPECT_NE(findBar(bars.inspectors, u"New"), nullptr);
  EXPECT_NE(findBar(bars.inspectors, u"Foreign"), nullptr);

  for (int i = 0; i < 100; ++i) host->close(host->openItem(u"a"));
  EXPECT_EQ(bars.inspectors.size(), 2u);
  EXPECT_EQ(addin.application.inspectors().count(), 0);
}

TEST_F(BarsTest, BarsMayStayEmptyForAWhile) {
  add(1, ObjectClass::Contact, u"a");
  auto late = storedBar(u"Late", {u"x", u"y"});
  late.emptyActivations = 3;
  bars.inspectors = {late};
  bars.explorers = {late};
  start();
  const auto count = [&](int window) { return barsOf(window).item(u"Late").controls().count(); };
  const int window = host->openItem(u"a");
  for (const int each : {1, window}) {
    // A window was activated once when it was opened.
    for (int activation = 2; activation <= 4; ++activation) {
      EXPECT_EQ(count(each), 0) << activation;
      host->activate(each);
    }
    EXPECT_EQ(count(each), 2);
  }
  host->close(window);
  EXPECT_EQ(bars.inspectors[0].emptyActivations, 0) << "from now on it is full at once";

  bars.inspectors = {late};
  const int filled = host->openItem(u"a");
  host->close(filled);
  EXPECT_EQ(bars.inspectors[0].emptyActivations, 3) << "the next window waits anew";
  EXPECT_EQ(bars.inspectors[0].controls.size(), 2u);
  const int again = host->openItem(u"a");
  barsOf(again).item(u"Late").controls().add(office::ControlType::Button);
  for (int i = 0; i < 5; ++i) host->activate(again);
  EXPECT_EQ(count(again), 1) << "whoever fills it first has it";
}

TEST_F(BarsTest, BarsRaiseWhatOfficeRaises) {
  add(1, ObjectClass::Contact, u"a");
  auto stubborn = storedBar(u"Stubborn");
  stubborn.refusesControls = true;
  bars.explorers = {stubborn};
  start();
  const auto all = barsOf(1);
  const auto button = addButton(1, u"t");
  const auto edit = all.item(u"Bar").controls().add(office::ControlType::Edit);
  const auto addTo = [&](std::u16string_view name) {
    return [&, name] { all.item(name).controls().add(office::ControlType::Button); };
  };
  EXPECT_EQ(errorOf([&] { all.item(u"bar"); }), 5);
  EXPECT_EQ(errorOf([&] { all.add(u"Bar"); }), 5);
  EXPECT_EQ(errorOf([&] { all.item(u"Stubborn").setName(u"Bar"); }), 5);
  EXPECT_EQ(errorOf([&] { all.item(u"Bar").setName(u"Bar"); }), 0);
  EXPECT_EQ(errorOf([&] { all.item(u"Bar").controls().item(3); }), 5);
  EXPECT_EQ(errorOf([&] { button.text(); }), 438);
  EXPECT_EQ(errorOf([&] { edit.pasteFace(); }), 438);
  EXPECT_EQ(errorOf([&] { button.pasteFace(); }), 440) << "nothing on the clipboard";
  clipboard = u"pasted";
  button.pasteFace();
  const auto face = [&] { return view(1).bars[1].controls[0].picture; };
  EXPECT_EQ(face(), u"pasted");
  const Object picture = std::make_shared<Picture>()->handle();
  EXPECT_EQ(errorOf([&] { button.setMask(picture); }), 5) << "a mask without a picture";
  EXPECT_EQ(errorOf([&] { edit.setPicture(picture); }), 438);
  EXPECT_EQ(errorOf([&] { button.setPicture({}); }), 5);
  button.setPicture(picture);
  EXPECT_EQ(face(), u"a face");
  EXPECT_EQ(errorOf([&] { button.setMask({}); }), 5);
  button.setMask(picture);
  EXPECT_EQ(face(), u"a face in a mask");
  EXPECT_FALSE(all.item(u"Bar").findControl(u"missing"));

  EXPECT_EQ(errorOf(addTo(u"Stubborn")), 440);
  all.item(u"Stubborn").remove();
  all.add(u"Stubborn");
  EXPECT_EQ(errorOf(addTo(u"Stubborn")), 0);

  edit.setWidth(150);
  EXPECT_EQ(button.left() + 23, edit.left());
  EXPECT_EQ(view(1).bars[0].controls[1].width, 150);
  const auto bar = all.item(u"Bar");
  button.remove();
  EXPECT_EQ(errorOf([&] { button.tag(); }), 440);
  bar.remove();
  EXPECT_EQ(errorOf([&] { bar.name(); }), 440);
  EXPECT_EQ(errorOf([&] { edit.tag(); }), 440);
  const int window = host->openItem(u"a");
  const auto closed = addButton(window, u"t");
  host->close(window);
  EXPECT_EQ(errorOf([&] { closed.tag(); }), 440);
}

TEST_F(BarsTest, ClicksReachEverySinkOfTheTag) {
  for (const auto* name : {u"a", u"b"}) add(1, ObjectClass::Contact, name);
  start();
  const int a = host->openItem(u"a");
  const int b = host->openItem(u"b");
  const auto parameter = [&](std::span<Value> args) {
    log.push_back(args[0].toObject().get(u"Parameter").toText());
  };
  for (const int window : {a, b, 1}) {
    const auto button = addButton(window, window == 1 ? u"other" : u"same");
    const auto name = Value(window).toText();
    button.setParameter(name);
    watch(button.object(), office::CommandBarButtonEvents, name, parameter);
  }
  const std::size_t sinks = host->sinkCount();
  host->click(a, u"same");
  EXPECT_EQ(log, (Texts{u"2 Click", u"2", u"3 Click", u"2"}));
  EXPECT_EQ(*host->activeWindow(), a) << "a click brings its window to the front";
  log.clear();
  addin.connections.erase(addin.connections.begin());
  EXPECT_EQ(host->sinkCount(), sinks - 1);
  host->click(a, u"same");
  EXPECT_EQ(log, (Texts{u"3 Click", u"2"}));

  const auto edit = barsOf(1).item(u"Bar").controls().add(office::ControlType::Edit);
  edit.setCaption(u"Number");
  watch(edit.object(), office::CommandBarComboBoxEvents, u"box",
        [&](std::span<Value> args) { log.push_back(args[0].toObject().get(u"Text").toText()); });
  EXPECT_NE(errorOf([&] { watch(edit.object(), office::CommandBarButtonEvents, u"no button"); }),
            0);
  log.clear();
  host->typeInto(1, u"Number", u"030 1");
  EXPECT_EQ(log, (Texts{u"box Change", u"030 1"}));
}

TEST_F(BarsTest, ABarMayBeBuiltAnewByTheClicksOwnActivation) {
  start();
  addButton(1, u"t");
  watch(addin.application.activeExplorer().object(), outlook::ExplorerEventInterface, u"1",
        [&](std::span<Value>) {
          barsOf(1).item(u"Bar").remove();
          watch(addButton(1, u"t").object(), office::CommandBarButtonEvents, u"new");
        });
  host->openExplorer();
  host->click(1, u"t");
  EXPECT_EQ(log, (Texts{u"1 Activate", u"new Click"}));
}

}  // namespace
}  // namespace tests::outlook_host
