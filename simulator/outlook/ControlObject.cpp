#include "simulator/outlook/BarObjects.h"
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
  self.require(office::ControlType::Button);
  auto face = self.host().clipboardFace();
  if (face.empty()) throw Error(ErrorNumber::AutomationFailed);
  self.state.picture = std::move(face);
  self.picture = {};
  return {};
}

void setPicture(ControlObject& self, const Value& value) {
  self.require(office::ControlType::Button);
  self.state.picture = self.host().faceOf(value.toObject(), {});
  self.picture = value.toObject();
}

/// Belongs to the picture that was set before it.
void setMask(ControlObject& self, const Value& value) {
  self.require(office::ControlType::Button);
  if (!value.toObject()) throw Error(ErrorNumber::InvalidProcedureCall);
  self.state.picture = self.host().faceOf(self.picture, value.toObject());
  self.picture = {};
}

}  // namespace

std::span<const MemberRow<ControlObject>> ControlObject::members() {
  static const MemberRow<ControlObject> rows[] = {
      textRow<&StoredControl::tag>(u"Tag"),
      textRow<&StoredControl::caption>(u"Caption"),
      textRow<&StoredControl::tooltip>(u"TooltipText"),
      textRow<&StoredControl::onAction>(u"OnAction"),
      textRow<&StoredControl::parameter>(u"Parameter"),
      {u"Text",
       [](ControlObject& self, Arguments) {
         self.require(office::ControlType::Edit);
         return Value(self.state.text);
       },
       [](ControlObject& self, const Value& value) {
         self.require(office::ControlType::Edit);
         self.state.text = value.toText();
       }},
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
      {u"Picture", nullptr, setPicture},
      {u"Mask", nullptr, setMask},
      {u"Delete",
       [](ControlObject& self, Arguments) {
         self.remove();
         return Value();
       }},
  };
  return rows;
}

Value ControlObject::invoke(automation::Access access, const automation::Member& member,
                            Arguments args) {
  const auto held = enterHost(core(), Name, member.name, *this);
  if (gone) throw Error(ErrorNumber::AutomationFailed);
  return TableObject::invoke(access, member, args);
}

void ControlObject::require(office::ControlType type) const {
  if (state.type != type) throw Error(ErrorNumber::MemberNotFound);
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
  gone = true;
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

}  // namespace simulator
