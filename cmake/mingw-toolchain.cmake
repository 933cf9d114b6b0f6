# Builds for 32-bit Windows 2000 and later on Debian; programs are run with Wine. The compiler is
# called by the name of its thread model: the other one needs functions that Windows 2000 lacks.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)

set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-win32)
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-win32)
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)
set(CXOL_WIDL i686-w64-mingw32-widl CACHE STRING "Compiler of type libraries")
set(CXOL_OBJDUMP i686-w64-mingw32-objdump CACHE STRING "Lister of import tables")
set(CXOL_OBJCOPY i686-w64-mingw32-objcopy CACHE STRING "Copier of parts of programs")
set(CXOL_STRIP i686-w64-mingw32-strip CACHE STRING "Remover of symbols")

set(CMAKE_FIND_ROOT_PATH /usr/i686-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR wine)

# Small: each function that nobody calls is left out. Nothing is loaded but what Windows has.
set(CMAKE_BUILD_TYPE_INIT MinSizeRel)
set(CMAKE_CXX_FLAGS_INIT "-ffunction-sections -fdata-sections -D_WIN32_WINNT=0x0500 -DWINVER=0x0500 -D_WIN32_IE=0x0500 -DWIN32_LEAN_AND_MEAN -DNOMINMAX")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -s -Wl,--gc-sections")
# Symbols are taken out of a DLL after its link, where they are kept. Not an initial value: it also
# counts where a build folder remembers another one.
set(CMAKE_SHARED_LINKER_FLAGS "-static -Wl,--gc-sections")
