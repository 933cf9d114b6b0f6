#pragma once

#include <string>

#include "windows/com/api.h"

/// Environment variables by which a program that plays the machine tells the libraries where their
/// files are. The libraries look anew each time.
namespace standin {

/// The mailbox file that the MAPI helper reads when it is initialised.
inline constexpr wchar_t MailboxVariable[] = L"VELNOR_STANDIN_MAILBOX";
/// The file of lines to which the logging library writes: see LineFile.h. A line holds the time and
/// then either `create`, index, product, module, four settings and the status, or `write`, index,
/// level and text.
inline constexpr wchar_t LogVariable[] = L"VELNOR_STANDIN_LOG";

/// Each stand-in exports this function, by which it can be told from the maker's library. It ends
/// the library's thread, as the end of the process does.
inline constexpr char StandinMark[] = "VelnorStandin";

/// Empty for a variable that is not set.
inline std::u16string environment(const wchar_t* name) {
  const DWORD size = GetEnvironmentVariableW(name, nullptr, 0);
  std::u16string text(size, u'\0');
  text.resize(GetEnvironmentVariableW(name, reinterpret_cast<wchar_t*>(text.data()), size));
  return text;
}

}  // namespace standin
