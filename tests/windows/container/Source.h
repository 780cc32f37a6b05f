// Where controls come from: a library on disk, loaded without registration, or a fake.
#pragma once

#include <windows.h>
#include <wrl/client.h>

#include <string>

namespace container {

class Source {
 public:
  Source() = default;
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;
  virtual ~Source() = default;

  // A new object; throws std::runtime_error when there is none.
  virtual Microsoft::WRL::ComPtr<IUnknown> create() = 0;
  // DllCanUnloadNow.
  virtual HRESULT canUnloadNow() = 0;
};

// A COM library loaded by its path; the class is the first coclass of its type library.
class LibrarySource final : public Source {
 public:
  explicit LibrarySource(const std::wstring& path);
  // The library stays loaded: a library that pins itself could not be unloaded anyway.
  Microsoft::WRL::ComPtr<IUnknown> create() override;
  HRESULT canUnloadNow() override;

  // A class of the library by its name in the type library, such as "Client".
  Microsoft::WRL::ComPtr<IUnknown> create(const std::wstring& coclass);
  CLSID classId() const { return classId_; }
  HMODULE module() const { return module_; }

 private:
  Microsoft::WRL::ComPtr<IUnknown> create(const CLSID& id);

  std::wstring path_;
  HMODULE module_ = nullptr;
  CLSID classId_ = {};
};

}  // namespace container
