#include "standin/outlook/AddinEntry.h"

namespace standin {
namespace {

using platform::RegistryRoot;

constexpr std::u16string_view List = u"Software\\Microsoft\\Office\\Outlook\\Addins\\";
constexpr std::u16string_view ValueName = u"LoadBehavior";
constexpr std::uint32_t Connected = 1;
constexpr std::uint32_t LoadAtStart = 2;

}  // namespace

AddinEntry::AddinEntry(platform::Registry& registry, std::u16string progId)
    : registry_(registry), progId_(std::move(progId)), key_(std::u16string(List) + progId_) {}

bool AddinEntry::exists() const {
  return registry_.read(RegistryRoot::CurrentUser, key_, ValueName).has_value();
}

std::uint32_t AddinEntry::loadBehavior() const {
  return platform::dwordOf(registry_.read(RegistryRoot::CurrentUser, key_, ValueName)).value_or(0);
}

bool AddinEntry::loadsAtStart() const {
  constexpr std::uint32_t wanted = Connected | LoadAtStart;
  return (loadBehavior() & wanted) == wanted;
}

void AddinEntry::keepConnected(bool connected) {
  if (!exists()) return;
  const std::uint32_t number = connected ? loadBehavior() | Connected : loadBehavior() & ~Connected;
  registry_.write(RegistryRoot::CurrentUser, key_, ValueName, platform::dwordValue(number));
}

}  // namespace standin
