#include "simulator/outlook/BarObjects.h"

#include <algorithm>

#include "simulator/outlook/HostCore.h"

namespace simulator {
namespace {

using automation::Error;
using automation::ErrorNumber;

/// CommandBarControls of one bar, of no use when that is deleted.
class ControlsObject : public HostObject<ControlsObject> {
 public:
  static constexpr std::u16string_view Name = u"CommandBarControls";
  static std::span<const MemberRow<ControlsObject>> members() {
    static const MemberRow<ControlsObject> rows[] = {
        {u"Count",
         [](ControlsObject& self, Arguments) {
           return Value(static_cast<std::int32_t>(self.bar_->controls.size()));
         }},
        {u"Item",
         [](ControlsObject& self, Arguments args) {
           const auto index = argument(args, 0).toInt32();
           if (index < 1 || static_cast<std::size_t>(index) > self.bar_->controls.size()) {
             throw Error(ErrorNumber::InvalidProcedureCall);
           }
           return Value(self.bar_->controls[static_cast<std::size_t>(index) - 1]->handle());
         }},
        {u"Add", [](ControlsObject& self, Arguments args) { return self.add(argument(args, 0)); }},
    };
    return rows;
  }
  Value invoke(automation::Access access, const automation::Member& member,
               Arguments args) override {
    if (bar_->gone) throw Error(ErrorNumber::AutomationFailed);
    return HostObject::invoke(access, member, args);
  }
  ControlsObject(std::weak_ptr<HostCore> core, std::shared_ptr<Bar> bar, int window)
      : HostObject(std::move(core)), bar_(std::move(bar)), window_(window) {}

 private:
  Value add(const Value& type) {
    host().controlsAddHook(window_);
    if (bar_->refusesControls) throw Error(ErrorNumber::AutomationFailed);
    StoredControl state;
    state.type = type.isMissing() ? office::ControlType::Button
                                  : static_cast<office::ControlType>(type.toInt32());
    if (state.type != office::ControlType::Button && state.type != office::ControlType::Edit) {
      throw Error(ErrorNumber::InvalidProcedureCall);
    }
    // Who fills the bar is faster than Office.
    bar_->late.clear();
    bar_->controls.push_back(std::make_shared<ControlObject>(core(), bar_, state));
    return bar_->controls.back()->handle();
  }
  std::shared_ptr<Bar> bar_;
  int window_;
};

/// One bar as one window has it.
class BarObject : public HostObject<BarObject> {
 public:
  static constexpr std::u16string_view Name = u"CommandBar";
  static std::span<const MemberRow<BarObject>> members();

  BarObject(std::weak_ptr<HostCore> core, std::shared_ptr<Bars> bars, std::shared_ptr<Bar> bar,
            int window)
      : HostObject(std::move(core)),
        bars_(std::move(bars)),
        bar_(std::move(bar)),
        window_(window) {}

  /// Two handles of one bar of one window are the same.
  const void* identity() const override { return &bar_->places[window_]; }

 private:
  /// Raises when the bar was deleted.
  Bar& bar() const {
    if (bar_->gone) throw Error(ErrorNumber::AutomationFailed);
    return *bar_;
  }
  Bar::Place& place() const { return bar().places[window_]; }
  void rename(const std::u16string& name) {
    const bool taken = std::ranges::any_of(
        *bars_, [&](const auto& other) { return other != bar_ && other->name == name; });
    if (taken) throw Error(ErrorNumber::InvalidProcedureCall);
    bar().name = name;
  }
  Value findControl(Arguments args) {
    const Value& type = argument(args, 0);
    const Value& tag = argument(args, 2);
    for (const auto& control : bar().controls) {
      const StoredControl& state = control->state;
      if (!type.isMissing() && static_cast<std::int32_t>(state.type) != type.toInt32()) continue;
      if (!tag.isMissing() && state.tag == tag.toText()) return control->handle();
    }
    return automation::Object();
  }

