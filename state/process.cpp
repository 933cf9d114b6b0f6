#include "state/process.h"

#include "infra/errors.h"
#include "platform/timers.h"

namespace cxol {
namespace {
Globals* current = nullptr;
}

Process::Process(const platform::Platform& services)
    : runtime_(services), globals_(std::make_unique<Globals>()) {
  current = globals_.get();
}

Process::~Process() {
  // An add-in that is switched off by the user gets no shutdown event: its timers still run.
  for (const std::uint32_t id : {globals_->TimerId, globals_->SelTimerId}) {
    if (id != 0) trapQuietly([&] { runtime_.platform.timers.killTimer(id); });
  }
  // Wrappers may look at the globals while they go away.
  *globals_ = Globals();
  if (current == globals_.get()) current = nullptr;
}

Globals& globals() {
  if (!current) throw automation::Error(automation::ErrorNumber::ObjectNotSet);
  return *current;
}

std::shared_ptr<MenuForm> LoadedMenuForm() {
  auto form = globals().g_frmMenus;
  if (!form) throw automation::Error(automation::ErrorNumber::ObjectNotSet);
  return form;
}

}  // namespace cxol
