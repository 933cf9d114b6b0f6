#include "tests/sweep/Actor.h"
#include "tests/sweep/Scenario.h"
#include "tests/sweep/Theatre.h"

namespace sweep {
namespace {

class ActorTheatre : public Theatre {
 public:
  explicit ActorTheatre(const Scenario& scenario) : scenario_(scenario) {}

  FaultInjector injector(std::optional<Fault> fault) override {
    return {fault, actor_.boundary, [this](FaultKind kind) { return actor_.disturb(kind); }};
  }
  void play(FaultInjector& injector) override {
    actor_.live(injector, scenario_.prepare, scenario_.play);
  }
  const std::vector<std::u16string>& transcript() const override { return actor_.transcript(); }
  const std::vector<std::string>& findings() const override { return actor_.findings(); }
  std::string missed() const override { return actor_.missed(); }

 private:
  const Scenario& scenario_;
  Actor actor_;
};

}  // namespace

std::vector<Piece> ownPieces() {
  std::vector<Piece> pieces;
  for (const auto scenarios : {toolbarScenarios(), dialScenarios(), clientScenarios(),
                               inspectorScenarios(), lifeScenarios()}) {
    for (const Scenario& scenario : scenarios) {
      pieces.push_back({std::string(scenario.name),
                        [&scenario] { return std::make_unique<ActorTheatre>(scenario); }});
    }
  }
  return pieces;
}

}  // namespace sweep
