#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/automation.h"
#include "simulator/SimRegistry.h"
#include "simulator/Uptime.h"
#include "simulator/client/PlayedClient.h"
#include "simulator/client/Telephone.h"
#include "simulator/client/Told.h"

namespace simulator {

class ClientProcess;

/// The telephony client: a program that is started, shows a window, registers its object, gets into
/// service and then takes commands; and the hand of whoever plays it. At most one process of it
/// runs. Objects that are held when that ends answer with error 462.
class Client : public PlayedClient {
 public:
  /// The registry is the one that it is registered in.
  Client(Uptime& uptime, SimRegistry& registry);
  ~Client() override;
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  static constexpr std::u16string_view DefaultPath = u"C:\\Program Files\\Velnor\\Velnor.exe";
  static constexpr std::u16string_view HideParameter = u"-hideOnStartup";
  static constexpr std::u16string_view RegistryKey =
      u"CLSID\\{4B7D2A91-3C5E-11D4-9F21-00A0C9E4B7D3}\\LocalServer32";

  // ---- The program on the machine.

  void install() override { install(DefaultPath); }
  void install(std::u16string_view path);
  void uninstall() override;
  bool installed() const override { return installed_; }
  const std::u16string& path() const { return path_; }

  /// How long after its start each stage is reached, in milliseconds.
  struct Delays {
    std::uint32_t window = 300;
    std::uint32_t object = 700;
    std::uint32_t inService = 900;
  };
  /// For the next start.
  void setDelays(const Delays& delays) { delays_ = delays; }
  void setGaps(const Gaps& gaps) override { gaps_ = gaps; }
  /// Until the client is in service, asking it for its phone command raises an error instead of
  /// giving nothing.
  void setRaisesBeforeService(bool raises) { raisesBeforeService_ = raises; }

  /// Starts it as the shell does. One that runs already comes to the front, unless hidden.
  void start(bool hidden);
  bool startReady(bool hidden = false) override;
  bool running() const override { return process_ != nullptr; }
  bool hidden() const { return running() && hidden_; }
  bool hasWindow() const;
  bool hasObject() const;
  bool inService() const;
  void vanish() override;
  std::u16string status() const override;

  // ---- The telephone.

  bool ring(std::u16string_view number) override;
  bool connect() override;
  bool endCall() override;
  Telephone& telephone() { return telephone_; }
  const Telephone& telephone() const { return telephone_; }

  // ---- Trouble.

  bool hang(bool on, std::uint32_t milliseconds = 30000) override;
  /// Whoever looks first is told so after a while; a call of its objects returns so late that
  /// nobody lives to see it.
  bool freeze(bool on) override;
  static constexpr std::uint32_t FrozenLook = 5000;
  static constexpr std::uint32_t FrozenCall = 3'600'000;
  static constexpr std::size_t EveryCall = std::numeric_limits<std::size_t>::max();
  /// The next `count` calls raise this error; 0 ends it.
  void answerWithError(
      std::size_t count = EveryCall,
      automation::Error error = automation::Error(automation::ErrorNumber::AutomationFailed));
  void setErrors(bool on) override { answerWithError(on ? EveryCall : 0); }
  /// Every call of this member raises this error, until it is restored.
  void failMember(std::u16string_view member, automation::Error error = automation::Error(
                                                  automation::ErrorNumber::AutomationFailed));
  void restoreMember(std::u16string_view member);

  // ---- What it answers. A rule may raise an error.

  /// Without a label that ends in ": ", blanks, "(0)", slashes and dashes.
  static std::u16string defaultConversion(std::u16string_view number);
  /// Whether all characters are digits or one of "*#I/-+ ()." or "i".
  static bool defaultIsNumber(std::u16string_view text);
  void setConversion(std::function<std::u16string(std::u16string_view)> rule);
  void setIsNumber(std::function<bool(std::u16string_view)> rule);
  /// What the client answers when it is asked for its lines; nothing for the truth.
  void setLinesAnswer(std::optional<automation::Value> answer) { linesAnswer_ = std::move(answer); }

  // ---- What it was told.

  const std::vector<Told>& told() const { return told_; }
  void clearTold() { told_.clear(); }
  void setListener(std::function<void(const Told&)> listener) { listener_ = std::move(listener); }
  /// How often a member was called, by its name, answered or not.
  std::size_t calls(std::u16string_view member) const;

  // ---- For the machine's table of objects. Not counted as handles of the add-in.

  /// A look at whether the client takes messages.
  bool answers();
  /// Raises error 429 while the client has not registered its object.
  automation::Object applicationObject() const;
  /// A new remote object; raises error 429 as above.
  automation::Object newRemote() const;

  // ---- For the client's own objects.

  /// To be called by every member before it does its work; raises what the present trouble is.
  void enter(std::u16string_view member);
  /// Called before that; may take its time, or end the client.
  void setBeforeCall(std::function<void(std::u16string_view)> hook) {
    beforeCall_ = std::move(hook);
  }
  /// Null before the client is in service, or an error, as it is set.
  automation::Object phoneCommandObject() const;
  automation::Object auxiliaryServiceObject() const;
  automation::Value lines() const;
  std::u16string convert(std::u16string_view number) const { return conversion_(number); }
  bool isNumber(std::u16string_view text) const { return isNumber_(text); }
  /// Does what it was told, and tells the listener of it. Raises an error for a call to be dialled
  /// before the client is in service.
  void execute(const Told& told);

 private:
  bool reached(bool never, std::uint32_t delay) const;
  void launch(bool hidden, std::int64_t startedAt);

  Uptime& uptime_;
  SimRegistry& registry_;
  std::u16string path_{DefaultPath};
  bool installed_ = false;
  Delays delays_;
  Gaps gaps_;
  bool raisesBeforeService_ = false;

  std::shared_ptr<ClientProcess> process_;
  std::int64_t startedAt_ = 0;
  Delays stages_;  // of the process that runs
  bool hidden_ = false;
  Telephone telephone_;

  std::optional<std::uint32_t> hangs_;
  bool frozen_ = false;
  std::size_t errorsLeft_ = 0;
  automation::Error error_{automation::ErrorNumber::AutomationFailed};
  std::map<std::u16string, automation::Error, std::less<>> failing_;

  std::function<std::u16string(std::u16string_view)> conversion_;
  std::function<bool(std::u16string_view)> isNumber_;
  std::optional<automation::Value> linesAnswer_;
  std::vector<Told> told_;
  std::function<void(const Told&)> listener_;
  std::function<void(std::u16string_view)> beforeCall_;
  std::map<std::u16string, std::size_t, std::less<>> calls_;
};

}  // namespace simulator
