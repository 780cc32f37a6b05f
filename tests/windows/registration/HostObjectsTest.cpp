// The host's late-bound objects as store and rights.
#include <gtest/gtest.h>

#include "ocx/HostRights.h"
#include "ocx/HostStore.h"
#include "store/Layouts.h"
#include "tests/windows/registration/FakeObject.h"

namespace {

namespace attribut = store::orgprisecharge;

using Microsoft::WRL::ComPtr;
using Journal = std::vector<std::wstring>;

unsigned codeOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const store::StoreError& failure) {
    return failure.code();
  }
  return 0;
}

// Fails as an object does that raises an exception.
FakeObject::Member raises(SCODE code, WORD smallCode = 0, const wchar_t* description = L"refused") {
  return [=](const FakeCall& call) {
    call.exception->scode = code;
    call.exception->wCode = smallCode;
    call.exception->bstrDescription = SysAllocString(description);
    return DISP_E_EXCEPTION;
  };
}

class HostStore : public testing::Test {
 protected:
  HostStore() {
    record_->answers(L"", L"SIGLE\u00FERaison \u00E9t\u00E9\u00FDautre");
    record_->on(L"DBWrite", [](const FakeCall&) { return S_OK; });
    file_->gives(L"ReadRecord", record_);
    database_->gives(L"OpenFile", file_);
    store_ = ocx::databaseOf(database_.Get());
  }

  std::unique_ptr<store::File> file() { return store_->OpenFile("ORGPRISECHARGE"); }

  ComPtr<FakeObject> record_ = FakeObject::make();
  ComPtr<FakeObject> file_ = FakeObject::make();
  ComPtr<FakeObject> database_ = FakeObject::make();
  std::shared_ptr<store::Database> store_;
};

TEST_F(HostStore, ReadsARecordWithItsMarks) {
  const auto file = this->file();
  const auto record = file->ReadRecord("001");
  EXPECT_TRUE(record->found());
  EXPECT_EQ(record->fields().get(attribut::SigleOrgChg), "SIGLE");
  EXPECT_EQ(record->fields().get(attribut::RaisonOrgChg, 1), "Raison été");
  EXPECT_EQ(record->fields().get(attribut::RaisonOrgChg, 2), "autre");
  EXPECT_EQ(database_->journal, Journal{L"OpenFile(ORGPRISECHARGE)"});
  EXPECT_EQ(file_->journal, Journal{L"ReadRecord(001)"});
}

TEST_F(HostStore, WritesTheTextOnlyWhenItHasChanged) {
  const auto file = this->file();
  const auto record = file->ReadRecord("001");
  record_->journal.clear();
  record->DBWrite();
  EXPECT_EQ(record_->journal, Journal{L"DBWrite()"});
  record->fields().set(attribut::SigleOrgChg, "AUTRE");
  record_->journal.clear();
  record->DBWrite();
  EXPECT_EQ(record_->journal,
            (Journal{L"=AUTRE\u00FERaison \u00E9t\u00E9\u00FDautre", L"DBWrite()"}));
  record_->journal.clear();
  record->DBWrite();
  EXPECT_EQ(record_->journal, Journal{L"DBWrite()"});
}

TEST_F(HostStore, RefusesAValueThatHoldsAMarkCharacter) {
  const auto file = this->file();
  const auto record = file->ReadRecord("001");
  record_->journal.clear();
  for (const char* mark : {"\xC3\xBE", "\xC3\xBD"}) {
    record->fields().set(attribut::AdrComplement, std::string("un") + mark + "deux");
    EXPECT_EQ(codeOf([&] { record->DBWrite(); }), store::kBadValue);
  }
  EXPECT_TRUE(record_->journal.empty());
  EXPECT_EQ(codeOf([&] { store_->ExecuteSentence("SSELECT A AVEC 1 = \"\xC3\xBE\""); }),
            store::kBadValue);
}

TEST_F(HostStore, LooksEachNameUpOnce) {
  const auto file = this->file();
  const auto record = file->ReadRecord("001");
  file->ReadRecord("002");
  file->ReadRecord("003");
  EXPECT_EQ(file_->lookUps(), 1);
  const int before = record_->lookUps();
  record->DBWrite();
  record->DBWrite();
  EXPECT_EQ(record_->lookUps(), before + 1);
}

