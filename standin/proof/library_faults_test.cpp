// The maker's libraries are missing, fail, lack a function or are no libraries at all: the add-in
// does without them.

#include <algorithm>

#include "simulator/player/Text.h"
#include "standin/libraries/environment.h"
#include "standin/proof/ProofDesk.h"
#include "windows/com/text.h"
#include "windows/services/Files.h"

namespace proof {
namespace {

/// The file of one form of a library; empty for none.
std::u16string formOf(std::u16string_view library, std::u16string_view form) {
  if (form == u"missing") return {};
  if (form == u"broken") return beside(u"libraries\\broken.txt");
  std::u16string file = u"libraries\\" + std::u16string(library);
  if (form != u"working") file += u"-" + std::u16string(form);
  return beside(file + u".dll");
}

class LibraryFaults : public ProofDesk {
 protected:
  LibraryFaults() {
    const HANDLE file = CreateFileW(windows::wide(beside(u"libraries\\broken.txt")), GENERIC_WRITE,
                                    0, nullptr, CREATE_ALWAYS, 0, nullptr);
    constexpr char Text[] = "MZ, and nothing that could be loaded";
    DWORD written = 0;
    WriteFile(file, Text, sizeof Text, &written, nullptr);
    CloseHandle(file);
    writeMailbox();
  }
  ~LibraryFaults() override {
    if (session.running()) quit();
    SetEnvironmentVariableW(standin::MailboxVariable, nullptr);
    DeleteFileW(windows::wide(beside(u"libraries\\broken.txt")));
    DeleteFileW(windows::wide(mailboxFile));
  }

  /// The captions of the menu of numbers that the dial button opens.
  Lines numbersOfMail() {
    Lines shown;
    onMenu = [&shown](const auto& menu) -> std::optional<int> {
      for (const auto& entry : menu) shown.push_back(scenario::toUtf8(entry.caption));
      return std::nullopt;
    };
    select(u"mail");
    click(u"CxBtDial");
    onMenu = nullptr;
    return shown;
  }

  const std::u16string mailboxFile = beside(u"proof-mailbox.json");

 private:
  void writeMailbox() const {
    const HANDLE file = CreateFileW(windows::wide(mailboxFile), GENERIC_WRITE, 0, nullptr,
                                    CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, MailboxText.data(), static_cast<DWORD>(MailboxText.size()), &written, nullptr);
    CloseHandle(file);
    SetEnvironmentVariableW(standin::MailboxVariable, windows::wide(mailboxFile));
  }
};

TEST_F(LibraryFaults, TheMapiHelper) {
  const Lines nobody{"<No phone numbers>"};
  const struct {
    const char16_t* form;
    bool initialised;
    Lines numbers;
  } rows[] = {
      {u"working", true, {"Smith, John: 020 1", "Smith, John: 020 2", "New 'Call' task"}},
      {u"missing", false, nobody},
      {u"failing", false, nobody},
      {u"broken", false, nobody},
      {u"lacking", true, nobody},
  };
  ASSERT_TRUE(client.startReady());
  for (const auto& row : rows) {
    SCOPED_TRACE(scenario::toUtf8(row.form));
    std::optional<InstalledFile> installed;
    if (const auto file = formOf(u"cxmapihlp", row.form); !file.empty())
      installed.emplace(file, beside(u"cxmapihlp.dll"));
    start();
    EXPECT_EQ(numbersOfMail(), row.numbers);
    // Its number typed, the mail's sender is called all the same.
    type(u"0201");
    EXPECT_EQ(told(), Lines{"dial 0201 on line 1 (first line 1)"});
    EXPECT_TRUE(client.endCall());
    quit();
    const Lines lines = traced();
    EXPECT_EQ(std::ranges::count(lines, "Debug: MAPI_Init()"), 1);
    EXPECT_EQ(std::ranges::count(lines, "Debug: MAPI_Deinit()"), row.initialised ? 1 : 0);
    EXPECT_EQ(std::ranges::count_if(
                  lines, [](const std::string& line) { return line.starts_with("Error: "); }),
              0);
    EXPECT_FALSE(dll.loaded());
  }
}

TEST_F(LibraryFaults, TheLoggingLibrary) {
  const std::u16string target =
      windows::Files().commonFilesFolder().value() + u"\\K9T\\K9tLogVB.dll";
  const struct {
    const char16_t* form;
    bool logs;
  } rows[] = {
      {u"working", true}, {u"missing", false}, {u"failing", false},
      {u"broken", false}, {u"lacking", false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(scenario::toUtf8(row.form));
    std::optional<InstalledFile> installed;
    if (const auto file = formOf(u"K9tLogVB", row.form); !file.empty())
      installed.emplace(file, target);
    standin::LibraryLog log;
    start();
    quit();
    EXPECT_FALSE(dll.loaded());
    const auto logged = log.read();
    const Lines lines = traced();
    // One takes everything from the first line to the last, the other one nothing.
    EXPECT_EQ(logged.empty(), !row.logs);
    EXPECT_EQ(lines.empty(), row.logs);
    if (lines.empty() == logged.empty()) continue;
    if (row.logs) {
      EXPECT_EQ(scenario::toUtf8(logged.back().note.text), "AddinInstance_Terminate");
    } else {
      EXPECT_EQ(lines.front(), NoLogger);
      EXPECT_EQ(lines.back(), "Debug: AddinInstance_Terminate");
    }
  }
}

TEST_F(LibraryFaults, ALoggingLibraryThatCannotWriteIsNotReplaced) {
  const InstalledFile installed(
      formOf(u"K9tLogVB", u"working"),
      windows::Files().commonFilesFolder().value() + u"\\K9T\\K9tLogVB.dll");
  // Without the name of a file it fails at every line.
  SetEnvironmentVariableW(standin::LogVariable, nullptr);
  start();
  quit();
  EXPECT_EQ(traced(), Lines());
}

TEST_F(LibraryFaults, ATraceFileThatCannotBeWrittenIsGivenUp) {
  // A folder stands in its place.
  DeleteFileW(windows::wide(trace.path()));
  for (auto at = trace.path().find(u'\\', 3); at != std::u16string::npos;
       at = trace.path().find(u'\\', at + 1))
    CreateDirectoryW(windows::wide(trace.path().substr(0, at)), nullptr);
  ASSERT_TRUE(CreateDirectoryW(windows::wide(trace.path()), nullptr));
  ASSERT_TRUE(client.startReady());
  start();
  type(u"4711");
  EXPECT_EQ(told(), Lines{"dial 4711 on line 1 (first line 1)"});
  quit();
  EXPECT_TRUE(RemoveDirectoryW(windows::wide(trace.path())));
}

}  // namespace
}  // namespace proof
