#pragma once

#include <string>
#include <string_view>

namespace cxol {

/// What the telephony client knows of a caller, as it writes it into an item.
class CCallerData {
 public:
  /// First and last name with a blank between them, also when one of them is empty.
  std::u16string FullName() const;
  const std::u16string& FirstName() const { return firstName_; }
  const std::u16string& LastName() const { return lastName_; }
  const std::u16string& PhonePrivate() const { return phonePrivate_; }
  const std::u16string& PhoneMobile() const { return phoneMobile_; }
  const std::u16string& PhoneBusiness() const { return phoneBusiness_; }

  /// Takes over the pairs key=value of a record. Each pair ends with the separator: what follows
  /// the last one is not read. Pairs that are none and unknown keys are passed over; fields without
  /// a pair keep their value.
  void Parse(std::u16string_view text);

 private:
  void parsePair(std::u16string_view pair);

  std::u16string firstName_;
  std::u16string lastName_;
  std::u16string phonePrivate_;
  std::u16string phoneMobile_;
  std::u16string phoneBusiness_;
};

}  // namespace cxol
