#include "simulator/outlook/Ribbons.h"

#include <utility>

#include "simulator/data/ItemKinds.h"
#include "simulator/data/Utf8.h"
#include "simulator/outlook/HostCore.h"
#include "simulator/outlook/ItemObjects.h"

namespace simulator {
namespace {

using automation::Error;

/// Empty for none.
std::u16string ribbonIdFor(const MailboxItem& item) {
  const ItemKind* kind = kindOf(item.kind);
  if (!kind) return {};
  const auto sent = item.properties.find(u"Sent");
  const bool unsent = sent != item.properties.end() && !sent->second.toBoolean();
  return std::u16string(unsent ? kind->ribbon.unsentId : kind->ribbon.id);
}

}  // namespace

Value Ribbons::call(WindowState& state, std::u16string_view callback,
                    const automation::Object& argument) {
  if (!core_.addin) return {};
  try {
    const std::vector<Value> args{core_.boundary.out(argument)};
    return core_.addin->ribbonCallback(callback, args);
  } catch (const Error& error) {
    // Office passes this over, but for a message to those who asked for it.
    state.ribbon.problems.push_back(u"callback \"" + std::u16string(callback) + u"\" failed: " +
                                    error.description());
    return {};
  }
}

automation::Object Ribbons::control(const std::shared_ptr<WindowObject>& window,
                                    std::u16string_view id) {
  RecordObject::Fields fields{{u"Id", [id = std::u16string(id)] { return Value(id); }},
                              {u"Tag", [] { return Value(u""); }},
                              {u"Context", [weak = std::weak_ptr(window)] {
                                 const auto context = weak.lock();
                                 return Value(context ? context->handle() : automation::Object());
                               }}};
  return std::make_shared<RecordObject>(core_.weak_from_this(), u"IRibbonControl",
                                        std::move(fields))
      ->handle();
}

void Ribbons::ask(const MailboxItem& item) {
  const auto id = ribbonIdFor(item);
  if (id.empty() || !core_.addin || answers_.contains(id)) return;
  auto markup = core_.addin->getCustomUi(id);
  // An add-in that was switched off in the middle of it is not heard any more.
  if (core_.addin) answers_[id] = {std::move(markup)};
}

void Ribbons::show(const std::shared_ptr<WindowObject>& window) {
  WindowState& state = window->state;
  ask(*state.item);
  const auto id = ribbonIdFor(*state.item);
  const auto answer = answers_.find(id);
  if (answer == answers_.end() || !core_.addin) return;
  state.ribbon = readRibbon(answer->second.markup, id);
  if (!std::exchange(answer->second.loaded, true) && !state.ribbon.onLoad.empty()) {
    const auto ui = std::make_shared<RecordObject>(core_.weak_from_this(), u"IRibbonUI",
                                                   RecordObject::Fields{});
    call(state, state.ribbon.onLoad, ui->handle());
  }
  // A callback may see the add-in switched off, which forgets its ribbons: work on copies.
  auto groups = state.ribbon.groups;
  const auto callbacks = state.ribbon.callbacks;
  std::size_t index = 0;
  for (auto& group : groups) {
    for (auto& button : group.controls) {
      const auto& getImage = callbacks[index++].getImage;
      if (getImage.empty()) continue;
      const Value picture = Boundary::in(call(state, getImage, control(window, button.tag)));
      if (picture.isObject() && picture.toObject()) {
        button.picture = picture.toObject().get(u"Name").toText();
        button.style = office::ButtonStyle::IconAndCaption;
      }
    }
  }
  if (core_.addin) state.ribbon.groups = std::move(groups);
}

void Ribbons::click(const std::shared_ptr<WindowObject>& window, std::u16string_view button) {
  std::size_t index = 0;
  for (const auto& group : window->state.ribbon.groups) {
    for (const auto& view : group.controls) {
      const auto onAction = window->state.ribbon.callbacks[index++].onAction;
      if (view.tag != button && view.caption != button) continue;
      if (!onAction.empty()) call(window->state, onAction, control(window, view.tag));
      return;
    }
  }
  throw HostError("the ribbon of window " + std::to_string(window->state.number) +
                  " has no button \"" + toUtf8(button) + "\"");
}

void Ribbons::forget() {
  answers_.clear();
  for (const auto& window : core_.windowsOf(WindowKind::Inspector)) window->state.ribbon = {};
}

}  // namespace simulator
