#include "infra/RegOp.h"

namespace cxol {
namespace {

automation::Value fromBytes(const std::vector<std::byte>& bytes) {
  if (!bytes.empty() && bytes.size() <= sizeof(std::uint32_t)) {
    std::uint32_t number = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) {
      number = number << 8 | std::to_integer<std::uint32_t>(bytes[i]);
    }
    return static_cast<std::int32_t>(number);
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
    case platform::RegistryType::ExpandString:
    case platform::RegistryType::MultiString:
      return automation::Value(stored->text.substr(0, stored->text.find(u'\0')));
    default: return fromBytes(stored->bytes);
  }
}

void RegOp::setValue(std::u16string_view name, const automation::Value& value) const {
  platform::RegistryValue stored;
  if (value.isText()) {
    stored.type = platform::RegistryType::String;
    stored.text = value.toText() + u'\0';
  } else {
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
