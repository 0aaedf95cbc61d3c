"""The recipe for Conan 2: conan create . --build=missing"""

import os
import re

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load


class VornConan(ConanFile):
    name = "vorn"
    description = "Design data of roads, rivers and farm works: cross sections, build forms, control targets"
    license = "MIT"
    package_type = "library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False], "fPIC": [True, False], "with_host": [True, False]}
    default_options = {"shared": False, "fPIC": True, "with_host": True}
    exports_sources = (
        "CMakeLists.txt", "LICENSE", "cmake/*", "docs/CMakeLists.txt", "docs/doxygen/*", "host/*", "packaging/*",
        "vorn/*",
    )  # fmt: skip

    def set_version(self):
        text = load(self, os.path.join(self.recipe_folder, "CMakeLists.txt"))
        self.version = re.search(r"project\(vorn VERSION ([0-9.]+)", text).group(1)

    def config_options(self):
        if self.settings.os == "Windows":
            self.options.rm_safe("fPIC")

    def configure(self):
        if self.options.shared:
            self.options.rm_safe("fPIC")

    def requirements(self):
        if self.options.with_host:
            self.requires("pugixml/[>=1.13 <2]")
            self.requires("tomlplusplus/[>=3.3 <4]")
            self.requires("zlib/[>=1.2.13 <2]")
            self.requires("nlohmann_json/[>=3.11 <4]", visible=False)
            self.requires("cli11/[>=2.3 <3]", visible=False)

    def validate(self):
        check_min_cppstd(self, 20)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        toolchain = CMakeToolchain(self)
        toolchain.variables["VORN_BUILD_BOTH_KINDS"] = False
        toolchain.variables["VORN_BUILD_HOST"] = bool(self.options.with_host)
        for part in ("TESTS", "BENCH", "EXAMPLES", "PYTHON"):
            toolchain.variables[f"VORN_BUILD_{part}"] = False
        toolchain.variables["VORN_WERROR"] = False
        toolchain.generate()
        CMakeDeps(self).generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        copy(self, "LICENSE", self.source_folder, os.path.join(self.package_folder, "licenses"))
        CMake(self).install()

    def package_info(self):
        library = self.cpp_info.components["vorn"]
        library.libs = ["vorn"]
        library.set_property("cmake_target_name", "vorn::vorn")
        library.set_property("pkg_config_name", "vorn")
        if self.options.with_host:
            host = self.cpp_info.components["host"]
            host.libs = ["vorn-host"]
            host.includedirs = [os.path.join("include", "vorn-host")]
            if self.settings.os == "Linux":
                host.system_libs = ["pthread"]
            host.requires = ["vorn", "pugixml::pugixml", "tomlplusplus::tomlplusplus", "zlib::zlib"]
            host.set_property("cmake_target_name", "vorn::host")
            host.set_property("pkg_config_name", "vorn-host")
