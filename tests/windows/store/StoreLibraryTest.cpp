// TessalineStore.dll as a host in C++ sees it: what no script can look at.
#include <gtest/gtest.h>
#include <ole2.h>
#include <wrl/client.h>

#include <bit>
#include <filesystem>
#include <string>
#include <vector>

#include "com/ComBorder.h"
#include "com/LateBound.h"
#include "com/Module.h"
#include "com/Variant.h"
#include "localstore/LocalDatabase.h"
#include "storecom/Classes.h"

namespace com {
const wchar_t* errorSource() { return L"StoreLibraryTest"; }
}  // namespace com

namespace {

using com::LateBound;
using com::Variant;
using Microsoft::WRL::ComPtr;
using storecom::kClientClass;
using storecom::kRightsClass;

std::wstring beside(const wchar_t* name) {
  const std::wstring program = com::modulePath();
  return program.substr(0, program.find_last_of(L'\\') + 1) + name;
}

template <class Function>
Function entryPoint(const char* name) {
  static const HMODULE library = LoadLibraryW(beside(L"TessalineStore.dll").c_str());
  const FARPROC entry = library == nullptr ? nullptr : GetProcAddress(library, name);
  return entry == nullptr ? nullptr : std::bit_cast<Function>(entry);
}

ComPtr<IClassFactory> factoryOf(const CLSID& type) {
  const auto get =
      entryPoint<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>("DllGetClassObject");
  ComPtr<IClassFactory> factory;
  com::check(get(type, IID_PPV_ARGS(&factory)), "DllGetClassObject");
  return factory;
}

HRESULT canUnload() { return entryPoint<HRESULT(STDAPICALLTYPE*)()>("DllCanUnloadNow")(); }

ComPtr<IDispatch> create(const CLSID& type) {
  ComPtr<IDispatch> object;
  com::check(factoryOf(type)->CreateInstance(nullptr, IID_PPV_ARGS(&object)), "CreateInstance");
  return object;
}

std::vector<Variant> with(const wchar_t* text) {
  std::vector<Variant> arguments;
  arguments.push_back(Variant::ofText(text));
  return arguments;
}

// A new store for each test, in a folder that goes with it.
class StoreLibrary : public testing::Test {
 protected:
  StoreLibrary() {
    folder_ = std::filesystem::temp_directory_path() / ("store" + std::to_string(GetTickCount64()));
    std::filesystem::create_directories(folder_);
    localstore::createLocalDatabase(com::utf8(path()));
  }
  ~StoreLibrary() override {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  std::wstring path() const { return (folder_ / L"magasin é.store").wstring(); }

  ComPtr<IDispatch> openDatabase() {
    return LateBound(create(kClientClass)).callForObject(L"OpenDatabase", with(path().c_str()));
  }
  ComPtr<IDispatch> openFile() {
    return LateBound(openDatabase()).callForObject(L"OpenFile", with(L"TEMPO"));
  }
  ComPtr<IDispatch> newArray() {
    return LateBound(openDatabase()).callForObject(L"NewDynamicArray");
  }

 private:
  std::filesystem::path folder_;
};

TEST_F(StoreLibrary, CanBeUnloadedOnlyWhileNoneOfItsObjectsLives) {
  EXPECT_EQ(canUnload(), S_OK);
  {
    const ComPtr<IDispatch> file = openFile();
    EXPECT_EQ(canUnload(), S_FALSE);
    const ComPtr<IDispatch> record = LateBound(file).callForObject(L"ReadRecord", with(L"1"));
    EXPECT_EQ(canUnload(), S_FALSE);
  }
  EXPECT_EQ(canUnload(), S_OK);
  const ComPtr<IDispatch> rights = create(kRightsClass);
  EXPECT_EQ(canUnload(), S_FALSE);
}

TEST_F(StoreLibrary, StaysLoadedWhileItsFactoryIsLocked) {
  factoryOf(kClientClass)->LockServer(TRUE);
  EXPECT_EQ(canUnload(), S_FALSE);
  factoryOf(kClientClass)->LockServer(FALSE);
  EXPECT_EQ(canUnload(), S_OK);
}

TEST_F(StoreLibrary, KnowsItsTwoClassesAndNoOther) {
  const auto get =
      entryPoint<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>("DllGetClassObject");
  void* factory = &factory;
  EXPECT_EQ(get(GUID_NULL, IID_IClassFactory, &factory), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(factory, nullptr);
  EXPECT_EQ(get(kClientClass, IID_IDispatch, &factory), E_NOINTERFACE);
  EXPECT_EQ(get(kClientClass, IID_IClassFactory, nullptr), E_POINTER);
}

TEST_F(StoreLibrary, DoesNotLetItsObjectsBePartOfOthers) {
  const ComPtr<IDispatch> outer = create(kRightsClass);
  void* object = nullptr;
  EXPECT_EQ(factoryOf(kClientClass)->CreateInstance(outer.Get(), IID_IUnknown, &object),
            CLASS_E_NOAGGREGATION);
}

TEST_F(StoreLibrary, ClosesTheStoreWithTheLastObjectOnIt) {
  {
    const ComPtr<IDispatch> record = LateBound(openFile()).callForObject(L"ReadRecord", with(L"1"));
    EXPECT_EQ(DeleteFileW(path().c_str()), FALSE);
  }
  EXPECT_NE(DeleteFileW(path().c_str()), FALSE);
}

TEST_F(StoreLibrary, CanBeUsedByManifestWithoutRegistration) {
  const std::wstring manifest = beside(L"TessalineStore.manifest");
  const std::wstring folder = beside(L"");
  ACTCTXW description{};
  description.cbSize = sizeof description;
  description.dwFlags = ACTCTX_FLAG_ASSEMBLY_DIRECTORY_VALID;
  description.lpSource = manifest.c_str();
  description.lpAssemblyDirectory = folder.c_str();
  const HANDLE context = CreateActCtxW(&description);
  ASSERT_NE(context, INVALID_HANDLE_VALUE);
  ULONG_PTR cookie = 0;
  ASSERT_NE(ActivateActCtx(context, &cookie), FALSE);
  CLSID type{};  // a class of the context's own, which stands for the client's
  ComPtr<IDispatch> client;
  EXPECT_EQ(CLSIDFromProgID(L"TessalineStore.Client", &type), S_OK);
  EXPECT_EQ(CoCreateInstance(type, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&client)), S_OK);
  DeactivateActCtx(0, cookie);
  ReleaseActCtx(context);
  ASSERT_NE(client, nullptr);
  EXPECT_NE(LateBound(client).callForObject(L"OpenDatabase", with(path().c_str())), nullptr);
}

TEST_F(StoreLibrary, TakesArgumentsByName) {
  const ComPtr<IDispatch> array = newArray();
  wchar_t member[] = L"Value";
  wchar_t first[] = L"attribute";
  wchar_t second[] = L"value";
  LPOLESTR names[] = {member, second, first};
  DISPID ids[3] = {};
  ASSERT_EQ(array->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids), S_OK);
  const Variant text = Variant::ofText(L"x");
  const Variant two = Variant::ofNumber(2);
  const Variant three = Variant::ofNumber(3);
  VARIANT values[] = {text.get(), two.get(), three.get()};
  DISPID named[] = {DISPID_PROPERTYPUT, ids[1], ids[2]};
  DISPPARAMS parameters{values, named, 3, 3};
  ASSERT_EQ(array->Invoke(ids[0], IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters,
                          nullptr, nullptr, nullptr),
            S_OK);
  EXPECT_EQ(com::textOf(LateBound(array).call(L"Value").get()), L"\u00FE\u00FE\u00FDx");
}

TEST_F(StoreLibrary, AnswersEveryMemberThatItsTypeLibraryNames) {
  const ComPtr<IDispatch> objects[] = {create(kClientClass), create(kRightsClass), openDatabase(),
                                       openFile(), newArray()};
  for (const ComPtr<IDispatch>& object : objects) {
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    const UINT functions = attributes->cFuncs;
    info->ReleaseTypeAttr(attributes);
    EXPECT_GT(functions, 0U);
    for (UINT i = 0; i < functions; ++i) {
      FUNCDESC* function = nullptr;
      ASSERT_EQ(info->GetFuncDesc(i, &function), S_OK);
      if ((function->wFuncFlags & FUNCFLAG_FRESTRICTED) == 0) {
        // One argument too many: refused, but not as unknown.
        const Variant empty;
        VARIANT values[] = {empty.get(), empty.get(), empty.get(), empty.get()};
        DISPPARAMS parameters{values, nullptr, 4, 0};
        const auto how = static_cast<WORD>(function->invkind);
        EXPECT_EQ(object->Invoke(function->memid, IID_NULL, LOCALE_USER_DEFAULT, how, &parameters,
                                 nullptr, nullptr, nullptr),
                  DISP_E_BADPARAMCOUNT)
            << "member " << function->memid;
      }
      info->ReleaseFuncDesc(function);
    }
  }
}

TEST_F(StoreLibrary, RefusesToAnswerNowhere) {
  const ComPtr<IDispatch> object = newArray();
  wchar_t name[] = L"Value";
  LPOLESTR names = name;
  DISPID id = 0;
  DISPPARAMS none{};
  EXPECT_EQ(object->GetTypeInfoCount(nullptr), E_POINTER);
  EXPECT_EQ(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, nullptr), E_POINTER);
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, nullptr), E_POINTER);
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, nullptr, 1, LOCALE_USER_DEFAULT, &id), E_POINTER);
  EXPECT_EQ(object->GetIDsOfNames(IID_IUnknown, &names, 1, LOCALE_USER_DEFAULT, &id),
            DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(object->Invoke(0, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, nullptr, nullptr,
                           nullptr, nullptr),
            E_INVALIDARG);
  EXPECT_EQ(object->Invoke(0, IID_IUnknown, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                           nullptr, nullptr, nullptr),
            DISP_E_UNKNOWNINTERFACE);
}

