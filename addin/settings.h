#pragma once

#include <string_view>

#include "platform/registry.h"

namespace cxol {

/// An option of the registry: true exactly when its value is not 0. It may be a number or a text
/// that reads as one.
struct Option {
  platform::RegistryRoot root;
  std::u16string_view key;
  std::u16string_view name;
  bool defaultValue;
};

/// All options. They are written by administrators and by the client's set-up, never by the add-in.
namespace options {
inline constexpr std::u16string_view AddInKey = u"Software\\K9T\\CXComAddIn";
inline constexpr std::u16string_view ClientKey = u"Software\\K9T\\Velnor30\\AddIn001";

inline constexpr Option UseMapi{platform::RegistryRoot::CurrentUser, AddInKey, u"UseMapi", true};
inline constexpr Option IgnoreSelChange{platform::RegistryRoot::CurrentUser, AddInKey,
                                        u"IgnoreSelChange", false};
/// Asked only while the user has not switched the option on.
inline constexpr Option IgnoreSelChangeOfMachine{platform::RegistryRoot::LocalMachine, AddInKey,
                                                 u"IgnoreSelChange", false};
inline constexpr Option ShowInspectorToolBar{platform::RegistryRoot::CurrentUser, AddInKey,
                                             u"ShowInspectorToolBar", true};
inline constexpr Option DialRemote{platform::RegistryRoot::CurrentUser, AddInKey, u"DialRemote",
                                   false};
inline constexpr Option StartWithOutlook{platform::RegistryRoot::CurrentUser, ClientKey,
                                         u"StartWithOutlook", false};
inline constexpr Option StopWithOutlook{platform::RegistryRoot::CurrentUser, ClientKey,
                                        u"StopWithOutlook", false};
}  // namespace options

/// Reads an option afresh. An absent value gives the default; so does a value that is no number,
/// with a warning in the trace: one bad value must never keep the add-in from working.
bool ReadOption(const Option& option) noexcept;

}  // namespace cxol
