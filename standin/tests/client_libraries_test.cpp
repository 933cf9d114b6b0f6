// The stand-ins for the maker's libraries, called as the add-in calls them.

#include <gtest/gtest.h>

#include <array>
#include <memory>

#include "simulator/object.h"
#include "standin/client/LineFile.h"
#include "standin/libraries/environment.h"
#include "windows/com/Bstr.h"
#include "windows/com/SafeArray.h"
#include "windows/com/text.h"
#include "windows/com/values.h"

namespace {

using Texts = std::vector<std::u16string>;

/// A library beside the test program.
class Loaded {
 public:
  explicit Loaded(const char* file) {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    std::string full = path;
    full.replace(full.rfind('\\') + 1, std::string::npos, std::string("libraries\\") + file);
    module_ = LoadLibraryA(full.c_str());
    EXPECT_TRUE(module_) << full;
  }
  ~Loaded() { FreeLibrary(module_); }
  Loaded(const Loaded&) = delete;
  Loaded& operator=(const Loaded&) = delete;

  void* find(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(module_, name));
  }
  template <class Result = LONG, class... Args>
  Result call(const char* name, Args... args) const {
    using Function = Result WINAPI(Args...);
    return reinterpret_cast<Function*>(find(name))(args...);
  }

 private:
  HMODULE module_ = nullptr;
};

class Item : public simulator::TableObject<Item> {
 public:
  static constexpr std::u16string_view Name = u"MailItem";
  static std::span<const simulator::MemberRow<Item>> members() {
    static constexpr simulator::MemberRow<Item> Rows[] = {
        {u"EntryID",
         [](Item& self, simulator::Arguments) -> simulator::Value { return self.id_; }}};
    return Rows;
  }
  explicit Item(std::u16string id) : id_(std::move(id)) {}

 private:
  std::u16string id_;
};

windows::ComPtr<IDispatch> item(const char16_t* id) {
  return windows::dispatchOf(std::make_shared<Item>(id)->handle());
}

std::u16string temporary(const wchar_t* name) {
  wchar_t folder[MAX_PATH + 1] = {};
  GetTempPathW(MAX_PATH, folder);
  return std::u16string(windows::utf16(folder)) + std::u16string(windows::utf16(name));
}

Texts textsOf(const windows::SafeArray& array) {
  Texts texts;
  for (const auto& value : windows::elementsOf(array.get())) texts.push_back(value.toText());
  return texts;
}

constexpr char Mailbox[] = R"({
  "user": "Jürgen",
  "folders": [{"name": "Inbox", "holds": "mail", "items": [
    {"id": "one", "subject": "x",
     "sender": {"name": "Müller", "addresses": ["a@b.example", "c@d.example"],
                "numbers": ["1", "2"]},
     "to": [{"name": "Jürgen", "address": "j@b.example", "numbers": ["3"]}],
     "cc": [{"name": "Cc", "address": "cc@b.example"}]}]}]})";

class MapiHelperLibrary : public testing::Test {
 protected:
  MapiHelperLibrary() {
    const HANDLE file =
        CreateFileW(windows::wide(path), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, Mailbox, sizeof Mailbox - 1, &written, nullptr);
    CloseHandle(file);
    SetEnvironmentVariableW(standin::MailboxVariable, windows::wide(path));
  }
  ~MapiHelperLibrary() override {
    DeleteFileW(windows::wide(path));
    SetEnvironmentVariableW(standin::MailboxVariable, nullptr);
  }

  static std::u16string textOf(const Loaded& library, const char* function, IDispatch* item) {
    windows::Bstr text;
    const LONG count = library.call(function, item, text.receive());
    EXPECT_EQ(count, static_cast<LONG>(text.view().size()));
    return text.text();
  }

  const std::u16string path = temporary(L"velnor-standin-mailbox.json");
};

