#include "simulator/machine/SimMapiHelper.h"

#include <algorithm>
#include <limits>

namespace simulator {
namespace {

constexpr std::u16string_view InitExport = u"_MapiInit@0";
constexpr std::u16string_view DeinitExport = u"_MapiDeinit@0";

platform::MapiHelper::CountedText counted(const std::u16string& text) {
  // Only a count makes the text count.
  if (text.empty()) return {0, u"left over"};
  constexpr std::size_t Most = std::numeric_limits<std::int32_t>::max();
  return {static_cast<std::int32_t>(std::min(text.size(), Most)), text};
}

}  // namespace

void SimMapiHelper::call(std::u16string_view operation, std::u16string_view name) {
  boundary_.service(u"MapiHelper", operation);
  if (!present_) throw automation::Error(automation::ErrorNumber::FileNotFound);
  if (lacking_.contains(name)) {
    throw automation::Error(automation::ErrorNumber::EntryPointNotFound);
  }
  ++calls_.try_emplace(std::u16string(name), 0).first->second;
  if (!initialized_ && name != DeinitExport) ++callsWhileClosed_;
}

const MapiFacts& SimMapiHelper::facts(std::u16string_view operation, std::u16string_view name,
                                      const automation::Object& item) {
  static const MapiFacts Unknown;
  call(operation, name);
  if (!initialized_ || !factsOf_) return Unknown;
  const MapiFacts* known = factsOf_(Boundary::in(item));
  return known ? *known : Unknown;
}

std::int32_t SimMapiHelper::init() {
  boundary_.service(u"MapiHelper", u"init");
  if (!present_ || lacking_.contains(InitExport)) return NotThere;
  ++calls_.try_emplace(std::u16string(InitExport), 0).first->second;
  initialized_ = initStatus_ == 0;
  return initStatus_;
}

void SimMapiHelper::deinit() {
  call(u"deinit", DeinitExport);
  initialized_ = false;
}

platform::MapiHelper::Sender SimMapiHelper::sender(const automation::Object& item) {
  const auto& addresses = facts(u"sender", u"_MapiGetSender@12", item).senderAddresses;
  return {addresses[0], addresses[1]};
}

platform::MapiHelper::CountedText SimMapiHelper::name(const automation::Object& item) {
  return counted(facts(u"name", u"_MapiGetName@8", item).name);
}

platform::MapiHelper::CountedText SimMapiHelper::displayTo(const automation::Object& item) {
  return counted(facts(u"displayTo", u"_MapiGetDisplayTo@8", item).displayTo);
}

platform::MapiHelper::CountedText SimMapiHelper::receivedBy(const automation::Object& item) {
  return counted(facts(u"receivedBy", u"_MapiReceivedBy@8", item).receivedBy);
}

std::array<TextList, 4> SimMapiHelper::recipients(const automation::Object& item) {
  return facts(u"recipients", u"_MapiGetRecipients@20", item).recipients;
}

platform::MapiHelper::TelephoneNumbers SimMapiHelper::telephoneNumbers(
    const automation::Object& item) {
  const MapiFacts& known = facts(u"telephoneNumbers", u"_MapiGetEMailTelNoInfo@12", item);
  return {known.telephoneNames, known.telephoneNumbers};
}

std::u16string SimMapiHelper::currentUser() {
  call(u"currentUser", u"_MapiGetCurrentUser@8");
  return initialized_ ? user_ : std::u16string();
}

std::size_t SimMapiHelper::calls(std::u16string_view name) const {
  const auto found = calls_.find(name);
  return found == calls_.end() ? 0 : found->second;
}

}  // namespace simulator
