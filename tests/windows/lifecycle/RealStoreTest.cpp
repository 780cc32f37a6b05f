// The whole on a store on disk: both libraries, a user, and what stands in the file afterwards.
#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {
namespace {

using container::Container;
using container::HostWindow;
using container::Value;
using Microsoft::WRL::ComPtr;

// An empty store in a file of its own.
class StoreFile {
 public:
  StoreFile() {
    wchar_t folder[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, folder);
    path_ = std::wstring(folder) + L"essai é " + std::to_wstring(GetCurrentProcessId()) + L" " +
            std::to_wstring(GetTickCount64()) + L".store";
    std::wstring command =
        L"\"" + programFolder() + L"tessaline-store.exe\" create \"" + path_ + L"\"";
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    // A busy machine refuses a new process now and then.
    constexpr int kTries = 5;
    for (int i = 1; CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                   nullptr, &start, &process) == FALSE;
         ++i) {
      if (i == kTries) {
        throw std::runtime_error("tessaline-store does not start: error " +
                                 std::to_string(GetLastError()));
      }
      Sleep(500);
    }
    WaitForSingleObject(process.hProcess, 60000);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
  }
  StoreFile(const StoreFile&) = delete;
  StoreFile& operator=(const StoreFile&) = delete;
  ~StoreFile() {
    for (const wchar_t* end : {L"", L"-wal", L"-shm"}) DeleteFileW((path_ + end).c_str());
  }
  const std::wstring& path() const { return path_; }

 private:
  std::wstring path_;
};

container::LibrarySource& storeLibrary() {
  static container::LibrarySource source(programFolder() + L"TessalineStore.dll");
  return source;
}

ComPtr<IDispatch> made(const wchar_t* name) {
  ComPtr<IDispatch> object;
  storeLibrary().create(name).As(&object);
  return object;
}

class RealStore : public testing::Test {
 protected:
  void SetUp() override {
    client_ = made(L"Client");
    database_ = container::call(client_, L"OpenDatabase", {Value(file_.path())}).object();
    rights_ = made(L"Rights");
    container::call(rights_, L"SetLevel", {Value(L"CONSULTATIONORGCHARGE"), Value(2L)});
    ASSERT_TRUE(SUCCEEDED(host_.open()));
    const auto control = host_.automation();
    container::put(control, L"TheClient", Value(client_.Get()));
    container::put(control, L"TheDatabase", Value(database_.Get()));
    container::put(control, L"DroitsUtilisateur", Value(rights_.Get()));
  }

  // An entity with an activity, a slip parameter: what a body needs before it can be saved.
  void fillTables() {
    store(L"ASSOCIATION", L"100", L"ENTRAIDE");
    store(L"ACTIVITES", L"100P01",
          L"Aide ménagère\u00FE"
          L"100\u00FE\u00FE\u00FE\u00FE\u00FE\u00FE\u00FE\u00FE\u00FE\u00FEP\u00FESAAD");
    store(L"PARAMBORDORGCHG", L"1",
          L"Nom\u00FE"
          L"30");
  }

  void init() {
    fillTables();
    container::call(host_.automation(), L"Init");
    host_.pump();
  }

  void TearDown() override {
    EXPECT_EQ(host_.finish(), "");
    EXPECT_EQ(boxes_.report(), "");
    database_.Reset();
    client_.Reset();
    rights_.Reset();
    EXPECT_EQ(storeLibrary().canUnloadNow(), S_OK);
  }

  // As another program would read it: through a client of its own.
  std::wstring stored(const wchar_t* file, const wchar_t* id, long attribute) {
    const ComPtr<IDispatch> client = made(L"Client");
    const Value database = container::call(client, L"OpenDatabase", {Value(file_.path())});
    const Value opened = container::call(database.object(), L"OpenFile", {Value(file)});
    const Value record = container::call(opened.object(), L"ReadRecord", {Value(id)});
    return container::call(record.object(), L"", {Value(attribute)}).text();
  }

  void store(const wchar_t* file, const wchar_t* id, const wchar_t* text) {
    const Value opened = container::call(database_, L"OpenFile", {Value(file)});
    const Value record = container::call(opened.object(), L"ReadRecord", {Value(id)});
    container::put(record.object(), L"", Value(text));
    container::call(record.object(), L"DBWrite");
  }

  StoreFile file_;
  ComPtr<IDispatch> client_;
  ComPtr<IDispatch> database_;
  ComPtr<IDispatch> rights_;
  HostWindow window_;
  container::BoxWatcher boxes_;
  Container host_{container::formProfile(), window_, library()};
  container::Typist user_{
      {window_, [this] { host_.pump(); }, [this] { return host_.controlWindow(); }}};
};

TEST_F(RealStore, CreatesTheFirstBodyFindsItAgainAndChangesIt) {
  init();
  user_.click(L"Cmd_Ajouter");
  user_.type(L"caf");
  user_.fill(L"Txt_RaisonOrgChg", L"Caisse d'allocations familiales de l'Eure");
  user_.fill(L"Txt_Ville", L"Évreux");
  completeCreation(user_);
  user_.click(L"Cmd_OK");
  EXPECT_EQ(stored(L"ORGPRISECHARGE", L"001", 1), L"CAF");
  EXPECT_EQ(stored(L"COMPTEUR", L"999", 10), L"001");
  // The only body of its store is loaded by itself.
  EXPECT_EQ(user_.text(L"Txt_CodOrgChg"), L"001");
  EXPECT_EQ(user_.text(L"Txt_Ville"), L"Évreux");
  user_.fill(L"Txt_RaisonOrgChg", L"Caisse nouvelle");
  user_.click(L"Cmd_OK");
  EXPECT_EQ(stored(L"ORGPRISECHARGE", L"001", 2), L"Caisse nouvelle");
}

TEST_F(RealStore, SearchesRefusesADeletionAndMakesAnother) {
  store(L"COMPTEUR", L"999",
        L"\u00FE\u00FE\u00FE\u00FE\u00FE\u00FE\u00FE\u00FE\u00FE"
        L"002");
  store(L"ORGPRISECHARGE", L"001",
        L"CAF\u00FE"
        L"Caisse");
  store(L"ORGPRISECHARGE", L"002",
        L"CARSAT\u00FE"
        L"Retraite");
  store(L"ACCORD", L"7001", L"002");
  init();
  user_.click(L"Cbo_SigleOrgChg");
  user_.type(L"car");
  user_.key(VK_RETURN);
  EXPECT_EQ(user_.lines(L"Cbo_SigleOrgChg"), (std::vector<std::wstring>{L"CARSAT"}));
  user_.key(VK_DOWN);
  EXPECT_EQ(user_.text(L"Txt_RaisonOrgChg"), L"Retraite");
  boxes_.expect(kDelete, kQuestion, L"YESNO", IDYES);
  boxes_.expect(kHasAgreements, kExclamation, L"OK", IDOK);
  user_.click(L"Cmd_Supprimer");
  EXPECT_EQ(stored(L"ORGPRISECHARGE", L"002", 1), L"CARSAT");
  user_.fill(L"Txt_CodOrgChg", L"001");
  boxes_.expect(kDelete, kQuestion, L"YESNO", IDYES);
  user_.click(L"Cmd_Supprimer");
  EXPECT_EQ(stored(L"ORGPRISECHARGE", L"001", 1), L"");
}

}  // namespace
}  // namespace lifecycle
