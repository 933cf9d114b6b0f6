#pragma once

#include "doctor/Report.h"
#include "doctor/program.h"
#include "doctor/texts.h"
#include "infra/RegOp.h"
#include "infra/text.h"
#include "resources/settings.h"

namespace doctor {

inline constexpr auto CurrentUser = platform::RegistryRoot::CurrentUser;
inline constexpr auto LocalMachine = platform::RegistryRoot::LocalMachine;
inline constexpr auto ClassesRoot = platform::RegistryRoot::ClassesRoot;

/// A value as text; empty when it is absent or no text can be made of it.
std::u16string textAt(platform::Registry& registry, platform::RegistryRoot root,
                      std::u16string_view key, std::u16string_view name);

/// Whether a value of a list of disabled items stands for the add-in.
bool isOwnDisabledItem(const platform::RegistryValue& value);

/// As in "HKEY_CURRENT_USER".
std::u16string_view hiveName(platform::RegistryRoot root);
/// "HKEY_CURRENT_USER\Key\Name".
std::u16string placeName(platform::RegistryRoot root, std::u16string_view key,
                         std::u16string_view name);

/// Carries out the checks and collects what they find.
class Examiner {
 public:
  Examiner(platform::Registry& registry, platform::Facts& facts);
  Report run();

 private:
  // Installation.
  void outlook();
  void addin();
  void leftovers(std::u16string_view file);
  void loading();
  void disabledItems();
  // The client and the libraries.
  void client();
  void clientRuns();
  void libraries();
  // Settings and trace.
  void settings();
  void setting(const resources::Setting& row);
  void misspeltSettings();
  void trace();

  std::u16string text(Text id, std::u16string_view first = {},
                      std::u16string_view second = {}) const {
    return textOf(report_.language, id, first, second);
  }
  void well(Text id, std::u16string_view first = {}, std::u16string_view second = {}) {
    report_.findings.push_back({Verdict::Well, text(id, first, second), {}});
  }
  void found(Verdict verdict, std::u16string what, Text remedy) {
    report_.findings.push_back({verdict, std::move(what), text(remedy)});
  }
  /// False, with a finding, when the file is not there.
  bool isThere(std::u16string_view path, Text remedy);
  /// Nothing, with a finding, when the file is not there or no 32-bit program.
  std::optional<Program> program32(std::u16string_view path, Text remedy);

  platform::Registry& registry_;
  platform::Facts& facts_;
  Report report_;
  /// With a backslash at its end; empty when unknown.
  std::u16string outlookFolder_;
};

}  // namespace doctor
