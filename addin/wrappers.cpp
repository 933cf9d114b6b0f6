#include "addin/wrappers.h"

#include <algorithm>
#include <vector>

#include "explorer/OlCmdEvents.h"
#include "infra/errors.h"
#include "infra/modK9TLog.h"
#include "inspector/OlEvents.h"
#include "items/Helpers.h"
#include "state/globals.h"

namespace cxol {
namespace {

/// The first version whose inspectors have a ribbon.
constexpr std::int32_t RibbonVersion = 12;

void purgeExplorers() {
  auto& wrappers = globals().g_colExplorers;
  // The count is taken once and the index goes on after a removal: a purge that removed something
  // before the last wrapper overruns and costs the new window its wrapper.
  const std::int32_t count = wrappers.count();
  for (std::int32_t i = 1; i <= count; ++i) {
    if (!wrappers.item(i)->thisExplorer()) wrappers.remove(i);
  }
}

/// The open inspectors, each asked for once, and told apart by identity.
class OpenInspectors {
 public:
  OpenInspectors() {
    const auto inspectors = globals().g_olApp.inspectors();
    const std::int32_t count = inspectors.count();
    for (std::int32_t i = 1; i <= count; ++i) {
      held_.push_back(inspectors.item(i));
      identities_.push_back(held_.back().object().identity());
    }
    std::ranges::sort(identities_);
  }
  bool contain(const outlook::Inspector& inspector) const {
    return std::ranges::binary_search(identities_, inspector.object().identity());
  }

 private:
  // Identities hold good while the objects are held.
  std::vector<outlook::Inspector> held_;
  std::vector<const void*> identities_;
};

void purgeInspectors() noexcept {
  trapQuietly([] {
    auto& wrappers = globals().g_colInspectors;
    if (wrappers.count() == 0) return;
    const OpenInspectors open;
    for (std::int32_t i = wrappers.count(); i >= 1; --i) {
      const auto wrapper = wrappers.item(i);
      if (wrapper->thisInspector() && open.contain(wrapper->thisInspector())) continue;
      wrapper->Deinit(false);
      wrappers.remove(i);
    }
  });
}

std::int32_t majorVersion() {
  const auto version = globals().g_olApp.version();
  return automation::Value(version.substr(0, version.find(u'.'))).toInt32();
}

}  // namespace

void AddExplorerWrapper(const outlook::Explorer& explorer) {
  MAPI_Init();
  const auto wrapper = std::make_shared<OlCmdEvents>();
  wrapper->setThisExplorer(explorer);
  purgeExplorers();
  // The host may have disconnected the add-in in the middle of a call.
  if (globals().g_olApp) globals().g_colExplorers.add(wrapper);
}

void AddInspectorWrapper(const outlook::Inspector& inspector) {
  purgeInspectors();
  MAPI_Init();
  const std::int32_t version = majorVersion();
  if (version < RibbonVersion && inspector.isWordMail()) {
    return LogWarning(u"No Velnor Inspector created because Word is used as Email-Editor.");
  }
  const auto wrapper = std::make_shared<OlEvents>();
  wrapper->Init(inspector);
  wrapper->Connect();
  if (globals().g_olApp) globals().g_colInspectors.add(wrapper);
}

void DeInitAllWrappers(bool deleteBars) noexcept {
  ResumeNext resume;
  resume([&] {
    auto& explorers = globals().g_colExplorers;
    while (explorers.count() >= 1) {
      const auto wrapper = explorers.item(1);
      wrapper->DeInitVelnorBarExplorer(deleteBars);
      resume([&] { wrapper->setThisExplorer({}); });
      explorers.remove(1);
    }
  });
  resume([&] {
    auto& inspectors = globals().g_colInspectors;
    while (inspectors.count() >= 1) {
      const auto wrapper = inspectors.item(1);
      wrapper->Deinit(deleteBars);
      inspectors.remove(1);
    }
  });
}

bool UseCommandBars() {
  const auto version = globals().g_olApp.version();
  return automation::Value(version.substr(0, 2)).toInt32() < RibbonVersion;
}

}  // namespace cxol
