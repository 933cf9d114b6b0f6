#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "standin/client/RequestPipe.h"

namespace standin {

/// The words that follow the program's name.
class CommandLine {
 public:
  CommandLine();
  bool has(std::u16string_view word) const;
  /// Whether no window is wanted. COM's own starts show nothing.
  bool hidden() const;

 private:
  std::vector<std::u16string> words_;
};

/// Full path of this program.
std::u16string ownPath();

/// Delivers the messages that wait.
void takeMessages();

/// The whole program of a client: enters it in the registry or takes it out again, shows the client
/// that runs already, or lets `serve` be one until it ends. The exit status; what went wrong stands
/// on the standard error output.
int runClient(const std::function<void(const CommandLine& line, RequestPipe& pipe)>& serve);

}  // namespace standin