TEST_F(HostStore, AnnouncesWhatWillBeReadToAFileThatKnowsOfIt) {
  const auto done = [](const FakeCall&) { return S_OK; };
  file_->on(L"AnnounceRecords", done);
  file_->on(L"AnnounceAll", done);
  const auto file = this->file();
  file->announce({"001", "002", "001"});
  file->announce({});
  file->announce({"003"});
  file->announceAll();
  EXPECT_EQ(file_->journal, (Journal{L"AnnounceRecords(001\u00FE002\u00FE001)",
                                     L"AnnounceRecords(003)", L"AnnounceAll()"}));
  EXPECT_EQ(file_->lookUps(), 2);
}

TEST_F(HostStore, AnnouncesNothingToAFileThatDoesNot) {
  const auto file = this->file();
  for (int time = 0; time < 3; ++time) {
    file->announce({"001"});
    file->announceAll();
  }
  EXPECT_TRUE(file_->journal.empty());
  EXPECT_EQ(file_->lookUps(), 2);
}

TEST_F(HostStore, AFailedAnnouncementIsNoFailure) {
  file_->on(L"AnnounceRecords", raises(E_ABORT));
  file_->on(L"AnnounceAll", [](const FakeCall&) { return DISP_E_BADPARAMCOUNT; });
  const auto file = this->file();
  EXPECT_EQ(codeOf([&] { file->announce({"001"}); }), 0U);
  EXPECT_EQ(codeOf([&] { file->announce({"\xC3\xBE"}); }), 0U);
  EXPECT_EQ(codeOf([&] { file->announceAll(); }), 0U);
  EXPECT_TRUE(file->ReadRecord("001")->found());
}

TEST_F(HostStore, GivesAnEmptyRecordForOneThatDoesNotExist) {
  file_->on(L"ReadRecord", raises(static_cast<SCODE>(store::kRecordNotFound)));
  const auto file = this->file();
  const auto record = file->ReadRecord("999");
  EXPECT_FALSE(record->found());
  EXPECT_TRUE(record->fields().empty());
  file_->on(L"ReadRecord",
            [](const FakeCall&) { return static_cast<HRESULT>(store::kRecordNotFound); });
  EXPECT_FALSE(file->ReadRecord("999")->found());
}

TEST_F(HostStore, AsksTheRecordForItsStatus) {
  record_->answers(L"", L"");
  record_->on(L"Status", [](const FakeCall& call) {
    *call.result = com::Variant::ofNumber(static_cast<long>(store::kRecordNotFound)).release();
    return S_OK;
  });
  const auto file = this->file();
  const auto record = file->ReadRecord("999");
  EXPECT_FALSE(record->found());
  record->fields().set(attribut::SigleOrgChg, "NEUF");
  record_->journal.clear();
  record->DBWrite();
  EXPECT_EQ(record_->journal, (Journal{L"=NEUF", L"DBWrite()"}));
  record_->on(L"Status", [](const FakeCall& call) {
    *call.result = com::Variant::ofNumber(0).release();
    return S_OK;
  });
  EXPECT_TRUE(file->ReadRecord("001")->found());
}

// Member that answers with a value made by `fill`.
FakeObject::Member answersWith(std::function<void(VARIANT&)> fill) {
  return [fill = std::move(fill)](const FakeCall& call) {
    fill(*call.result);
    return S_OK;
  };
}

TEST_F(HostStore, ReadsAStatusByItsLowBitsFromAnyNumber) {
  constexpr auto kAsLong = static_cast<LONG>(store::kRecordNotFound);
  const std::vector<std::function<void(VARIANT&)>> missing{[](VARIANT& status) {
                                                             status.vt = VT_UI4;
                                                             status.ulVal = store::kRecordNotFound;
                                                           },
                                                           [](VARIANT& status) {
                                                             status.vt = VT_I8;
                                                             status.llVal = kAsLong;
                                                           },
                                                           [](VARIANT& status) {
                                                             status.vt = VT_I8;
                                                             status.llVal = store::kRecordNotFound;
                                                           },
                                                           [](VARIANT& status) {
                                                             status.vt = VT_UI8;
                                                             status.ullVal = 0xFFFFFFFF8004000BULL;
                                                           },
                                                           [](VARIANT& status) {
                                                             status.vt = VT_R8;
                                                             status.dblVal = 2147745803.0;
                                                           },
                                                           [](VARIANT& status) {
                                                             status.vt = VT_R8;
                                                             status.dblVal = kAsLong;
                                                           },
                                                           [](VARIANT& status) {
                                                             status.vt = VT_CY;
                                                             status.cyVal.int64 = kAsLong * 10000LL;
                                                           },
                                                           [](VARIANT& status) {
                                                             status.vt = VT_DECIMAL;
                                                             VarDecFromI4(kAsLong, &status.decVal);
                                                             status.vt = VT_DECIMAL;
                                                           },
                                                           [](VARIANT& status) {
                                                             status.vt = VT_ERROR;
                                                             status.scode = kAsLong;
                                                           }};
  const auto file = this->file();
  for (std::size_t i = 0; i < missing.size(); ++i) {
    record_->on(L"Status", answersWith(missing[i]));
    EXPECT_FALSE(file->ReadRecord("999")->found()) << i;
  }
}

