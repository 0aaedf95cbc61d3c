#!/usr/bin/env python3
"""Installs the build into a scratch folder and uses it as others do: package_test.py BUILD SOURCES CMAKE CXX

Applications outside of the build find it by CMake and by pkg-config, static and shared, and one builds the sources
together with its own. What they print shows that they run.
"""

import ast
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import types
import unittest

build = sources = cmake = cxx = version = None  # from the command line and the build
folder = prefix = None  # where everything is made

# What no shared library may export, by the mangled name: templates of the standard library, and other libraries'.
FOREIGN = re.compile(r"_Z(T[VISC]|GV|GR)?Z?N?[KOR]*(S[tabsiod]|9__gnu_cxx|4pugi|4toml|8nlohmann)|z?(in|de)flate|crc32")


def run(*command, **options):
    result = subprocess.run(command, capture_output=True, text=True, check=False, **options)
    if result.returncode != 0:
        raise AssertionError(f"{' '.join(command)}: {result.returncode}\n{result.stdout}\n{result.stderr}")
    return result.stdout


def source(*names):
    return os.path.join(sources, *names)


def text_of(*names):
    with open(source(*names), encoding="utf-8") as file:
        return file.read()


def setUpModule():
    global version, folder, prefix
    version = re.search(r"^CMAKE_PROJECT_VERSION:STATIC=(.+)$", cached(), re.M).group(1)
    folder = tempfile.mkdtemp(prefix="vorn package ")  # a blank in the path is nothing special
    prefix = os.path.join(folder, "prefix")
    run(cmake, "--install", build, "--prefix", prefix)


def tearDownModule():
    shutil.rmtree(folder)


def cached():
    with open(os.path.join(build, "CMakeCache.txt"), encoding="utf-8") as file:
        return file.read()


def installed(*names):
    return os.path.join(prefix, *names)


def library(name):
    """The folder of libraries is not called lib everywhere."""
    for where, _, names in os.walk(prefix):
        if name in names:
            return os.path.join(where, name)
    raise AssertionError(f"{name} is not installed")


def symbols(path, *options):
    """(kind, mangled name) of all that a library defines."""
    lines = run("nm", "--defined-only", *options, path).splitlines()
    return {tuple(line.split()[-2:]) for line in lines if len(line.split()) == 3}


class Installation(unittest.TestCase):
    def test_has_the_tool_and_what_comes_with_it(self):
        self.assertEqual(f"vorn {version}\n", run(installed("bin", "vorn"), "--version"))
        share = [os.path.relpath(os.path.join(where, name), installed("share"))
                 for where, _, names in os.walk(installed("share")) for name in names]  # fmt: skip
        self.assertEqual(["bash-completion/completions/vorn", "doc/vorn/LICENSE", "fish/vendor_completions.d/vorn.fish",
                          "man/man1/vorn.1", "zsh/site-functions/_vorn"], sorted(share))  # fmt: skip

    def test_libraries_tell_the_version_they_are_compatible_with(self):
        compatible = ".".join(version.split(".")[:2])
        for name in ["libvorn", "libvorn-host"]:
            soname = re.search(r"SONAME.*\[(.*)\]", run("readelf", "-d", library(f"{name}.so"))).group(1)
            self.assertEqual(f"{name}.so.{compatible}", soname)

    def test_headers_are_all_there_and_no_private_ones(self):
        headers = []
        for root in [installed("include"), installed("include", "vorn-host")]:
            for where, _, names in os.walk(root):
                headers += [os.path.relpath(os.path.join(where, name), root) for name in names]
        headers = sorted(h for h in set(headers) if not h.startswith("vorn-host/"))
        self.assertTrue(all(h.startswith(("vorn/", "host/")) and h.endswith(".h") for h in headers), headers)
        self.assertFalse([h for h in headers if "host/cli/" in h or "xml_cursor" in h or "decode_table" in h])
        every_one = os.path.join(folder, "every_header.cpp")
        with open(every_one, "w", encoding="utf-8") as file:
            file.writelines(f'#include "{header}"\n' for header in headers)
        run(
            cxx, "-std=c++20", "-Wall", "-Wextra", "-Werror", "-fsyntax-only", every_one,
            "-I", installed("include"), "-I", installed("include", "vorn-host"),
        )  # fmt: skip

    def test_shared_libraries_export_what_is_public_and_nothing_else(self):
        for name in ["libvorn", "libvorn-host"]:
            exported = {symbol for _, symbol in symbols(library(f"{name}.so"), "-D")}
            self.assertFalse([symbol for symbol in exported if FOREIGN.match(symbol)])
            # Functions and variables that are in one place only; anything else applications have themselves.
            defined = {symbol for kind, symbol in symbols(library(f"{name}.a")) if kind in "TDBR"}
            self.assertGreater(len(defined), 400)
            self.assertLessEqual(defined - exported, {"RemoveUnfinishedFiles"}, name)  # what a signal calls


