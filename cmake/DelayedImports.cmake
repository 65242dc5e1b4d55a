# tarv_delay_imports(TARGET LIBRARY FUNCTION@BYTES...): TARGET loads LIBRARY at the first call of one of its
# functions instead of at its start. BYTES is the size of the parameters in a 32-bit program. Like every other
# library, it is then taken from Windows' own folder only (see ProcessHardening).
function(tarv_delay_imports target library)
    if(MSVC)
        target_link_options(${target} PRIVATE /DELAYLOAD:${library}.dll)
        target_link_libraries(${target} PRIVATE delayimp)
        return()
    endif()
    set(functions ${ARGN})
    if(CMAKE_SIZEOF_VOID_P EQUAL 8)
        list(TRANSFORM functions REPLACE "@.*" "")
    endif()
    list(JOIN functions "\n    " names)
    set(base ${CMAKE_CURRENT_BINARY_DIR}/delayed_${library})
    file(CONFIGURE OUTPUT ${base}.def CONTENT "EXPORTS\n    @names@\n" @ONLY)
    add_custom_command(
        OUTPUT ${base}.a
        COMMAND ${CMAKE_DLLTOOL} --kill-at -D ${library}.dll -d ${base}.def -y ${base}.a
        DEPENDS ${base}.def
        VERBATIM
    )
    add_custom_target(${target}_delayed_${library} DEPENDS ${base}.a)
    add_dependencies(${target} ${target}_delayed_${library})
    # Every stub is kept: callers know only the table of addresses, and in a 32-bit program that table alone would
    # not keep the stubs that it starts with.
    list(TRANSFORM functions REPLACE "^.*@" "_\\0" REGEX "@")
    list(TRANSFORM functions PREPEND "LINKER:--undefined=")
    target_link_options(${target} PRIVATE ${functions})
    # Whole and in front: what it defines is not looked for in the ordinary import library any more.
    target_link_options(${target} PRIVATE -Wl,--whole-archive,${base}.a,--no-whole-archive)
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${base}.a)
endfunction()
