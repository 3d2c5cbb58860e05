# Cross-compiles for 64-bit Windows with Debian's MinGW-w64 (posix threads flavour, which
# std::thread and Qt need).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(DQ480_MINGW_TRIPLE x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${DQ480_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${DQ480_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${DQ480_MINGW_TRIPLE}-windres)

# Libraries and headers come from the MinGW sysroot and the cross-built toolchain prefix only;
# programs (moc, pkg-config) still come from the host.
list(APPEND CMAKE_FIND_ROOT_PATH /usr/${DQ480_MINGW_TRIPLE})
if(DEFINED ENV{DQ480_WINDOWS_PREFIX})
    list(APPEND CMAKE_FIND_ROOT_PATH $ENV{DQ480_WINDOWS_PREFIX})
endif()
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
