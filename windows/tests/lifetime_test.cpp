// When the host lets go of the DLL's objects, and of the DLL.

#include <functional>
#include <optional>

#include "windows/com/Bstr.h"
#include "windows/server/office_interfaces.h"
#include "windows/services/Library.h"
#include "windows/services/Registry.h"
#include "windows/tests/HandleMarks.h"
#include "windows/tests/ServerFixture.h"
#include "windows/tests/ServerThread.h"

namespace windows {
namespace {

/// The interfaces of one object, without references of their own.
struct ConnectFaces {
  Extensibility* events;
  RibbonExtensibility* ribbon;
  DefaultConnect* own;
};

/// A button at whose question for its parameter something happens.
class TestButton : public simulator::TableObject<TestButton> {
 public:
  static constexpr std::u16string_view Name = u"CommandBarButton";
  static std::span<const simulator::MemberRow<TestButton>> members() {
    static constexpr simulator::MemberRow<TestButton> Rows[] = {
        {u"Parameter", [](TestButton& self, simulator::Arguments) -> automation::Value {
           if (self.onAsked) self.onAsked();
           return u"own";
         }}};
    return Rows;
  }
  std::function<void()> onAsked;
};

/// The add-in's own trace file, on as long as this lives.
class TraceFile {
 public:
  TraceFile() {
    platform::RegistryValue on;
    on.type = platform::RegistryType::String;
    on.text = std::u16string(u"1\0", 2);
    registry_.write(Root, Key, u"LogFile", on);
  }
  ~TraceFile() {
    registry_.deleteValue(Root, Key, u"LogFile");
    DeleteFileW(wide(path()));
  }
  TraceFile(const TraceFile&) = delete;
  TraceFile& operator=(const TraceFile&) = delete;
  std::size_t size() {
    WIN32_FILE_ATTRIBUTE_DATA file{};
    GetFileAttributesExW(wide(path()), GetFileExInfoStandard, &file);
    return file.nFileSizeLow;
  }

