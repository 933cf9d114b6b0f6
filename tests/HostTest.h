#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "simulator/object.h"
#include "simulator/outlook/OutlookHost.h"

namespace tests::outlook_host {

using namespace simulator;

using automation::Connection;
using automation::Error;
using automation::Object;
using automation::Value;
using outlook::Application;
using outlook::ItemType;
using outlook::ObjectClass;
using Texts = std::vector<std::u16string>;

/// Writes down what it receives.
class Recorder : public automation::EventSink {
 public:
  explicit Recorder(std::function<void(std::int32_t, std::span<Value>)> event)
      : event_(std::move(event)) {}
  void onEvent(std::int32_t id, std::span<Value> args) noexcept override { event_(id, args); }

 private:
  std::function<void(std::int32_t, std::span<Value>)> event_;
};

/// An add-in that writes down what Outlook asks of it.
class RecordingAddin : public Addin {
 public:
  explicit RecordingAddin(Texts& log) : log_(log) {}

  void onConnection(const Object& given, std::int32_t mode, const Object& instance) override {
    application = Application(given);
    log_.push_back(u"connect " + Value(mode).toText() + u" " + instance.get(u"ProgId").toText());
  }
  void onStartupComplete() override { log_.push_back(u"startup complete"); }
  void onBeginShutdown() override { log_.push_back(u"shutdown"); }
  void onDisconnection(std::int32_t mode) override {
    log_.push_back(u"disconnect " + Value(mode).toText());
    application = {};
    connections.clear();
  }
  std::u16string getCustomUi(std::u16string_view ribbonId) override {
    log_.push_back(u"ui " + std::u16string(ribbonId));
    if (onUi) onUi();
    return markup;
  }
  Value ribbonCallback(std::u16string_view name, std::span<const Value> args) override {
    if (name == u"Missing") throw Error(automation::ErrorNumber::MemberNotFound);
    const Object& argument = args[0].toObject();
    const bool control = argument.typeName() == u"IRibbonControl";
    log_.push_back(std::u16string(name) + u" " +
                   (control ? argument.get(u"Id").toText() : argument.typeName()));
    if (control) context = argument.get(u"Context").toObject().typeName();
    return name == u"GetImage" ? Value(picture) : Value();
  }

  Application application;
  std::vector<Connection> connections;
  std::u16string markup;
  /// Runs while Outlook asks for the markup.
  std::function<void()> onUi;
  std::u16string context;
  Object picture;

 private:
  Texts& log_;
};

class Picture : public TableObject<Picture> {
 public:
  static constexpr std::u16string_view Name = u"Picture";
  static std::span<const MemberRow<Picture>> members() {
    static const MemberRow<Picture> rows[] = {
        {u"Name", [](Picture&, Arguments) { return Value(u"a face"); }}};
    return rows;
  }
};

/// A simulated Outlook on a small mailbox with an add-in that records.
class HostTest : public testing::Test {
 protected:
  HostTest() {
    addFolder(u"Inbox", ItemType::Mail);
    addFolder(u"Contacts", ItemType::Contact);
    addFolder(u"Calendar", ItemType::Appointment);
    addFolder(u"Notes", ItemType::Note);
    addFolder(u"Tasks", ItemType::Task);
    addFolder(u"Outbox", ItemType::Mail).outbox = true;
  }

  MailboxFolder& addFolder(const char16_t* name, ItemType type) {
    auto& folder = mailbox.folders.emplace_back();
    folder.name = name;
    folder.id = u"folder " + folder.name;
    folder.itemType = type;
    return folder;
  }
  MailboxItem& add(std::size_t folder, ObjectClass kind, std::u16string id) {
    auto& item = mailbox.folders[folder].items.emplace_back();
    item.kind = kind;
    item.id = id;
    item.properties[kind == ObjectClass::Contact ? u"FullName" : u"Subject"] = id;
    return item;
  }
  OutlookHost& start(std::u16string_view version = u"11.0.5608", bool word = false) {
    options.version = version;
    options.wordIsMailEditor = word;
    OutlookServices services;
    services.clipboard = [this] { return clipboard; };
    services.face = [](const Object& picture, const Object& mask) {
      return picture.get(u"Name").toText() + (mask ? u" in a mask" : u"");
    };
    services.parseDate = [](std::u16string_view text) -> std::optional<platform::LocalTime> {
      if (text != u"3/14/2008") return std::nullopt;
      return platform::LocalTime{2008, 3, 14};
    };
    host = std::make_unique<OutlookHost>(mailbox, options, bars, boundary, services);
    host->start(&addin);
    log.clear();
    return *host;
  }
  /// Writes the events of an object down as `name` and the event's own name.
  void watch(const Object& source, const automation::EventInterface& events, std::u16string name,
             std::function<void(std::span<Value>)> act = {}) {
    addin.connections.push_back(source.connect(
        events, std::make_shared<Recorder>([this, name, act, &events](std::int32_t id,
                                                                      std::span<Value> args) {
          const auto event = std::ranges::find(events.events, id, &automation::Event::id);
          log.push_back(name + u" " + std::u16string(event->name));
          if (act) act(args);
        })));
  }
  office::CommandBars barsOf(int window) const {
    const auto kind = std::ranges::count(host->windows(WindowKind::Explorer), window) != 0
                          ? WindowKind::Explorer
                          : WindowKind::Inspector;
    const auto numbers = host->windows(kind);
    const auto index = std::ranges::find(numbers, window) - numbers.begin() + 1;
    const auto& app = addin.application;
    const auto all =
        (kind == WindowKind::Explorer ? app.explorers().object() : app.inspectors().object());
    return office::CommandBars(all.call(u"Item", static_cast<std::int32_t>(index))
                                   .toObject()
                                   .get(u"CommandBars")
                                   .toObject());
  }
  /// A visible bar with one tagged button.
  office::CommandBarControl addButton(int window, std::u16string_view tag) const {
    const auto bar = barsOf(window).add(u"Bar");
    bar.setVisible(true);
    const auto button = bar.controls().add(office::ControlType::Button);
    button.setTag(tag);
    return button;
  }
  WindowView view(int window) const {
    for (auto& each : host->snapshot().windows) {
      if (each.number == window) return each;
    }
    throw std::runtime_error("no such window");
  }

  Mailbox mailbox;
  OutlookOptions options;
  BarStore bars;
  Boundary boundary;
  Texts log;
  RecordingAddin addin{log};
  std::u16string clipboard;
  std::unique_ptr<OutlookHost> host;
};

/// The number of the error that an action raises, 0 for none.
inline std::int32_t errorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const Error& error) {
    return error.number();
  }
  return 0;
}

}  // namespace tests::outlook_host
