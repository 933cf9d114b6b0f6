#pragma once

#include <functional>
#include <memory>

#include "simulator/addin.h"
#include "windows/com/ComPtr.h"
#include "windows/server/office_interfaces.h"

namespace standin {

/// An add-in behind COM: what Outlook makes of a program id in its list of add-ins.
class ComAddin : public simulator::Addin {
 public:
  /// Makes a picture that the add-in gave for the ribbon into an object with a member "Name".
  using PictureNamer = std::function<automation::Object(const automation::Object& picture)>;

  /// Creates the object; raises the error of a class that is not registered, can't be loaded or
  /// offers no IDTExtensibility2.
  ComAddin(std::u16string_view progId, PictureNamer namePicture);

  void onConnection(const automation::Object& application, std::int32_t connectMode,
                    const automation::Object& addInInst) override;
  void onStartupComplete() override;
  void onBeginShutdown() override;
  void onDisconnection(std::int32_t removeMode) override;
  std::u16string getCustomUi(std::u16string_view ribbonId) override;
  automation::Value ribbonCallback(std::u16string_view name,
                                   std::span<const automation::Value> args) override;

  /// Whether an event method has reported an error; Outlook then takes the add-in off its list.
  bool failed() const { return *failed_; }

 private:
  /// Calls a method of the events' interface. The host may drop this object in the middle.
  template <class Call>
  void raise(Call&& call);

  windows::ComPtr<windows::Extensibility> events_;
  /// Null for an add-in without a ribbon.
  windows::ComPtr<windows::RibbonExtensibility> ribbon_;
  PictureNamer namePicture_;
  std::shared_ptr<bool> failed_ = std::make_shared<bool>(false);
};

}  // namespace standin