TEST_F(HostStore, TakesAStatusThatIsNoNumberForNone) {
  const std::vector<std::function<void(VARIANT&)>> none{
      [](VARIANT& status) { status.vt = VT_NULL; },
      [](VARIANT& status) { status.vt = VT_EMPTY; },
      [](VARIANT& status) { status = com::Variant::ofText(L"-2147221493").release(); },
      [](VARIANT& status) { status = com::Variant::ofBoolean(true).release(); },
      [this](VARIANT& status) { status = com::Variant::ofObject(record_.Get()).release(); },
      [](VARIANT& status) {
        status.vt = VT_R8;
        status.dblVal = 1e300;
      }};
  const auto file = this->file();
  for (std::size_t i = 0; i < none.size(); ++i) {
    record_->on(L"Status", answersWith(none[i]));
    EXPECT_TRUE(file->ReadRecord("001")->found()) << i;
  }
}

TEST_F(HostStore, ReadsNullAsAnEmptyTextOrAnswer) {
  const auto null = answersWith([](VARIANT& text) { text.vt = VT_NULL; });
  record_->on(L"", null);
  const auto file = this->file();
  const auto record = file->ReadRecord("001");
  EXPECT_TRUE(record->fields().empty());
  EXPECT_TRUE(record->found());
  database_->gives(L"ExecuteSentence", record_);
  EXPECT_TRUE(store_->ExecuteSentence("SSELECT A").empty());
  database_->on(L"ExecuteSentence", null);
  EXPECT_TRUE(store_->ExecuteSentence("SSELECT A").empty());
}

TEST_F(HostStore, ReadsNullAndNothingAsARecordThatDoesNotExist) {
  const std::vector<std::function<void(VARIANT&)>> nothing{
      [](VARIANT& answer) { answer.vt = VT_NULL; }, [](VARIANT& answer) { answer.vt = VT_EMPTY; },
      [](VARIANT& answer) { answer.vt = VT_DISPATCH; },
      [](VARIANT& answer) { answer.vt = VT_UNKNOWN; }};
  const auto file = this->file();
  for (std::size_t i = 0; i < nothing.size(); ++i) {
    file_->on(L"ReadRecord", answersWith(nothing[i]));
    const auto record = file->ReadRecord("001");
    EXPECT_FALSE(record->found()) << i;
    EXPECT_TRUE(record->fields().empty()) << i;
    EXPECT_EQ(codeOf([&] { record->DBWrite(); }), store::kRecordNotFound) << i;
    database_->on(L"ExecuteSentence", answersWith(nothing[i]));
    EXPECT_TRUE(store_->ExecuteSentence("SSELECT A").empty()) << i;
  }
}

// The full text of a record, and of an answer, in each type that automation has for one.
class HostTexts : public HostStore {
 protected:
  void expectRead(const std::string& text, const std::function<void(VARIANT&)>& fill) {
    SCOPED_TRACE(text);
    const auto given = answersWith(fill);
    record_->on(L"", given);
    EXPECT_EQ(file()->ReadRecord("001")->fields().text(), text);
    database_->gives(L"ExecuteSentence", record_);
    EXPECT_EQ(store_->ExecuteSentence("SSELECT A").text(), text);
    database_->on(L"ExecuteSentence", given);
    EXPECT_EQ(store_->ExecuteSentence("SSELECT A").text(), text);
  }
};