TEST_F(MapiHelperLibrary, TellsWhatTheMailboxKnows) {
  const Loaded library("cxmapihlp.dll");
  const auto known = item(u"one");
  EXPECT_EQ(textOf(library, "_MapiGetName@8", known.get()), u"");  // not initialised
  ASSERT_EQ(library.call("_MapiInit@0"), 0);
  EXPECT_EQ(textOf(library, "_MapiGetName@8", known.get()), u"Müller");
  EXPECT_EQ(textOf(library, "_MapiGetDisplayTo@8", known.get()), u"Jürgen");
  EXPECT_EQ(textOf(library, "_MapiReceivedBy@8", known.get()), u"Jürgen");

  windows::Bstr first;
  windows::Bstr second;
  library.call<void, IDispatch*>("_MapiGetSender@12", known.get(), first.receive(),
                                 second.receive());
  EXPECT_EQ(first.view(), u"a@b.example");
  EXPECT_EQ(second.view(), u"c@d.example");

  windows::SafeArray names;
  windows::SafeArray numbers;
  library.call<void, IDispatch*>("_MapiGetEMailTelNoInfo@12", known.get(), names.receive(),
                                 numbers.receive());
  EXPECT_EQ(textsOf(names), (Texts{u"Müller", u"Müller", u"Jürgen"}));
  EXPECT_EQ(textsOf(numbers), (Texts{u"1", u"2", u"3"}));

  std::array<windows::SafeArray, 4> lists;
  library.call<LONG, IDispatch*>("_MapiGetRecipients@20", known.get(), lists[0].receive(),
                                 lists[1].receive(), lists[2].receive(), lists[3].receive());
  EXPECT_EQ(textsOf(lists[0]), (Texts{u"j@b.example"}));
  EXPECT_EQ(textsOf(lists[1]), (Texts{u"cc@b.example"}));
  EXPECT_EQ(textsOf(lists[3]), Texts());

  windows::Bstr user;
  library.call<void>("_MapiGetCurrentUser@8", LONG{0}, user.receive());
  EXPECT_EQ(user.view(), u"Jürgen");

  EXPECT_EQ(textOf(library, "_MapiGetName@8", item(u"unknown").get()), u"");
  library.call<void>("_MapiDeinit@0");
  EXPECT_EQ(textOf(library, "_MapiGetName@8", known.get()), u"");
}

TEST_F(MapiHelperLibrary, FailsOrLacksAFunction) {
  const auto known = item(u"one");
  const Loaded failing("cxmapihlp-failing.dll");
  EXPECT_NE(failing.call("_MapiInit@0"), 0);
  EXPECT_EQ(textOf(failing, "_MapiGetName@8", known.get()), u"");
  const Loaded lacking("cxmapihlp-lacking.dll");
  EXPECT_EQ(lacking.call("_MapiInit@0"), 0);
  EXPECT_FALSE(lacking.find("_MapiGetEMailTelNoInfo@12"));
  EXPECT_EQ(textOf(lacking, "_MapiGetName@8", known.get()), u"Müller");
  // A mailbox that can't be read is a failure as well.
  SetEnvironmentVariableW(standin::MailboxVariable, L"C:\\no such file");
  const Loaded working("cxmapihlp.dll");
  EXPECT_NE(working.call("_MapiInit@0"), 0);
}

TEST(LoggingLibraryStandin, WritesLines) {
  const std::u16string path = temporary(L"velnor-standin-log.txt");
  DeleteFileW(windows::wide(path));
  SetEnvironmentVariableW(standin::LogVariable, windows::wide(path));
  const auto create = [](const Loaded& library, LONG index) {
    return library.call("K9TLog_CreateLogger", index, "Velnor", "AddinOutlookToolbar", LONG{7},
                        LONG{3}, LONG{35328}, LONG{1});
  };
  const Loaded working("K9tLogVB.dll");
  EXPECT_EQ(working.call("K9TLog_Write", LONG{0}, LONG{3}, "too early"), -1);
  EXPECT_EQ(create(working, 0), 0);
  EXPECT_EQ(create(working, 0), -6);
  EXPECT_EQ(create(working, 1), 0);
  EXPECT_EQ(working.call("K9TLog_Write", LONG{1}, LONG{17}, "M\xFCller\r\n\t"), 0);
  EXPECT_TRUE(working.find("K9TLog_ExploreLogFolder"));
  EXPECT_NE(create(Loaded("K9tLogVB-failing.dll"), 5), 0);
  const Loaded lacking("K9tLogVB-lacking.dll");
  EXPECT_FALSE(lacking.find("K9TLog_CreateLogger"));
  EXPECT_TRUE(lacking.find("K9TLog_Write"));

  auto lines = standin::LineReader(path).read();
  ASSERT_EQ(lines.size(), 5u);
  for (auto& line : lines) line.erase(line.begin());  // the time
  EXPECT_EQ(lines[0], (Texts{u"create", u"0", u"Velnor", u"AddinOutlookToolbar", u"7", u"3",
                             u"35328", u"1", u"0"}));
  EXPECT_EQ(lines[1].back(), u"-6");
  EXPECT_EQ(lines[3], (Texts{u"write", u"1", u"17", u"Müller\r\n\t"}));
  DeleteFileW(windows::wide(path));
  SetEnvironmentVariableW(standin::LogVariable, nullptr);
}

}  // namespace
