#include "client/OpenVelnorActionDialog.h"

#include "client/VelnorLocator.h"
#include "infra/modK9TLog.h"

namespace cxol {

void OpenVelnorActionDialog(const Collection<std::u16string>& references, std::int32_t a,
                            std::int32_t b) noexcept {
  trapAndLog(u"ERROR in OpenVelnorActionDialog(): ", [&] {
    const auto service = GetVelnorAuxSvc();
    std::u16string joined;
    for (const auto& reference : references) {
      if (reference.empty()) continue;
      if (!joined.empty()) joined += u"\n\n";
      joined += reference;
    }
    service.showActions(joined, a, b);
  });
}

}  // namespace cxol
