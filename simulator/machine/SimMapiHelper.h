#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "platform/mapi_helper.h"
#include "simulator/boundary.h"
#include "simulator/mailbox.h"

namespace simulator {

/// A MAPI helper library that tells what the mailbox knows of an item. Functions are named as the
/// library exports them, "_MapiGetSender@12". Counts of texts are their lengths. Until a successful
/// `init`, and for items without facts, everything is empty. Observers' errors pass through.
class SimMapiHelper : public platform::MapiHelper {
 public:
  explicit SimMapiHelper(Boundary& boundary) : boundary_(boundary) {}

  std::int32_t init() override;
  void deinit() override;
  Sender sender(const automation::Object& item) override;
  CountedText name(const automation::Object& item) override;
  CountedText displayTo(const automation::Object& item) override;
  CountedText receivedBy(const automation::Object& item) override;
  std::array<TextList, 4> recipients(const automation::Object& item) override;
  TelephoneNumbers telephoneNumbers(const automation::Object& item) override;
  std::u16string currentUser() override;

  // Not crossings: for the program that plays the machine.

  void setPresent(bool present) { present_ = present; }
  bool present() const { return present_; }
  void lackExport(std::u16string_view name) { lacking_.emplace(name); }
  void setInitStatus(std::int32_t status) { initStatus_ = status; }
  /// Tells the facts of a host's item, given as the host's own object; null when it knows none.
  using FactsOf = std::function<const MapiFacts*(const automation::Object& item)>;
  void setFacts(FactsOf factsOf) { factsOf_ = std::move(factsOf); }
  void setCurrentUser(std::u16string user) { user_ = std::move(user); }

  bool initialized() const { return initialized_; }
  /// How often a function was called and found.
  std::size_t calls(std::u16string_view name) const;
  /// Calls of other functions than these two outside the time between `init` and `deinit`.
  std::size_t callsWhileClosed() const { return callsWhileClosed_; }

 private:
  void call(std::u16string_view operation, std::u16string_view name);
  const MapiFacts& facts(std::u16string_view operation, std::u16string_view name,
                         const automation::Object& item);

  Boundary& boundary_;
  bool present_ = true;
  bool initialized_ = false;
  std::int32_t initStatus_ = 0;
  std::set<std::u16string, std::less<>> lacking_;
  FactsOf factsOf_;
  std::u16string user_;
  std::map<std::u16string, std::size_t, std::less<>> calls_;
  std::size_t callsWhileClosed_ = 0;
};

}  // namespace simulator
