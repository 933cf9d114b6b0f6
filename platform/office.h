#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/automation.h"

/// Typed views of Office's command bars and ribbon (Office 9.0 to 12.0). Member names as in the
/// host's type library.
namespace office {

/// MsoBarPosition
enum class BarPosition : std::int32_t { Left = 0, Top = 1, Right = 2, Bottom = 3, Floating = 4 };

/// MsoControlType
enum class ControlType : std::int32_t { Button = 1, Edit = 2 };

/// MsoButtonStyle
enum class ButtonStyle : std::int32_t { Automatic = 0, Icon = 1, Caption = 2, IconAndCaption = 3 };

/// CommandBarControl with the members of CommandBarButton and CommandBarComboBox: a late-bound
/// caller gets all of them from the one object. Positions and sizes are in screen pixels.
class CommandBarControl : public automation::View {
 public:
  using View::View;

  std::u16string tag() const { return object().get(u"Tag").toText(); }
  std::u16string parameter() const { return object().get(u"Parameter").toText(); }
  std::int32_t left() const { return object().get(u"Left").toInt32(); }
  std::int32_t top() const { return object().get(u"Top").toInt32(); }
  std::int32_t height() const { return object().get(u"Height").toInt32(); }
  /// The text of an edit box.
  std::u16string text() const { return object().get(u"Text").toText(); }

  void setTag(std::u16string_view value) const { object().put(u"Tag", value); }
  void setParameter(std::u16string_view value) const { object().put(u"Parameter", value); }
  void setCaption(std::u16string_view value) const { object().put(u"Caption", value); }
  void setTooltipText(std::u16string_view value) const { object().put(u"TooltipText", value); }
  void setOnAction(std::u16string_view value) const { object().put(u"OnAction", value); }
  void setVisible(bool value) const { object().put(u"Visible", value); }
  void setBeginGroup(bool value) const { object().put(u"BeginGroup", value); }
  void setWidth(std::int32_t pixels) const { object().put(u"Width", pixels); }
  void setStyle(ButtonStyle value) const {
    object().put(u"Style", static_cast<std::int32_t>(value));
  }
  /// Office 2002 and later; earlier ones raise error 438.
  void setPicture(const automation::Object& value) const { object().put(u"Picture", value); }
  /// Only after the picture, and of its size.
  void setMask(const automation::Object& value) const { object().put(u"Mask", value); }
  /// Takes the button's picture from the clipboard.
  void pasteFace() const { object().call(u"PasteFace"); }
  /// `Delete`.
  void remove() const { object().call(u"Delete"); }
};

/// CommandBarControls: counts from 1.
class CommandBarControls : public automation::View {
 public:
  using View::View;

  std::int32_t count() const { return object().get(u"Count").toInt32(); }
  CommandBarControl item(std::int32_t index) const {
    return CommandBarControl(object().get(u"Item", index).toObject());
  }
  /// Appends a permanent custom control.
  CommandBarControl add(ControlType type) const {
    return CommandBarControl(object().call(u"Add", static_cast<std::int32_t>(type)).toObject());
  }
};

class CommandBar : public automation::View {
 public:
  using View::View;

  std::u16string name() const { return object().get(u"Name").toText(); }
  void setName(std::u16string_view value) const { object().put(u"Name", value); }
  void setPosition(BarPosition value) const {
    object().put(u"Position", static_cast<std::int32_t>(value));
  }
  void setVisible(bool value) const { object().put(u"Visible", value); }
  CommandBarControls controls() const {
    return CommandBarControls(object().get(u"Controls").toObject());
  }
  /// The first control of this tag, or nothing.
  CommandBarControl findControl(std::u16string_view tag) const {
    return CommandBarControl(
        object()
            .call(u"FindControl", automation::Missing{}, automation::Missing{}, tag)
            .toObject());
  }
  /// `Delete`.
  void remove() const { object().call(u"Delete"); }
};

class CommandBars : public automation::View {
 public:
  using View::View;

  /// Raises an error when no bar has this name.
  CommandBar item(std::u16string_view name) const {
    return CommandBar(object().get(u"Item", name).toObject());
  }
  /// Adds a permanent bar; Office chooses its place.
  CommandBar add(std::u16string_view name) const {
    return CommandBar(object().call(u"Add", name).toObject());
  }
};

/// IRibbonControl
class RibbonControl : public automation::View {
 public:
  using View::View;
  std::u16string id() const { return object().get(u"Id").toText(); }
};

inline constexpr automation::Event CommandBarButtonEventTable[] = {{1, u"Click"}};
inline constexpr automation::EventInterface CommandBarButtonEvents{
    u"{000C0351-0000-0000-C000-000000000046}", CommandBarButtonEventTable};

inline constexpr automation::Event CommandBarComboBoxEventTable[] = {{1, u"Change"}};
inline constexpr automation::EventInterface CommandBarComboBoxEvents{
    u"{000C0354-0000-0000-C000-000000000046}", CommandBarComboBoxEventTable};

/// Hands the one event of a control, Click of a button or Change of an edit box, to one handler of
/// a wrapper, for as long as the wrapper lives.
template <class Owner>
class ControlSink : public automation::EventSink {
 public:
  using Handler = void (Owner::*)(const CommandBarControl&) noexcept;

  ControlSink(std::weak_ptr<Owner> owner, Handler handler)
      : owner_(std::move(owner)), handler_(handler) {}
  void onEvent(std::int32_t, std::span<automation::Value> args) noexcept override {
    const auto owner = owner_.lock();
    if (!owner || args.empty() || !args[0].isObject()) return;
    // Object handles copy without throwing; Office's cancel-default flag stays as it came.
    (owner.get()->*handler_)(CommandBarControl(*std::get_if<automation::Object>(&args[0].data())));
  }

 private:
  std::weak_ptr<Owner> owner_;
  Handler handler_;
};

}  // namespace office
