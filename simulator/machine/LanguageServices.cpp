#include "simulator/machine/LanguageServices.h"

namespace simulator {

std::span<const MemberRow<LanguageServices>> LanguageServices::members() {
  static constexpr MemberRow<LanguageServices> Rows[] = {
      {u"GetCurrentUserLanguage",
       [](LanguageServices& self, Arguments) -> Value { return self.answer_(); }}};
  return Rows;
}

}  // namespace simulator