class Consumers(unittest.TestCase):
    def configure(self, name, *arguments):
        """Configures the application outside of all sources, and gives the folder of its build."""
        where = os.path.join(folder, name)
        run(
            cmake, "-G", "Ninja", "-S", source("tests", "package", "consumer"), "-B", where,
            f"-DCMAKE_CXX_COMPILER={cxx}", f"-DVORN_VERSION={version}", f"-DCMAKE_PREFIX_PATH={prefix}", *arguments,
        )  # fmt: skip
        return where

    def check(self, library_consumer, host_consumer=None, **options):
        self.assertEqual("No.6 came back\n", run(library_consumer, **options))
        if host_consumer:
            document = source("samples", "road-4.1.xml")
            project = os.path.join(folder, "made.vorn")
            options["env"] = {**options.get("env", os.environ), "XDG_CONFIG_HOME": folder}
            self.assertEqual("10 cross sections came back\n", run(host_consumer, document, project, **options))

    def check_found(self, name, *arguments):
        where = self.configure(name, *arguments)
        run(cmake, "--build", where)
        programs = [os.path.join(where, program) for program in ("library_consumer", "host_consumer")]
        self.check(*programs)
        return run("readelf", "-d", programs[1])

    def test_find_package_static(self):
        self.assertNotIn("libvorn", self.check_found("static", "-DVORN_COMPONENTS=static;host"))

    def test_find_package_shared_without_the_dependencies_of_the_host(self):
        without = [f"-DCMAKE_DISABLE_FIND_PACKAGE_{name}=ON" for name in ("pugixml", "tomlplusplus", "ZLIB")]
        needed = self.check_found("shared", "-DBUILD_SHARED_LIBS=ON", "-DVORN_COMPONENTS=host", *without)
        self.assertIn("libvorn-host.so", needed)
        self.assertNotIn("pugixml", needed)

    def test_find_package_says_what_is_missing(self):
        for arguments, words in [
            (["-DVORN_COMPONENTS=host", "-DCMAKE_DISABLE_FIND_PACKAGE_pugixml=ON"], "vorn::host needs pugixml"),
            (["-DVORN_COMPONENTS=static;shared"], "uses one kind"),
            (["-DVORN_VERSION=99.0"], "99.0"),
        ]:
            with self.assertRaisesRegex(AssertionError, words):
                self.configure("refused", *arguments)

    def test_add_subdirectory(self):
        # It builds the library once more: without optimization, and from the compiler's cache where there is one.
        fast = ["-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0"]
        if ccache := shutil.which("ccache"):
            fast.append(f"-DCMAKE_CXX_COMPILER_LAUNCHER={ccache}")
        where = self.configure("subdirectory", f"-DVORN_SOURCE={sources}", *fast)
        run(cmake, "--build", where, "--parallel", "2")
        self.check(os.path.join(where, "library_consumer"))
        targets = run(cmake, "--build", where, "--target", "help")
        for other in ["vorn_host", "vorn_cli", "vorn_tests", "vorn_bench", "vorn_python", "vorn_docs"]:
            self.assertNotIn(other, targets)
        run(cmake, "--install", where, "--prefix", os.path.join(folder, "nothing"))
        self.assertFalse(os.path.exists(os.path.join(folder, "nothing", "include")))

    def compile(self, program, package, *link_options):
        where = {**os.environ, "PKG_CONFIG_PATH": os.path.dirname(library("vorn.pc"))}
        static = ["--static"] if "-static" in link_options else []
        # As a shell would split them: the path has a blank in it.
        flags = run("pkg-config", "--cflags", "--libs", *static, package, env=where)
        flags = [word.replace("\0", " ") for word in flags.replace("\\ ", "\0").split()]
        self.assertEqual(f"{version}\n", run("pkg-config", "--modversion", package, env=where))
        out = os.path.join(folder, f"{program}-of-{package}{'-static' if static else ''}")
        code = source("tests", "package", "consumer", f"{program}.cpp")
        run(cxx, "-std=c++20", code, "-o", out, *flags, *link_options)
        return out

    def test_pkg_config_static(self):
        self.check(self.compile("library_consumer", "vorn", "-static"))

    def test_pkg_config_shared(self):
        # The host finds the library beside it.
        found = f"-Wl,-rpath,{os.path.dirname(library('libvorn.so'))}"
        self.check(self.compile("library_consumer", "vorn", found), self.compile("host_consumer", "vorn-host", found))


