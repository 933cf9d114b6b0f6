#pragma once

#include <string>

#include "platform/automation.h"
#include "windows/com/ComPtr.h"

#include <activscp.h>

namespace standin {

/// A script in the system's own engine, which runs on this thread.
class Script {
 public:
  /// `engine` is the class name of the language; `host` is what the script knows under this name.
  Script(std::u16string_view engine, automation::Object host);
  ~Script();
  Script(const Script&) = delete;
  Script& operator=(const Script&) = delete;

  /// Runs a text; raises what the script raises, with the line in the description.
  void run(const std::u16string& text);
  /// The script's functions and variables.
  automation::Object global() const;

 private:
  class Site;
  windows::ComPtr<Site> site_;
  windows::ComPtr<IActiveScript> engine_;
};

}  // namespace standin
