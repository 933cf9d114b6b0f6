#include "infra/RegOp.h"

namespace cxol {
namespace {

automation::Value fromBytes(const std::vector<std::byte>& bytes, std::size_t longestNumber) {
  if (!bytes.empty() && bytes.size() <= longestNumber) {
    const std::uint64_t number = platform::numberOf(bytes);
    if (bytes.size() <= sizeof(std::uint32_t)) return static_cast<std::int32_t>(number);
    const auto wide = static_cast<std::int64_t>(number);
    if (const auto narrow = static_cast<std::int32_t>(wide); narrow == wide) return narrow;
    return static_cast<double>(wide);
  }
  constexpr std::u16string_view Digits = u"0123456789ABCDEF";
  std::u16string text;
  for (const std::byte byte : bytes) {
    if (!text.empty()) text.push_back(u' ');
    text.push_back(Digits[std::to_integer<std::size_t>(byte >> 4)]);
    text.push_back(Digits[std::to_integer<std::size_t>(byte & std::byte{15})]);
  }
  return text;
}

}  // namespace

std::optional<automation::Value> RegOp::value(std::u16string_view name) const {
  const auto stored = registry_.read(root_, key_, name);
  if (!stored) return std::nullopt;
  switch (stored->type) {
    case platform::RegistryType::String:
    case platform::RegistryType::MultiString: return automation::Value(platform::textOf(stored));
    case platform::RegistryType::ExpandString: return registry_.expanded(platform::textOf(stored));
    case platform::RegistryType::Qword: return fromBytes(stored->bytes, sizeof(std::uint64_t));
    default: return fromBytes(stored->bytes, sizeof(std::uint32_t));
  }
}

void RegOp::setValue(std::u16string_view name, const automation::Value& value) const {
  // Elsewhere what is empty counts as 0.
  if (value.isEmpty()) throw automation::Error(automation::ErrorNumber::TypeMismatch);
  registry_.write(root_, key_, name,
                  value.isText()
                      ? platform::stringValue(value.toText())
                      : platform::dwordValue(static_cast<std::uint32_t>(value.toInt32())));
}

bool RegOp::deleteValue(std::u16string_view name) const {
  return registry_.deleteValue(root_, key_, name);
}

bool RegOp::deleteKey() const {
  return registry_.deleteKey(root_, key_);
}

std::vector<std::u16string> RegOp::valueNames() const {
  return registry_.valueNames(root_, key_);
}

std::vector<std::u16string> RegOp::subkeyNames() const {
  return registry_.subkeyNames(root_, key_);
}

}  // namespace cxol
