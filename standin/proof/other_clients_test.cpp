// Clients of the add-in that are not ours: the system's script host, and a program that knows
// nothing but how to read a type library.

#include <algorithm>

#include "standin/proof/ProofDesk.h"

namespace proof {
namespace {

/// Runs a program to its end, a minute at most; what it wrote, line by line.
Lines outputOf(std::u16string commandLine) {
  SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
  HANDLE reader = nullptr;
  HANDLE writer = nullptr;
  EXPECT_TRUE(CreatePipe(&reader, &writer, &inheritable, 1 << 16));
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = startup.hStdError = writer;
  PROCESS_INFORMATION process{};
  EXPECT_TRUE(CreateProcessW(nullptr, reinterpret_cast<wchar_t*>(commandLine.data()), nullptr,
                             nullptr, TRUE, 0, nullptr, nullptr, &startup, &process));
  CloseHandle(writer);
  if (WaitForSingleObject(process.hProcess, 60'000) != WAIT_OBJECT_0) {
    ADD_FAILURE() << "it does not end";
    TerminateProcess(process.hProcess, 1);
  }
  std::string text;
  char buffer[4096];
  for (DWORD size = 0; ReadFile(reader, buffer, sizeof buffer, &size, nullptr) && size != 0;)
    text.append(buffer, size);
  CloseHandle(reader);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  Lines lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    lines.push_back(text.substr(at, end - at));
    std::erase(lines.back(), '\r');
    at = end + 1;
  }
  return lines;
}

class OtherClients : public ProofDesk {
 protected:
  static Lines runScript(std::u16string_view file) {
    return outputOf(u"cscript.exe //nologo \"" + beside(file) + u"\"");
  }
};

TEST_F(OtherClients, AScriptInJScript) {
  ASSERT_TRUE(client.startReady());
  ASSERT_TRUE(client.ring(u"110"));
  EXPECT_EQ(runScript(u"commands.js"),
            (Lines{"Dial: done", "drop: done", "Dial with arguments: done", "Action: done",
                   "Hup: error 438", "Dial with a text for a button: error 13"}));
  EXPECT_EQ(told(), (Lines{"pick up", "hang up", "show number \"\"", "open actions \"\" (1, 1)"}));
  const Lines lines = traced();
  for (const char* line :
       {"Debug: clsVelnorCmd: Dial called", "Debug: clsVelnorCmd: Drop called",
        "Debug: clsVelnorCmd: Action called", "Debug: clsVelnorCmd: VelnorCmd call PickUp"})
    EXPECT_NE(std::ranges::count(lines, line), 0) << line;
}

TEST_F(OtherClients, AScriptInVbScript) {
  ASSERT_TRUE(client.startReady());
  ASSERT_TRUE(client.ring(u"110"));
  EXPECT_EQ(runScript(u"commands.vbs"), (Lines{"_clsVelnorCmds", "438"}));
  EXPECT_EQ(told(), (Lines{"pick up", "hang up", "open actions \"\" (1, 1)", "show number \"\""}));
}

TEST_F(OtherClients, AScriptWithoutTheClient) {
  EXPECT_EQ(runScript(u"commands.vbs"), (Lines{"_clsVelnorCmds", "438"}));
  // Three of its commands need the client's phone command, one the service beside it.
  const Lines lines = complaints();
  EXPECT_EQ(std::ranges::count(lines,
                               "Error: GetVelnorPhoneCmdInservice() is Nothing in "
                               "clsVelnorCmds.Dial(): "),
            3);
  EXPECT_FALSE(client.running());
}

TEST_F(OtherClients, AReaderOfTheTypeLibrary) {
  Lines types = outputOf(u"\"" + beside(u"type-members.exe") + u"\" \"" + beside(AddinDll) + u"\"");
  // What the compiler of the library puts in front: the interfaces that every other one stands on.
  std::erase_if(types, [](const std::string& line) {
    return line.starts_with("other IUnknown:") || line.starts_with("other IDispatch:") ||
           line == "other tagGUID:";
  });
  EXPECT_EQ(
      types,
      (Lines{
          "dual _Connect: OnLoad(ribbon) GetImage(control, picture) cmdCommonRibbonBttn(control)",
          "dual _clsVelnorCmds: Dial(Ctrl, Parameter, RibbonControl) Action(Ctrl, Parameter, "
          "RibbonControl) Drop(Ctrl, Parameter)",
          "dual _OlCmdEvents: InitFromTimer() MustInit(result) onExplorerSelectionChange() "
          "BtCallInfo_Click(Ctrl, CancelDefault) BtDial_Click(Ctrl, CancelDefault) "
          "BtDrop_Click(Ctrl, CancelDefault) BtAction_Click(Ctrl, CancelDefault) "
          "BtTransfer_Click(Ctrl, CancelDefault) BtIncognito_Click(Ctrl, CancelDefault) "
          "BtPickup_Click(Ctrl, CancelDefault) BtVelnor_Click(Ctrl, CancelDefault) "
          "CbDial_Change(Ctrl) thisExplorer_Activate() thisExplorer_Close() "
          "thisExplorer_FolderSwitch() thisExplorer_SelectionChange() thisExplorer_ViewSwitch() "
          "get thisExplorer(explorer) set thisExplorer(explorer) "
          "DeInitVelnorBarExplorer(deleteBar)",
          "dual _OlEvents: NeedConnect(result) Connect() BtAction2_Click(Ctrl, CancelDefault) "
          "BtDial2_Click(Ctrl, CancelDefault) BtDrop2_Click(Ctrl, CancelDefault) "
          "BtTransfer2_Click(Ctrl, CancelDefault) BtVelnor2_Click(Ctrl, CancelDefault) "
          "Init(Inspector) Deinit(bDelete) thisInspector_Activate() thisInspector_Close() get "
          "thisInspector(Inspector) set thisInspector(Inspector)",
          "dual _clsRibbon: GetRibbonDescription(markup) GetImageByControlId(id, picture) "
          "ButtonHandler(control) GetCurrentInspector(Inspector) IsNewMailItem(result) "
          "RemoveNotNecessaryCommandBar() get Layout(Layout) put Layout(Layout)",
          "dual _CCallerData: get FullName(text) get FirstName(text) get LastName(text) get "
          "PhonePrivate(text) get PhoneMobile(text) get PhoneBusiness(text) Parse(text)",
          "creatable class Connect: _Connect", "creatable class clsVelnorCmds: _clsVelnorCmds",
          "other class OlCmdEvents: _OlCmdEvents", "other class OlEvents: _OlEvents",
          "other class clsRibbon: _clsRibbon", "other class CCallerData: _CCallerData"}));
}

}  // namespace
}  // namespace proof
