# tarv_program(NAME): makes the executable NAME a program of the program folder, with NAME.manifest.in, which NAME.rc
# includes, hardened.
function(tarv_program name)
    target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/app/Terminate.cpp)
    configure_file(${name}.manifest.in ${name}.manifest @ONLY)
    set_property(SOURCE ${name}.rc APPEND PROPERTY OBJECT_DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/${name}.manifest)
    # $<0:>: no folder of its own for each configuration, where Version.INI is not.
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/Programm$<0:>)
    if(MINGW)
        target_link_options(
            ${name}
            PRIVATE
                -municode
                -Wl,--tsaware,--dynamicbase,--nxcompat
                $<$<EQUAL:${CMAKE_SIZEOF_VOID_P},8>:-Wl,--high-entropy-va>
        )
    elseif(MSVC)
        target_link_options(${name} PRIVATE /TSAWARE /DYNAMICBASE /NXCOMPAT /MANIFEST:NO)
    endif()
endfunction()
