#pragma once

#include <string>
#include <string_view>

#include "platform/velnor.h"

namespace cxol {

/// Finds, starts and attaches to the telephony client. Nothing is cached: a client that was
/// restarted is found again at the next command. No operation raises. Those that wait block the
/// thread for at most 20 seconds and one look a stage.

/// The executable's path from the registry in double quotes, so that a path with blanks survives
/// the shell; the quotes alone when it is not installed. The registry may hold it as a command
/// line, in quotes or with arguments, of which the path is taken.
std::u16string ClientPath() noexcept;

/// The executable's folder up to and including its last backslash; empty without one.
std::u16string ClientDir() noexcept;

/// Starts the client visibly.
void ShellExecuteVelnor() noexcept;

/// Starts the client hidden and does not wait for it.
void ShellExecuteVelnorHiddenNoWait() noexcept;

/// Makes sure that the client runs: starts it hidden when its window is missing, and waits for its
/// window and its object. The user is told when that fails.
void ShellExecuteVelnorWait() noexcept;

/// The running client's auxiliary service, or nothing. Starts nothing.
velnor::AuxiliaryService GetVelnorAuxSvc() noexcept;

/// The running client's phone commands once it is ready, or nothing. A client that does not run is
/// not started from here.
velnor::PhoneCommand GetVelnorPhoneCmdInservice() noexcept;

/// Waits until the client answers its line-state query; false when it does not within 20 seconds.
bool WaitForInService(const velnor::Application& application) noexcept;

/// A new remote-control object, when the client runs or can be started; or nothing.
velnor::Remote GetVelnorRemote() noexcept;

/// Brings the client up with a number or a text to search for. A client that does not run is
/// started instead, without the number; one that runs but takes no messages is left alone.
void VelnorShowNumber(std::u16string_view number) noexcept;

}  // namespace cxol
