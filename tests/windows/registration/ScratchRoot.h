// A classes root below a scratch key of the user, that can refuse what it is asked.
#pragma once

#include <map>
#include <string>

#include "com/Registration.h"

// Emptied when it is made and when it goes.
class ScratchRoot final : public com::RegistryRoot {
 public:
  explicit ScratchRoot(const std::wstring& name);
  ~ScratchRoot() override;

  // The n-th change from now on (1 is the next) is refused, and all after it.
  void refuseFrom(int change, HRESULT code = E_ACCESSDENIED);
  void refuseOnly(int change);
  void accept() { refused_ = 0; }
  int changes() const { return changes_; }

  // Keys with a trailing backslash, values as "key|name" with their contents.
  std::map<std::wstring, std::wstring> contents();
  void putText(const std::wstring& key, const std::wstring& name, const std::wstring& text);

  bool exists(const std::wstring& key) override { return registry_.exists(key); }
  void create(const std::wstring& key) override;
  void eraseIfEmpty(const std::wstring& key) override;
  std::vector<std::wstring> names(const std::wstring& key) override;
  std::optional<com::RegistryValue> read(const std::wstring& key,
                                         const std::wstring& name) override;
  void write(const std::wstring& key, const std::wstring& name,
             const com::RegistryValue& value) override;
  void erase(const std::wstring& key, const std::wstring& name) override;

 private:
  void change();

  std::wstring path_;
  com::WindowsRegistry registry_;
  int changes_ = 0;
  int refused_ = 0;
  bool onlyOne_ = false;
  HRESULT code_ = E_ACCESSDENIED;
};
