#include "tests/windows/lifecycle/LocalStore.h"

#include <windows.h>

#include <atomic>
#include <stdexcept>

#include "tests/windows/lifecycle/ControlTest.h"

namespace lifecycle {

using container::Value;
using Microsoft::WRL::ComPtr;

namespace {

// Several threads may have a store each.
std::wstring newPath() {
  static std::atomic<int> stores = 0;
  wchar_t folder[MAX_PATH] = {};
  GetTempPathW(MAX_PATH, folder);
  return std::wstring(folder) + L"essai é " + std::to_wstring(GetCurrentProcessId()) + L" " +
         std::to_wstring(GetTickCount64()) + L" " + std::to_wstring(++stores) + L".store";
}

void createStore(const std::wstring& path) {
  std::wstring command =
      L"\"" + programFolder() + L"tessaline-store.exe\" create \"" + path + L"\"";
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

container::LibrarySource& storeLibrary() {
  static container::LibrarySource source(programFolder() + L"TessalineStore.dll");
  return source;
}

ComPtr<IDispatch> made(const wchar_t* name) {
  ComPtr<IDispatch> object;
  storeLibrary().create(name).As(&object);
  return object;
}

}  // namespace

LocalStore::LocalStore() : path_(newPath()) {
  createStore(path_);
  client_ = made(L"Client");
  database_ = container::call(client_, L"OpenDatabase", {Value(path_)}).object();
  rights_ = made(L"Rights");
  container::call(rights_, L"SetLevel", {Value(L"CONSULTATIONORGCHARGE"), Value(2L)});
}

LocalStore::~LocalStore() {
  release();
  for (const wchar_t* end : {L"", L"-wal", L"-shm"}) DeleteFileW((path_ + end).c_str());
}

HRESULT LocalStore::release() {
  database_.Reset();
  client_.Reset();
  rights_.Reset();
  return storeLibrary().canUnloadNow();
}

ComPtr<IDispatch> LocalStore::openedAnew() const {
  return container::call(made(L"Client"), L"OpenDatabase", {Value(path_)}).object();
}

void LocalStore::put(const wchar_t* file, const wchar_t* id, const std::wstring& text) {
  const Value opened = container::call(database_, L"OpenFile", {Value(file)});
  const Value record = container::call(opened.object(), L"ReadRecord", {Value(id)});
  container::put(record.object(), L"", Value(text));
  container::call(record.object(), L"DBWrite");
}

std::wstring LocalStore::stored(const wchar_t* file, const wchar_t* id, long attribute) const {
  const Value opened = container::call(openedAnew(), L"OpenFile", {Value(file)});
  const Value record = container::call(opened.object(), L"ReadRecord", {Value(id)});
  return container::call(record.object(), L"", {Value(attribute)}).text();
}

}  // namespace lifecycle
