#pragma once

#include "platform/facts.h"
#include "simulator/machine/Machine.h"

namespace simulator {

/// The facts of a machine in memory: its files, and the programs and libraries that are no files
/// there. Not a crossing.
class SimFacts : public platform::Facts {
 public:
  /// The machine must outlive this.
  SimFacts(Machine& machine, bool outlookRuns) : machine_(machine), outlookRuns_(outlookRuns) {}

  std::optional<std::uint64_t> fileSize(std::u16string_view path) override;
  std::string lastBytes(std::u16string_view path, std::size_t most) override;
  std::u16string fromAnsi(std::string_view bytes) override;
  std::u16string findLibrary(std::u16string_view name) override;
  bool writable(std::u16string_view path) override;
  std::u16string commonFilesFolder() override;
  bool windowExists(std::u16string_view windowClass) override;
  platform::ObjectState object(std::u16string_view className,
                               std::u16string_view windowClass) override;
  std::u16string systemVersion() override { return u"5.1.2600"; }
  std::int32_t userLanguage() override;

 private:
  std::optional<std::string> content(std::u16string_view path);

  Machine& machine_;
  bool outlookRuns_;
};

/// What a program file begins with, and its version.
std::string programImage(bool is32Bit, std::uint16_t major);

/// Puts Outlook and the add-in there as their set-ups do, with their files and registrations.
void installAddin(Machine& machine);

}  // namespace simulator
