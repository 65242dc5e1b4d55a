# A folder is a library: every source in it belongs to it, so adding a file needs no edit here.
# CONFIGURE_DEPENDS lets the build notice new and vanished files by itself.
function(tarv_sources out)
    set(found)
    foreach(pattern IN LISTS ARGN)
        file(GLOB matches CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${pattern})
        list(APPEND found ${matches})
    endforeach()
    set(${out} ${found} PARENT_SCOPE)
endfunction()

# tarv_library(NAME PATTERN...): a static library of the sources of this folder.
function(tarv_library name)
    tarv_sources(sources ${ARGN})
    add_library(${name} STATIC ${sources})
    set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
    # Our warnings and definitions are no business of those who link the library, installed or in a tree of their own.
    if(PROJECT_IS_TOP_LEVEL)
        target_link_libraries(${name} PUBLIC $<BUILD_INTERFACE:tarv_options>)
    else()
        target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:tarv_options>)
    endif()
endfunction()
