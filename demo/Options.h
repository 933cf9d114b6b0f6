#pragma once

#include <optional>
#include <string>

namespace demo {

/// What the command line asks for.
struct Options {
  std::string mailbox;   ///< mailbox file; empty for the sample
  std::string contacts;  ///< vCard file whose contacts are added; empty for none
  std::string registry;  ///< registry file; empty for none
  std::string language;  ///< as the command "language" takes it; empty for the machine's own
  std::string outlook;   ///< version to start with; empty for the default
  bool trace = false;
  /// Scenario to play, "-" for the standard input, empty for the first call; nothing to converse.
  std::optional<std::string> play;
};

/// Reads the command line. Nothing when there is no more to do (help was shown or the line was
/// wrong); `status` is then the program's exit status.
std::optional<Options> readOptions(int argc, char** argv, int& status);

/// Path of a file of the samples folder.
std::string samplePath(const std::string& name);

}  // namespace demo