 private:
  static constexpr auto Root = platform::RegistryRoot::CurrentUser;
  static constexpr std::u16string_view Key = u"Software\\K9T\\Logging";
  std::u16string path() {
    const auto folder = registry_.read(
        Root, u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders",
        u"Local AppData");
    return std::u16string(folder->text.c_str()) + u"\\VelnorLog\\Log_cxolcom.txt";
  }
  Registry registry_;
};

TEST_F(Server, OutlookMayLetGoInTheMiddleOfAnEvent) {
  TraceFile trace;
  auto connect = dll_.create(CLSID_Connect);
  invoke(connect.get(), 1, {outlook_->handle(), 1, addIn(), {}});
  const auto explorer = std::make_shared<TestExplorer>();
  HRESULT inside = S_OK;
  std::size_t before = 0;
  explorer->onConnect = [&] {
    invoke(connect.get(), 2, {0, {}});
    connect.reset();
    inside = dll_.call("DllCanUnloadNow");
    before = trace.size();
  };
  outlook_->explorers->announce(explorer->handle());
  EXPECT_FALSE(connect) << "the event did not arrive";
  EXPECT_EQ(inside, S_FALSE) << "its own code is still running";
  EXPECT_EQ(explorer->sinkCount(), 0U);
  EXPECT_GT(trace.size(), before) << "the rest of the event had no trace to write to";
}

TEST_F(Server, OutlookMayLetGoInTheMiddleOfAnyCall) {
  const auto ribbonButton = [] { return dispatchOf(propertiesObject({{u"Id", u"IDS_Aktionen"}})); };
  const struct {
    const char* what;
    /// Makes the call through an interface that nobody holds but the caller.
    std::function<void(ConnectFaces& faces)> call;
  } rows[] = {
      {"GetCustomUI",
       [](ConnectFaces& faces) {
         Bstr markup;
         faces.ribbon->GetCustomUI(Bstr(u"Microsoft.Outlook.Contact").get(), markup.receive());
       }},
      {"OnStartupComplete", [](ConnectFaces& faces) { faces.events->OnStartupComplete(nullptr); }},
      {"OnStartupComplete by number",
       [](ConnectFaces& faces) { invoke(faces.events, 4, {automation::Array{}}); }},
      {"OnConnection",
       [this](ConnectFaces& faces) {
         faces.events->OnConnection(dispatchOf(outlook_->handle()).get(), 0,
                                    dispatchOf(addIn()).get(), nullptr);
       }},
      {"a button of the ribbon",
       [&](ConnectFaces& faces) { faces.own->cmdCommonRibbonBttn(ribbonButton().get()); }},
      {"a button of the ribbon by name",
       [&](ConnectFaces& faces) {
         invoke(faces.ribbon, idOf(faces.ribbon, u"cmdCommonRibbonBttn"),
                {objectOf(ribbonButton().get())});
       }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    auto connect = dll_.create(CLSID_Connect);
    invoke(connect.get(), 1, {outlook_->handle(), 1, addIn(), {}});
    {
      Bstr markup;
      connect.as<RibbonExtensibility>(IID_RibbonExtensibility)
          ->GetCustomUI(Bstr(u"Microsoft.Outlook.Contact").get(), markup.receive());
    }
    ConnectFaces faces{connect.as<Extensibility>(IID_Extensibility).get(),
                       connect.as<RibbonExtensibility>(IID_RibbonExtensibility).get(),
                       connect.as<DefaultConnect>(IID_DefaultConnect).get()};
    bool asked = false;
    outlook_->onAsked = [&] {
      asked = true;
      faces.events->OnDisconnection(1, nullptr);
      connect.reset();
      EXPECT_EQ(dll_.call("DllCanUnloadNow"), S_FALSE) << "its own code is still running";
    };
    row.call(faces);
    EXPECT_TRUE(asked);
    outlook_->onAsked = {};
    EXPECT_EQ(dll_.call("DllCanUnloadNow"), S_OK);
    EXPECT_EQ(subscriptions(), 0U);
  }
}

TEST_F(Server, AScriptMayLetGoInTheMiddleOfACommand) {
  for (const int command : {1, 2, 3}) {
    SCOPED_TRACE(command);
    auto commands = dll_.create(CLSID_VelnorCmds);
    auto* const dual = commands.as<DefaultVelnorCmds>(IID_DefaultVelnorCmds).get();
    const auto button = std::make_shared<TestButton>();
    button->onAsked = [&] {
      commands.reset();
      EXPECT_EQ(dll_.call("DllCanUnloadNow"), S_FALSE) << "its own code is still running";
    };
    const Variant ctrl = variantOf(button->handle());
    const Variant parameter = variantOf(u"own");
    if (command == 1) dual->Dial(ctrl.get(), parameter.get(), Variant().get());
    if (command == 2) dual->Action(ctrl.get(), parameter.get(), Variant().get());
    if (command == 3) dual->Drop(ctrl.get(), parameter.get());
    EXPECT_FALSE(commands);
    EXPECT_EQ(dll_.call("DllCanUnloadNow"), S_OK);
  }
}

/// Ends this thread's timers without a window that were set lately; how many there were.
int killLateTimers() {
  // Ids are handed out in sequence.
  constexpr UINT_PTR Far = 400;
  const UINT_PTR next = SetTimer(nullptr, 0, 60000, nullptr);
  KillTimer(nullptr, next);
  int count = 0;
  for (UINT_PTR id = next > Far ? next - Far : 1; id <= next + Far; ++id) {
    if (KillTimer(nullptr, id)) ++count;
  }
  return count;
}

TEST(Unloading, LeavesNoHandleBehind) {
  const auto outlook = std::make_shared<TestOutlook>();
  standin::ExportTypes::add(
      u"Windows", {{}, {&outlook::ExplorersEventInterface, &outlook::InspectorsEventInterface}});
  const auto run = [&] {
    const Dll dll;
    const auto connect = dll.create(CLSID_Connect);
    auto events = connect.as<Extensibility>(IID_Extensibility);
    const auto addin = propertiesObject({{u"ProgId", u"p"}});
    events->OnConnection(dispatchOf(outlook->handle()).get(), 0, dispatchOf(addin).get(), nullptr);
    events->OnDisconnection(1, nullptr);
  };
  struct Held : HandleMarks {
    DWORD handles = 0;
    Held() { GetProcessHandleCount(GetCurrentProcess(), &handles); }
  };
  killLateTimers();
  for (int i = 0; i < 3; ++i) run();
  EXPECT_EQ(GetModuleHandleA(CXOL_DLL), nullptr);
  HandleMarks::settled();
  const Held before;
  for (int i = 0; i < 50; ++i) run();
  const Held after;
  EXPECT_LE(after.handles, before.handles + 2);
  EXPECT_NEAR(after.kernel, before.kernel, 5);
  EXPECT_NEAR(after.gdi, before.gdi, 20);
  EXPECT_NEAR(after.user, before.user, 20);
  EXPECT_EQ(standin::DispatchExport::count(), 0U);
  // A timer would call into nowhere. The add-in was connected late and never told of a shutdown.
  EXPECT_EQ(killLateTimers(), 0);
  standin::ExportTypes::clear();
}

TEST(Unloading, ClosesNothingTwice) {
  // Between the two, a thread of the host may have been given the same handle.
  auto dll = std::make_optional<Dll>();
  EXPECT_NE(dll->create(CLSID_VelnorCmds).get(), nullptr);
  SetLastError(NO_ERROR);
  dll.reset();
  EXPECT_NE(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
  EXPECT_EQ(GetModuleHandleA(CXOL_DLL), nullptr);
}

TEST(Loading, ServesOneThreadAtATime) {
  const Dll dll;
  ServerThread other;
  const auto createThere = [&] {
    automation::Error error(0, u"");
    other.run([&] {
      try {
        dll.create(CLSID_VelnorCmds);
      } catch (const automation::Error& raised) {
        error = raised;
      }
    });
    return error.number();
  };
  auto connect = dll.create(CLSID_Connect);
  // Its commands would use objects of Outlook that belong to this thread.
  EXPECT_EQ(createThere(), RPC_E_WRONG_THREAD);
  EXPECT_NE(dll.create(CLSID_VelnorCmds).get(), nullptr);
  connect.reset();
  EXPECT_EQ(createThere(), 0);
  EXPECT_EQ(dll.call("DllCanUnloadNow"), S_OK);
}

TEST(Loading, CatchesItsErrorsBesideASharedRuntimeLibrary) {
  Library shared("libgcc_s_dw2-1.dll");
  ASSERT_TRUE(shared.load());
  const Dll dll;
  const auto commands = dll.create(CLSID_VelnorCmds);
  const auto dual = commands.as<DefaultVelnorCmds>(IID_DefaultVelnorCmds);
  const Variant number = variantOf(7);
  EXPECT_TRUE(FAILED(dual->Drop(number.get(), Variant().get()))) << "a number is no control";
}

}  // namespace
}  // namespace windows
