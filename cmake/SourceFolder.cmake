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
endfunction()
