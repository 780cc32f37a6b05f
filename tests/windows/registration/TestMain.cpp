// COM, a host with the French C locale, and a last line that counts.
#include <gtest/gtest.h>
#include <ole2.h>

#include <clocale>
#include <cstdio>

#include "com/Module.h"

namespace com {

const wchar_t* errorSource() { return L"Tests"; }

}  // namespace com

int main(int argc, char** argv) {
  SetConsoleOutputCP(CP_UTF8);
  std::setlocale(LC_ALL, "French");
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  OleInitialize(nullptr);
  testing::InitGoogleTest(&argc, argv);
  const int result = RUN_ALL_TESTS();
  const testing::UnitTest& all = *testing::UnitTest::GetInstance();
  OleUninitialize();
  std::printf("%d passed, %d failed\n", all.successful_test_count(), all.failed_test_count());
  std::fflush(stdout);
  return result;
}