TEST_F(StoreLibrary, TellsOfAnErrorInTheExceptionInformation) {
  const ComPtr<IDispatch> database = openDatabase();
  wchar_t name[] = L"OpenFile";
  LPOLESTR names[] = {name};
  DISPID id = 0;
  ASSERT_EQ(database->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id), S_OK);
  const Variant file = Variant::ofText(L"NOSUCHFILE");
  VARIANT value = file.get();
  DISPPARAMS parameters{&value, nullptr, 1, 0};
  EXCEPINFO exception{};
  EXPECT_EQ(database->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                             nullptr, &exception, nullptr),
            DISP_E_EXCEPTION);
  EXPECT_EQ(static_cast<unsigned>(exception.scode), store::kUnknownFile);
  EXPECT_EQ(std::wstring(exception.bstrSource), L"TessalineStore");
  EXPECT_NE(std::wstring(exception.bstrDescription).find(L"NOSUCHFILE"), std::wstring::npos);
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrDescription);
}

TEST_F(StoreLibrary, GivesUpWritingWithACodeWhenAnotherWriterStaysTooLong) {
  const ComPtr<IDispatch> object = LateBound(openFile()).callForObject(L"ReadRecord", with(L"1"));
  LateBound record(object);
  record.put(L"Value", Variant::ofText(L"text"));
  const auto other = localstore::openLocalDatabase(com::utf8(path()));
  {
    const auto transaction = other->begin();
    try {
      record.call(L"DBWrite");
      ADD_FAILURE() << "the record was written under another writer's lock";
    } catch (const store::StoreError& refusal) {
      EXPECT_EQ(refusal.code(), store::kBusy);
    }
    // Reading goes on meanwhile.
    EXPECT_EQ(com::textOf(LateBound(LateBound(openFile()).callForObject(L"ReadRecord", with(L"1")))
                              .call(L"Value")
                              .get()),
              L"");
  }
  record.call(L"DBWrite");
  EXPECT_EQ(com::textOf(LateBound(LateBound(openFile()).callForObject(L"ReadRecord", with(L"1")))
                            .call(L"Value")
                            .get()),
            L"text");
}

}  // namespace
