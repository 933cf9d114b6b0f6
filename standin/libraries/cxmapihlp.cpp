// Plays the maker's MAPI helper: it tells what the mailbox file knows of an item. Until it is
// initialised, and for items that the mailbox does not have, everything is empty.

#include "simulator/data/MailboxReader.h"
#include "standin/client/LineFile.h"
#include "standin/libraries/environment.h"
#include "standin/libraries/worker.h"
#include "windows/com/Bstr.h"
#include "windows/com/SafeArray.h"
#include "windows/com/errors.h"
#include "windows/com/values.h"

// The mark of a stand-in; ends its thread.
extern "C" __declspec(dllexport) void VelnorStandin() {
  standin::worker.end();
}

namespace {

using simulator::MapiFacts;
using simulator::TextList;
using windows::guardedQuietly;

/// What the helper answers to its initialisation when all is well but it is to fail.
constexpr LONG Status = STANDIN_INIT_STATUS;
constexpr LONG NoMailbox = -2;

struct Helper {
  bool initialized = false;
  simulator::Mailbox mailbox;
};

Helper& helper() {
  static Helper state;
  return state;
}

const MapiFacts& factsOf(IDispatch* item) {
  static const MapiFacts Unknown;
  if (!helper().initialized || !item) return Unknown;
  const auto* found = helper().mailbox.find(windows::objectOf(item).get(u"EntryID").toText());
  return found ? found->mapi : Unknown;
}

void store(const std::u16string& text, BSTR* result) {
  if (result) *result = windows::Bstr(text).detach();
}

/// Counted from 1, so that nobody takes for granted where a list begins.
void store(const TextList& texts, SAFEARRAY** result) {
  if (!result) return;
  SAFEARRAYBOUND bound{static_cast<ULONG>(texts.size()), 1};
  auto array = windows::SafeArray::attach(SafeArrayCreate(VT_BSTR, 1, &bound));
  if (!array.get()) throw std::bad_alloc();
  LONG index = bound.lLbound;
  for (const std::u16string& text : texts) {
    // Copies.
    windows::check(SafeArrayPutElement(array.get(), &index, windows::Bstr(text).get()));
    ++index;
  }
  *result = array.detach();
}

LONG counted(IDispatch* item, std::u16string MapiFacts::*fact, BSTR* result) {
  LONG count = 0;
  guardedQuietly([&] {
    const std::u16string& text = factsOf(item).*fact;
    store(text, result);
    count = static_cast<LONG>(text.size());
  });
  return count;
}

}  // namespace

extern "C" {

LONG WINAPI MapiInit() {
  helper() = {};
  if (Status != 0) return Status;
  guardedQuietly([] {
    const std::u16string path = standin::environment(standin::MailboxVariable);
    helper().mailbox = simulator::readMailbox(standin::readFile(path), standin::toUtf8(path));
    helper().initialized = true;
    standin::worker.start();
  });
  return helper().initialized ? 0 : NoMailbox;
}

void WINAPI MapiDeinit() {
  helper() = {};
}

void WINAPI MapiGetSender(IDispatch* item, BSTR* first, BSTR* second) {
  guardedQuietly([&] {
    const auto& addresses = factsOf(item).senderAddresses;
    store(addresses[0], first);
    store(addresses[1], second);
  });
}

LONG WINAPI MapiGetName(IDispatch* item, BSTR* text) {
  return counted(item, &MapiFacts::name, text);
}

LONG WINAPI MapiGetDisplayTo(IDispatch* item, BSTR* text) {
  return counted(item, &MapiFacts::displayTo, text);
}

LONG WINAPI MapiReceivedBy(IDispatch* item, BSTR* text) {
  return counted(item, &MapiFacts::receivedBy, text);
}

LONG WINAPI MapiGetRecipients(IDispatch* item, SAFEARRAY** list1, SAFEARRAY** list2,
                              SAFEARRAY** list3, SAFEARRAY** list4) {
  guardedQuietly([&] {
    const auto& lists = factsOf(item).recipients;
    SAFEARRAY** const results[] = {list1, list2, list3, list4};
    for (std::size_t i = 0; i < lists.size(); ++i) store(lists[i], results[i]);
  });
  return 0;
}

void WINAPI MapiGetEMailTelNoInfo(IDispatch* item, SAFEARRAY** names, SAFEARRAY** numbers) {
  guardedQuietly([&] {
    const MapiFacts& facts = factsOf(item);
    store(facts.telephoneNames, names);
    store(facts.telephoneNumbers, numbers);
  });
}

void WINAPI MapiGetCurrentUser(LONG, BSTR* user) {
  guardedQuietly([&] { store(helper().mailbox.user, user); });
}

}  // extern "C"
