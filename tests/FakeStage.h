#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/player/Player.h"
#include "simulator/player/Stage.h"
#include "simulator/player/Text.h"

namespace scenario {

using platform::PopupEntry;

inline PopupEntry entry(int id, std::u16string caption, bool enabled = true,
                        std::vector<PopupEntry> entries = {}) {
  return {id, std::move(caption), enabled, false, std::move(entries)};
}

inline ControlPicture button(std::u16string tag, std::u16string caption, std::u16string picture) {
  ControlPicture control;
  control.tag = std::move(tag);
  control.caption = std::move(caption);
  control.picture = std::move(picture);
  control.showsPicture = true;
  control.showsText = false;
  return control;
}

/// A world of two folders. Clicking the dial button opens `menu` and tells the client what was
/// chosen; every other action is put down in `done`.
class FakeStage : public Stage {
 public:
  std::vector<std::string> done;
  std::vector<PopupEntry> menu;
  std::u16string boxOnType;
  bool isNative = true;
  std::size_t held = 0;
  Snapshot picture;

  FakeStage() {
    WindowPicture window;
    window.number = 1;
    window.active = true;
    window.title = u"Kontakte - Microsoft Outlook";
    window.folder = u"Kontakte";
    window.itemCount = 3;
    ControlPicture box;
    box.tag = u"CxCbDial";
    box.caption = u"&Dial";
    box.editBox = true;
    box.width = 50;
    ControlPicture client = button(u"CxBtVelnor", u"Velnor ", u"velnor");
    client.beginGroup = true;
    ControlPicture actions = button(u"CxBtAction", u"M\u00FCller && Co", u"action");
    actions.enabled = false;
    window.bars.push_back(
        {u"Velnor ", true, {box, button(u"CxBtDial", u"&Dial", u"dial"), client, actions}});
    picture.windows.push_back(window);
    picture.telephone = u"running, idle";
  }

  void tell(std::u16string text) { listener_->note({Note::Kind::Told, std::move(text), {}, {}}); }
  void trace(std::u16string level, std::u16string text) {
    listener_->note({Note::Kind::Trace, std::move(text), std::move(level), u"09:00:00.000"});
  }

