#include "infra/RegOp.h"

namespace cxol {
namespace {

std::u16string firstText(const platform::RegistryValue& stored) {
  return stored.text.substr(0, stored.text.find(u'\0'));
}

automation::Value fromBytes(const std::vector<std::byte>& bytes, std::size_t longestNumber) {
  if (!bytes.empty() && bytes.size() <= longestNumber) {
    std::uint64_t number = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) {
      number = number << 8 | std::to_integer<std::uint64_t>(bytes[i]);
    }
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
    case platform::RegistryType::MultiString: return automation::Value(firstText(*stored));
    case platform::RegistryType::ExpandString: return registry_.expanded(firstText(*stored));
    case platform::RegistryType::Qword: return fromBytes(stored->bytes, sizeof(std::uint64_t));
    default: return fromBytes(stored->bytes, sizeof(std::uint32_t));
  }
}

void RegOp::setValue(std::u16string_view name, const automation::Value& value) const {
  platform::RegistryValue stored;
  if (value.isText()) {
    stored.type = platform::RegistryType::String;
    stored.text = value.toText() + u'\0';
  } else {
    // Elsewhere what is empty counts as 0.
    if (value.isEmpty()) throw automation::Error(automation::ErrorNumber::TypeMismatch);
    stored.type = platform::RegistryType::Dword;
    const auto number = static_cast<std::uint32_t>(value.toInt32());
    for (int shift = 0; shift < 32; shift += 8) {
      stored.bytes.push_back(static_cast<std::byte>(number >> shift & 0xFF));
    }
  }
  registry_.write(root_, key_, name, stored);
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