TEST_F(HostTexts, AreTakenAsTheyAre) {
  expectRead(
      "\xC3\xA9t\xC3\xA9\xFE"
      "2",
      [](VARIANT& text) { text = com::Variant::ofText(L"\u00E9t\u00E9\u00FE2").release(); });
  expectRead("", [](VARIANT& text) { text.vt = VT_BSTR; });
  expectRead("", [](VARIANT& text) { text.vt = VT_EMPTY; });
  expectRead("", [](VARIANT& text) { text.vt = VT_NULL; });
}

TEST_F(HostTexts, AreMadeOfNumbersWithoutAUsersSettings) {
  expectRead("-12", [](VARIANT& text) { text = com::Variant::ofNumber(-12).release(); });
  expectRead("7", [](VARIANT& text) {
    text.vt = VT_UI1;
    text.bVal = 7;
  });
  expectRead("1.5", [](VARIANT& text) {
    text.vt = VT_R8;
    text.dblVal = 1.5;
  });
  expectRead("2.5", [](VARIANT& text) {
    text.vt = VT_CY;
    text.cyVal.int64 = 25000;
  });
  expectRead("9007199254740993", [](VARIANT& text) {
    text.vt = VT_I8;
    text.llVal = 9007199254740993LL;
  });
  expectRead("21186", [](VARIANT& text) {
    VarDecFromI4(21186, &text.decVal);
    text.vt = VT_DECIMAL;
  });
}

TEST_F(HostTexts, AreFollowedThroughReferences) {
  com::Variant held = com::Variant::ofText(L"SIGLE");
  VARIANT inner = held.get();
  expectRead("SIGLE", [&inner](VARIANT& text) {
    text.vt = VT_BYREF | VT_BSTR;
    text.pbstrVal = &inner.bstrVal;
  });
  expectRead("SIGLE", [&inner](VARIANT& text) {
    text.vt = VT_BYREF | VT_VARIANT;
    text.pvarVal = &inner;
  });
  VARIANT nothing{};
  nothing.vt = VT_NULL;
  expectRead("", [&nothing](VARIANT& text) {
    text.vt = VT_BYREF | VT_VARIANT;
    text.pvarVal = &nothing;
  });
  LONG number = 12;
  expectRead("12", [&number](VARIANT& text) {
    text.vt = VT_BYREF | VT_I4;
    text.plVal = &number;
  });
}

TEST_F(HostTexts, AreTheDefaultValueOfAnObject) {
  const ComPtr<FakeObject> text = FakeObject::make();
  text->answers(L"", L"SIGLE");
  record_->gives(L"", text);
  EXPECT_EQ(file()->ReadRecord("001")->fields().text(), "SIGLE");
}

TEST_F(HostTexts, ThatAreArraysOrObjectsWithoutAValueAreRefusedByName) {
  const auto array = [](VARIANT& answer) {
    answer.vt = VT_ARRAY | VT_BSTR;
    answer.parray = SafeArrayCreateVector(VT_BSTR, 0, 2);
  };
  const auto mute = [](VARIANT& answer) {
    answer = com::Variant::ofObject(FakeObject::make().Get()).release();
  };
  const auto error = [](VARIANT& answer) {
    answer.vt = VT_ERROR;
    answer.scode = DISP_E_PARAMNOTFOUND;
  };
  const auto file = this->file();
  for (const std::function<void(VARIANT&)>& wrong :
       std::vector<std::function<void(VARIANT&)>>{array, mute, error}) {
    record_->on(L"", answersWith(wrong));
    try {
      file->ReadRecord("001");
      ADD_FAILURE() << "no failure";
    } catch (const store::StoreError& failure) {
      EXPECT_EQ(failure.member(), "record.default member");
      EXPECT_EQ(std::string(failure.what()).find("record.default member: "), 0U) << failure.what();
    }
  }
}

TEST_F(HostStore, NamesObjectAndMemberOfAnAnswerOfTheWrongType) {
  const auto wrong = answersWith([](VARIANT& answer) {
    answer.vt = VT_ARRAY | VT_I4;
    answer.parray = SafeArrayCreateVector(VT_I4, 0, 1);
  });
  const auto failureOf = [](const std::function<void()>& call) -> std::string {
    try {
      call();
    } catch (const store::StoreError& failure) {
      EXPECT_EQ(failure.code(), static_cast<unsigned>(DISP_E_TYPEMISMATCH));
      return failure.member();
    }
    return "none";
  };
  const auto file = this->file();
  record_->on(L"", wrong);
  EXPECT_EQ(failureOf([&] { file->ReadRecord("001"); }), "record.default member");
  database_->on(L"ExecuteSentence", wrong);
  EXPECT_EQ(failureOf([&] { store_->ExecuteSentence("X"); }), "database.ExecuteSentence");
  database_->gives(L"ExecuteSentence", record_);
  EXPECT_EQ(failureOf([&] { store_->ExecuteSentence("X"); }), "dynamic array.default member");
}

