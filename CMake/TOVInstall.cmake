# The package: what `cmake --install` puts where, and how others find it.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

# The package finds everything from its own place, so that it may be moved.
foreach(folder CMAKE_INSTALL_BINDIR CMAKE_INSTALL_INCLUDEDIR CMAKE_INSTALL_LIBDIR)
    if(IS_ABSOLUTE "${${folder}}")
        message(FATAL_ERROR "${folder} is ${${folder}}: give a folder inside the prefix, as ${folder}=name")
    endif()
endforeach()
set(TOV_INSTALL_HEADERS "${CMAKE_INSTALL_INCLUDEDIR}/TOVKernel")
set(TOV_INSTALL_CONFIG "${CMAKE_INSTALL_LIBDIR}/cmake/TOVKernel")

add_library(TOVKernel::TOVKernel ALIAS TOVKernel)
target_include_directories(TOVKernel PUBLIC "$<INSTALL_INTERFACE:${TOV_INSTALL_HEADERS}>")
target_compile_features(TOVKernel PUBLIC cxx_std_17)
set_target_properties(TOVKernel PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})

install(TARGETS TOVKernel EXPORT TOVKernelTargets)
if(TOV_RUNTIME_LIBRARIES)
    install(FILES ${TOV_RUNTIME_LIBRARIES} DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()

# Applications get the umbrella header and every header that it reaches; the others are the library's own affair. They
# are looked for at the time of the installation, so that a new header needs no new configuration.
install(CODE "
    set(SOURCE \"${PROJECT_SOURCE_DIR}/Source\")
    set(DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${TOV_INSTALL_HEADERS}\")
    include(\"${PROJECT_SOURCE_DIR}/CMake/TOVInstallHeaders.cmake\")")

# CMake: find_package(TOVKernel), then link TOVKernel::TOVKernel.
install(EXPORT TOVKernelTargets NAMESPACE TOVKernel:: DESTINATION "${TOV_INSTALL_CONFIG}")
file(WRITE "${PROJECT_BINARY_DIR}/TOVKernelConfig.cmake"
     "include(\"\${CMAKE_CURRENT_LIST_DIR}/TOVKernelTargets.cmake\")\n")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/TOVKernelConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/TOVKernelConfig.cmake" "${PROJECT_BINARY_DIR}/TOVKernelConfigVersion.cmake"
        DESTINATION "${TOV_INSTALL_CONFIG}")

# Everything else: pkg-config TOVKernel. Found from its own place, so that the installed tree may be moved.
file(RELATIVE_PATH TOV_PREFIX_FROM_PKGCONFIG "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
if(WIN32)
    set(TOV_PKGCONFIG_FLAGS "")
else()
    set(TOV_PKGCONFIG_FLAGS " -fshort-wchar")
endif()
configure_file("${PROJECT_SOURCE_DIR}/CMake/TOVKernel.pc.in" "${PROJECT_BINARY_DIR}/TOVKernel.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/TOVKernel.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# gdb looks for the views of a library's objects beside the library, by this name; other debuggers are given theirs.
set(TOV_DEBUGGER_VIEWS "$<TARGET_FILE_NAME:TOVKernel>-gdb.py")
file(GENERATE OUTPUT "$<TARGET_FILE_DIR:TOVKernel>/${TOV_DEBUGGER_VIEWS}"
     INPUT "${PROJECT_SOURCE_DIR}/Tools/Debugger/tovkernel_gdb.py")
if(WIN32)
    set(TOV_VIEWS_FOLDER "${CMAKE_INSTALL_BINDIR}")
else()
    set(TOV_VIEWS_FOLDER "${CMAKE_INSTALL_LIBDIR}")
endif()
install(FILES Tools/Debugger/tovkernel_gdb.py DESTINATION "${TOV_VIEWS_FOLDER}" RENAME "${TOV_DEBUGGER_VIEWS}")
install(FILES Tools/Debugger/TOVKernel.natvis DESTINATION "${CMAKE_INSTALL_DATADIR}/TOVKernel")
