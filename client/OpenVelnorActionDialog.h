#pragma once

#include <cstdint>
#include <string>

#include "infra/collection.h"

namespace cxol {

/// Opens the client's action dialog for contact references, the empty ones left out. The two
/// numbers are the client's business. Never raises; a failure is one line in the trace.
void OpenVelnorActionDialog(const Collection<std::u16string>& references, std::int32_t a,
                            std::int32_t b) noexcept;

}  // namespace cxol
