// The built library as a whole: entry points, type library, resources, life.
#include <gtest/gtest.h>
#include <objsafe.h>
#include <ocidl.h>
#include <olectl.h>

#include <utility>

#include "com/Registration.h"
#include "com/Variant.h"
#include "tests/windows/registration/Library.h"

namespace {

using Microsoft::WRL::ComPtr;

class BuiltLibrary : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(library_.loaded()) << GetLastError(); }
  Library library_;
};

TEST_F(BuiltLibrary, KnowsItsOwnClassOnly) {
  ComPtr<IClassFactory> factory;
  EXPECT_EQ(library_.classObject(__uuidof(Ctr_OrgPriseCharge), IID_PPV_ARGS(&factory)), S_OK);
  EXPECT_EQ(library_.classObject(GUID_NULL, IID_PPV_ARGS(&factory)), CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(library_.classObject(__uuidof(Ctr_OrgPriseCharge), IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(BuiltLibrary, TakesNoPartInAggregation) {
  ComPtr<IClassFactory> factory;
  ASSERT_EQ(library_.classObject(__uuidof(Ctr_OrgPriseCharge), IID_PPV_ARGS(&factory)), S_OK);
  ComPtr<IUnknown> inner;
  EXPECT_EQ(factory->CreateInstance(factory.Get(), IID_PPV_ARGS(&inner)), CLASS_E_NOAGGREGATION);
}

TEST_F(BuiltLibrary, CanBeUnloadedWhenNothingOfItLives) {
  EXPECT_EQ(library_.canUnload(), S_OK);
  ComPtr<_Ctr_OrgPriseCharge> control = library_.create();
  ASSERT_NE(control, nullptr);
  EXPECT_EQ(library_.canUnload(), S_FALSE);
  control.Reset();
  EXPECT_EQ(library_.canUnload(), S_OK);
  ComPtr<IClassFactory> factory;
  ASSERT_EQ(library_.classObject(__uuidof(Ctr_OrgPriseCharge), IID_PPV_ARGS(&factory)), S_OK);
  EXPECT_EQ(library_.canUnload(), S_FALSE);
  factory->LockServer(TRUE);
  ComPtr<IClassFactory> locked;
  std::swap(locked, factory);
  locked->LockServer(FALSE);
  locked.Reset();
  EXPECT_EQ(library_.canUnload(), S_OK);
}

// Everything that a container may ask for gives the same identity.
TEST_F(BuiltLibrary, OffersTheInterfacesOfAControlAndNoOthers) {
  const ComPtr<_Ctr_OrgPriseCharge> control = library_.create();
  ASSERT_NE(control, nullptr);
  ComPtr<IUnknown> identity;
  control.As(&identity);
  const IID offered[] = {__uuidof(IDispatch),
                         __uuidof(IOleObject),
                         __uuidof(IOleControl),
                         __uuidof(IOleInPlaceObject),
                         __uuidof(IOleWindow),
                         __uuidof(IOleInPlaceActiveObject),
                         __uuidof(IViewObject),
                         __uuidof(IViewObject2),
                         __uuidof(IPersistStreamInit),
                         __uuidof(IPersistPropertyBag),
                         __uuidof(IPersistStorage),
                         __uuidof(IProvideClassInfo2),
                         __uuidof(ISupportErrorInfo),
                         __uuidof(IConnectionPointContainer),
                         IID_IObjectSafety};
  for (const IID& asked : offered) {
    ComPtr<IUnknown> face;
    EXPECT_EQ(control->QueryInterface(asked, reinterpret_cast<void**>(face.GetAddressOf())), S_OK)
        << testing::PrintToString(com::guidText(asked));
    ComPtr<IUnknown> same;
    face.As(&same);
    EXPECT_EQ(same, identity);
  }
  const IID absent[] = {__uuidof(IQuickActivate), __uuidof(IDataObject), __uuidof(IRunnableObject),
                        __uuidof(ISpecifyPropertyPages)};
  for (const IID& asked : absent) {
    ComPtr<IUnknown> face;
    EXPECT_EQ(control->QueryInterface(asked, reinterpret_cast<void**>(face.GetAddressOf())),
              E_NOINTERFACE);
  }
}

TEST_F(BuiltLibrary, IsSafeForUntrustedDataWhereItLoads) {
  const ComPtr<_Ctr_OrgPriseCharge> control = library_.create();
  ASSERT_NE(control, nullptr);
  ComPtr<IObjectSafety> safety;
  control->QueryInterface(IID_IObjectSafety, reinterpret_cast<void**>(safety.GetAddressOf()));
  DWORD supported = 0;
  DWORD enabled = 0;
  for (const IID& loads :
       {__uuidof(IPersistStreamInit), __uuidof(IPersistPropertyBag), __uuidof(IPersistStorage)}) {
    EXPECT_EQ(safety->GetInterfaceSafetyOptions(loads, &supported, &enabled), S_OK);
    EXPECT_EQ(supported, static_cast<DWORD>(INTERFACESAFE_FOR_UNTRUSTED_DATA));
  }
  EXPECT_EQ(safety->GetInterfaceSafetyOptions(__uuidof(IDispatch), &supported, &enabled), S_OK);
  EXPECT_EQ(supported, 0U);
  EXPECT_EQ(
      safety->SetInterfaceSafetyOptions(__uuidof(IDispatch), INTERFACESAFE_FOR_UNTRUSTED_CALLER,
                                        INTERFACESAFE_FOR_UNTRUSTED_CALLER),
      E_FAIL);
  EXPECT_EQ(safety->GetInterfaceSafetyOptions(__uuidof(IDataObject), &supported, &enabled),
            E_NOINTERFACE);
}

TEST_F(BuiltLibrary, CarriesItsTypeLibraryBitmapAndManifest) {
  ComPtr<ITypeLib> types;
  EXPECT_EQ(LoadTypeLibEx(library_.path().c_str(), REGKIND_NONE, &types), S_OK);
  EXPECT_NE(FindResourceW(library_.module(), MAKEINTRESOURCEW(101), RT_BITMAP), nullptr);
  EXPECT_NE(FindResourceW(library_.module(), MAKEINTRESOURCEW(17), RT_MANIFEST), nullptr);
  for (int i = 1; i <= 16; ++i) {  // where the system's loader looks
    EXPECT_EQ(FindResourceW(library_.module(), MAKEINTRESOURCEW(i), RT_MANIFEST), nullptr) << i;
  }
  EXPECT_NE(FindResourceW(library_.module(), MAKEINTRESOURCEW(1), RT_VERSION), nullptr);
}

std::wstring helpOf(ITypeInfo& type, MEMBERID member) {
  BSTR help = nullptr;
  EXPECT_EQ(type.GetDocumentation(member, nullptr, &help, nullptr, nullptr), S_OK);
  const std::wstring text(com::viewOf(help));
  SysFreeString(help);
  return text;
}

// What has no help text, and how much has one.
int expectExplained(ITypeInfo& type) {
  constexpr MEMBERID kOfTheSystem = 0x60000000;  // inherited, numbered by the compiler
  TYPEATTR* attributes = nullptr;
  EXPECT_EQ(type.GetTypeAttr(&attributes), S_OK);
  const UINT functions = attributes->cFuncs;
  type.ReleaseTypeAttr(attributes);
  EXPECT_NE(helpOf(type, MEMBERID_NIL), L"");
  int explained = 1;
  for (UINT at = 0; at < functions; ++at) {
    FUNCDESC* function = nullptr;
    EXPECT_EQ(type.GetFuncDesc(at, &function), S_OK);
    if (function->memid < kOfTheSystem) {
      EXPECT_NE(helpOf(type, function->memid), L"") << function->memid;
      ++explained;
    }
    type.ReleaseFuncDesc(function);
  }
  return explained;
}

TEST_F(BuiltLibrary, ExplainsEachClassInterfaceEventAndMemberAsTheStoresDoes) {
  for (const auto& [name, least] :
       {std::pair{L"Tessaline.ocx", 60}, std::pair{L"TessalineStore.dll", 24}}) {
    SCOPED_TRACE(testing::PrintToString(std::wstring(name)));
    ComPtr<ITypeLib> types;
    ASSERT_EQ(LoadTypeLibEx((programFolder() + name).c_str(), REGKIND_NONE, &types), S_OK);
    int explained = 0;
    for (UINT at = 0; at < types->GetTypeInfoCount(); ++at) {
      ComPtr<ITypeInfo> type;
      ASSERT_EQ(types->GetTypeInfo(at, &type), S_OK);
      explained += expectExplained(*type.Get());
    }
    EXPECT_GE(explained, least);
  }
}

TEST_F(BuiltLibrary, IsMarkedAsHoldingAControl) {
  ComPtr<ITypeLib> types;
  ASSERT_EQ(LoadTypeLibEx(library_.path().c_str(), REGKIND_NONE, &types), S_OK);
  TLIBATTR* attributes = nullptr;
  ASSERT_EQ(types->GetLibAttr(&attributes), S_OK);
  EXPECT_NE(attributes->wLibFlags & LIBFLAG_FCONTROL, 0);
  types->ReleaseTLibAttr(attributes);
}

TEST_F(BuiltLibrary, IsFoundThroughItsManifestWithoutRegistration) {
  const std::wstring manifest = programFolder() + L"Tessaline.manifest";
  ACTCTXW wanted{};
  wanted.cbSize = sizeof wanted;
  wanted.lpSource = manifest.c_str();
  const HANDLE context = CreateActCtxW(&wanted);
  ASSERT_NE(context, INVALID_HANDLE_VALUE) << GetLastError();
  ULONG_PTR cookie = 0;
  ASSERT_NE(ActivateActCtx(context, &cookie), 0);
  CLSID type{};
  EXPECT_EQ(CLSIDFromProgID(L"Tessaline.Ctr_OrgPriseCharge.1", &type), S_OK);
  // A name may stand for an identifier of the activation context's own.
  for (const CLSID& named : {type, __uuidof(Ctr_OrgPriseCharge)}) {
    ComPtr<_Ctr_OrgPriseCharge> control;
    EXPECT_EQ(CoCreateInstance(named, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&control)), S_OK);
  }
  DeactivateActCtx(0, cookie);
  ReleaseActCtx(context);
}

}  // namespace
