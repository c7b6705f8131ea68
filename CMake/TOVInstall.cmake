# The package: what `cmake --install` puts where, and how others find it. It has four components, each of which can be
# installed alone (cmake --install BUILD --component NAME):
#   Runtime      what a finished program needs
#   Development  what is needed to build one
#   Tools        tovtest and tovcatalog
#   Documents
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

# The package finds everything from its own place, so that it may be moved. A folder that is given by its full name is
# found there and nowhere else.
cmake_path(APPEND CMAKE_INSTALL_INCLUDEDIR TOVKernel OUTPUT_VARIABLE TOV_INSTALL_HEADERS)
cmake_path(APPEND CMAKE_INSTALL_LIBDIR cmake/TOVKernel OUTPUT_VARIABLE TOV_INSTALL_CONFIG)

add_library(TOVKernel::TOVKernel ALIAS TOVKernel)
target_include_directories(TOVKernel PUBLIC "$<INSTALL_INTERFACE:${TOV_INSTALL_HEADERS}>")
target_compile_features(TOVKernel PUBLIC cxx_std_17)
set_target_properties(TOVKernel PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})

# tov_install_library(<target>): where the parts of a library go, and that the package exports it.
function(tov_install_library target)
    install(TARGETS ${target} EXPORT TOVKernelTargets
            RUNTIME COMPONENT Runtime
            LIBRARY COMPONENT Runtime NAMELINK_COMPONENT Development
            ARCHIVE COMPONENT Development)
endfunction()

# tov_install_pkg_config(<template>): makes the file of pkg-config, which is found from its own place, so that the
# installed tree may be moved.
function(tov_install_pkg_config template)
    get_filename_component(name "${template}" NAME_WLE) # without ".in"
    configure_file("${template}" "${CMAKE_CURRENT_BINARY_DIR}/${name}" @ONLY)
    install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${name}" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
            COMPONENT Development)
endfunction()

# tov_installed_place(<variable> <origin> <from> <kind>): gives the folder CMAKE_INSTALL_<kind> as it is found from the
# folder <from>, which <origin> names after the installation, or by its full name if either has one.
function(tov_installed_place variable origin from kind)
    if(IS_ABSOLUTE "${from}" OR IS_ABSOLUTE "${CMAKE_INSTALL_${kind}}")
        set(${variable} "${CMAKE_INSTALL_FULL_${kind}}" PARENT_SCOPE)
    else()
        file(RELATIVE_PATH way "/${from}" "/${CMAKE_INSTALL_${kind}}")
        set(${variable} "${origin}/${way}" PARENT_SCOPE)
    endif()
endfunction()

# tov_install_program(<target>): the installed program finds the library that is installed with it.
function(tov_install_program target)
    if(NOT WIN32)
        tov_installed_place(library_folder "$ORIGIN" "${CMAKE_INSTALL_BINDIR}" LIBDIR)
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "${library_folder}")
    endif()
    install(TARGETS ${target} RUNTIME COMPONENT Tools)
endfunction()

tov_install_library(TOVKernel)
if(TOV_RUNTIME_LIBRARIES)
    install(FILES ${TOV_RUNTIME_LIBRARIES} DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT Runtime)
endif()

