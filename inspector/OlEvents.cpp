#include "inspector/OlEvents.h"

#include "client/VelnorLocator.h"
#include "infra/modK9TLog.h"

namespace cxol {

OlEvents::OlEvents() {
  LogDebug(u"Create inspector");
}

OlEvents::~OlEvents() {
  LogDebug(u"Destroy inspector");
  DeInitVelnorBarInspector(false);
}

void OlEvents::Connect() noexcept {
  if (isConnecting_) return LogDebug(u"OlEvents.Connect() reentered!");
  isConnecting_ = true;
  if (isConnected_) {
    LogDebug(u"Inspector toolbar already connected!");
  } else {
    isConnected_ = CBAddVelnorBarInspector();
    if (!isConnected_) LogError(u"Failed to connect inspector toolbar!");
  }
  isConnecting_ = false;
}

void OlEvents::Init(const outlook::Inspector& inspector) noexcept {
  inspectorEvents_.close();
  inspector_ = inspector;
  trapQuietly([&] {
    inspectorEvents_ = inspector.object().connect(
        outlook::InspectorEventInterface,
        std::make_shared<automation::ReceiverSink<outlook::InspectorEvents>>(weak_from_this()));
  });
  if (isClosed()) inspectorEvents_.close();
}

void OlEvents::Deinit(bool deleteBar) noexcept {
  DeInitVelnorBarInspector(deleteBar);
  inspectorEvents_.close();
  inspector_ = {};
}

void OlEvents::thisInspector_Activate() noexcept {
  Connect();
}

void OlEvents::thisInspector_Close() noexcept {
  trapAndLog(u"thisInspector_Close failed: ", [&] {
    LogDebug(u"Close inspector");
    Deinit(false);
  });
}

bool OlEvents::isOwn(const office::CommandBarControl& ctrl) const {
  return equalsIgnoringCase(ctrl.parameter(), instanceId_.text());
}

void OlEvents::BtDial2_Click(const office::CommandBarControl& ctrl) noexcept {
  cmds_.Dial(ctrl, instanceId_.text(), {});
}

void OlEvents::BtAction2_Click(const office::CommandBarControl& ctrl) noexcept {
  cmds_.Action(ctrl, instanceId_.text(), {});
}

void OlEvents::BtDrop2_Click(const office::CommandBarControl& ctrl) noexcept {
  cmds_.Drop(ctrl, instanceId_.text());
}

void OlEvents::BtTransfer2_Click(const office::CommandBarControl& ctrl) noexcept {
  trapQuietly([&] {
    if (!isOwn(ctrl)) return;
    if (const auto service = GetVelnorAuxSvc()) service.showNumber(u"");
  });
}

void OlEvents::BtVelnor2_Click(const office::CommandBarControl& ctrl) noexcept {
  trapQuietly([&] {
    if (isOwn(ctrl)) VelnorShowNumber(u"");
  });
}

}  // namespace cxol