// A reference to a reference cannot be read: a failure of the store, as any other.
TEST_F(HostStore, FailsInNoOtherWayThanAStoreDoes) {
  VARIANT inner{};
  inner.vt = VT_BYREF | VT_VARIANT;
  inner.pvarVal = &inner;
  const auto unreadable = answersWith([&inner](VARIANT& answer) { answer = inner; });
  const auto refused = static_cast<unsigned>(E_INVALIDARG);
  const auto file = this->file();
  database_->on(L"ExecuteSentence", unreadable);
  EXPECT_EQ(codeOf([&] { store_->ExecuteSentence("SSELECT A"); }), refused);
  try {
    store_->ExecuteSentence("SSELECT A");
  } catch (const store::StoreError& failure) {
    EXPECT_EQ(failure.member(), "database.ExecuteSentence");
  }
  file_->on(L"ReadRecord", unreadable);
  EXPECT_EQ(codeOf([&] { file->ReadRecord("001"); }), refused);
  file_->on(L"DeleteRecord", unreadable);
  EXPECT_EQ(codeOf([&] { file->DeleteRecord("001"); }), refused);
  database_->on(L"OpenFile", unreadable);
  EXPECT_EQ(codeOf([&] { store_->OpenFile("ACCORD"); }), refused);
}

TEST_F(HostStore, FailsSoOutOfMemoryToo) {
  database_->on(L"ExecuteSentence", [](const FakeCall&) -> HRESULT { throw std::bad_alloc(); });
  EXPECT_EQ(codeOf([&] { store_->ExecuteSentence("SSELECT A"); }),
            static_cast<unsigned>(E_OUTOFMEMORY));
}

TEST_F(HostStore, KnowsItsObjectAgainByItsIUnknown) {
  EXPECT_TRUE(ocx::isDatabaseOf(*store_, database_.Get()));
  EXPECT_FALSE(ocx::isDatabaseOf(*store_, file_.Get()));
  EXPECT_FALSE(ocx::isDatabaseOf(*store_, nullptr));
}

TEST_F(HostStore, KeepsTheTextOfAFailureOutOfWhatMayBeTraced) {
  file_->on(L"ReadRecord", raises(static_cast<SCODE>(0x80040003U), 0, L"Mme Martin"));
  const auto file = this->file();
  try {
    file->ReadRecord("001");
    FAIL() << "no failure";
  } catch (const store::StoreError& failure) {
    EXPECT_STREQ(failure.what(), "file.ReadRecord: Mme Martin");
    EXPECT_EQ(failure.withoutText(), "file.ReadRecord 0x80040003");
  }
}

TEST_F(HostStore, CarriesTheCodeOfAFailure) {
  file_->on(L"ReadRecord", [](const FakeCall&) { return static_cast<HRESULT>(0x80040003U); });
  const auto file = this->file();
  EXPECT_EQ(codeOf([&] { file->ReadRecord("001"); }), 0x80040003U);
  file_->on(L"ReadRecord", raises(static_cast<SCODE>(0x80040005U)));
  EXPECT_EQ(codeOf([&] { file->ReadRecord("001"); }), 0x80040005U);
  try {
    file->ReadRecord("001");
    FAIL() << "no failure";
  } catch (const store::StoreError& failure) {
    EXPECT_NE(std::string(failure.what()).find("refused"), std::string::npos);
  }
}

TEST_F(HostStore, UnderstandsAFailureThatGivesASmallNumberOnly) {
  file_->on(L"ReadRecord", raises(0, 1004));
  const auto file = this->file();
  EXPECT_EQ(codeOf([&] { file->ReadRecord("001"); }), 0x800A0000U | 1004U);
  file_->on(L"ReadRecord", raises(0, 0));
  EXPECT_EQ(codeOf([&] { file->ReadRecord("001"); }), static_cast<unsigned>(E_FAIL));
}

HRESULT STDMETHODCALLTYPE fillInLater(EXCEPINFO* exception) {
  exception->scode = static_cast<SCODE>(0x80040002U);
  exception->bstrDescription = SysAllocString(L"told later");
  return S_OK;
}

