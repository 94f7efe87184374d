# Common part of the two Windows toolchains. The including file sets KTRV_TRIPLET.
set(CMAKE_SYSTEM_NAME Windows)

# Only the -posix compilers support std::thread and std::mutex.
set(CMAKE_C_COMPILER ${KTRV_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${KTRV_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${KTRV_TRIPLET}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${KTRV_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Link statically, so that no compiler runtime has to be installed. The DLL is stripped; programs
# keep their symbols for Wine's backtraces.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_RELEASE_INIT "-s")

set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../tools/wine-run")
