#include "windows/services/MapiHelper.h"

#include "windows/com/Bstr.h"
#include "windows/com/SafeArray.h"
#include "windows/com/errors.h"
#include "windows/com/values.h"

namespace windows {
namespace {

using Init = LONG WINAPI();
using Deinit = void WINAPI();
using GetText = LONG WINAPI(IDispatch* item, BSTR* text);
using GetSender = void WINAPI(IDispatch* item, BSTR* first, BSTR* second);
using GetRecipients = LONG WINAPI(IDispatch* item, SAFEARRAY** list1, SAFEARRAY** list2,
                                  SAFEARRAY** list3, SAFEARRAY** list4);
using GetTelephoneNumbers = void WINAPI(IDispatch* item, SAFEARRAY** names, SAFEARRAY** numbers);
using GetCurrentUser = void WINAPI(LONG zero, BSTR* text);

platform::MapiHelper::TextList textsOf(const SafeArray& array) {
  platform::MapiHelper::TextList texts;
  for (const auto& element : elementsOf(array.get())) texts.push_back(element.toText());
  return texts;
}

}  // namespace

std::int32_t MapiHelper::init() {
  auto* init = library_.find<Init>("_MapiInit@0");
  return init ? init() : NotThere;
}

void MapiHelper::deinit() {
  library_.require<Deinit>("_MapiDeinit@0")();
}

MapiHelper::Sender MapiHelper::sender(const automation::Object& item) {
  auto* get = library_.require<GetSender>("_MapiGetSender@12");
  const auto dispatch = dispatchOf(item);
  Bstr first;
  Bstr second;
  get(dispatch.get(), first.receive(), second.receive());
  return {first.text(), second.text()};
}

MapiHelper::CountedText MapiHelper::countedText(const char* function,
                                                const automation::Object& item) {
  auto* get = library_.require<GetText>(function);
  const auto dispatch = dispatchOf(item);
  Bstr text;
  const LONG count = get(dispatch.get(), text.receive());
  return {count, text.text()};
}

MapiHelper::CountedText MapiHelper::name(const automation::Object& item) {
  return countedText("_MapiGetName@8", item);
}

MapiHelper::CountedText MapiHelper::displayTo(const automation::Object& item) {
  return countedText("_MapiGetDisplayTo@8", item);
}

MapiHelper::CountedText MapiHelper::receivedBy(const automation::Object& item) {
  return countedText("_MapiReceivedBy@8", item);
}

std::array<MapiHelper::TextList, 4> MapiHelper::recipients(const automation::Object& item) {
  auto* get = library_.require<GetRecipients>("_MapiGetRecipients@20");
  const auto dispatch = dispatchOf(item);
  std::array<SafeArray, 4> lists;
  get(dispatch.get(), lists[0].receive(), lists[1].receive(), lists[2].receive(),
      lists[3].receive());
  return {textsOf(lists[0]), textsOf(lists[1]), textsOf(lists[2]), textsOf(lists[3])};
}

MapiHelper::TelephoneNumbers MapiHelper::telephoneNumbers(const automation::Object& item) {
  auto* get = library_.require<GetTelephoneNumbers>("_MapiGetEMailTelNoInfo@12");
  const auto dispatch = dispatchOf(item);
  SafeArray names;
  SafeArray numbers;
  get(dispatch.get(), names.receive(), numbers.receive());
  return {textsOf(names), textsOf(numbers)};
}

std::u16string MapiHelper::currentUser() {
  auto* get = library_.require<GetCurrentUser>("_MapiGetCurrentUser@8");
  Bstr user;
  get(0, user.receive());
  return user.text();
}

}  // namespace windows
