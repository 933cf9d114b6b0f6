#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/objects.h"
#include "simulator/boundary.h"

namespace simulator {

class Client;

/// Objects of other programs: those of the running telephony client, and further classes that the
/// program adds. Class names are found without regard to case. Observers' errors pass through.
class SimObjects : public platform::Objects {
 public:
  SimObjects(Boundary& boundary, Client& client) : boundary_(boundary), client_(client) {}

  bool registered(std::u16string_view className) override;
  automation::Object running(std::u16string_view className) override;
  automation::Object create(std::u16string_view className) override;
  bool answers(std::u16string_view className) override;

  // Not crossings: for the program that plays the machine.

  /// From now on the class can be created. The factory may raise an error.
  void offer(std::u16string_view className, std::function<automation::Object()> factory);
  void withdraw(std::u16string_view className);

 private:
  void lookAtClient();

  Boundary& boundary_;
  Client& client_;
  std::map<std::u16string, std::function<automation::Object()>> classes_;  // by folded name
};

}  // namespace simulator
