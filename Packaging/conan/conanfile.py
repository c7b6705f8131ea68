"""Recipe for Conan 2. Builds from the checkout that it stands in: conan create Packaging/conan

Nobody has tried it yet.
"""

import os
import re

from conan import ConanFile
from conan.errors import ConanInvalidConfiguration
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load, rmdir


class TOVKernelRecipe(ConanFile):
    name = "tovkernel"
    description = "Foundation class library: text, containers, paths, files, streams, threads, timing, diagnostics, tests"
    topics = ("foundation", "strings", "containers", "streams", "threads", "testing")
    package_type = "library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False], "listeners": [True, False]}
    default_options = {"shared": True, "listeners": True}

    @property
    def _project(self):
        return os.path.join(self.recipe_folder, os.pardir, os.pardir)

    def set_version(self):
        lists = load(self, os.path.join(self._project, "CMakeLists.txt"))
        self.version = re.search(r"project\(TOVKernel VERSION ([0-9.]+)", lists).group(1)

    def export_sources(self):
        for name in ("CMakeLists.txt", "CMakePresets.json", "*.md", "LICENSE", "Source/*", "CMake/*", "Tools/*",
                     "Examples/*", "Documentation/*", "Attacks/Faults/SystemCalls.txt"):
            copy(self, name, self._project, self.export_sources_folder)

    def requirements(self):
        if self.options.listeners:
            self.requires("cli11/[>=2.2 <3]", visible=False, headers=True, libs=False)

    def validate(self):
        check_min_cppstd(self, 17)
        if self.settings.compiler not in ("gcc", "clang"):
            raise ConanInvalidConfiguration("TOVKernel needs GCC or clang, on Windows MinGW-w64")

    def layout(self):
        cmake_layout(self)

    def generate(self):
        CMakeDeps(self).generate()
        toolchain = CMakeToolchain(self)
        for variable in ("TOV_BUILD_TESTS", "TOV_BUILD_EXAMPLES"):
            toolchain.cache_variables[variable] = False
        toolchain.cache_variables["TOV_BUILD_TOOLS"] = bool(self.options.listeners)
        if self.options.listeners:
            toolchain.cache_variables["TOV_CLI11_INCLUDE"] = self.dependencies["cli11"].cpp_info.includedirs[0]
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()
        copy(self, "LICENSE", self.source_folder, os.path.join(self.package_folder, "licenses"))
        rmdir(self, os.path.join(self.package_folder, "share", "doc"))

    def package_info(self):
        # Programs that are built with CMake use the package's own files.
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs = [os.path.join("lib", "cmake", "TOVKernel")]
        self.cpp_info.includedirs = [os.path.join("include", "TOVKernel")]
        self.cpp_info.libs = ["TOVTestHost", "TOVListeners"] if self.options.listeners else []
        self.cpp_info.libs.append("TOVKernel")
        if self.settings.os != "Windows":
            self.cpp_info.cxxflags = ["-fshort-wchar"]
        if not self.options.shared:
            self.cpp_info.defines = ["TOVKERNEL_STATIC"]
            if self.settings.os == "Windows":
                self.cpp_info.system_libs = ["winmm"]
