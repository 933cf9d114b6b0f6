#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/automation.h"

namespace platform {

/// The functions of the maker's MAPI helper library. Each is bound at its first call, which raises
/// error 53 without the library and 453 when it lacks the function. Items are Outlook items; texts
/// and lists come as the library gives them.
class MapiHelper {
 public:
  using TextList = std::vector<std::u16string>;

  struct CountedText {
    std::int32_t count = 0;
    std::u16string text;
  };
  struct Sender {
    std::u16string first;
    std::u16string second;
  };
  /// Two lists that run in parallel.
  struct TelephoneNumbers {
    TextList names;
    TextList numbers;
  };

  virtual ~MapiHelper() = default;
  /// What `init` gives without the library or its function: most machines have none, where an error
  /// would cost each start its way.
  static constexpr std::int32_t NotThere = -1;
  /// 0 on success. Alone raises no error for what is not there.
  virtual std::int32_t init() = 0;
  virtual void deinit() = 0;
  virtual Sender sender(const automation::Object& item) = 0;
  virtual CountedText name(const automation::Object& item) = 0;
  virtual CountedText displayTo(const automation::Object& item) = 0;
  virtual CountedText receivedBy(const automation::Object& item) = 0;
  virtual std::array<TextList, 4> recipients(const automation::Object& item) = 0;
  virtual TelephoneNumbers telephoneNumbers(const automation::Object& item) = 0;
  virtual std::u16string currentUser() = 0;
};

}  // namespace platform
