# find_package(TARVENIK) offers
#   TARVENIK::runtime   the runtime library (configuration, trace, errors, paths, files, numbers, starter, Base64 ...)
#   TARVENIK::xml       XML documents by path
#   TARVENIK::windows   the border to the running Windows, which a program hands to the two above
#   TARVENIK::scripted  that border played in memory, for tests without Windows
#   TARVENIK::platform  the border's interfaces alone, for a border of one's own
# Headers are included by their folder: "runtime/ModRkIni.h", "xml/clsXML.h", "platform/windows/WindowsPlatform.h".
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(_tarvenik_arch x64)
else()
    set(_tarvenik_arch x86)
endif()
if(EXISTS ${CMAKE_CURRENT_LIST_DIR}/${_tarvenik_arch}/TARVENIKTargets.cmake)
    include(${CMAKE_CURRENT_LIST_DIR}/${_tarvenik_arch}/TARVENIKTargets.cmake)
else()
    set(TARVENIK_FOUND FALSE)
    set(TARVENIK_NOT_FOUND_MESSAGE "the libraries for ${_tarvenik_arch} are not installed here")
endif()
unset(_tarvenik_arch)
