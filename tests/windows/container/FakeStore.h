// A store and a rights object as a host would hand them over: late-bound COM objects over a map,
// with faults on demand and a journal of calls and releases.
#pragma once

#include <oaidl.h>
#include <windows.h>
#include <wrl/client.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "store/Layouts.h"

namespace container {

namespace attribut = store::orgprisecharge;

inline constexpr wchar_t kAttributeMark = 0x00FE;
inline constexpr wchar_t kValueMark = 0x00FD;

// How a failing call tells of it.
enum class FaultStyle { Hresult, Exception, DeferredException, ExceptionWithoutScode };
// How a call gives back an object.
enum class ResultStyle { Dispatch, Unknown, ByReference };

struct FakeStoreState {
  using Records = std::map<std::wstring, std::wstring>;

  std::map<std::wstring, Records> files;
  long rightsLevel = 2;

  // Called with each call's journal line; S_OK lets it go on, a failure fails it.
  std::function<HRESULT(const std::string& call)> fault;
  // Called with the journal line of each call that has not failed, and its answer, which it may
  // replace.
  std::function<void(const std::string& call, VARIANT& answer)> answer;
  FaultStyle faultStyle = FaultStyle::Exception;
  ResultStyle resultStyle = ResultStyle::Dispatch;
  bool offersStatus = true;

  // "OpenFile ORGPRISECHARGE", "ReadRecord ORGPRISECHARGE 001", "DBWrite ORGPRISECHARGE 001",
  // "DeleteRecord ...", "ExecuteSentence SSELECT ...", "Right CONSULTATIONORGCHARGE", "Level".
  std::vector<std::string> calls;
  // "database", "file COMPTEUR", "record TABLES PIECESRENOUV", "answer", "rights", "entry",
  // "client", in the order of their last release.
  std::vector<std::string> releases;
  int alive = 0;

  int count(const std::string& prefix) const;  // calls that begin so
  // Attribute `number` of a record, as the store holds it.
  std::wstring attribute(const std::wstring& file, const std::wstring& id, int number) const;
};

class FakeStore {
 public:
  FakeStore();

  FakeStoreState& state() { return *state_; }
  // A new object each time; it may outlive this one.
  Microsoft::WRL::ComPtr<IDispatch> client();
  Microsoft::WRL::ComPtr<IDispatch> database();
  Microsoft::WRL::ComPtr<IDispatch> rights();

  // A record from its attributes.
  void put(const std::wstring& file, const std::wstring& id,
           const std::vector<std::wstring>& attributes);
  // One attribute of a record.
  void set(const std::wstring& file, const std::wstring& id, size_t number,
           const std::wstring& text);

 private:
  std::shared_ptr<FakeStoreState> state_;
};

// A record of ACTIVITES.
std::vector<std::wstring> activity(const std::wstring& label, const std::wstring& entity,
                                   const std::wstring& type = L"P",
                                   const std::wstring& service = L"SAAD");

// Three bodies ("001" CAF, "002" CARSAT, "003" MSA), one of them named by an agreement (002) and
// one by a request (003), a counter that stands at 003, the two code tables, one entity ("100")
// with one activity, one slip parameter. Every body can be saved.
void fillWithThreeBodies(FakeStore& store);
// One body, "001".
void fillWithOneBody(FakeStore& store);

}  // namespace container
