#pragma once

#include <span>
#include <string_view>

namespace sweep {

class Actor;

/// A short life of the add-in in which each number is dialled once.
struct Scenario {
  std::string_view name;
  void (*prepare)(Actor&);
  void (*play)(Actor&);
};

/// All of them, by what they are about.
std::span<const Scenario> toolbarScenarios();
std::span<const Scenario> dialScenarios();
std::span<const Scenario> clientScenarios();
std::span<const Scenario> inspectorScenarios();
std::span<const Scenario> lifeScenarios();

}  // namespace sweep
