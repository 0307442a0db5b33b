# Debian's cross compiler for Windows, the one whose threads are POSIX's (std::thread, std::mutex). Libraries and headers come
# from the compiler's own folder and from VANTREL_WINDOWS_ROOT, never from the host's; programs are always the host's.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_VERSION 10)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VANTREL_WINDOWS_ROOT)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${VANTREL_WINDOWS_ROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# So that ctest runs the tests as if they were the host's.
find_program(VANTREL_WINE wine)
if(VANTREL_WINE)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${VANTREL_WINE})
endif()
