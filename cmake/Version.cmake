# The one place where versions are changed. -DTARVENIK_VERSION=... and -DTARVENIK_RELEASE=... build another one.

# Program, components, packages and runtime library. Windows compares packages by these three numbers, of which the
# first two are below 256.
if(NOT DEFINED TARVENIK_VERSION)
    set(TARVENIK_VERSION 1.0.0)
endif()

# The suite's release, shown in the main window: entry ProgVersion of Version.INI.
if(NOT DEFINED TARVENIK_RELEASE)
    set(TARVENIK_RELEASE 2026.1)
endif()

if(NOT TARVENIK_VERSION MATCHES "^[0-9]+\\.[0-9]+\\.[0-9]+$")
    message(FATAL_ERROR "TARVENIK_VERSION is to be three numbers, for instance 1.0.0: ${TARVENIK_VERSION}")
endif()
