// What hosts are told by events: when, in which order, and what a sink may do.
#include <olectl.h>

#include <algorithm>

#include "ocx/TessalineTypes.h"
#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {
namespace {

using container::EventSink;
using Microsoft::WRL::ComPtr;
using Told = std::vector<std::string>;

constexpr HRESULT kFailure = static_cast<HRESULT>(0x80040042);

class Events : public ControlTest {
 protected:
  EventSink& sink() { return *control().host.events(); }
  const Told& told() { return sink().told(); }
  // Waits for so many events, and for none after them.
  const Told& toldAll(std::size_t count) {
    control().host.pumpUntil([&] { return told().size() >= count; });
    container::pump();
    return told();
  }
  template <class Interface>
  ComPtr<Interface> as() {
    ComPtr<Interface> found;
    control().host.control()->QueryInterface(IID_PPV_ARGS(&found));
    return found;
  }
  void freeze(bool frozen) { as<IOleControl>()->FreezeEvents(frozen ? TRUE : FALSE); }
  void save() {
    user().fill(L"Txt_RaisonOrgChg", L"Caisse");
    user().click(L"Cmd_OK");
  }
  // Every call of that kind fails from now on.
  void failing(const std::string& call) {
    control().state().fault = [call](const std::string& made) {
      return made.starts_with(call) ? kFailure : S_OK;
    };
  }
};

TEST_F(Events, TellOfASave) {
  load(L"001");
  save();
  EXPECT_EQ(toldAll(1), Told{"2 001 false"});
}

TEST_F(Events, TellOfANewBodyWithItsCode) {
  user().click(L"Cmd_Ajouter");
  user().fill(L"Txt_SigleOrgChg", L"CPAM");
  user().fill(L"Txt_RaisonOrgChg", L"Caisse primaire");
  completeCreation(user());
  user().click(L"Cmd_OK");
  EXPECT_EQ(toldAll(1), Told{"2 004 true"});
}

TEST_F(Events, TellOfADeletion) {
  load(L"001");
  boxes().expect(kDelete, kQuestion, L"YESNO", IDYES);
  user().click(L"Cmd_Supprimer");
  EXPECT_EQ(toldAll(1), Told{"3 001"});
}

TEST_F(Events, TellOfAFailureThatIsNotShown) {
  load(L"001");
  failing("DBWrite");
  save();
  control().state().fault = {};
  ASSERT_EQ(toldAll(1).size(), 1U);
  EXPECT_TRUE(told()[0].starts_with("4 Cmd_OK_Click -2147221438 ")) << told()[0];
}

TEST_F(Events, NameObjectAndMemberOfAnAnswerThatIsNoText) {
  control().state().answer = [](const std::string& call, VARIANT& answer) {
    if (call != "GetText ORGPRISECHARGE 001") return;
    VariantClear(&answer);
    answer.vt = VT_ARRAY | VT_BSTR;
    answer.parray = SafeArrayCreateVector(VT_BSTR, 0, 2);
  };
  user().type(L"001");
  control().state().answer = {};
  ASSERT_EQ(toldAll(1).size(), 1U);
  EXPECT_NE(told()[0].find(" -2147352571 record.default member: "), std::string::npos) << told()[0];
}

TEST_F(Events, ComeInTheOrderOfWhatHappened) {
  load(L"001");
  failing("ExecuteSentence SSELECT ORGPRISECHARGE");
  save();
  control().state().fault = {};
  ASSERT_EQ(toldAll(2).size(), 2U);
  EXPECT_EQ(told()[0], "2 001 false");
  EXPECT_TRUE(told()[1].starts_with("4 Remplir_OrgPriseChg ")) << told()[1];
}

TEST_F(Events, TellOfLeavingBeforeTheProperty) {
  user().click(L"Cmd_Sortir");
  control().host.pumpUntil([&] { return control().host.properties().changes() == 1; });
  EXPECT_EQ(told(), Told{"1"});
  const std::vector<std::string>& calls = control().host.rules().calls();
  const auto at = [&](const char* call) { return std::find(calls.begin(), calls.end(), call); };
  EXPECT_LT(at("event 1"), at("OnChanged(1)"));
}

TEST_F(Events, DoNotTellOfALeavingThatTheHostHasTakenBack) {
  control().put(L"W_Sortir", container::Value(true));
  control().put(L"W_Sortir", container::Value(false));
  control().host.pumpUntil([&] { return control().host.properties().changes() == 1; });
  EXPECT_EQ(toldAll(0), Told());
}

TEST_F(Events, WaitForTheLastThaw) {
  load(L"001");
  freeze(true);
  freeze(true);
  save();
  freeze(false);
  control().host.pump();
  EXPECT_EQ(toldAll(0), Told());
  freeze(false);
  EXPECT_EQ(toldAll(1), Told{"2 001 false"});
}

TEST_F(Events, ThatThawOnceTooOftenAreNotFrozenTheLessNextTime) {
  load(L"001");
  freeze(false);
  freeze(true);
  save();
  EXPECT_EQ(toldAll(0), Told());
  freeze(false);
  EXPECT_EQ(toldAll(1), Told{"2 001 false"});
}

TEST_F(Events, GoOnAfterASinkThatFails) {
  auto second = std::make_unique<EventSink>(std::make_shared<container::Rules>(container::Offer{}),
                                            IID_IDispatch);
  ComPtr<IConnectionPoint> source;
  as<IConnectionPointContainer>()->FindConnectionPoint(__uuidof(_Ctr_OrgPriseChargeEvents),
                                                       &source);
  DWORD cookie = 0;
  ASSERT_EQ(source->Advise(second.get(), &cookie), S_OK);
  sink().answer = E_FAIL;
  load(L"001");
  save();
  EXPECT_EQ(toldAll(1), Told{"2 001 false"});
  EXPECT_EQ(second->told(), Told{"2 001 false"});
  EXPECT_EQ(source->Unadvise(cookie), S_OK);
  EXPECT_EQ(second->references(), 0);
  EXPECT_EQ(user().text(L"Txt_CodOrgChg"), L"");
}

TEST_F(Events, LetASinkCallTheControl) {
  bool called = false;
  sink().onEvent = [&](DISPID) {
    control().call(L"Vider_Donnees");
    called = true;
  };
  load(L"001");
  save();
  toldAll(1);
  EXPECT_TRUE(called);
}

TEST_F(Events, LetASinkOpenAnotherBody) {
  sink().onEvent = [&](DISPID id) {
    if (id == 2) user().fill(L"Txt_CodOrgChg", L"003");
  };
  load(L"001");
  save();
  toldAll(1);
  EXPECT_EQ(user().text(L"Txt_RaisonOrgChg"), L"Mutualité sociale agricole");
}

TEST_F(Events, LetASinkCloseTheControl) {
  sink().onEvent = [&](DISPID) { control().host.abandon(); };
  user().click(L"Cmd_Sortir");
  control().host.pumpUntil([&] { return !told().empty(); });
  container::pump();
  EXPECT_EQ(told(), Told{"1"});
  EXPECT_EQ(control().host.properties().changes(), 0);
}

TEST_F(Events, AreForgottenWhenTheHostCloses) {
  load(L"001");
  freeze(true);
  save();
  control().host.close();
  freeze(false);
  container::pump();
  EXPECT_EQ(told(), Told());
}

TEST_F(Events, AreNamedByTheClass) {
  const auto description = as<IProvideClassInfo2>();
  GUID source{};
  EXPECT_EQ(description->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source), S_OK);
  EXPECT_EQ(source, __uuidof(_Ctr_OrgPriseChargeEvents));
  EXPECT_EQ(description->GetGUID(7, &source), E_INVALIDARG);
  EXPECT_EQ(description->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, nullptr), E_POINTER);
  ComPtr<ITypeInfo> type;
  ASSERT_EQ(description->GetClassInfo(&type), S_OK);
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(type->GetTypeAttr(&attributes), S_OK);
  const UINT interfaces = attributes->cImplTypes;
  type->ReleaseTypeAttr(attributes);
  int sources = 0;
  for (UINT i = 0; i < interfaces; ++i) {
    INT flags = 0;
    ASSERT_EQ(type->GetImplTypeFlags(i, &flags), S_OK);
    if (flags == (IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE)) ++sources;
  }
  EXPECT_EQ(sources, 1);
}

