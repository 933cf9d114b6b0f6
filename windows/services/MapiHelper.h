#pragma once

#include "platform/mapi_helper.h"
#include "windows/services/Library.h"

namespace windows {

/// The maker's MAPI helper library. Texts come back as BSTRs and lists as arrays of BSTRs, which
/// the caller frees. The library stays in the process.
class MapiHelper : public platform::MapiHelper {
 public:
  std::int32_t init() override;
  void deinit() override;
  Sender sender(const automation::Object& item) override;
  CountedText name(const automation::Object& item) override;
  CountedText displayTo(const automation::Object& item) override;
  CountedText receivedBy(const automation::Object& item) override;
  std::array<TextList, 4> recipients(const automation::Object& item) override;
  TelephoneNumbers telephoneNumbers(const automation::Object& item) override;
  std::u16string currentUser() override;

 private:
  CountedText countedText(const char* function, const automation::Object& item);

  Library library_{"cxmapihlp.dll", Library::AtEnd::Keep};
};

}  // namespace windows
