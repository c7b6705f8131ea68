# Builds from the checkout that this port stands in. Nobody has tried it yet.
get_filename_component(SOURCE_PATH "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)

set(options "")
if("tools" IN_LIST FEATURES)
    list(APPEND options -DTOV_BUILD_TOOLS=ON "-DTOV_CLI11_INCLUDE=${CURRENT_INSTALLED_DIR}/include")
else()
    list(APPEND options -DTOV_BUILD_TOOLS=OFF)
endif()

# The linkage of the triplet decides about BUILD_SHARED_LIBS.
vcpkg_cmake_configure(
    SOURCE_PATH "${SOURCE_PATH}"
    OPTIONS -DTOV_BUILD_TESTS=OFF -DTOV_BUILD_EXAMPLES=OFF ${options})
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME TOVKernel CONFIG_PATH lib/cmake/TOVKernel)
vcpkg_fixup_pkgconfig()
if("tools" IN_LIST FEATURES)
    vcpkg_copy_tools(TOOL_NAMES tovtest AUTO_CLEAN)
    # tov_discover_tests looks for it from where it stands itself, and both have been moved.
    vcpkg_replace_string("${CURRENT_PACKAGES_DIR}/share/TOVKernel/TOVDiscoverTests.cmake"
                         "/../../../bin" "/../../tools/${PORT}")
endif()

file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share"
                    "${CURRENT_PACKAGES_DIR}/share/doc")
file(INSTALL "${CMAKE_CURRENT_LIST_DIR}/usage" DESTINATION "${CURRENT_PACKAGES_DIR}/share/${PORT}")
# The owner adds the licence; until then the package says nothing about it.
if(EXISTS "${SOURCE_PATH}/LICENSE")
    vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENSE")
else()
    set(VCPKG_POLICY_SKIP_COPYRIGHT_CHECK enabled)
endif()
