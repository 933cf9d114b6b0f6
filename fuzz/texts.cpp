// The texts that the items of strangers bring along.
#include "fuzz/Input.h"
#include "fuzz/OneItemHost.h"
#include "fuzz/check.h"
#include "fuzz/targets.h"
#include "items/CCallerData.h"
#include "items/UIHelpers.h"

namespace fuzz {

void callerData(const std::uint8_t* data, std::size_t size) {
  const std::u16string record = Input(data, size).restAsText();
  cxol::CCallerData caller;
  caller.Parse(record);
  for (const auto* field : {&caller.FirstName(), &caller.LastName(), &caller.PhonePrivate(),
                            &caller.PhoneMobile(), &caller.PhoneBusiness()}) {
    check(record.find(*field) != std::u16string::npos, "a field stands in the record as it is");
    check(field->find(u'=') == std::u16string::npos, "a value has no equal sign");
  }
  check(caller.FullName().size() == caller.FirstName().size() + 1 + caller.LastName().size(),
        "the full name is both names and a blank");
  cxol::CCallerData again = caller;
  again.Parse(record);
  check(again.FullName() == caller.FullName(), "reading twice changes nothing");
}

void subject(const std::uint8_t* data, std::size_t size) {
  const OneItemHost host;
  const std::u16string text = Input(data, size).restAsText();
  const auto number = cxol::GetNumberFromSubject(text);
  check(text.find(number) != std::u16string::npos, "the number stands in the subject");
  check(number.find(u'[') == std::u16string::npos, "the number ends before a bracket");
  check(number.empty() || text.find(u"Tel.") != std::u16string::npos, "no number without its mark");
  const auto caption = cxol::EscapeCaption(text);
  check(caption.size() >= text.size() && caption.size() <= text.size() + text.size() / 2,
        "a caption grows by its ampersands only");
}

}  // namespace fuzz
