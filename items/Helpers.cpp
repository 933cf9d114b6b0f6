#include "items/Helpers.h"

#include "infra/modK9TLog.h"
#include "infra/runtime.h"
#include "items/CCallerData.h"
#include "state/globals.h"

namespace cxol {
namespace {

std::u16string textOf(platform::MapiHelper::CountedText answer) {
  return answer.count > 0 ? std::move(answer.text) : std::u16string();
}

void appendCaller(const std::u16string& record, const std::u16string& user, Texts& labels,
                  Texts& numbers) {
  CCallerData caller;
  caller.Parse(record);
  const auto name = caller.FullName();
  if (!user.empty() && name == user) return;
  for (const auto* number :
       {&caller.PhoneBusiness(), &caller.PhoneMobile(), &caller.PhonePrivate()}) {
    if (number->empty()) continue;
    labels.add(name);
    numbers.add(*number);
  }
}

}  // namespace

void MAPI_Init() noexcept {
  trapQuietly([] {
    auto& state = globals();
    if (!state.g_bUseMapi || state.g_bMapiInitialized) return;
    LogDebug(u"MAPI_Init()");
    if (machine().mapiHelper.init() != 0) return;
    state.g_bMapiInitialized = true;
    // Disconnected in the middle of the call.
    if (!state.g_olApp) MAPI_Deinit();
  });
}

void MAPI_Deinit() noexcept {
  trapQuietly([] {
    auto& state = globals();
    if (!state.g_bMapiInitialized) return;
    LogDebug(u"MAPI_Deinit()");
    state.g_bMapiInitialized = false;
    machine().mapiHelper.deinit();
  });
}

platform::MapiHelper::Sender MAPI_GetSender(const outlook::Item& item) {
  return machine().mapiHelper.sender(item.object());
}

std::u16string MAPI_GetName(const outlook::Item& item) {
  return textOf(machine().mapiHelper.name(item.object()));
}

std::u16string MAPI_GetDisplayTo(const outlook::Item& item) {
  return textOf(machine().mapiHelper.displayTo(item.object()));
}

std::u16string MAPI_ReceivedBy(const outlook::Item& item) {
  return textOf(machine().mapiHelper.receivedBy(item.object()));
}

void GetSenderNumbers(const outlook::Item& item, Texts& labels, Texts& numbers) noexcept {
  trapQuietly([&] {
    const auto people = machine().mapiHelper.telephoneNumbers(item.object());
    const auto user = machine().mapiHelper.currentUser();
    for (std::size_t i = 0; i < people.names.size(); ++i) {
      if (!user.empty() && people.names[i] == user) continue;
      if (i >= people.numbers.size()) {
        throw automation::Error(automation::ErrorNumber::SubscriptOutOfRange);
      }
      labels.add(people.names[i]);
      numbers.add(people.numbers[i]);
    }
    const auto record = item.userProperty(u"CxCallerData");
    if (!record.empty()) appendCaller(record, user, labels, numbers);
  });
}

}  // namespace cxol
