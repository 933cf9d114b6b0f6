#pragma once

#include <optional>
#include <string>

namespace standin {

/// What the command line asks for.
struct Options {
  std::string mailbox;  ///< mailbox file
  std::string play;     ///< scenario to play; empty for use by hand
  std::string outlook;  ///< version to start with; empty for the default
  std::string client;   ///< the client's stand-in; empty for none
  /// Folder of the libraries' stand-ins; empty for none.
  std::string libraries;
  std::string addin = "VelnorOutlookCOMAddIn.Connect";  ///< its program id
  bool trace = false;                                   ///< show the add-in's trace lines
  bool show = false;  ///< show real windows while a scenario is played
};

/// Reads the command line. Nothing when there is no more to do: the usage was shown, or what is
/// wrong; `status` is then the program's exit status.
std::optional<Options> readOptions(int argc, char** argv, int& status);

}  // namespace standin