class Recipes(unittest.TestCase):
    """The recipes of package managers that are not here to run them."""

    def test_know_the_version(self):
        self.assertEqual(version, json.loads(text_of("packaging", "vcpkg", "vorn", "vcpkg.json"))["version"])
        self.assertRegex(text_of("python", "pyproject.toml"), rf'(?m)^version = "{re.escape(version)}"$')
        self.assertEqual(version, self.conan_recipe().version)

    def test_vcpkg_manifest_names_the_dependencies(self):
        manifest = json.loads(text_of("packaging", "vcpkg", "vorn", "vcpkg.json"))
        self.assertEqual("vorn", manifest["name"])
        self.assertLessEqual(set(manifest), {"name", "version", "description", "license", "supports", "dependencies",
                                             "features", "default-features"})  # fmt: skip
        named = manifest["dependencies"] + [d for f in manifest["features"].values() for d in f.get("dependencies", [])]
        names = {d if isinstance(d, str) else d["name"] for d in named}
        self.assertEqual({"cli11", "nlohmann-json", "pugixml", "tomlplusplus", "zlib",
                          "vcpkg-cmake", "vcpkg-cmake-config"}, names)  # fmt: skip

    def test_vcpkg_portfile_is_cmake_that_configures_what_there_is(self):
        port = os.path.join(folder, "port")
        os.makedirs(port)
        script = os.path.join(port, "try.cmake")
        functions = ["vcpkg_check_features", "vcpkg_cmake_configure", "vcpkg_cmake_install", "vcpkg_cmake_config_fixup",
                     "vcpkg_copy_pdbs", "vcpkg_fixup_pkgconfig", "vcpkg_install_copyright",
                     "vcpkg_copy_tools"]  # fmt: skip
        with open(script, "w", encoding="utf-8") as file:
            file.write("cmake_minimum_required(VERSION 3.25)\n")
            file.writelines(f"function({name})\n  message(STATUS \"{name} ${{ARGN}}\")\nendfunction()\n"
                            for name in functions)  # fmt: skip
            file.write(f'set(CURRENT_PACKAGES_DIR "{port}")\n')
            file.write(f'set(CURRENT_PORT_DIR "{source("packaging/vcpkg/vorn")}")\n')
            file.write(f'include("{source("packaging", "vcpkg", "vorn", "portfile.cmake")}")\n')
        calls = run(cmake, "-P", script)
        path = re.search(r"SOURCE_PATH;(.*?)(;|$)", calls, re.M).group(1)
        self.assertEqual(os.path.realpath(sources), os.path.realpath(path))
        self.check_options(re.findall(r"\bVORN_\w+", text_of("packaging", "vcpkg", "vorn", "portfile.cmake")))

    def test_conan_recipe_configures_what_there_is(self):
        recipe = self.conan_recipe()
        recipe.requirements()
        self.assertEqual({"pugixml", "tomlplusplus", "zlib", "nlohmann_json", "cli11"},
                         {reference.partition("/")[0] for reference in recipe.required})  # fmt: skip
        recipe.generate()
        self.check_options(recipe.toolchain.variables)
        self.check_that_the_exported_sources_are_enough(recipe)
        recipe.package_info()
        for component in recipe.cpp_info.components.values():
            self.assertTrue(library(f"lib{component.libs[0]}.a"))
        ast.parse(text_of("conanfile.py"))

    def check_that_the_exported_sources_are_enough(self, recipe):
        exported = os.path.join(folder, "exported")
        for pattern in recipe.exports_sources:
            if pattern.endswith("/*"):
                shutil.copytree(source(pattern[:-2]), os.path.join(exported, pattern[:-2]))
            else:
                os.makedirs(os.path.dirname(os.path.join(exported, pattern)), exist_ok=True)
                shutil.copy(source(pattern), os.path.join(exported, pattern))
        options = [f"-D{name}={value}" for name, value in recipe.toolchain.variables.items()]
        run(cmake, "-G", "Ninja", "-S", exported, "-B", os.path.join(exported, "build"),
            f"-DCMAKE_CXX_COMPILER={cxx}", "-DCMAKE_BUILD_TYPE=Release", *options)  # fmt: skip

    def check_options(self, names):
        known = set(re.findall(r"^option\((\w+)", text_of("CMakeLists.txt"), re.M))
        self.assertTrue(names)
        self.assertLessEqual({name for name in names if name.startswith("VORN_")}, known)

    def conan_recipe(self):
        """The recipe over stand-ins for what it takes from Conan."""
        conan = {name: types.ModuleType(name) for name in
                 ("conan", "conan.tools", "conan.tools.build", "conan.tools.cmake", "conan.tools.files")}  # fmt: skip

        class Recipe:
            def __init__(self):
                self.required = []
                self.requires = lambda reference, **_: self.required.append(reference)
                self.recipe_folder = sources
                self.options = types.SimpleNamespace(shared=False, fPIC=True, with_host=True, rm_safe=lambda _: None)
                self.settings = types.SimpleNamespace(os="Linux")
                self.cpp_info = types.SimpleNamespace(components=Components(), set_property=lambda *_: None)

        class Components(dict):
            def __missing__(self, name):
                self[name] = types.SimpleNamespace(set_property=lambda *_: None, requires=[], includedirs=[])
                return self[name]

        class Generator:
            def __init__(self, recipe):
                pass

            def generate(self):
                pass

        class Toolchain(Generator):
            def __init__(self, recipe):
                super().__init__(recipe)
                self.variables = {}
                recipe.toolchain = self

        conan["conan"].ConanFile = Recipe
        conan["conan.tools.build"].check_min_cppstd = lambda *_: None
        conan["conan.tools.cmake"].CMake = conan["conan.tools.cmake"].cmake_layout = lambda *_: None
        conan["conan.tools.cmake"].CMakeDeps = Generator
        conan["conan.tools.cmake"].CMakeToolchain = Toolchain
        conan["conan.tools.files"].copy = None
        conan["conan.tools.files"].load = lambda _, path: text_of(os.path.basename(path))
        sys.modules.update(conan)
        module = {}
        exec(compile(text_of("conanfile.py"), "conanfile.py", "exec"), module) 
        recipe = module["VornConan"]()
        recipe.set_version()
        return recipe


if __name__ == "__main__":
    build, sources, cmake, cxx = (sys.argv.pop(1) for _ in range(4))
    unittest.main()
