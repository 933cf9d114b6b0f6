#pragma once

#include <string>

#include "simulator/object.h"
#include "standin/client/ClassOffers.h"
#include "standin/client/ClientSettings.h"

namespace standin {

/// What a script can't do by itself, as its object `host`: a window of a class, a running object,
/// objects that others create.
class ScriptHost : public simulator::TableObject<ScriptHost> {
 public:
  static constexpr std::u16string_view Name = u"Host";
  static std::span<const simulator::MemberRow<ScriptHost>> members();

  explicit ScriptHost(bool hidden) : hidden_(hidden) {}
  ~ScriptHost() override;

  /// False once the user or the script has ended the program.
  bool running() const { return running_; }
  void quit() { running_ = false; }
  /// Reads anew where what the client was told is written.
  void reload() { settings_ = ClientSettings::read(); }
  ClassOffers& offers() { return offers_; }

  void makeWindow(const std::u16string& windowClass, const std::u16string& title);
  void setVisible(bool visible);
  bool hidden() const { return hidden_; }
  void tell(std::u16string_view text) const { settings_.journalTold(text); }

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second);

  bool hidden_;
  bool running_ = true;
  HWND window_ = nullptr;
  ClientSettings settings_ = ClientSettings::read();
  ClassOffers offers_;
};

}  // namespace standin