TEST_F(Events, HaveAPointBesideTheProperties) {
  ComPtr<IEnumConnectionPoints> points;
  ASSERT_EQ(as<IConnectionPointContainer>()->EnumConnectionPoints(&points), S_OK);
  IConnectionPoint* found[3] = {};
  ULONG count = 0;
  EXPECT_EQ(points->Next(3, found, &count), S_FALSE);
  ASSERT_EQ(count, 2U);
  IID asked{};
  EXPECT_EQ(found[0]->GetConnectionInterface(&asked), S_OK);
  EXPECT_EQ(asked, __uuidof(_Ctr_OrgPriseChargeEvents));
  EXPECT_EQ(found[1]->GetConnectionInterface(&asked), S_OK);
  EXPECT_EQ(asked, IID_IPropertyNotifySink);
  ComPtr<IConnectionPoint> other;
  EXPECT_EQ(as<IConnectionPointContainer>()->FindConnectionPoint(IID_IAdviseSink, &other),
            CONNECT_E_NOCONNECTION);
  DWORD cookie = 0;
  container::AdviseSink none(std::make_shared<container::Rules>(container::Offer{}), "none");
  EXPECT_EQ(found[0]->Advise(&none, &cookie), CONNECT_E_CANNOTCONNECT);
  EXPECT_EQ(found[1]->Advise(control().host.events(), &cookie), CONNECT_E_CANNOTCONNECT);
  found[0]->Release();
  found[1]->Release();
}

}  // namespace
}  // namespace lifecycle
