// A COM library beside the program, used without being registered.
#pragma once

#include <ole2.h>
#include <wrl/client.h>

#include <string>

namespace host {

// The path of a file in the program's own folder.
std::wstring besideProgram(const std::wstring& fileName);

// The library stays loaded until the process ends: its objects may outlive their owners here.
class Library {
 public:
  // A file name in the program's own folder. com::Error with the file's name when it cannot be
  // loaded, or is no COM library.
  explicit Library(const std::wstring& fileName);

  // An object of the class that the library's own type library gives this name.
  Microsoft::WRL::ComPtr<IUnknown> create(const std::wstring& className) const;
  // None of its objects lives any more.
  bool unused() const;

 private:
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  using CanUnloadNow = HRESULT(STDAPICALLTYPE*)();

  CLSID classOf(const std::wstring& className) const;

  std::wstring path_;
  GetClassObject getClassObject_ = nullptr;
  CanUnloadNow canUnloadNow_ = nullptr;
};

}  // namespace host
