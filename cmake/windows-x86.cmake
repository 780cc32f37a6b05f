# Cross compiler for 32-bit Windows. SSE2 keeps floating-point arithmetic the same as on 64 bits.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)
set(TRIPLE i686-w64-mingw32)
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse")
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