  std::shared_ptr<Bars> bars_;
  std::shared_ptr<Bar> bar_;
  int window_;
};

std::span<const MemberRow<BarObject>> BarObject::members() {
  static const MemberRow<BarObject> rows[] = {
      {u"Name", [](BarObject& self, Arguments) { return Value(self.bar().name); },
       [](BarObject& self, const Value& value) { self.rename(value.toText()); }},
      {u"Visible", [](BarObject& self, Arguments) { return Value(self.place().visible); },
       [](BarObject& self, const Value& value) { self.place().visible = value.toBoolean(); }},
      {u"Position",
       [](BarObject& self, Arguments) {
         return Value(static_cast<std::int32_t>(self.place().position));
       },
       [](BarObject& self, const Value& value) {
         self.place().position = static_cast<office::BarPosition>(value.toInt32());
       }},
      {u"Controls",
       [](BarObject& self, Arguments) {
         self.bar();
         return Value(
             std::make_shared<ControlsObject>(self.core(), self.bar_, self.window_)->handle());
       }},
      {u"FindControl", [](BarObject& self, Arguments args) { return self.findControl(args); }},
      {u"Delete",
       [](BarObject& self, Arguments) {
         self.bar().discard();
         std::erase(*self.bars_, self.bar_);
         return Value();
       }},
  };
  return rows;
}

}  // namespace

void Bar::discard() {
  gone = true;
  for (const auto& control : controls) control->gone = true;
}

std::shared_ptr<Bar> barFrom(const std::weak_ptr<HostCore>& core, const StoredBar& stored) {
  auto bar = std::make_shared<Bar>();
  bar->name = stored.name;
  bar->emptyActivations = stored.emptyActivations;
  bar->refusesControls = stored.refusesControls;
  if (bar->emptyActivations > 0) {
    bar->late = stored.controls;
  } else {
    for (const auto& control : stored.controls) {
      bar->controls.push_back(std::make_shared<ControlObject>(core, bar, control));
    }
  }
  return bar;
}

StoredBar storedFrom(const Bar& bar, int window) {
  StoredBar stored;
  stored.name = bar.name;
  stored.refusesControls = bar.refusesControls;
  if (bar.controls.empty()) {
    stored.emptyActivations = bar.emptyActivations;
    stored.controls = bar.late;
  }
  for (const auto& control : bar.controls) stored.controls.push_back(control->state);
  if (const auto place = bar.places.find(window); place != bar.places.end()) {
    stored.visible = place->second.visible;
    stored.position = place->second.position;
  }
  return stored;
}

BarView viewOf(const Bar& bar, int window) {
  BarView view;
  view.name = bar.name;
  if (const auto place = bar.places.find(window); place != bar.places.end()) {
    view.visible = place->second.visible;
    view.position = place->second.position;
  }
  for (const auto& control : bar.controls) {
    const StoredControl& state = control->state;
    view.controls.push_back(
        {state.type, state.tag, state.caption, state.tooltip, state.onAction, state.parameter,
         state.text, state.picture, state.style, control->left(), control->top(), control->width(),
         ControlObject::Height, state.beginGroup, state.visible, state.enabled});
  }
  return view;
}

void activated(const std::weak_ptr<HostCore>& core, Bars& bars) {
  for (const auto& bar : bars) {
    if (++bar->activations <= bar->emptyActivations) continue;
    for (const auto& control : std::exchange(bar->late, {})) {
      bar->controls.push_back(std::make_shared<ControlObject>(core, bar, control));
    }
  }
}

std::span<const MemberRow<CommandBarsObject>> CommandBarsObject::members() {
  static const MemberRow<CommandBarsObject> rows[] = {
      {u"Count", [](CommandBarsObject& self, Arguments) { return Value(self.count()); }},
      {u"Item", [](CommandBarsObject& self, Arguments args) { return self.at(argument(args, 0)); }},
      {u"Add",
       [](CommandBarsObject& self, Arguments args) {
         return self.add(argument(args, 0).isMissing() ? u"Custom" : argument(args, 0).toText());
       }},
  };
  return rows;
}

Value CommandBarsObject::objectOf(const std::shared_ptr<Bar>& bar) {
  return std::make_shared<BarObject>(core(), bars_, bar, window_)->handle();
}

Value CommandBarsObject::at(const Value& index) {
  if (index.isText()) {
    const auto name = index.toText();
    const auto found =
        std::ranges::find_if(*bars_, [&](const auto& bar) { return bar->name == name; });
    if (found == bars_->end()) throw Error(ErrorNumber::InvalidProcedureCall);
    return objectOf(*found);
  }
  const auto number = index.toInt32();
  if (number < 1 || number > count()) throw Error(ErrorNumber::InvalidProcedureCall);
  return objectOf((*bars_)[static_cast<std::size_t>(number) - 1]);
}

Value CommandBarsObject::add(std::u16string_view name) {
  if (std::ranges::any_of(*bars_, [&](const auto& bar) { return bar->name == name; })) {
    throw Error(ErrorNumber::InvalidProcedureCall);
  }
  auto bar = std::make_shared<Bar>();
  bar->name = name;
  bar->row = count();
  bars_->push_back(bar);
  return objectOf(bar);
}

}  // namespace simulator
