# What `cpack --config BUILD/CPackConfig.cmake` makes of a build: for Windows a .zip of everything, for Linux a .tar.gz of
# everything and four Debian packages, of the library, for development, of the tools and of the documents.

set(CPACK_PACKAGE_NAME tovkernel)
set(CPACK_PACKAGE_VENDOR "The developers of TOVKernel")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION_FILE "${PROJECT_SOURCE_DIR}/README.md")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
# A package says how its contents may be used once the owner has said so.
if(EXISTS "${PROJECT_SOURCE_DIR}/LICENSE")
    set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
endif()
set(TOV_PACKAGE_CONTACT "The developers of TOVKernel" CACHE STRING "Who answers for the packages: a name and an address")
set(CPACK_PACKAGE_CONTACT "${TOV_PACKAGE_CONTACT}")

# An archive holds all components in one folder.
set(CPACK_ARCHIVE_COMPONENT_INSTALL OFF)
if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_SYSTEM_NAME "windows-${CMAKE_SYSTEM_PROCESSOR}")
else()
    set(CPACK_GENERATOR TGZ DEB)
    set(CPACK_SYSTEM_NAME "linux-${CMAKE_SYSTEM_PROCESSOR}")
endif()

# The Debian packages. The library's name has the version that programs ask for.
set(CPACK_COMPONENTS_ALL Development Tools Documents)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(library "libtovkernel${PROJECT_VERSION_MAJOR}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${library}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtovkernel-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME tovkernel-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_DOCUMENTS_PACKAGE_NAME tovkernel-doc)
set(CPACK_DEBIAN_DOCUMENTS_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTS_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
set(CPACK_PROJECT_CONFIG_FILE "${PROJECT_SOURCE_DIR}/CMake/TOVPackageNeeds.cmake")

# Finished programs need nothing of a static library, but on Windows the compiler's DLLs.
if(NOT TOV_STATIC OR WIN32)
    list(PREPEND CPACK_COMPONENTS_ALL Runtime)
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library} (= ${PROJECT_VERSION})")
    set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${library} (>= ${PROJECT_VERSION})")
    set(needs_runtime DEPENDS Runtime)
endif()

include(CPack)
cpack_add_component(Runtime DISPLAY_NAME "Library" DESCRIPTION "What programs that use the library need")
cpack_add_component(Development DISPLAY_NAME "Development" ${needs_runtime}
                    DESCRIPTION "Headers, and what finds the library for a compiler and a debugger")
cpack_add_component(Tools DISPLAY_NAME "Tools" ${needs_runtime} DESCRIPTION "tovtest and tovcatalog")
cpack_add_component(Documents DISPLAY_NAME "Documents" DESCRIPTION "How to use the library, and what it promises")
