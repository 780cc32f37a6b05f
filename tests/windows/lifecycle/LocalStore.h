// A store on disk, of the local store's library.
#pragma once

#include <wrl/client.h>

#include <string>

#include "tests/windows/container/Automation.h"
#include "tests/windows/container/Source.h"

namespace lifecycle {

// An empty store in a file of its own, opened, with full rights.
class LocalStore {
 public:
  LocalStore();
  LocalStore(const LocalStore&) = delete;
  LocalStore& operator=(const LocalStore&) = delete;
  ~LocalStore();

  const Microsoft::WRL::ComPtr<IDispatch>& client() const { return client_; }
  const Microsoft::WRL::ComPtr<IDispatch>& database() const { return database_; }
  const Microsoft::WRL::ComPtr<IDispatch>& rights() const { return rights_; }

  // The database of another client.
  Microsoft::WRL::ComPtr<IDispatch> openedAnew() const;
  // Writes a record from its full text.
  void put(const wchar_t* file, const wchar_t* id, const std::wstring& text);
  // An attribute as another program would read it: through a client of its own. Several values are
  // separated by U+00FD.
  std::wstring stored(const wchar_t* file, const wchar_t* id, long attribute) const;

  // Lets the objects go; S_OK when the library could then be unloaded.
  HRESULT release();

 private:
  std::wstring path_;
  Microsoft::WRL::ComPtr<IDispatch> client_;
  Microsoft::WRL::ComPtr<IDispatch> database_;
  Microsoft::WRL::ComPtr<IDispatch> rights_;
};

}  // namespace lifecycle
