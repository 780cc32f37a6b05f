// The main function of the Windows tests: OLE, a French host, and a last line that counts.
#include <gtest/gtest.h>
#include <ole2.h>
#include <windows.h>

#include <clocale>
#include <cstdio>

int main(int argc, char** argv) {
  SetConsoleOutputCP(CP_UTF8);
  // Many hosts do this, and share the C library with the control.
  std::setlocale(LC_ALL, "French");
  // Hosts of ours say so in their manifest.
  SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
  // A crash ends the program.
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
