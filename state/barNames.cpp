#include "state/barNames.h"

#include "infra/modRes.h"
#include "state/globals.h"

namespace cxol {
namespace {

/// The names under which the product was and is sold; they are the same in every language.
constexpr std::u16string_view Brands[] = {u"Velnor", u"Ondaris Station 1", u"Ondaris Station 2",
                                          u"Ondaris Station 2/3"};

}  // namespace

std::array<std::u16string, 6> BarNames() {
  return {globals().g_product,       std::u16string(Brands[0]), std::u16string(Brands[1]),
          std::u16string(Brands[2]), std::u16string(Brands[3]), std::u16string(NeutralName)};
}

}  // namespace cxol
