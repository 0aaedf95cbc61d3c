"""Builds the extension module with CMake.

It is built in the folder that setuptools chooses, or in that of the environment's VORN_PYTHON_BUILD, which is kept and
makes the next time short. CMAKE_ARGS are further arguments for CMake.
"""

import os
import subprocess
import sys
from pathlib import Path

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

SOURCES = Path(__file__).resolve().parent.parent


class CMakeBuild(build_ext):
    """The extension is a target of Vorn's own build."""

    def build_extension(self, ext: Extension) -> None:
        target = Path(self.get_ext_fullpath(ext.name)).resolve()
        build = Path(os.environ.get("VORN_PYTHON_BUILD", Path(self.build_temp) / "cmake")).resolve()
        arguments = [
            f"-DPython3_EXECUTABLE={sys.executable}",
            f"-DVORN_PYTHON_OUTPUT={target.parent}",
            "-DCMAKE_BUILD_TYPE=Release",
            "-DVORN_BUILD_PYTHON=ON",
            "-DVORN_BUILD_TESTS=OFF",
            "-DVORN_BUILD_BENCH=OFF",
            *os.environ.get("CMAKE_ARGS", "").split(),
        ]
        jobs = os.environ.get("CMAKE_BUILD_PARALLEL_LEVEL", "2")
        subprocess.run(["cmake", "-S", SOURCES, "-B", build, "-G", "Ninja", *arguments], check=True)
        subprocess.run(["cmake", "--build", build, "--target", "vorn_python", "-j", jobs], check=True)


setup(ext_modules=[Extension("vorn._vorn", sources=[])], cmdclass={"build_ext": CMakeBuild})
