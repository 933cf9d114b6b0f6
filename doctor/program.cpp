#include "doctor/program.h"

#include <span>

#include "platform/conversions.h"
#include "platform/registry.h"

namespace doctor {
namespace {

/// A number of the file, least significant byte first; 0 beyond its end.
std::uint32_t numberAt(std::string_view bytes, std::size_t at, std::size_t size) {
  if (at > bytes.size() || bytes.size() - at < size) return 0;
  const std::span number(bytes.substr(at, size));
  return static_cast<std::uint32_t>(platform::numberOf(std::as_bytes(number)));
}

}  // namespace

Program programAt(platform::Facts& facts, std::u16string_view path) {
  constexpr std::size_t Most = 64 * 1024 * 1024;
  const std::string bytes = facts.lastBytes(path, Most);
  Program program;
  const std::size_t head = numberAt(bytes, 0x3C, 4);
  constexpr std::uint32_t Signature = 0x4550;  // "PE"
  constexpr std::uint32_t Intel386 = 0x14C;
  program.is32Bit = bytes.starts_with("MZ") && numberAt(bytes, head, 4) == Signature &&
                    numberAt(bytes, head + 4, 2) == Intel386;
  // The fixed part of a version resource begins with a signature and a version of its own. The
  // first byte is kept apart: whole, the signature would also stand in this program's code.
  constexpr std::string_view WithoutFirst("\x04\xEF\xFE\0\0\1\0", 7);
  const std::size_t second = bytes.rfind(WithoutFirst);
  if (second == std::string::npos || second == 0 || bytes[second - 1] != '\xBD') return program;
  const std::size_t version = second - 1;
  program.major = static_cast<int>(numberAt(bytes, version + 10, 2));
  for (const std::size_t at : {10u, 8u, 14u, 12u}) {
    if (!program.version.empty()) program.version += u'.';
    program.version +=
        automation::int32Text(static_cast<std::int32_t>(numberAt(bytes, version + at, 2)));
  }
  return program;
}

}  // namespace doctor