# Applications get the umbrella header and every header that it reaches; the others are the library's own affair. They
# are looked for at the time of the installation, so that a new header needs no new configuration.
install(CODE "
    set(SOURCE \"${PROJECT_SOURCE_DIR}/Source\")
    cmake_path(APPEND CMAKE_INSTALL_PREFIX \"${TOV_INSTALL_HEADERS}\" OUTPUT_VARIABLE DESTINATION)
    include(\"${PROJECT_SOURCE_DIR}/CMake/TOVInstallHeaders.cmake\")" COMPONENT Development)

# CMake: find_package(TOVKernel), then link TOVKernel::TOVKernel.
install(EXPORT TOVKernelTargets NAMESPACE TOVKernel:: DESTINATION "${TOV_INSTALL_CONFIG}" COMPONENT Development)
configure_file("${PROJECT_SOURCE_DIR}/CMake/TOVKernelConfig.cmake.in" "${PROJECT_BINARY_DIR}/TOVKernelConfig.cmake" @ONLY)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/TOVKernelConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/TOVKernelConfig.cmake" "${PROJECT_BINARY_DIR}/TOVKernelConfigVersion.cmake"
        DESTINATION "${TOV_INSTALL_CONFIG}" COMPONENT Development)

# Everything else: pkg-config TOVKernel.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    set(TOV_PKGCONFIG_PREFIX "${CMAKE_INSTALL_PREFIX}")
else()
    file(RELATIVE_PATH prefix_from_here "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
    set(TOV_PKGCONFIG_PREFIX "\${pcfiledir}/${prefix_from_here}")
endif()
set(TOV_PKGCONFIG_HEADERS "\${prefix}")
cmake_path(APPEND TOV_PKGCONFIG_HEADERS "${TOV_INSTALL_HEADERS}")
set(TOV_PKGCONFIG_LIBRARIES "\${prefix}")
cmake_path(APPEND TOV_PKGCONFIG_LIBRARIES "${CMAKE_INSTALL_LIBDIR}")
set(TOV_PKGCONFIG_FLAGS "")
if(NOT WIN32)
    string(APPEND TOV_PKGCONFIG_FLAGS " -fshort-wchar")
endif()
# A program has to link itself what a static library uses.
set(TOV_PKGCONFIG_OTHER_LIBRARIES "")
if(TOV_STATIC)
    string(APPEND TOV_PKGCONFIG_FLAGS " -DTOVKERNEL_STATIC")
    if(WIN32)
        string(APPEND TOV_PKGCONFIG_OTHER_LIBRARIES " -lwinmm")
    endif()
endif()
tov_install_pkg_config("${PROJECT_SOURCE_DIR}/CMake/TOVKernel.pc.in")

# gdb looks for the views of a library's objects beside the library, by this name; other debuggers are given theirs, and
# so is gdb where the library is a part of the program.
set(TOV_VIEWS "${PROJECT_SOURCE_DIR}/Tools/Debugger/tovkernel_gdb.py")
install(FILES Tools/Debugger/TOVKernel.natvis DESTINATION "${CMAKE_INSTALL_DATADIR}/TOVKernel" COMPONENT Development)
if(TOV_STATIC)
    install(FILES "${TOV_VIEWS}" DESTINATION "${CMAKE_INSTALL_DATADIR}/TOVKernel" COMPONENT Development)
else()
    set(TOV_DEBUGGER_VIEWS "$<TARGET_FILE_NAME:TOVKernel>-gdb.py")
    file(GENERATE OUTPUT "$<TARGET_FILE_DIR:TOVKernel>/${TOV_DEBUGGER_VIEWS}" INPUT "${TOV_VIEWS}")
    if(WIN32)
        set(TOV_VIEWS_FOLDER "${CMAKE_INSTALL_BINDIR}")
    else()
        set(TOV_VIEWS_FOLDER "${CMAKE_INSTALL_LIBDIR}")
    endif()
    # In the system's own folders gdb reads views from one place only, and does so without being told.
    install(CODE "
        set(FOLDER \"${TOV_VIEWS_FOLDER}\")
        if(CMAKE_INSTALL_PREFIX MATCHES \"(^|/)usr\$\" AND NOT IS_ABSOLUTE \"\${FOLDER}\")
            set(FOLDER \"share/gdb/auto-load/usr/\${FOLDER}\")
        endif()
        cmake_path(APPEND CMAKE_INSTALL_PREFIX \"\${FOLDER}\" OUTPUT_VARIABLE DESTINATION)
        file(INSTALL \"${TOV_VIEWS}\" DESTINATION \"\${DESTINATION}\" RENAME \"${TOV_DEBUGGER_VIEWS}\")"
            COMPONENT Development)
endif()

# Other compilers make an import library of their own from the list of exported names.
if(WIN32 AND NOT TOV_STATIC)
    set(TOV_EXPORT_LIST "${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/TOVKernel.def")
    target_link_options(TOVKernel PRIVATE "-Wl,--output-def,${TOV_EXPORT_LIST}")
    install(FILES "${TOV_EXPORT_LIST}" DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Development)
endif()

# The documents refer to each other, and to some files of other folders, by their places in the project.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md SECURITY.md DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT Documents)
install(DIRECTORY Documentation DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT Documents)
install(DIRECTORY Examples DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT Documents)
install(DIRECTORY Tools/Text DESTINATION "${CMAKE_INSTALL_DOCDIR}/Tools" COMPONENT Documents)
foreach(document Attacks/Differences/Differences.md Attacks/Faults/SystemCalls.txt Attacks/README.md Benchmarks/README.md)
    get_filename_component(folder "${document}" DIRECTORY)
    install(FILES "${document}" DESTINATION "${CMAKE_INSTALL_DOCDIR}/${folder}" COMPONENT Documents)
endforeach()
if(EXISTS "${PROJECT_SOURCE_DIR}/LICENSE")
    install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT Documents)
endif()

# Removes what the latest installation has put somewhere.
if(PROJECT_IS_TOP_LEVEL)
    add_custom_target(uninstall COMMAND "${CMAKE_COMMAND}" "-DBUILD=${PROJECT_BINARY_DIR}"
                                        -P "${PROJECT_SOURCE_DIR}/CMake/TOVUninstall.cmake" VERBATIM)
endif()
