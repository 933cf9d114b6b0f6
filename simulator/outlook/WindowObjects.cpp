#include "simulator/outlook/WindowObjects.h"

#include <algorithm>

#include "simulator/outlook/HostCore.h"
#include "simulator/outlook/ItemObjects.h"

namespace simulator {
namespace {

using automation::Error;
using automation::ErrorNumber;

/// Selection: a snapshot.
Value selectionOf(WindowObject& self, Arguments) {
  const auto core = self.core();
  auto items = std::make_shared<const std::vector<MailboxItem*>>(self.state.selection);
  const std::size_t count = items->size();
  return std::make_shared<ListObject>(core, u"Selection", count,
                                      [core, items, folder = self.state.folder](std::size_t index) {
                                        return core.lock()->itemObject(*folder, *(*items)[index]);
                                      })
      ->handle();
}

struct Members {
  std::u16string_view name;
  bool explorer;
  bool inspector;
};
/// Which of the two kinds of windows has which members.
constexpr Members Having[] = {
    {u"CommandBars", true, true}, {u"Caption", true, true},      {u"CurrentFolder", true, false},
    {u"Selection", true, false},  {u"CurrentItem", false, true}, {u"IsWordMail", false, true},
};

}  // namespace

std::span<const MemberRow<WindowObject>> WindowObject::members() {
  static const MemberRow<WindowObject> rows[] = {
      {u"CommandBars",
       [](WindowObject& self, Arguments) {
         return Value(
             std::make_shared<CommandBarsObject>(self.core(), self.state.bars, self.state.number)
                 ->handle());
       }},
      {u"Caption",
       [](WindowObject& self, Arguments) { return Value(self.host().captionOf(self.state)); }},
      {u"CurrentFolder",
       [](WindowObject& self, Arguments) { return self.host().folderObject(*self.state.folder); }},
      {u"Selection", selectionOf},
      {u"CurrentItem",
       [](WindowObject& self, Arguments) {
         return self.host().itemObject(*self.state.itemFolder, *self.state.item);
       }},
      {u"IsWordMail", [](WindowObject& self, Arguments) { return Value(self.state.wordMail); }},
  };
  return rows;
}

Value WindowObject::invoke(automation::Access access, const automation::Member& member,
                           Arguments args) {
  const auto held = enterHost(core(), Name, member.name, *this);
  const auto found = std::ranges::find(Having, member.name, &Members::name);
  const bool has = found != std::end(Having) && (explorer() ? found->explorer : found->inspector);
  if (!has) throw Error(ErrorNumber::MemberNotFound);
  if (!open) throw Error(ErrorNumber::AutomationFailed);
  return TableObject::invoke(access, member, args);
}

std::u16string WindowObject::typeName() {
  return explorer() ? u"Explorer" : u"Inspector";
}

std::span<const automation::EventInterface* const> WindowObject::eventInterfaces() const {
  static const automation::EventInterface* const ofExplorer[] = {&outlook::ExplorerEventInterface};
  static const automation::EventInterface* const ofInspector[] = {
      &outlook::InspectorEventInterface};
  return explorer() ? std::span(ofExplorer) : std::span(ofInspector);
}

void WindowObject::raise(outlook::ExplorerEvent event) {
  std::vector<Value> none;
  fire(outlook::ExplorerEventInterface, static_cast<std::int32_t>(event), none);
}

void WindowObject::raise(outlook::InspectorEvent event) {
  std::vector<Value> none;
  fire(outlook::InspectorEventInterface, static_cast<std::int32_t>(event), none);
}

std::span<const MemberRow<WindowsObject>> WindowsObject::members() {
  static const MemberRow<WindowsObject> rows[] = {
      {u"Count",
       [](WindowsObject& self, Arguments) {
         return Value(static_cast<std::int32_t>(self.host().windowsOf(self.kind()).size()));
       }},
      {u"Item",
       [](WindowsObject& self, Arguments args) {
         const auto& windows = self.host().windowsOf(self.kind());
         const auto index = argument(args, 0).toInt32();
         if (index < 1 || static_cast<std::size_t>(index) > windows.size()) {
           throw Error(ErrorNumber::SubscriptOutOfRange);
         }
         return Value(windows[static_cast<std::size_t>(index) - 1]->handle());
       }},
  };
  return rows;
}

std::u16string WindowsObject::typeName() {
  return kind_ == WindowKind::Explorer ? u"Explorers" : u"Inspectors";
}

std::span<const automation::EventInterface* const> WindowsObject::eventInterfaces() const {
  static const automation::EventInterface* const explorers[] = {&outlook::ExplorersEventInterface};
  static const automation::EventInterface* const inspectors[] = {
      &outlook::InspectorsEventInterface};
  return kind_ == WindowKind::Explorer ? std::span(explorers) : std::span(inspectors);
}

void WindowsObject::raiseNew(WindowObject& window) {
  std::vector<Value> args{window.handle()};
  const bool explorers = kind_ == WindowKind::Explorer;
  fire(explorers ? outlook::ExplorersEventInterface : outlook::InspectorsEventInterface, 0xF001,
       args);
}

namespace {

/// NameSpace: the default folders.
class NameSpaceObject : public HostObject<NameSpaceObject> {
 public:
  static constexpr std::u16string_view Name = u"NameSpace";
  static std::span<const MemberRow<NameSpaceObject>> members() {
    static const MemberRow<NameSpaceObject> rows[] = {
        {u"GetDefaultFolder",
         [](NameSpaceObject& self, Arguments args) {
           return self.host().defaultFolder(argument(args, 0).toInt32());
         }},
    };
    return rows;
  }
  using HostObject::HostObject;
};

automation::Object handleOf(const std::shared_ptr<WindowObject>& window) {
  return window ? window->handle() : automation::Object();
}

}  // namespace

std::span<const MemberRow<ApplicationObject>> ApplicationObject::members() {
  static const MemberRow<ApplicationObject> rows[] = {
      {u"Name", [](ApplicationObject&, Arguments) { return Value(u"Outlook"); }},
      {u"Version",
       [](ApplicationObject& self, Arguments) { return Value(self.host().options.version); }},
      {u"Explorers",
       [](ApplicationObject& self, Arguments) { return Value(self.host().explorers->handle()); }},
      {u"Inspectors",
       [](ApplicationObject& self, Arguments) { return Value(self.host().inspectors->handle()); }},
      {u"ActiveWindow", [](ApplicationObject& self,
                           Arguments) { return Value(handleOf(self.host().top(std::nullopt))); }},
      {u"ActiveExplorer",
       [](ApplicationObject& self, Arguments) {
         return Value(handleOf(self.host().top(WindowKind::Explorer)));
       }},
      {u"ActiveInspector",
       [](ApplicationObject& self, Arguments) {
         return Value(handleOf(self.host().top(WindowKind::Inspector)));
       }},
      {u"GetNamespace",
       [](ApplicationObject& self, Arguments args) {
         if (argument(args, 0).toText() != u"MAPI") throw Error(ErrorNumber::InvalidProcedureCall);
         return Value(std::make_shared<NameSpaceObject>(self.core())->handle());
       }},
      {u"CreateItem",
       [](ApplicationObject& self, Arguments args) {
         return self.host().createItem(static_cast<outlook::ItemType>(argument(args, 0).toInt32()));
       }},
  };
  return rows;
}

}  // namespace simulator
