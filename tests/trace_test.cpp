#include <gtest/gtest.h>

#include "infra/modK9TLog.h"
#include "infra/modRegistry.h"
#include "state/process.h"
#include "tests/World.h"
#include "tests/registryValues.h"

namespace tests {
namespace {

using platform::RegistryType;
using platform::RegistryValue;

constexpr std::u16string_view LogFolder =
    u"C:\\Documents and Settings\\User\\Local Settings\\Application Data\\VelnorLog";

/// The logic's infrastructure on a machine of its own, without an Outlook.
class TraceTest : public testing::Test {
 protected:
  void setLogFile(std::u16string_view value) {
    world.machine.registry.setString(RegistryRoot::CurrentUser, u"Software\\K9T\\Logging",
                                     u"LogFile", value);
  }
  std::u16string file() const {
    return world.machine.files.text(std::u16string(LogFolder) + u"\\Log_cxolcom.txt").value_or(u"");
  }

  World world;
  cxol::Process process{world.machine.platform()};
};

TEST_F(TraceTest, WritesOneLineACallWithTheLocalTime) {
  world.machine.clock.set({2008, 3, 7, 4, 5, 9, 5});
  cxol::LogError(u"first");
  world.machine.clock.set({2008, 11, 30, 23, 59, 59, 999});
  cxol::LogDebug2(u"Größe €5 漢");
  EXPECT_EQ(file(),
            u"07.03.2008 04:05:09.005 Warning: InitK9TLog failed, use internal logging\r\n"
            u"07.03.2008 04:05:09.005 Error:   first\r\n"
            u"30.11.2008 23:59:59.999 Debug:   Größe €5 ?\r\n");
}

TEST_F(TraceTest, StaysSilentUnlessSwitchedOn) {
  for (const std::u16string_view off : {u"0", u"", u" 1", u"yes"}) {
    setLogFile(off);
    cxol::LogWarning(u"nothing");
    EXPECT_FALSE(world.machine.files.folderExists(LogFolder));
  }
  setLogFile(u"1");
  cxol::LogWarning(u"something");
  EXPECT_TRUE(file().ends_with(u"Warning: something\r\n"));
}

TEST_F(TraceTest, KeepsItsFileAndGoesOnWhenFilesFail) {
  world.machine.files.setFoldersFail(true);
  cxol::LogDebug(u"lost: the folder is missing");
  EXPECT_EQ(file(), u"");
  // The folder is tried once; whoever makes it later gets the lines from then on.
  world.machine.files.setFoldersFail(false);
  world.machine.files.makeFolder(LogFolder);
  world.machine.files.setWritesFail(true);
  cxol::LogDebug(u"lost: the file can't be written");
  world.machine.files.setWritesFail(false);
  cxol::LogDebug(u"kept");
  EXPECT_TRUE(file().ends_with(u"Debug:   kept\r\n"));
  EXPECT_EQ(file().find(u"lost"), std::u16string::npos);
}

TEST_F(TraceTest, PrefersTheLoggingLibrary) {
  auto& library = world.machine.loggingLibrary;
  library.setPresent(true);
  cxol::LogError(u"an error");
  cxol::LogWarning(u"a warning");
  cxol::LogDebug(u"a detail");
  ASSERT_EQ(library.created().size(), 1u);
  EXPECT_EQ(library.created()[0].product, u"Velnor");
  EXPECT_EQ(library.created()[0].module, u"AddinOutlookToolbar");
  EXPECT_EQ(library.created()[0].settings, (std::vector<std::int32_t>{7, 3, 35328, 1}));
  ASSERT_EQ(library.written().size(), 3u);
  EXPECT_EQ(library.written()[0].level, 32);
  EXPECT_EQ(library.written()[1].level, 17);
  EXPECT_EQ(library.written()[2].level, 3);
  EXPECT_EQ(library.written()[2].text, u"a detail");
  // A failing write does not change the route.
  library.setWriteStatus(-1);
  cxol::LogError(u"refused");
  EXPECT_FALSE(world.machine.files.folderExists(LogFolder));
  EXPECT_FALSE(cxol::LogWrite(0, u"refused", 3));
  EXPECT_FALSE(cxol::LogCreateLogger(0, u"Velnor", u"again", 1, 2, 3, 4));
  EXPECT_EQ(library.created().size(), 1u);
  // Another logger takes the library that is loaded.
  library.setWriteStatus(std::nullopt);
  EXPECT_FALSE(cxol::LogWrite(1, u"no such logger", 3));
  EXPECT_TRUE(cxol::LogCreateLogger(1, u"Velnor", u"second", 1, 2, 3, 4));
  EXPECT_TRUE(cxol::LogWrite(1, u"kept", 3));
  EXPECT_EQ(library.loads().size(), 1u);
}

TEST_F(TraceTest, TakesTheNextIndexThatTheLibraryHasFree) {
  auto& library = world.machine.loggingLibrary;
  library.setPresent(true);
  library.queueCreateStatus(-6);
  library.queueCreateStatus(-6);
  cxol::LogDebug(u"on the third");
  ASSERT_EQ(library.written().size(), 1u);
  EXPECT_EQ(library.written()[0].index, 2);
}

TEST_F(TraceTest, FallsBackWhenTheLibraryIsUnfit) {
  const struct {
    const char* why;
    void (*spoil)(simulator::SimLoggingLibrary&);
  } cases[] = {
      {"refuses a logger", [](auto& library) { library.queueCreateStatus(-1); }},
      {"lacks the function", [](auto& library) { library.lackExport(u"K9TLog_CreateLogger"); }},
      {"lies elsewhere", [](auto& library) { library.setPresent(true, u"D:\\K9tLogVB.dll"); }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    World other;
    other.machine.loggingLibrary.setPresent(true);
    c.spoil(other.machine.loggingLibrary);
    other.start();
    EXPECT_EQ(other.trace().front(), u"Warning: InitK9TLog failed, use internal logging");
  }
}

TEST_F(TraceTest, LooksForTheLibraryInTheGermanFolderWhenTheSystemTellsNone) {
  world.machine.files.setCommonFilesFolder(std::nullopt);
  cxol::LogDebug(u"x");
  EXPECT_EQ(world.machine.loggingLibrary.loads(),
            Texts{u"c:\\Programme\\Gemeinsame Dateien\\K9T\\K9tLogVB.dll"});
}

TEST_F(TraceTest, PlainReadsTellWhatTheRegistryHolds) {
  using namespace std::string_view_literals;
  const struct {
    const char* why;
    RegistryValue stored;
    std::u16string_view read;
    std::int32_t number;
  } cases[] = {
      {"string", text(RegistryType::String, u"12\0"sv), u"12", 12},
      {"string with more NULs", text(RegistryType::String, u"a\0b\0"sv), u"a", 0},
      {"empty string", text(RegistryType::String, u"\0"sv), u"", 0},
      {"halves go to the even neighbour", text(RegistryType::String, u"2.5\0"sv), u"2.5", 2},
      {"too large", text(RegistryType::String, u"99999999999\0"sv), u"99999999999", 0},
      {"negative number", bytes(RegistryType::Dword, {0xFE, 0xFF, 0xFF, 0xFF}), u"-2", -2},
      {"short number", bytes(RegistryType::Dword, {7, 1}), u"263", 263},
      {"long number", bytes(RegistryType::Dword, {1, 2, 3, 4, 5}), u"", 0},
      {"two-byte binary", bytes(RegistryType::Binary, {0xFF, 0xFF}), u"-1", -1},
      {"one-byte binary", bytes(RegistryType::Binary, {5}), u"5", 5},
      {"three-byte binary", bytes(RegistryType::Binary, {1, 2, 3}), u"", 0},
      {"expandable string", text(RegistryType::ExpandString, u"1\0"sv), u"", 0},
      {"list of strings", text(RegistryType::MultiString, u"1\0\0"sv), u"", 0},
      {"64-bit number", bytes(RegistryType::Qword, {1, 0, 0, 0, 0, 0, 0, 0}), u"", 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    world.machine.registry.setRaw(RegistryRoot::CurrentUser, u"Key", u"Name", c.stored);
    EXPECT_EQ(cxol::GetRegString(RegistryRoot::CurrentUser, u"Key", u"Name"), c.read);
    EXPECT_EQ(cxol::GetRegLong(RegistryRoot::CurrentUser, u"Key", u"Name"), c.number);
  }
  EXPECT_EQ(cxol::GetRegString(RegistryRoot::CurrentUser, u"Key", u"Other"), u"");
}

TEST_F(TraceTest, AStringWithoutItsNulRaisesForTextAndGivesZeroForNumbers) {
  world.machine.registry.setRaw(RegistryRoot::CurrentUser, u"Key", u"Name",
                                text(RegistryType::String, u"12"));
  try {
    cxol::GetRegString(RegistryRoot::CurrentUser, u"Key", u"Name");
    FAIL() << "no error";
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.number(), 5);
  }
  EXPECT_EQ(cxol::GetRegLong(RegistryRoot::CurrentUser, u"Key", u"Name"), 0);
  // The trace's own switch stored like that switches it off.
  world.machine.registry.setRaw(RegistryRoot::CurrentUser, u"Software\\K9T\\Logging", u"LogFile",
                                text(RegistryType::String, u"1"));
  cxol::LogError(u"not written");
  EXPECT_EQ(file(), u"");
}

}  // namespace
}  // namespace tests
