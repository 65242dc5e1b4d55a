# The runtime library for the other programs of the suite: `cmake --install BUILD --prefix DIR` puts libraries, public
# headers and a CMake package into DIR. Builds of both architectures, release and debug, share one DIR.
include(CMakePackageConfigHelpers)

# tarv_public_headers(TARGET PUBLIC|INTERFACE FILE...): headers that others may include. They lie under the same names
# in the installed include folder; a header that is not listed anywhere is ours alone.
function(tarv_public_headers target scope)
    target_sources(${target} ${scope} FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${ARGN})
endfunction()

# The names by which others link the library, in a tree of their own as with find_package.
function(tarv_name_libraries)
    foreach(name platform platform_windows win runtime scripted xml)
        if(TARGET tarv_${name})
            string(REPLACE platform_windows windows public ${name})
            set_target_properties(tarv_${name} PROPERTIES EXPORT_NAME ${public} DEBUG_POSTFIX d)
            add_library(TARVENIK::${public} ALIAS tarv_${name})
        endif()
    endforeach()
endfunction()

function(tarv_install_package)
    if(CMAKE_SIZEOF_VOID_P EQUAL 8)
        set(arch x64)
    else()
        set(arch x86)
    endif()
    set(package lib/cmake/TARVENIK)
    install(
        TARGETS tarv_platform tarv_platform_windows tarv_win tarv_runtime tarv_scripted tarv_xml
        EXPORT TARVENIKTargets
        ARCHIVE DESTINATION lib/${arch}
        FILE_SET HEADERS DESTINATION include/tarvenik
    )
    install(EXPORT TARVENIKTargets NAMESPACE TARVENIK:: DESTINATION ${package}/${arch})
    # Which architecture is wanted is known to the configuration file only, so the version fits all of them.
    write_basic_package_version_file(
        ${CMAKE_CURRENT_BINARY_DIR}/TARVENIKConfigVersion.cmake
        COMPATIBILITY SameMajorVersion
        ARCH_INDEPENDENT
    )
    install(
        FILES ${PROJECT_SOURCE_DIR}/cmake/TARVENIKConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/TARVENIKConfigVersion.cmake
        DESTINATION ${package}
    )
    # The toolchains that the libraries are built with.
    install(
        FILES
            ${PROJECT_SOURCE_DIR}/cmake/mingw-w64.cmake
            ${PROJECT_SOURCE_DIR}/cmake/x64.cmake
            ${PROJECT_SOURCE_DIR}/cmake/x86.cmake
        DESTINATION ${package}
    )
endfunction()
