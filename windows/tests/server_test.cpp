// The DLL itself, as COM and Office use it.

#include <gtest/gtest.h>

#include "standin/com/DispatchExport.h"
#include "windows/com/Bstr.h"
#include "windows/com/ComObject.h"
#include "windows/com/TypeMembers.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/com/values.h"
#include "windows/server/classes.h"
#include "windows/server/office_interfaces.h"
#include "windows/services/Library.h"
#include "windows/tests/ServerFixture.h"

namespace windows {
namespace {

using automation::Object;

TEST_F(Server, ConnectIsOneObjectWithThreeFaces) {
  const auto connect = dll_.create(CLSID_Connect);
  EXPECT_EQ(dll_.call("DllCanUnloadNow"), S_FALSE);
  const auto identity = connect.as<IUnknown>();
  for (const IID* iid : {&IID_Extensibility, &IID_RibbonExtensibility, &IID_DefaultConnect}) {
    const auto face = connect.as<IDispatch>(*iid);
    ASSERT_TRUE(face);
    EXPECT_EQ(face.as<IUnknown>().get(), identity.get());
    EXPECT_EQ(face.as<IDispatch>(IID_IDispatch).get(), connect.get());
    // Office asks for callbacks at any of them.
    EXPECT_NE(idOf(face.get(), u"GetImage"), DISPID_UNKNOWN);
    EXPECT_NE(idOf(face.get(), u"CMDCOMMONRIBBONBTTN"), DISPID_UNKNOWN);
    EXPECT_EQ(idOf(face.get(), u"LoadImage"), DISPID_UNKNOWN);
  }
  EXPECT_EQ(idOf(connect.as<IDispatch>(IID_Extensibility).get(), u"OnStartupComplete"), 4);
  EXPECT_EQ(idOf(connect.as<IDispatch>(IID_RibbonExtensibility).get(), u"GetCustomUI"), 1);
  EXPECT_FALSE(connect.as<IDispatch>(IID_DefaultVelnorCmds));
  EXPECT_EQ(ComObject(connect).typeName(), u"Connect");
}

TEST_F(Server, OutlookConnectsByTheInterface) {
  const auto connect = dll_.create(CLSID_Connect);
  auto events = connect.as<Extensibility>(IID_Extensibility);
  ASSERT_TRUE(events);
  EXPECT_EQ(events->OnConnection(dispatchOf(outlook_->handle()).get(), 1, dispatchOf(addIn()).get(),
                                 nullptr),
            S_OK);
  EXPECT_EQ(subscriptions(), 2U);
  EXPECT_EQ(events->OnAddInsUpdate(nullptr), S_OK);
  EXPECT_EQ(events->OnStartupComplete(nullptr), S_OK);
  EXPECT_EQ(events->OnBeginShutdown(nullptr), S_OK);
  EXPECT_EQ(events->OnDisconnection(0, nullptr), S_OK);
  EXPECT_EQ(subscriptions(), 0U);
}

TEST_F(Server, OutlookConnectsByNumber) {
  const auto connect = dll_.create(CLSID_Connect);
  const auto events = connect.as<IDispatch>(IID_Extensibility);
  EXPECT_EQ(invoke(events.get(), 1, {outlook_->handle(), 0, addIn(), automation::Array{}}), S_OK);
  EXPECT_EQ(subscriptions(), 2U);
  EXPECT_EQ(invoke(events.get(), 5, {automation::Array{}}), S_OK);
  EXPECT_EQ(invoke(events.get(), 2, {1, automation::Array{}}), S_OK);
  EXPECT_EQ(subscriptions(), 0U);
  EXPECT_EQ(invoke(events.get(), 77, {}), DISP_E_MEMBERNOTFOUND);
}

TEST_F(Server, AReleaseAloneLetsGoOfOutlook) {
  auto connect = dll_.create(CLSID_Connect);
  invoke(connect.get(), 1, {outlook_->handle(), 0, addIn(), {}});
  EXPECT_EQ(subscriptions(), 2U);
  connect.reset();
  EXPECT_EQ(subscriptions(), 0U);
}

TEST_F(Server, NothingOutlookGivesMakesAnEventFail) {
  const auto connect = dll_.create(CLSID_Connect);
  auto events = connect.as<Extensibility>(IID_Extensibility);
  EXPECT_EQ(events->OnConnection(nullptr, 0, nullptr, nullptr), S_OK);
  EXPECT_EQ(events->OnStartupComplete(nullptr), S_OK);
  EXPECT_EQ(events->OnDisconnection(9, nullptr), S_OK);
  EXPECT_EQ(events->OnDisconnection(9, nullptr), S_OK);
  // By number, with what is none, and with too little.
  EXPECT_EQ(invoke(connect.get(), 1, {u"no object", u"no number", Object(), {}}), S_OK);
  EXPECT_EQ(invoke(connect.get(), 2, {}), S_OK);
}

TEST_F(Server, TheRibbonIsServed) {
  const auto connect = dll_.create(CLSID_Connect);
  invoke(connect.get(), 1, {outlook_->handle(), 1, addIn(), {}});
  auto ribbon = connect.as<RibbonExtensibility>(IID_RibbonExtensibility);
  Bstr markup;
  ASSERT_EQ(ribbon->GetCustomUI(Bstr(u"Microsoft.Outlook.Contact").get(), markup.receive()), S_OK);
  EXPECT_NE(markup.view().find(u"<tab idMso=\"TabContact\""), std::u16string_view::npos);
  Variant again;
  ASSERT_EQ(invoke(ribbon.get(), 1, {u"Microsoft.Outlook.Contact"}, &again), S_OK);
  EXPECT_EQ(valueOf(again.get()).toText(), markup.text());

  // The callbacks, as the markup names them.
  EXPECT_EQ(invoke(ribbon.get(), idOf(ribbon.get(), u"OnLoad"), {Object()}), S_OK);
  Variant image;
  const auto getImage = idOf(ribbon.get(), u"GetImage");
  ASSERT_EQ(invoke(ribbon.get(), getImage, {propertiesObject({{u"Id", u"IDS_Auflegen"}})}, &image),
            S_OK);
  ASSERT_EQ(image.get().vt, VT_DISPATCH);
  EXPECT_TRUE(ComPtr(image.get().pdispVal).as<IPicture>());
  ASSERT_EQ(invoke(ribbon.get(), getImage, {Object()}, &image), S_OK);
  EXPECT_EQ(image.get().pdispVal, nullptr);
  // Hangs up, which ends in the trace without a client.
  EXPECT_EQ(invoke(ribbon.get(), idOf(ribbon.get(), u"cmdCommonRibbonBttn"),
                   {propertiesObject({{u"Id", u"IDS_Auflegen"}})}),
            S_OK);
  image = Variant();
  invoke(connect.get(), 2, {0, {}});
}

TEST_F(Server, TheCommandsTakeWhatScriptsGive) {
  const auto commands = dll_.create(CLSID_VelnorCmds);
  const Object object = objectOf(commands.get());
  EXPECT_EQ(object.typeName(), u"clsVelnorCmds");
  object.call(u"drop");
  object.call(u"Drop", Object(), u"12345.67");
  object.call(u"Dial", automation::Missing{}, automation::Missing{}, Object());
  // A click on another window's button.
  object.call(u"Dial", propertiesObject({{u"Parameter", u"1"}}), u"2");
  EXPECT_THROW(object.call(u"Dial", u"no object"), automation::Error);
  EXPECT_THROW(object.call(u"Hup"), automation::Error);

  auto dual = commands.as<DefaultVelnorCmds>(IID_DefaultVelnorCmds);
  ASSERT_TRUE(dual);
  EXPECT_EQ(dual->Drop(Variant().get(), variantOf(u"1").get()), S_OK);
}

TEST_F(Server, ScriptsCannotCallTheBaseInterfaces) {
  const auto commands = dll_.create(CLSID_VelnorCmds);
  const Object object = objectOf(commands.get());
  // A release that got through would take the object from us.
  const ComPtr<IDispatch> spare[] = {commands, commands, commands, commands};
  for (const auto* name : {u"Release", u"AddRef"}) {
    commands->AddRef();
    const ULONG before = commands->Release();
    EXPECT_THROW(object.call(name), automation::Error);
    commands->AddRef();
    EXPECT_EQ(commands->Release(), before);
  }
  // Neither on Windows nor elsewhere: the type information says so.
  ComPtr<ITypeInfo> info;
  ASSERT_EQ(commands->GetTypeInfo(0, 0, info.receive()), S_OK);
  unsigned open = 0;
  unsigned own = 0;
  const TypeAttributes attributes(info.get());
  for (UINT i = 0; i < attributes->cFuncs; ++i) {
    FUNCDESC* function = nullptr;
    ASSERT_EQ(info->GetFuncDesc(i, &function), S_OK);
    constexpr MEMBERID FirstOwn = 0x60030000;
    const bool restricted = (function->wFuncFlags & FUNCFLAG_FRESTRICTED) != 0;
    if (function->memid >= FirstOwn) ++own;
    if (function->memid < FirstOwn && !restricted) ++open;
    info->ReleaseFuncDesc(function);
  }
  EXPECT_EQ(open, 0U);
  EXPECT_EQ(own, 3U);
}

TEST_F(Server, OtherClassesAreRefused) {
  EXPECT_THROW(dll_.create(IID_DefaultConnect), automation::Error);
  ComPtr<IClassFactory> factory;
  check(dll_.find<HRESULT WINAPI(REFCLSID, REFIID, void**)>("DllGetClassObject")(
      CLSID_Connect, IID_IClassFactory, factory.receiveVoid()));
  ComPtr<IUnknown> object;
  EXPECT_EQ(factory->CreateInstance(factory.get(), IID_IUnknown, object.receiveVoid()),
            CLASS_E_NOAGGREGATION);
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IStream, object.receiveVoid()), E_NOINTERFACE);
  factory->LockServer(TRUE);
  factory.reset();
  EXPECT_EQ(dll_.call("DllCanUnloadNow"), S_FALSE);
  check(dll_.find<HRESULT WINAPI(REFCLSID, REFIID, void**)>("DllGetClassObject")(
      CLSID_Connect, IID_IClassFactory, factory.receiveVoid()));
  factory->LockServer(FALSE);
}

