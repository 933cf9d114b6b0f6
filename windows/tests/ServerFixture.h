#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "standin/com/DispatchExport.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/com/values.h"
#include "windows/server/classes.h"
#include "windows/tests/TestOutlook.h"

namespace windows {

/// The DLL, loaded without COM's help.
class Dll {
 public:
  Dll() : module_(LoadLibraryA(CXOL_DLL)) { EXPECT_NE(module_, nullptr); }
  ~Dll() { FreeLibrary(module_); }
  Dll(const Dll&) = delete;
  Dll& operator=(const Dll&) = delete;

  template <class Function>
  Function* find(const char* name) const {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
  }
  HRESULT call(const char* name) const { return find<HRESULT WINAPI()>(name)(); }

  ComPtr<IDispatch> create(REFCLSID classId) const {
    ComPtr<IClassFactory> factory;
    check(find<HRESULT WINAPI(REFCLSID, REFIID, void**)>("DllGetClassObject")(
        classId, IID_IClassFactory, factory.receiveVoid()));
    ComPtr<IDispatch> object;
    check(factory->CreateInstance(nullptr, IID_IDispatch, object.receiveVoid()));
    return object;
  }
  std::u16string path() const {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(module_, path, MAX_PATH);
    return std::u16string(utf16(path));
  }

 private:
  HMODULE module_;
};

/// A host of the DLL that checks that nothing is held in the end.
class Server : public testing::Test {
 protected:
  void SetUp() override {
    standin::ExportTypes::add(u"Explorer", {{}, {&outlook::ExplorerEventInterface}});
    standin::ExportTypes::add(
        u"Windows", {{}, {&outlook::ExplorersEventInterface, &outlook::InspectorsEventInterface}});
  }
  void TearDown() override {
    EXPECT_EQ(dll_.call("DllCanUnloadNow"), S_OK) << "an object of the DLL is left";
    standin::ExportTypes::clear();
    outlook_.reset();
    EXPECT_EQ(standin::DispatchExport::count(), 0U) << "the DLL holds an object of ours";
  }

  /// A late-bound call by number, as Office makes it.
  static HRESULT invoke(IDispatch* object, DISPID id, std::vector<automation::Value> args,
                        Variant* result = nullptr) {
    std::vector<Variant> owners;
    std::vector<VARIANT> reversed;
    for (auto arg = args.rbegin(); arg != args.rend(); ++arg) {
      owners.push_back(variantOf(*arg));
      reversed.push_back(owners.back().get());
    }
    DISPPARAMS params{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params,
                          result ? result->receive() : nullptr, nullptr, nullptr);
  }
  static DISPID idOf(IDispatch* object, std::u16string name) {
    auto* pointer = reinterpret_cast<wchar_t*>(name.data());
    DISPID id = DISPID_UNKNOWN;
    const HRESULT found = object->GetIDsOfNames(IID_NULL, &pointer, 1, LOCALE_USER_DEFAULT, &id);
    EXPECT_EQ(SUCCEEDED(found), id != DISPID_UNKNOWN);
    return id;
  }

  static automation::Object addIn() {
    return propertiesObject({{u"ProgId", std::u16string(ConnectProgId)}});
  }
  std::size_t subscriptions() const {
    return outlook_->explorers->sinkCount() + outlook_->inspectors->sinkCount();
  }

  Dll dll_;
  std::shared_ptr<TestOutlook> outlook_ = std::make_shared<TestOutlook>();
};

}  // namespace windows
