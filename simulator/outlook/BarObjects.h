#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "simulator/outlook/BarStore.h"
#include "simulator/outlook/HostObject.h"
#include "simulator/outlook/Snapshot.h"

namespace simulator {

struct Bar;

/// A control of a custom bar. Explorers share theirs.
class ControlObject : public HostObject<ControlObject> {
 public:
  static constexpr std::u16string_view Name = u"CommandBarControl";
  static std::span<const MemberRow<ControlObject>> members();

  ControlObject(std::weak_ptr<HostCore> core, std::weak_ptr<Bar> bar, StoredControl initial)
      : HostObject(std::move(core)), bar_(std::move(bar)), state(std::move(initial)) {}

  /// Raises when the control or its bar was deleted, or its window closed.
  Value invoke(automation::Access access, const automation::Member& member,
               Arguments args) override;
  std::u16string typeName() override;
  std::int32_t width() const;
  std::int32_t left() const;
  std::int32_t top() const;
  /// Raises error 438 when the control is of another type.
  void require(office::ControlType type) const;
  void remove();
  /// Raises the control's one event.
  void raise(const automation::Object& clicked);

  static constexpr std::int32_t Height = 22;

 protected:
  std::span<const automation::EventInterface* const> eventInterfaces() const override;

 private:
  std::weak_ptr<Bar> bar_;

 public:
  StoredControl state;
  /// What was set as its picture and waits for a mask.
  automation::Object picture;
  bool gone = false;
};

/// A custom bar: of all explorers together, or of one inspector. Each window shows or hides it and
/// places it for itself.
struct Bar {
  struct Place {
    bool visible = false;
    office::BarPosition position = office::BarPosition::Floating;
  };
  std::u16string name;
  std::vector<std::shared_ptr<ControlObject>> controls;
  /// Controls that Office has not put there yet, and how many activations it lets pass before it
  /// does so, unless somebody fills the bar meanwhile.
  std::vector<StoredControl> late;
  int emptyActivations = 0;
  int activations = 0;
  bool refusesControls = false;
  /// By window number.
  std::map<int, Place> places;
  /// Place in its list, for the layout.
  int row = 0;

  /// Deleted, or its window closed: its controls are of no use any more.
  void discard();
  bool gone = false;
};

using Bars = std::vector<std::shared_ptr<Bar>>;

std::shared_ptr<Bar> barFrom(const std::weak_ptr<HostCore>& core, const StoredBar& stored);
StoredBar storedFrom(const Bar& bar, int window);
BarView viewOf(const Bar& bar, int window);
/// To be called before a window's Activate: Office fills a bar in the end.
void activated(const std::weak_ptr<HostCore>& core, Bars& bars);

class CommandBarsObject : public HostObject<CommandBarsObject> {
 public:
  static constexpr std::u16string_view Name = u"CommandBars";
  static std::span<const MemberRow<CommandBarsObject>> members();

  CommandBarsObject(std::weak_ptr<HostCore> core, std::shared_ptr<Bars> bars, int window)
      : HostObject(std::move(core)), bars_(std::move(bars)), window_(window) {}

  Value at(const Value& index);
  Value add(std::u16string_view name);
  std::int32_t count() const { return static_cast<std::int32_t>(bars_->size()); }

 private:
  Value objectOf(const std::shared_ptr<Bar>& bar);
  std::shared_ptr<Bars> bars_;
  int window_;
};

}  // namespace simulator
