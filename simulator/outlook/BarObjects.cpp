#include "simulator/outlook/BarObjects.h"

#include <algorithm>

#include "simulator/outlook/HostCore.h"

namespace simulator {
namespace {

using automation::Error;
using automation::ErrorNumber;

constexpr std::int32_t ButtonWidth = 23;
constexpr std::int32_t EditWidth = 100;
/// Where the first bar begins, in pixels, and the height of a row.
constexpr std::int32_t BarsLeft = 8;
constexpr std::int32_t BarsTop = 44;
constexpr std::int32_t RowHeight = 26;

/// One control property that reads and writes a field as it is.
template <auto Field>
constexpr MemberRow<ControlObject> textRow(std::u16string_view name) {
  return {name, [](ControlObject& self, Arguments) { return Value(self.state.*Field); },
          [](ControlObject& self, const Value& value) { self.state.*Field = value.toText(); }};
}

template <auto Field>
constexpr MemberRow<ControlObject> flagRow(std::u16string_view name) {
  return {name, [](ControlObject& self, Arguments) { return Value(self.state.*Field); },
          [](ControlObject& self, const Value& value) { self.state.*Field = value.toBoolean(); }};
}

Value pasteFace(ControlObject& self, Arguments) {
  if (self.state.type != office::ControlType::Button) throw Error(ErrorNumber::MemberNotFound);
  const auto picture = self.host().clipboardPicture();
  if (!picture) throw Error(ErrorNumber::AutomationFailed);
  self.state.picture = picture.get(u"Name").toText();
  return {};
}

/// CommandBarControls of one bar.
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
    if (std::ranges::find(*bars_, bar_) == bars_->end()) throw Error(ErrorNumber::AutomationFailed);
    return *bar_;
  }
  Bar::Place& place() const { return bar().places[window_]; }
  Value findControl(Arguments args) {
    const Value& tag = argument(args, 2);
    for (const auto& control : bar().controls) {
      if (!tag.isMissing() && control->state.tag == tag.toText()) return control->handle();
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
       [](BarObject& self, const Value& value) { self.bar().name = value.toText(); }},
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
         self.bar();
         std::erase(*self.bars_, self.bar_);
         return Value();
       }},
  };
  return rows;
}

}  // namespace

std::span<const MemberRow<ControlObject>> ControlObject::members() {
  static const MemberRow<ControlObject> rows[] = {
      textRow<&StoredControl::tag>(u"Tag"),
      textRow<&StoredControl::caption>(u"Caption"),
      textRow<&StoredControl::tooltip>(u"TooltipText"),
      textRow<&StoredControl::onAction>(u"OnAction"),
      textRow<&StoredControl::parameter>(u"Parameter"),
      textRow<&StoredControl::text>(u"Text"),
      flagRow<&StoredControl::visible>(u"Visible"),
      flagRow<&StoredControl::enabled>(u"Enabled"),
      flagRow<&StoredControl::beginGroup>(u"BeginGroup"),
      {u"Type", [](ControlObject& self,
                   Arguments) { return Value(static_cast<std::int32_t>(self.state.type)); }},
      {u"Id", [](ControlObject&, Arguments) { return Value(std::int32_t{1}); }},
      {u"Style",
       [](ControlObject& self, Arguments) {
         return Value(static_cast<std::int32_t>(self.state.style));
       },
       [](ControlObject& self, const Value& value) {
         self.state.style = static_cast<office::ButtonStyle>(value.toInt32());
       }},
      {u"Width", [](ControlObject& self, Arguments) { return Value(self.width()); },
       [](ControlObject& self, const Value& value) { self.state.width = value.toInt32(); }},
      {u"Height", [](ControlObject&, Arguments) { return Value(Height); }},
      {u"Left", [](ControlObject& self, Arguments) { return Value(self.left()); }},
      {u"Top", [](ControlObject& self, Arguments) { return Value(self.top()); }},
      {u"PasteFace", pasteFace},
      {u"Delete",
       [](ControlObject& self, Arguments) {
         self.remove();
         return Value();
       }},
  };
  return rows;
}

std::u16string ControlObject::typeName() {
  return state.type == office::ControlType::Edit ? u"CommandBarComboBox" : u"CommandBarButton";
}

std::int32_t ControlObject::width() const {
  if (state.width != 0) return state.width;
  return state.type == office::ControlType::Edit ? EditWidth : ButtonWidth;
}

std::int32_t ControlObject::left() const {
  std::int32_t x = BarsLeft;
  if (const auto bar = bar_.lock()) {
    for (const auto& control : bar->controls) {
      if (control.get() == this) break;
      if (control->state.visible) x += control->width();
    }
  }
  return x;
}

std::int32_t ControlObject::top() const {
  const auto bar = bar_.lock();
  return BarsTop + (bar ? bar->row * RowHeight : 0);
}

void ControlObject::remove() {
  const auto bar = bar_.lock();
  if (!bar ||
      std::erase_if(bar->controls, [&](const auto& each) { return each.get() == this; }) == 0) {
    throw Error(ErrorNumber::AutomationFailed);
  }
}

std::span<const automation::EventInterface* const> ControlObject::eventInterfaces() const {
  static const automation::EventInterface* const button[] = {&office::CommandBarButtonEvents};
  static const automation::EventInterface* const edit[] = {&office::CommandBarComboBoxEvents};
  return state.type == office::ControlType::Edit ? std::span(edit) : std::span(button);
}

void ControlObject::raise(const automation::Object& clicked) {
  std::vector<Value> args{clicked};
  const bool edit = state.type == office::ControlType::Edit;
  if (!edit) args.push_back(false);
  fire(edit ? office::CommandBarComboBoxEvents : office::CommandBarButtonEvents, 1, args);
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
  stored.emptyActivations = bar.emptyActivations;
  stored.refusesControls = bar.refusesControls;
  stored.controls = bar.late;
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
    if (bar->emptyActivations == 0 || --bar->emptyActivations > 0) continue;
    for (const auto& control : bar->late) {
      bar->controls.push_back(std::make_shared<ControlObject>(core, bar, control));
    }
    bar->late.clear();
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
