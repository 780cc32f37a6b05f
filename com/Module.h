// The library as a whole: how many of its objects live, where its file is, that it stays loaded.
#pragma once

#include <windows.h>

#include <string>

namespace com {

// Defined by each library: what IErrorInfo and EXCEPINFO name as the source of its errors.
const wchar_t* errorSource();

// A member of every COM object: counts it while it lives.
class Alive {
 public:
  Alive();
  Alive(const Alive&) = delete;
  Alive& operator=(const Alive&) = delete;
  ~Alive();
};

// Objects alive plus IClassFactory::LockServer locks; 0 lets DllCanUnloadNow answer S_OK.
long objectsAlive();
void lockModule(bool lock);

// The library that this code is in.
HMODULE module();
std::wstring modulePath();
// Keeps it loaded until the process ends: each load, throw, unload cycle would leak a TLS index.
void pinModule();

}  // namespace com
