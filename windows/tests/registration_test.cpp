// What the DLL enters in the registry, takes away again, and tells of a refusal.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "windows/services/Objects.h"
#include "windows/services/Registry.h"
#include "windows/tests/ServerFixture.h"

#include <sddl.h>

namespace windows {
namespace {

using automation::Object;
using platform::RegistryRoot;

/// What a registration could leave behind.
std::set<std::u16string> registryKeys() {
  Registry registry;
  std::set<std::u16string> keys;
  const auto add = [&](RegistryRoot root, std::u16string_view key) {
    for (const auto& subkey : registry.subkeyNames(root, key)) {
      keys.insert(std::u16string(key) + u"\\" + subkey);
    }
  };
  for (const auto* key : {u"", u"CLSID", u"Interface", u"TypeLib",
                          u"Interface\\{00020400-0000-0000-C000-000000000046}"}) {
    add(RegistryRoot::ClassesRoot, key);
  }
  for (const auto* key :
       {u"Software", u"Software\\Microsoft", u"Software\\Microsoft\\Office",
        u"Software\\Microsoft\\Office\\Outlook", u"Software\\Microsoft\\Office\\Outlook\\Addins"}) {
    add(RegistryRoot::CurrentUser, key);
  }
  return keys;
}

std::u16string text(RegistryRoot root, std::u16string_view key, std::u16string_view name) {
  const auto value = Registry().read(root, key, name);
  return value ? platform::textOf(value) : u"(absent)";
}

/// A key of the classes, made where it is missing, that nobody may use for as long as this lives:
/// as good as what users without rights find. (They may read it; but Wine lets whoever reads a key
/// delete it, too.)
class RefusedKey {
 public:
  explicit RefusedKey(const wchar_t* path) {
    EXPECT_EQ(RegCreateKeyExW(HKEY_CLASSES_ROOT, path, 0, nullptr, 0, KEY_READ | WRITE_DAC, nullptr,
                              &key_, nullptr),
              ERROR_SUCCESS);
    setRights(L"D:(D;;KA;;;WD)");
  }
  ~RefusedKey() {
    setRights(L"D:(A;;KA;;;WD)");
    RegCloseKey(key_);
  }
  RefusedKey(const RefusedKey&) = delete;
  RefusedKey& operator=(const RefusedKey&) = delete;

 private:
  void setRights(const wchar_t* rights) const {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1,
                                                                     &descriptor, nullptr));
    EXPECT_EQ(RegSetKeySecurity(key_, DACL_SECURITY_INFORMATION, descriptor), ERROR_SUCCESS);
    LocalFree(descriptor);
  }
  HKEY key_ = nullptr;
};

constexpr wchar_t ConnectKey[] = L"CLSID\\{873C647F-502B-4863-9F93-A83F43C0E12B}";
constexpr std::u16string_view ConnectServer =
    u"CLSID\\{873C647F-502B-4863-9F93-A83F43C0E12B}\\InprocServer32";
constexpr std::u16string_view AddinEntry =
    u"Software\\Microsoft\\Office\\Outlook\\Addins\\VelnorOutlookCOMAddIn.Connect";

bool entered() {
  return text(RegistryRoot::CurrentUser, AddinEntry, u"FriendlyName") == u"Velnor Outlook AddIn";
}

TEST(Registration, TellsThatItWasRefused) {
  const Dll dll;
  dll.call("DllUnregisterServer");
  {
    const RefusedKey refused(ConnectKey);
    EXPECT_EQ(dll.call("DllRegisterServer"), E_ACCESSDENIED);
    EXPECT_FALSE(entered());
    EXPECT_EQ(dll.call("DllUnregisterServer"), E_ACCESSDENIED);
  }
  EXPECT_EQ(dll.call("DllUnregisterServer"), S_OK);
}

TEST(Registration, ASecondUserWithoutRightsIsEnteredByHimself) {
  const Dll dll;
  ASSERT_EQ(dll.call("DllRegisterServer"), S_OK);
  Registry registry;
  registry.deleteKey(RegistryRoot::CurrentUser, AddinEntry);
  {
    const RefusedKey refused(ConnectKey);
    EXPECT_EQ(dll.call("DllRegisterServer"), S_OK);
    EXPECT_TRUE(entered());
    // He takes back what is his, and learns that the classes stay.
    EXPECT_EQ(dll.call("DllUnregisterServer"), E_ACCESSDENIED);
    EXPECT_FALSE(entered());
  }
  ASSERT_EQ(dll.call("DllRegisterServer"), S_OK);
  registry.write(RegistryRoot::ClassesRoot, ConnectServer, u"",
                 {platform::RegistryType::String, u"C:\\Elsewhere\\cxolcom.dll", {}});
  {
    const RefusedKey refused(ConnectKey);
    EXPECT_EQ(dll.call("DllRegisterServer"), E_ACCESSDENIED) << "another copy is registered";
  }
  EXPECT_EQ(dll.call("DllUnregisterServer"), S_OK);
}

TEST(Registration, ComesAndGoesWithoutATrace) {
  // What a broken-off run may have left.
  Dll().call("DllUnregisterServer");
  const auto before = registryKeys();
  Registry registry;
  {
    const Dll dll;
    ASSERT_EQ(dll.call("DllRegisterServer"), S_OK);
    ASSERT_EQ(dll.call("DllRegisterServer"), S_OK) << "once more does no harm";
    EXPECT_EQ(text(RegistryRoot::ClassesRoot, ConnectServer, u""), dll.path());
    EXPECT_EQ(text(RegistryRoot::ClassesRoot, ConnectServer, u"ThreadingModel"), u"Apartment");
    EXPECT_TRUE(entered());
    EXPECT_EQ(text(RegistryRoot::CurrentUser, AddinEntry, u"Description"),
              u"Velnor Outlook CTI Control");
    const auto load = registry.read(RegistryRoot::CurrentUser, AddinEntry, u"LoadBehavior");
    ASSERT_TRUE(load);
    EXPECT_EQ(load->type, platform::RegistryType::Dword);
    EXPECT_EQ(load->bytes[0], std::byte{3});
  }
  ComPtr<ITypeLib> library;
  EXPECT_EQ(LoadRegTypeLib(LIBID_VelnorOutlookCOMAddIn, 1, 0, 0, library.receive()), S_OK);
  library.reset();
  {
    // As a script does it.
    const Object commands = Objects().create(VelnorCmdsProgId);
    commands.call(u"Drop");
    EXPECT_NE(GetModuleHandleA(CXOL_DLL), nullptr);
  }
  CoFreeUnusedLibrariesEx(0, 0);
  EXPECT_EQ(GetModuleHandleA(CXOL_DLL), nullptr) << "COM could not unload it";
  {
    const Dll dll;
    ASSERT_EQ(dll.call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(dll.call("DllUnregisterServer"), S_OK) << "nothing there is no failure";
  }
  const auto after = registryKeys();
  std::vector<std::u16string> left;
  std::ranges::set_difference(after, before, std::back_inserter(left));
  EXPECT_EQ(left, std::vector<std::u16string>());
  std::vector<std::u16string> lost;
  std::ranges::set_difference(before, after, std::back_inserter(lost));
  EXPECT_EQ(lost, std::vector<std::u16string>());
}

}  // namespace
}  // namespace windows
