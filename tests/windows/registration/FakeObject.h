// A late-bound object whose members are functions of the test.
#pragma once

#include <ole2.h>
#include <wrl/client.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "com/Variant.h"

// One call of a member, its arguments in their written order.
struct FakeCall {
  WORD how = 0;
  std::vector<std::wstring> arguments;
  VARIANT* result = nullptr;
  EXCEPINFO* exception = nullptr;
};

class FakeObject final : public IDispatch {
 public:
  using Member = std::function<HRESULT(const FakeCall&)>;

  static Microsoft::WRL::ComPtr<FakeObject> make();

  // The empty name is the default member.
  void on(const std::wstring& name, Member member) { members_[name] = std::move(member); }
  // A member that answers with a text, or with an object.
  void answers(const std::wstring& name, const std::wstring& text);
  void gives(const std::wstring& name, const Microsoft::WRL::ComPtr<FakeObject>& object);

  int lookUps() const { return lookUps_; }
  std::vector<std::wstring>
      journal;  // "name(argument, ...)" of every call; puts as "name=argument"

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD how, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT* wrong) override;

 private:
  FakeObject() = default;
  FakeObject(const FakeObject&) = delete;
  FakeObject& operator=(const FakeObject&) = delete;
  ~FakeObject() = default;

  ULONG references_ = 1;
  int lookUps_ = 0;
  std::vector<std::wstring> names_;  // a DISPID is a position in it, from 1
  std::map<std::wstring, Member> members_;
};