/// The members of an interface in the order of their places, a read-and-write property twice.
std::vector<std::u16string> membersOf(ITypeLib* library, const wchar_t* name) {
  ComPtr<ITypeInfo> info;
  MEMBERID id = 0;
  USHORT found = 1;
  std::wstring text(name);
  if (FAILED(library->FindName(text.data(), 0, info.receive(), &id, &found)) || found != 1) {
    return {};
  }
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> table;
  if (SUCCEEDED(info->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)) &&
      SUCCEEDED(info->GetRefTypeInfo(reference, table.receive()))) {
    info = table;
  }
  const TypeAttributes attributes(info.get());
  std::map<int, std::u16string> members;
  for (UINT i = 0; i < attributes->cFuncs; ++i) {
    FUNCDESC* function = nullptr;
    check(info->GetFuncDesc(i, &function));
    Bstr member;
    UINT count = 0;
    info->GetNames(function->memid, member.receive(), 1, &count);
    members[function->oVft / 4 - 6] = member.text();
    info->ReleaseFuncDesc(function);
  }
  std::vector<std::u16string> names;
  for (const auto& [place, member] : members) {
    EXPECT_EQ(place, static_cast<int>(names.size()) + 1);
    names.push_back(member);
  }
  return names;
}

TEST_F(Server, TheTypeLibraryTellsTheMembersInOrder) {
  ComPtr<ITypeLib> library;
  ASSERT_EQ(LoadTypeLibEx(wide(dll_.path()), REGKIND_NONE, library.receive()), S_OK);
  const struct {
    const wchar_t* name;
    std::vector<std::u16string> members;
  } rows[] = {
      {L"_Connect", {u"OnLoad", u"GetImage", u"cmdCommonRibbonBttn"}},
      {L"_clsVelnorCmds", {u"Dial", u"Action", u"Drop"}},
      {L"_CCallerData",
       {u"FullName", u"FirstName", u"LastName", u"PhonePrivate", u"PhoneMobile", u"PhoneBusiness",
        u"Parse"}},
      {L"_OlCmdEvents",
       {u"InitFromTimer",
        u"MustInit",
        u"onExplorerSelectionChange",
        u"BtCallInfo_Click",
        u"BtDial_Click",
        u"BtDrop_Click",
        u"BtAction_Click",
        u"BtTransfer_Click",
        u"BtIncognito_Click",
        u"BtPickup_Click",
        u"BtVelnor_Click",
        u"CbDial_Change",
        u"thisExplorer_Activate",
        u"thisExplorer_Close",
        u"thisExplorer_FolderSwitch",
        u"thisExplorer_SelectionChange",
        u"thisExplorer_ViewSwitch",
        u"thisExplorer",
        u"thisExplorer",
        u"DeInitVelnorBarExplorer"}},
      {L"_OlEvents",
       {u"NeedConnect", u"Connect", u"BtAction2_Click", u"BtDial2_Click", u"BtDrop2_Click",
        u"BtTransfer2_Click", u"BtVelnor2_Click", u"Init", u"Deinit", u"thisInspector_Activate",
        u"thisInspector_Close", u"thisInspector", u"thisInspector"}},
      {L"_clsRibbon",
       {u"GetRibbonDescription", u"GetImageByControlId", u"ButtonHandler", u"GetCurrentInspector",
        u"IsNewMailItem", u"RemoveNotNecessaryCommandBar", u"Layout", u"Layout"}},
  };
  for (const auto& row : rows) EXPECT_EQ(membersOf(library.get(), row.name), row.members);

  TLIBATTR* attributes = nullptr;
  ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
  EXPECT_TRUE(IsEqualGUID(attributes->guid, LIBID_VelnorOutlookCOMAddIn));
  library->ReleaseTLibAttr(attributes);
  // Registering a library takes its interfaces over.
  ComPtr<ITypeInfo> info;
  EXPECT_NE(library->GetTypeInfoOfGuid(IID_Extensibility, info.receive()), S_OK);
  EXPECT_NE(library->GetTypeInfoOfGuid(IID_RibbonExtensibility, info.receive()), S_OK);
}

TEST_F(Server, TheFileTellsItsVersion) {
  const auto path = dll_.path();
  std::vector<BYTE> info(GetFileVersionInfoSizeW(wide(path), nullptr));
  ASSERT_TRUE(GetFileVersionInfoW(wide(path), 0, static_cast<DWORD>(info.size()), info.data()));
  void* text = nullptr;
  UINT length = 0;
  ASSERT_TRUE(
      VerQueryValueW(info.data(), L"\\StringFileInfo\\040904B0\\FileDescription", &text, &length));
  EXPECT_EQ(utf16(static_cast<wchar_t*>(text)), u"Velnor Outlook CTI Control");
}

}  // namespace
}  // namespace windows