TEST_F(HostStore, AsksForADeferredDescription) {
  file_->on(L"ReadRecord", [](const FakeCall& call) {
    call.exception->pfnDeferredFillIn = fillInLater;
    return DISP_E_EXCEPTION;
  });
  const auto file = this->file();
  EXPECT_EQ(codeOf([&] { file->ReadRecord("001"); }), 0x80040002U);
}

TEST_F(HostStore, TakesResultsByReferenceAndUnknownObjects) {
  VARIANT inner;
  VariantInit(&inner);
  inner.vt = VT_DISPATCH;
  inner.pdispVal = record_.Get();
  file_->on(L"ReadRecord", [&inner](const FakeCall& call) {
    call.result->vt = VT_BYREF | VT_VARIANT;
    call.result->pvarVal = &inner;
    return S_OK;
  });
  const auto file = this->file();
  EXPECT_EQ(file->ReadRecord("001")->fields().get(attribut::SigleOrgChg), "SIGLE");
  file_->on(L"ReadRecord", [this](const FakeCall& call) {
    call.result->vt = VT_UNKNOWN;
    call.result->punkVal = record_.Get();
    record_->AddRef();
    return S_OK;
  });
  EXPECT_EQ(file->ReadRecord("001")->fields().get(attribut::SigleOrgChg), "SIGLE");
}

TEST_F(HostStore, RefusesAnObjectWithoutAutomation) {
  class Mute final : public IUnknown {
   public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
      *object = wanted == IID_IUnknown ? this : nullptr;
      return *object == nullptr ? E_NOINTERFACE : S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
  };
  Mute mute;
  database_->on(L"OpenFile", answersWith([&mute](VARIANT& answer) {
                  answer.vt = VT_UNKNOWN;
                  answer.punkVal = &mute;
                }));
  try {
    store_->OpenFile("TABLES");
    FAIL() << "no failure";
  } catch (const store::StoreError& failure) {
    EXPECT_EQ(failure.code(), static_cast<unsigned>(E_NOINTERFACE));
    EXPECT_STREQ(failure.what(), "database.OpenFile: an object without automation");
  }
}

TEST_F(HostStore, RefusesAnAnswerThatIsNoObject) {
  file_->answers(L"ReadRecord", L"a text");
  const auto file = this->file();
  EXPECT_EQ(codeOf([&] { file->ReadRecord("001"); }), store::kFailed);
  database_->on(L"OpenFile", [](const FakeCall&) { return S_OK; });
  EXPECT_EQ(codeOf([&] { store_->OpenFile("TABLES"); }), store::kFailed);
}

TEST_F(HostStore, SendsARequestAndReadsItsAnswer) {
  const ComPtr<FakeObject> answer = FakeObject::make();
  answer->answers(L"", L"001\u00FDCD01\u00FE002\u00FDCD02");
  database_->gives(L"ExecuteSentence", answer);
  const store::DynamicArray rows = store_->ExecuteSentence(
      "SSELECT A\xFE"
      "A\xFE"
      "0 1");
  EXPECT_EQ(rows.DCount(), 2);
  EXPECT_EQ(rows.get(2, 2), "CD02");
  EXPECT_EQ(database_->journal, Journal{L"ExecuteSentence(SSELECT A\u00FEA\u00FE0 1)"});
}

TEST_F(HostStore, NeverConvertsWhatADeletionGivesBack) {
  const std::vector<std::function<void(VARIANT&)>> answers{
      [](VARIANT& answer) { answer.vt = VT_EMPTY; },
      [](VARIANT& answer) { answer.vt = VT_NULL; },
      [](VARIANT& answer) { answer = com::Variant::ofNumber(3).release(); },
      [](VARIANT& answer) { answer = com::Variant::ofText(L"deleted").release(); },
      [this](VARIANT& answer) { answer = com::Variant::ofObject(record_.Get()).release(); },
      [](VARIANT& answer) {
        answer.vt = VT_R8;
        answer.dblVal = 1e300;
      }};
  const auto file = this->file();
  for (const auto& answer : answers) {
    file_->on(L"DeleteRecord", [&answer](const FakeCall& call) {
      answer(*call.result);
      return S_OK;
    });
    EXPECT_EQ(file->DeleteRecord("001"), 0);
  }
  EXPECT_EQ(file_->journal, Journal(answers.size(), L"DeleteRecord(001)"));
}

