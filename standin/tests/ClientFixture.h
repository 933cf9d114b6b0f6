#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/velnor.h"
#include "standin/client/ClientControl.h"
#include "tests/errorOf.h"
#include "windows/com/text.h"
#include "windows/services/Objects.h"
#include "windows/services/Processes.h"

/// The stand-in client from outside: another process that reaches it as the add-in does.
namespace standin::tests {

using automation::Error;
using automation::ErrorNumber;
using automation::Object;
using automation::Value;
using platform::RegistryRoot;

inline constexpr auto Unavailable = static_cast<std::int32_t>(ErrorNumber::ServerUnavailable);
inline constexpr auto CannotCreate = static_cast<std::int32_t>(ErrorNumber::CannotCreateObject);

inline std::u16string clientProgram() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::u16string_view whole = windows::utf16(path);
  return std::u16string(whole.substr(0, whole.rfind(u'\\'))) + u"\\velnor-standin.exe";
}

using Texts = std::vector<std::u16string>;

/// A client that is installed, and another program's hand on it.
class StandinClient : public testing::Test {
 protected:
  StandinClient() { control.install(); }
  ~StandinClient() override { DeleteFileW(windows::wide(ClientSettings::temporaryJournal())); }

  velnor::Application running() {
    return velnor::Application(objects.running(velnor::ApplicationClass));
  }
  Texts told() {
    Texts texts;
    for (const auto& line : control.told()) texts.push_back(line.text);
    return texts;
  }

  ClientControl control{clientProgram()};
  windows::Objects objects{{{velnor::ApplicationClass, velnor::MainWindowClass}}};
  windows::Processes processes;
};

}  // namespace standin::tests
