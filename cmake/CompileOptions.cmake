# How everything here is compiled: options of this folder and those below it. A project that adds this one as a folder
# keeps its own.
include_directories(${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR})

option(TARVENIK_WERROR "Treat warnings as errors" OFF)
option(TARVENIK_SYMBOLS "Keep names and lines in the Windows programs; packaging/finish-programs takes them out" OFF)
option(TARVENIK_SANITIZE "AddressSanitizer and UndefinedBehaviorSanitizer (native build)" OFF)

if(MSVC)
    add_compile_options(/W4 /utf-8 /permissive-)
else()
    # Not -Wnon-virtual-dtor: no COM interface has a virtual destructor. Deleting through such a base is what
    # hurts, and -Wall reports that.
    add_compile_options(-Wall -Wextra -Wconversion -Wshadow)
    if(TARVENIK_WERROR)
        add_compile_options(-Werror)
    endif()
endif()

if(TARVENIK_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
    add_link_options(-fsanitize=address,undefined)
endif()

if(WIN32)
    # 0x0601 (Windows 7) is the oldest system the suite supports; newer entry points are looked up at run time.
    add_compile_definitions(UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX STRICT _WIN32_WINNT=0x0601)
endif()

if(MINGW)
    # The program waits for people and files, never for its own arithmetic; small is quick to start.
    string(REPLACE "-O3" "-Os" CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")
    # A workstation needs nothing but Windows, so the run-time libraries go into the program; and the
    # program stays small: unreferenced sections are dropped.
    add_compile_options(-ffunction-sections -fdata-sections)
    # No time goes into a program: the same sources give the same bytes.
    add_link_options(-static -Wl,--gc-sections,--no-insert-timestamp)
    if(TARVENIK_SYMBOLS)
        # Names begin at the root of the tree, wherever it lies.
        add_compile_options(-g1 -ffile-prefix-map=${PROJECT_BINARY_DIR}/= -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
    else()
        add_link_options($<$<CONFIG:Release>:-s>)
    endif()
    if(CMAKE_SIZEOF_VOID_P EQUAL 4)
        # x87 would round differently from the 64-bit build; prices have to agree to the last bit.
        add_compile_options(-msse2 -mfpmath=sse)
    endif()
endif()

# GoogleTest is built as all the rest, but its warnings are not ours to mend.
function(tarv_silence_googletest)
    foreach(library IN ITEMS gtest gtest_main gmock gmock_main)
        target_compile_options(${library} PRIVATE -w)
    endforeach()
endfunction()

# In MinGW's release build, for folders through which whole tenders go: speed counts more than size there.
macro(tarv_prefer_speed)
    string(REPLACE "-Os" "-O2" CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")
endmacro()
