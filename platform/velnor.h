#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/automation.h"

/// Typed views of the telephony client's automation objects. A member that the client documents by
/// its place only carries that place; the name is the one that our own stand-ins give it.
namespace velnor {

/// Class names under which the client's objects are found and created.
inline constexpr std::u16string_view ApplicationClass = u"velnor.application";
inline constexpr std::u16string_view RemoteClass = u"velnor.remote";

/// Class of its main window, which is there also while it is hidden.
inline constexpr std::u16string_view MainWindowClass = u"SfFrameOrView";

/// Bits of a line state.
namespace linestate {
/// LS_MASK: the low four bits carry the connection state.
inline constexpr std::int32_t Mask = 15;
/// LS_CONNECTED: the line has a connected call.
inline constexpr std::int32_t Connected = 3;
/// An incoming call is signalling.
inline constexpr std::int32_t Signalling = 2;
/// A line with neither bit set is not used for dialling.
inline constexpr std::int32_t Usable = 4 | 8;
}  // namespace linestate

/// The client's stop command with the code that ends it together with the host.
inline constexpr std::int32_t StopWithHost = 13;

class PhoneCommand : public automation::View {
 public:
  using View::View;

  /// The state of the user's current line.
  std::int32_t lineState() const {
    return object().call({u"LineState", 18}, std::int32_t{0}).toInt32();
  }
  /// The ids of the user's lines: an array, or anything else when there are none.
  automation::Value lines() const { return object().call({u"Lines", 26}, std::int32_t{0}); }
  std::int32_t lineStateOf(std::int32_t line) const {
    return object().call({u"LineStateOf", 17}, line).toInt32();
  }
  void dial(std::int32_t firstLine, std::int32_t chosenLine, std::u16string_view number) const {
    object().call({u"Dial", 11}, firstLine, chosenLine, number, automation::Missing{});
  }
  void hangUp() const { object().call(u"HangUp", std::int32_t{0}); }
  void pickUp() const { object().call(u"PickUp", std::int32_t{0}); }
  void stop(std::int32_t code) const { object().call(u"Stop", code); }
  void transfer() const { object().call(u"Transfer", std::int32_t{0}); }
  void incognito() const { object().call(u"Incognito", std::int32_t{0}); }
};

class AuxiliaryService : public automation::View {
 public:
  using View::View;

  /// Offers a number, or a name to search for, in the client's window.
  void showNumber(std::u16string_view number) const {
    object().call({u"ShowNumber", 2}, number, u"", u"", u"", u"", u"", std::int32_t{1});
  }
  /// The number as the client wants it dialled.
  std::u16string convertNumber(std::u16string_view number) const {
    return object().call({u"ConvertNumber", 5}, number).toText();
  }
  bool isNumber(std::u16string_view text) const {
    return object().call({u"IsNumber", 13}, text).toBoolean();
  }
  void showActions(std::u16string_view references, std::int32_t a, std::int32_t b) const {
    object().call(u"ShowActions", references, a, b);
  }
  void showCallInfo() const { object().call(u"ShowCallInfo"); }
};

class Application : public automation::View {
 public:
  using View::View;
  PhoneCommand phoneCommand() const {
    return PhoneCommand(object().get({u"PhoneCommand", 2}).toObject());
  }
  AuxiliaryService auxiliaryService() const {
    return AuxiliaryService(object().get({u"AuxiliaryService", 5}).toObject());
  }
};

class Remote : public automation::View {
 public:
  using View::View;
  void directDial(std::u16string_view number) const { object().call(u"DirectDial", number, false); }
};

}  // namespace velnor
