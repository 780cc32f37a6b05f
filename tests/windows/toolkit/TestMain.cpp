// The main function of the toolkit's Windows tests: a French host, and a last line that counts.
#include <gtest/gtest.h>
#include <windows.h>

#include <clocale>
#include <cstdio>

int main(int argc, char** argv) {
  SetConsoleOutputCP(CP_UTF8);
  // Many hosts do this, and share the C library with the control.
  std::setlocale(LC_ALL, "French");
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  testing::InitGoogleTest(&argc, argv);
  const int result = RUN_ALL_TESTS();
  const testing::UnitTest& all = *testing::UnitTest::GetInstance();
  std::printf("%d passed, %d failed\n", all.successful_test_count(), all.failed_test_count());
  std::fflush(stdout);
  return result;
}
