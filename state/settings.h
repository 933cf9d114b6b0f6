#pragma once

#include <string_view>

#include "platform/registry.h"
#include "resources/settings.h"

namespace cxol {

/// An option of the registry: true exactly when its value is not 0. It may be a number or a text
/// that reads as one.
struct Option {
  platform::RegistryRoot root;
  std::u16string_view key;
  std::u16string_view name;
  bool defaultValue;
};

/// All options, as the table of settings has them. They are written by administrators and by the
/// client's set-up, never by the add-in.
namespace options {
consteval Option optionOf(const resources::Setting& setting) {
  if (setting.type != resources::SettingType::OnOff) throw "not an option";
  return {setting.place.root, setting.place.key, setting.place.name, setting.on};
}

inline constexpr auto UseMapi = optionOf(resources::setting(u"UseMapi"));
inline constexpr auto IgnoreSelChange = optionOf(resources::setting(u"IgnoreSelChange"));
/// Asked only while the user has not switched the option on.
inline constexpr auto IgnoreSelChangeOfMachine =
    optionOf(resources::setting(u"IgnoreSelChangeOfMachine"));
inline constexpr auto ShowInspectorToolBar = optionOf(resources::setting(u"ShowInspectorToolBar"));
inline constexpr auto DialRemote = optionOf(resources::setting(u"DialRemote"));
inline constexpr auto StartWithOutlook = optionOf(resources::setting(u"StartWithOutlook"));
inline constexpr auto StopWithOutlook = optionOf(resources::setting(u"StopWithOutlook"));
}  // namespace options

/// Reads an option afresh. An absent value gives the default; so does a value that is no number,
/// with a warning in the trace: one bad value must never keep the add-in from working.
bool ReadOption(const Option& option) noexcept;

}  // namespace cxol
