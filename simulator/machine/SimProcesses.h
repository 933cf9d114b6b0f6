#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/processes.h"
#include "simulator/boundary.h"

namespace simulator {

class Client;

/// Processes and windows of a machine on which the telephony client is the one program to start.
class SimProcesses : public platform::Processes {
 public:
  SimProcesses(Boundary& boundary, Client& client) : boundary_(boundary), client_(client) {}

  /// Passes an observer's error through.
  std::u16string hostModuleName() override;
  /// Starts the client when `file`, in quotes or without, is its executable; 2 when there is no
  /// such file; what an observer raises up to 42, and 5 for more. An empty name opens, as in some
  /// shells, the current folder.
  std::int32_t shellExecute(std::u16string_view file, std::u16string_view parameters,
                            std::u16string_view folder) override;
  /// False also when an observer fails it.
  bool windowExists(std::u16string_view windowClass) override;

  // Not crossings: for the program that plays the machine.

  void setHostModuleName(std::u16string name) { host_ = std::move(name); }
  /// One call of `shellExecute`, as it was made and answered.
  struct Started {
    std::u16string file;
    std::u16string parameters;
    std::u16string folder;
    std::int32_t result = 0;
  };
  const std::vector<Started>& started() const { return started_; }

 private:
  Boundary& boundary_;
  Client& client_;
  std::u16string host_ = u"OUTLOOK.EXE";
  std::vector<Started> started_;
};

}  // namespace simulator