  void setListener(Listener* listener) override { listener_ = listener; }
  bool native() const override { return isNative; }
  void startOutlook(std::u16string_view version) override { did("start", version); }
  void quitOutlook() override { did("quit"); }
  bool outlookRuns() const override { return true; }
  void openExplorer(std::u16string_view folder) override { did("explorer", folder); }
  void openItem(std::u16string_view id) override { did("open", id); }
  void newItem(outlook::ItemType type) override { did("new", std::to_string(int(type))); }
  void activate(int window) override { did("activate", std::to_string(window)); }
  void close(int) override {
    did("close");
    picture.windows.clear();
  }
  void switchFolder(int, std::u16string_view folder) override { did("folder", folder); }
  void switchView(int) override { did("view"); }
  void select(int, const std::vector<std::u16string>& ids) override {
    std::string list;
    for (const std::u16string& id : ids) list += toUtf8(id) + ";";
    did("select", list);
    picture.windows[0].selected = ids;
    picture.windows[0].selectedCount = ids.size();
  }
  void click(const ControlPlace& place) override {
    if (place.control != 1) return did("click", std::to_string(place.control));
    trace(u"Debug", u"menu opens");
    const std::optional<int> chosen = listener_->popup(menu);
    did("menu closed", chosen ? std::to_string(*chosen) : "none");
    if (chosen) tell(u"dial 030" + toUtf16(std::to_string(*chosen)) + u" on line 7");
  }
  void type(const ControlPlace&, std::u16string_view text) override {
    did("type", text);
    if (!boxOnType.empty()) listener_->messageBox(boxOnType);
  }
  void switchAddin(bool on) override { did("addin", on ? "on" : "off"); }
  void setWordMail(bool) override { did("word"); }
  void setEarlyRibbon(bool) override { did("ribbon"); }
  void presetBar(const BarPreset& bar) override {
    did("bar", toUtf8(bar.name) + (bar.inspector ? " i" : " e") + std::to_string(bar.tags.size()) +
                   " " + std::to_string(bar.emptyActivations) + (bar.refusesControls ? " r" : ""));
  }
  void failMember(std::u16string_view className, std::u16string_view member,
                  FailureSpan span) override {
    did("fail",
        toUtf8(className) + "|" + toUtf8(member) + " " + std::to_string(static_cast<int>(span)));
  }
  void ring(std::u16string_view number) override {
    did("ring", number);
    picture.telephone = u"running, ringing: " + std::u16string(number);
  }
  void connectCall() override { did("connect"); }
  void endCall() override { did("end"); }
  void hangClient(bool on) override { did("hang", on ? "on" : "off"); }
  void freezeClient(bool on) override { did("freeze", on ? "on" : "off"); }
  void vanishClient() override { throw std::runtime_error("no client runs"); }
  void setClient(ClientState state) override { did("client", std::to_string(int(state))); }
  void setClientGap(ClientGap gap) override { did("gap", std::to_string(int(gap))); }
  void setClientErrors(bool) override { did("errors"); }
  void setLanguage(std::int32_t langId) override { did("language", std::to_string(langId)); }
  void setRegistry(platform::RegistryRoot, std::u16string_view key, std::u16string_view name,
                   const std::optional<platform::RegistryValue>& value) override {
    did("registry", toUtf8(key) + "|" + toUtf8(name) + (value ? "" : " gone"));
  }
  void setLoggingLibrary(bool) override { did("library"); }
  void setMapiHelper(HelperState state) override { did("mapi", std::to_string(int(state))); }
  void copy(std::u16string_view text) override { did("copy", text); }
  void watchClipboard(std::uint32_t milliseconds) override {
    did("watch", std::to_string(milliseconds));
  }
  std::u16string copied() override { return u"text"; }
  void setTime(int hour, int minute, int second) override {
    did("time", std::to_string(hour) + " " + std::to_string(minute) + " " + std::to_string(second));
  }
  void wait(std::uint32_t milliseconds) override { did("wait", std::to_string(milliseconds)); }
  Snapshot snapshot() override { return picture; }
  std::vector<std::u16string> folders() override { return {u"Kontakte", u"Posteingang"}; }
  std::vector<ItemEntry> items(std::u16string_view folder) override {
    if (folder != u"Kontakte") return {{u"m1", u"Angebot"}};
    return {{u"c1", u"M\u00FCller, Eva"}, {u"c2", u"M\u00FCller, Hans"}, {u"c3", u"Smith, Jo"}};
  }
  std::size_t references() override { return held; }

 private:
  void did(const std::string& what, std::string_view how = {}) {
    done.push_back(how.empty() ? what : what + " " + std::string(how));
  }
  void did(const std::string& what, std::u16string_view how) { did(what, toUtf8(how)); }

  Listener* listener_ = nullptr;
};

/// Plays a scenario on a fake stage and keeps what it printed.
struct Played {
  explicit Played(const std::string& text) : Played(std::make_unique<FakeStage>(), text) {}
  Played(std::unique_ptr<FakeStage> where, const std::string& text) : stage(std::move(where)) {
    if (stage->menu.empty())
      stage->menu = {entry(11, u"Work: 030 11"),
                     entry(12, u"&Home && more: 030 12"),
                     {0, u"", true, true, {}},
                     entry(13, u"<No phone numbers>", false),
                     entry(14, u"New task", true, {entry(15, u"a"), entry(16, u"b: 030 16")})};
    Player player(*stage, [this](std::string_view line) {
      transcript += std::string(line) + "\n";
      lines.emplace_back(line);
    });
    TextSource source(text, "t");
    player.play(source);
    score = player.score();
  }

  bool printed(std::string_view text) const { return transcript.find(text) != transcript.npos; }

  std::unique_ptr<FakeStage> stage;
  std::string transcript;
  std::vector<std::string> lines;
  Score score;
};

}  // namespace scenario
