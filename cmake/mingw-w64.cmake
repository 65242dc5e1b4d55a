# MinGW-w64 on Debian, the "-posix" compilers (the plain ones lack std::mutex).
# The including file sets TARV_TRIPLET and TARV_ARCH.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${TARV_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TARV_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${TARV_TRIPLET}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${TARV_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# Packages of libraries lie where the user says (CMAKE_PREFIX_PATH), not in the compiler's own folder.
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)
# Not where it is installed for other programs.
if(EXISTS ${CMAKE_CURRENT_LIST_DIR}/../tools/wine)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/wine;${TARV_ARCH})
endif()
