#include "addin/barNames.h"

#include "addin/globals.h"
#include "infra/modRes.h"

namespace cxol {

std::array<std::u16string, 6> BarNames() {
  const auto& g = globals();
  return {g.g_product, g.g_brand1, g.g_brand2, g.g_brand3, g.g_brand4, std::u16string(NeutralName)};
}

}  // namespace cxol
