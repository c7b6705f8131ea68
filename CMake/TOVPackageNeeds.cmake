# Read by cpack before it makes the packages of a kind.
#
# What the compiler's and the C library's packages have to be, a Debian package reads from its programs. The tools for that
# are looked for when it is made, which may be long after the build was configured.

if(CPACK_GENERATOR STREQUAL "DEB")
    find_program(TOV_SHLIBDEPS dpkg-shlibdeps)
    find_program(TOV_FILE file)
    if(TOV_SHLIBDEPS AND TOV_FILE)
        set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
        set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
        set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
        set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
    else()
        message(WARNING "The Debian packages will not name the C and C++ libraries that they need. To let them do so, "
                        "install the packages dpkg-dev and file, and pack again.")
    endif()
endif()
