# Builds for 64-bit Windows with Debian's mingw-w64, the variant whose std::thread is real, and runs what it builds under Debian's wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The compiler's own libraries go into the program, so that it runs from where it lies. A file of many templates has more sections
# than the plain object format counts.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_CXX_FLAGS_INIT "-Wa,-mbig-obj")

find_program(NIMBRY_WINE NAMES wine64 wine PATHS /usr/lib/wine)
if(NIMBRY_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${NIMBRY_WINE})
endif()
