#pragma once

#include <string_view>

#include "windows/com/api.h"

/// Names under which the stand-in client is known on the machine.
namespace standin {

/// The class of the running application; the add-in finds the program's file under it.
inline constexpr CLSID ApplicationClassId = {
    0x4B7D2A91, 0x3C5E, 0x11D4, {0x9F, 0x21, 0x00, 0xA0, 0xC9, 0xE4, 0xB7, 0xD3}};
/// The class of the remote control, of which anybody may create objects.
inline constexpr CLSID RemoteClassId = {
    0xCEF2390A, 0xBC53, 0x4355, {0xAB, 0xAF, 0xFA, 0x3B, 0xFC, 0xD4, 0xAF, 0x08}};
inline constexpr GUID TypeLibraryId = {
    0x3F3EBC9D, 0x58C7, 0x4A8D, {0x80, 0x12, 0xA5, 0x06, 0x39, 0x04, 0x2D, 0x3B}};

/// Where the running client takes requests.
inline constexpr std::u16string_view RequestPipeName = u"\\\\.\\pipe\\velnor-standin-client";
/// Below HKEY_CURRENT_USER: what the client must do at its next start, and after a `reload`.
inline constexpr std::u16string_view SettingsKey = u"Software\\Velnor Stand-in\\Client";

/// Command line: besides the hiding that every starter may ask for.
inline constexpr std::u16string_view RegisterArgument = u"/register";
inline constexpr std::u16string_view UnregisterArgument = u"/unregister";
/// All stages of the start are reached at once.
inline constexpr std::u16string_view ReadyArgument = u"/ready";

/// First character of every answer to a request.
inline constexpr char16_t Done = u'+';
inline constexpr char16_t Refused = u'-';

/// Requests that stand in more than one place. The others are listed in ClientServer.cpp.
inline constexpr std::u16string_view VanishRequest = u"vanish";
inline constexpr std::u16string_view ShowRequest = u"show";
inline constexpr std::u16string_view ReloadRequest = u"reload";

}  // namespace standin