TEST(HostRights, ReadTheLevelEachTime) {
  const ComPtr<FakeObject> entry = FakeObject::make();
  long level = 1;
  entry->on(L"Level", [&level](const FakeCall& call) {
    *call.result = com::Variant::ofNumber(level).release();
    return S_OK;
  });
  const ComPtr<FakeObject> rights = FakeObject::make();
  rights->gives(L"", entry);
  const auto right = ocx::rightsOf(rights.Get())->entry("CONSULTATIONORGCHARGE");
  EXPECT_EQ(rights->journal, Journal{L"(CONSULTATIONORGCHARGE)"});
  EXPECT_EQ(right->Level(), 1);
  level = 2;
  EXPECT_EQ(right->Level(), 2);
  EXPECT_EQ(entry->lookUps(), 1);
}

TEST(HostRights, ALevelThatIsNoWholeNumberAllowsConsultationOnly) {
  const ComPtr<FakeObject> entry = FakeObject::make();
  const ComPtr<FakeObject> rights = FakeObject::make();
  rights->gives(L"", entry);
  const auto right = ocx::rightsOf(rights.Get())->entry("X");
  const auto real = [](double number) {
    return [number](VARIANT& level) {
      level.vt = VT_R8;
      level.dblVal = number;
    };
  };
  const std::vector<std::function<void(VARIANT&)>> refused{
      [](VARIANT& level) { level.vt = VT_NULL; },
      [](VARIANT& level) { level.vt = VT_EMPTY; },
      [](VARIANT& level) { level = com::Variant::ofText(L"deux").release(); },
      [](VARIANT& level) { level = com::Variant::ofText(L"").release(); },
      [](VARIANT& level) { level = com::Variant::ofText(L"2.0.0").release(); },
      [](VARIANT& level) { level = com::Variant::ofBoolean(false).release(); },
      [](VARIANT& level) { level = com::Variant::ofObject(FakeObject::make().Get()).release(); },
      [](VARIANT& level) {
        level.vt = VT_ARRAY | VT_I4;
        level.parray = SafeArrayCreateVector(VT_I4, 0, 1);
      },
      [](VARIANT& level) {
        level.vt = VT_ERROR;
        level.scode = 2;
      },
      real(1.6),
      real(2.4),
      real(1e300)};
  for (std::size_t i = 0; i < refused.size(); ++i) {
    entry->on(L"Level", answersWith(refused[i]));
    EXPECT_EQ(right->Level(), 0) << i;
  }
  entry->on(L"Level", answersWith(real(2.0)));
  EXPECT_EQ(right->Level(), 2);
  entry->on(L"Level",
            answersWith([](VARIANT& level) { level = com::Variant::ofText(L"2").release(); }));
  EXPECT_EQ(right->Level(), 2);
  // What scripts call True is no level either.
  entry->on(L"Level",
            answersWith([](VARIANT& level) { level = com::Variant::ofBoolean(true).release(); }));
  EXPECT_EQ(right->Level(), -1);
  short held = 2;
  entry->on(L"Level", answersWith([&held](VARIANT& level) {
              level.vt = VT_BYREF | VT_I2;
              level.piVal = &held;
            }));
  EXPECT_EQ(right->Level(), 2);
}

TEST(HostRights, AFailingLevelNamesObjectAndMember) {
  const ComPtr<FakeObject> entry = FakeObject::make();
  const ComPtr<FakeObject> rights = FakeObject::make();
  rights->gives(L"", entry);
  const auto right = ocx::rightsOf(rights.Get())->entry("X");
  entry->on(L"Level", raises(static_cast<SCODE>(0x80040005U)));
  try {
    right->Level();
    FAIL() << "no failure";
  } catch (const store::StoreError& failure) {
    EXPECT_STREQ(failure.what(), "rights entry.Level: refused");
  }
}

TEST(HostRights, ThatGiveNoEntryAreAFailure) {
  const ComPtr<FakeObject> rights = FakeObject::make();
  rights->on(L"", [](const FakeCall&) { return S_OK; });
  EXPECT_EQ(codeOf([&] { ocx::rightsOf(rights.Get())->entry("X"); }), store::kFailed);
}

TEST(HostObjects, NullIsNull) {
  EXPECT_EQ(ocx::databaseOf(nullptr), nullptr);
  EXPECT_EQ(ocx::rightsOf(nullptr), nullptr);
}

}  // namespace
