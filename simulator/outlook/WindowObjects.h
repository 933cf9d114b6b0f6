#pragma once

#include <memory>
#include <string>
#include <vector>

#include "simulator/mailbox.h"
#include "simulator/outlook/BarObjects.h"
#include "simulator/outlook/HostObject.h"
#include "simulator/outlook/Ribbon.h"

namespace simulator {

/// What explorers and inspectors have in common.
struct WindowState {
  int number = 0;
  WindowKind kind = WindowKind::Explorer;
  std::shared_ptr<Bars> bars;

  // Of an explorer.
  MailboxFolder* folder = nullptr;
  std::u16string view = u"Messages";
  std::vector<MailboxItem*> selection;

  // Of an inspector.
  MailboxFolder* itemFolder = nullptr;
  MailboxItem* item = nullptr;
  bool wordMail = false;
  std::vector<std::u16string> foundBars;
  RibbonView ribbon;
};

/// An explorer or an inspector. It outlives its window while somebody holds it, and raises then.
class WindowObject : public HostObject<WindowObject> {
 public:
  static constexpr std::u16string_view Name = u"Window";
  static std::span<const MemberRow<WindowObject>> members();

  WindowObject(std::weak_ptr<HostCore> core, WindowState initial)
      : HostObject(std::move(core)), state(std::move(initial)) {}

  Value invoke(automation::Access access, const automation::Member& member,
               Arguments args) override;
  std::u16string typeName() override;
  bool explorer() const { return state.kind == WindowKind::Explorer; }

  void raise(outlook::ExplorerEvent event);
  void raise(outlook::InspectorEvent event);

 protected:
  std::span<const automation::EventInterface* const> eventInterfaces() const override;

 public:
  WindowState state;
  bool open = true;
};

/// Explorers or Inspectors.
class WindowsObject : public HostObject<WindowsObject> {
 public:
  static constexpr std::u16string_view Name = u"Windows";
  static std::span<const MemberRow<WindowsObject>> members();

  WindowsObject(std::weak_ptr<HostCore> core, WindowKind kind)
      : HostObject(std::move(core)), kind_(kind) {}
  std::u16string typeName() override;
  void raiseNew(WindowObject& window);
  WindowKind kind() const { return kind_; }

 protected:
  std::span<const automation::EventInterface* const> eventInterfaces() const override;

 private:
  WindowKind kind_;
};

class ApplicationObject : public HostObject<ApplicationObject> {
 public:
  static constexpr std::u16string_view Name = u"Application";
  static std::span<const MemberRow<ApplicationObject>> members();
  using HostObject::HostObject;
};

}  // namespace simulator
