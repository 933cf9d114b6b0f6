#include "client/IsDialableNumber.h"

#include <algorithm>

#include "infra/errors.h"

namespace cxol {
namespace {

/// Digits, and what people write between them. "I" stands for the internal prefix of some exchanges
/// and is taken in either case.
bool isDialable(char16_t c) {
  constexpr std::u16string_view Allowed = u"0123456789*#Ii/-+ ().";
  return Allowed.find(c) != std::u16string_view::npos;
}

}  // namespace

bool IsDialableNumber(std::u16string_view text, const velnor::AuxiliaryService& service) noexcept {
  bool dialable = false;
  ResumeNext resume;
  if (service) resume([&] { dialable = service.isNumber(text); });
  if (!service || resume.pending()) dialable = std::ranges::all_of(text, isDialable);
  return dialable;
}

}  // namespace cxol
