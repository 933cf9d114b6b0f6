#include "demo/NativeAddin.h"

#include "addin/Connect.h"
#include "doctor/Report.h"
#include "state/process.h"

namespace {

class NativeAddin : public simulator::Addin {
 public:
  explicit NativeAddin(const platform::Platform& services)
      : process_(services), connect_(cxol::Connect::create()) {}

  void onConnection(const automation::Object& application, std::int32_t connectMode,
                    const automation::Object& addInInst) override {
    connect_->AddinInstance_OnConnection(application, connectMode, addInInst);
  }
  void onStartupComplete() override { connect_->AddinInstance_OnStartupComplete(); }
  void onBeginShutdown() override { connect_->AddinInstance_OnBeginShutdown(); }
  void onDisconnection(std::int32_t removeMode) override {
    connect_->AddinInstance_OnDisconnection(removeMode);
  }

  std::u16string getCustomUi(std::u16string_view ribbonId) override {
    return connect_->IRibbonExtensibility_GetCustomUI(ribbonId);
  }

  automation::Value ribbonCallback(std::u16string_view name,
                                   std::span<const automation::Value> args) override {
    if (args.size() != 1 || !args[0].isObject()) {
      throw automation::Error(automation::ErrorNumber::WrongArgumentCount);
    }
    const auto& argument = args[0].toObject();
    if (name == u"OnLoad") {
      connect_->OnLoad(argument);
      return {};
    }
    if (name == u"GetImage") return connect_->GetImage(argument);
    if (name == u"cmdCommonRibbonBttn") {
      connect_->cmdCommonRibbonBttn(argument);
      return {};
    }
    throw automation::Error(automation::ErrorNumber::MemberNotFound);
  }

 private:
  cxol::Process process_;
  std::shared_ptr<cxol::Connect> connect_;
};

}  // namespace

std::unique_ptr<simulator::Addin> makeNativeAddin(const platform::Platform& services) {
  return std::make_unique<NativeAddin>(services);
}

std::vector<std::u16string> diagnoseNatively(platform::Registry& registry, platform::Facts& facts,
                                             bool putRight) {
  const auto report = doctor::examine(registry, facts);
  if (!putRight || report.cures.empty()) return report.lines();
  for (const auto& cure : report.cures) doctor::apply(registry, cure);
  return doctor::examine(registry, facts).lines();
}
