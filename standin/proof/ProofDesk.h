#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "standin/client/ClientControl.h"
#include "standin/outlook/ModalWatch.h"
#include "standin/outlook/RegistryKeeper.h"
#include "standin/outlook/Session.h"
#include "standin/outlook/TraceTail.h"

namespace proof {

/// In UTF-8, which the tests print.
using Lines = std::vector<std::string>;

inline constexpr std::u16string_view AddinKey = u"Software\\K9T\\CXComAddIn";
inline constexpr std::u16string_view ClientOptionsKey = u"Software\\K9T\\Velnor30\\AddIn001";

/// What the trace says where the logging library is not installed.
inline constexpr char NoLogger[] = "Warning: InitK9TLog failed, use internal logging";

/// The mailbox of the person, as a mailbox file has it: two contacts, one with one number and one
/// with two, and a mail.
extern const std::string_view MailboxText;

/// The path of a file beside this program.
std::u16string beside(std::u16string_view file);

inline constexpr std::u16string_view AddinDll = u"cxolcom.dll";
inline constexpr std::u16string_view IdleDll = u"idle-addin.dll";
inline constexpr std::u16string_view AddinProgId = u"VelnorOutlookCOMAddIn.Connect";
inline constexpr std::u16string_view IdleProgId = u"VelnorIdleAddin.Connect";

/// The registration of a DLL beside this program, for as long as the object lives.
class RegisteredDll {
 public:
  explicit RegisteredDll(std::u16string_view file = AddinDll);
  ~RegisteredDll();
  RegisteredDll(const RegisteredDll&) = delete;
  RegisteredDll& operator=(const RegisteredDll&) = delete;

  /// Whether the DLL is in this process.
  bool loaded() const;

 private:
  HRESULT call(const char* function) const;
  const std::u16string path_;
};

/// A file that is put where the add-in looks for it, and taken away in the end.
class InstalledFile {
 public:
  InstalledFile(const std::u16string& source, std::u16string target);
  ~InstalledFile();
  InstalledFile(const InstalledFile&) = delete;
  InstalledFile& operator=(const InstalledFile&) = delete;

 private:
  std::u16string target_;
};

/// A machine on which the add-in is registered and writes its own trace file, in English, with the
/// client installed, and a person who has Outlook with one small mailbox. Everything is put back.
class ProofDesk : public testing::Test {
 public:
  ProofDesk();
  ~ProofDesk() override;

  /// Outlook with its first explorer, whose toolbar is there when a contact is selected.
  void start(std::u16string_view version = u"11.0");
  void quit();
  simulator::OutlookHost& host() { return session.host(); }

  void type(std::u16string_view text) { host().typeInto(1, u"CxCbDial", text); }
  void click(const std::u16string& tag) { session.click(1, tag, false); }
  void select(const std::u16string& item);

  /// The trace since the last call of any of these, as "Error: ..." and so on.
  Lines traced();
  /// Warnings and errors only.
  Lines complaints();
  /// What the client was told since the last call.
  Lines told();

  void setText(std::u16string_view key, std::u16string_view name, std::u16string_view text);
  void setNumber(std::u16string_view key, std::u16string_view name, std::uint32_t number);

  // In this order: the registration ends last.
  RegisteredDll dll;
  standin::RegistryKeeper registry;
  standin::TraceFile trace;
  standin::ClientControl client;
  standin::Session session;
  /// Texts of the message boxes, each closed at once.
  Lines boxes;
  /// What happens while a box is up.
  std::function<void()> onBox;
  /// What happens while a menu is open; gives the id of the chosen entry. Without it every menu is
  /// left.
  std::function<std::optional<int>(const std::vector<platform::PopupEntry>&)> onMenu;

 private:
  standin::ModalWatch watch_;
};

/// Does something on another thread, some time after now; the end waits for it.
class Later {
 public:
  Later(std::uint32_t milliseconds, std::function<void()> action);
  ~Later();
  Later(const Later&) = delete;
  Later& operator=(const Later&) = delete;

 private:
  static DWORD WINAPI run(void* self);
  const std::uint32_t milliseconds_;
  const std::function<void()> action_;
  HANDLE thread_;
};

}  // namespace proof
