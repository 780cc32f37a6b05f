// Several user interface threads of one host, as `ThreadingModel=Apartment` allows them.
#include <exception>
#include <functional>
#include <thread>

#include "tests/support/Thorough.h"
#include "tests/windows/lifecycle/ControlTest.h"
#include "tests/windows/lifecycle/LocalStore.h"

namespace lifecycle {
namespace {

using container::Container;
using container::HostWindow;
using container::Profile;
using container::Value;
using Microsoft::WRL::ComPtr;

// A single-threaded apartment for as long as it lives.
class Apartment {
 public:
  Apartment() { OleInitialize(nullptr); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() { OleUninitialize(); }
};

// Each piece of work on a thread and in an apartment of its own; what went wrong in each.
std::vector<std::string> together(const std::vector<std::function<std::string()>>& works) {
  std::vector<std::string> wrong(works.size());
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < works.size(); ++i) {
    threads.emplace_back([&work = works[i], &text = wrong[i]] {
      const Apartment apartment;
      try {
        text = work();
      } catch (const std::exception& error) {
        text = error.what();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  return wrong;
}

// Client, file and control of one thread, and ten calls of them a round. Now and then the store is
// opened anew.
class Workplace {
 public:
  explicit Workplace(int number) : name_(L"FIL" + std::to_wstring(number)) {
    library().create().As(&control_);
    container::put(control_, L"TheClient", Value(store_.client().Get()));
    container::put(control_, L"TheDatabase", Value(store_.database().Get()));
    container::put(control_, L"DroitsUtilisateur", Value(store_.rights().Get()));
    container::call(control_, L"Init");
  }

  std::string round(int number) {
    constexpr int kRecords = 20;
    constexpr int kRoundsPerConnection = 50;
    const std::wstring id = std::to_wstring(number % kRecords);
    const std::wstring text = name_ + L" " + std::to_wstring(number);
    if (number % kRoundsPerConnection == 0) {
      file_ = container::call(store_.openedAnew(), L"OpenFile", {Value(L"TEMPO")}).object();
    }
    const ComPtr<IDispatch> record = container::call(file_, L"ReadRecord", {Value(id)}).object();
    if (number >= kRecords && container::call(record, L"Value", {Value(1L)}).text() != name_) {
      return "a record of another thread, or none";
    }
    const auto array = container::call(store_.database(), L"NewDynamicArray").object();
    container::put(array, L"", Value(text + L"\u00FE" + name_));
    if (container::call(array, L"Value", {Value(1L)}).text() != text) return "not what was put";
    if (number < kRecords) {
      container::put(record, L"", Value(name_));
      container::call(record, L"DBWrite");
    } else {
      container::call(array, L"DCount", {Value(1L)});
      container::call(record, L"DCount", {Value(1L)});
    }
    const bool leaving = number % 2 == 0;
    container::put(control_, L"W_Sortir", Value(leaving));
    if (container::get(control_, L"W_Sortir").truth() != leaving) return "another W_Sortir";
    container::call(control_, L"Remplir_StatOrgChg");
    return "";
  }

 private:
  std::wstring name_;
  LocalStore store_;
  ComPtr<IDispatch> control_;
  ComPtr<IDispatch> file_;
};

std::string workOnAStore(int number) {
  constexpr int kRounds = 2500;
  Workplace place(number);
  for (int i = 0; i < kRounds; ++i) {
    const std::string wrong = place.round(i);
    if (!wrong.empty()) return wrong + " in round " + std::to_string(i);
  }
  return "";
}

TEST(Threads, FourWorkEachOnAClientAFileAndAControlOfItsOwn) {
  std::vector<std::function<std::string()>> works;
  for (int i = 0; i < 4; ++i) works.emplace_back([i] { return workOnAStore(i); });
  EXPECT_EQ(together(works), std::vector<std::string>(4));
  EXPECT_EQ(library().canUnloadNow(), S_OK);
}

// While other threads have controls, the library cannot be unloaded, and a container cannot ask.
class SharedLibrary final : public container::Source {
 public:
  ComPtr<IUnknown> create() override { return library().create(); }
  HRESULT canUnloadNow() override { return S_OK; }
};

std::string activateAgainAndAgain(const Profile& profile, int times) {
  SharedLibrary source;
  HostWindow window;
  for (int i = 0; i < times; ++i) {
    Container host(profile, window, source);
    const HRESULT opened = host.open();
    if (FAILED(opened)) return profile.name + ": refused with " + std::to_string(opened);
    if (host.controlWindow() == nullptr) return profile.name + ": no window";
    const std::string broken = host.finish();
    if (!broken.empty()) return profile.name + ": " + broken;
  }
  return "";
}

std::string activateOnce() {
  SharedLibrary source;
  HostWindow window;
  Container host(container::formProfile(), window, source);
  host.open();
  container::put(host.automation(), L"W_Sortir", Value(true));  // tells it from a posted message
  host.pump();
  return host.finish();
}

// The last control of one thread must not take them from the first one of another.
TEST(Threads, LeaveTheWindowClassesToEachOther) {
  EXPECT_EQ(together({activateOnce}), std::vector<std::string>(1));
  for (const wchar_t* name : {L"TessalineCall", L"TessalineSurface"}) {
    WNDCLASSEXW type = {};
    type.cbSize = sizeof type;
    EXPECT_NE(GetClassInfoExW(library().module(), name, &type), FALSE) << container::narrow(name);
  }
  EXPECT_EQ(together({activateOnce}), std::vector<std::string>(1));
}

// A thousand in all, or, since each takes its time, as many as show that it works at all.
TEST(Threads, ThreeActivateControlsAgainAndAgain) {
  const int times = testing_support::thorough() ? 334 : 30;
  std::vector<std::function<std::string()>> works;
  for (const Profile& profile :
       {container::formProfile(), container::dotnetProfile(), container::minimalProfile()}) {
    works.emplace_back([profile, times] { return activateAgainAndAgain(profile, times); });
  }
  EXPECT_EQ(together(works), std::vector<std::string>(3));
  EXPECT_EQ(library().canUnloadNow(), S_OK);
}

}  // namespace
}  // namespace lifecycle
