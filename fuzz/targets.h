#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace fuzz {

/// One place where the add-in, or the simulated host, reads what strangers have written. A run
/// aborts when something does not hold, and never raises.
struct Target {
  std::string_view name;
  void (*run)(const std::uint8_t* data, std::size_t size);
};

std::span<const Target> targets();

// One function a target; its file says what must hold.
void callerData(const std::uint8_t* data, std::size_t size);
void subject(const std::uint8_t* data, std::size_t size);
void menus(const std::uint8_t* data, std::size_t size);
void references(const std::uint8_t* data, std::size_t size);
void ribbon(const std::uint8_t* data, std::size_t size);
void registry(const std::uint8_t* data, std::size_t size);
void mailbox(const std::uint8_t* data, std::size_t size);
void vcard(const std::uint8_t* data, std::size_t size);
void regfile(const std::uint8_t* data, std::size_t size);

}  // namespace fuzz
