#!/usr/bin/env python3
"""Looks over the Debian packages in a folder, installs them below another one and removes them:
debian_packages_test.py FOLDER

Nothing of this machine is changed: dpkg keeps a database of its own below the folder, and what installing would do to
the cache of libraries is left undone.
"""

import glob
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCES = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))

packages = []  # from the command line


def run(*command, **options):
    result = subprocess.run(command, capture_output=True, text=True, check=False, **options)
    if result.returncode != 0:
        raise AssertionError(f"{' '.join(command)}: {result.returncode}\n{result.stdout}\n{result.stderr}")
    return result.stdout


def names_below(root):
    return {os.path.relpath(os.path.join(where, name), root) for where, _, names in os.walk(root) for name in names}


class DebianPackages(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="vorn-deb-")
        self.addCleanup(shutil.rmtree, self.folder)
        self.root = os.path.join(self.folder, "root")
        for name in ["info", "updates", "triggers"]:
            os.makedirs(os.path.join(self.root, "var/lib/dpkg", name))
        open(os.path.join(self.root, "var/lib/dpkg/status"), "w", encoding="ascii").close()
        ldconfig = os.path.join(self.folder, "bin", "ldconfig")
        os.makedirs(os.path.dirname(ldconfig))
        with open(ldconfig, "w", encoding="ascii") as file:
            file.write("#!/bin/sh\n")
        os.chmod(ldconfig, 0o755)
        self.path = f"{os.path.dirname(ldconfig)}:{os.environ['PATH']}:/usr/sbin:/sbin"

    def dpkg(self, *arguments):
        # The libraries of other packages, which this machine has, are not in the root.
        force = "--force-depends,script-chrootless" + ("" if os.geteuid() == 0 else ",not-root")
        command = ["dpkg", f"--root={self.root}", force, "--log=/dev/null", *arguments]
        return run(*command, env={**os.environ, "PATH": self.path})

    def test_lintian_finds_no_error(self):
        if not shutil.which("lintian"):
            self.skipTest("lintian is not installed")
        run("lintian", "--allow-root", "--fail-on", "error", *packages)

    def test_are_three_that_share_no_file(self):
        contents = [
            {line.split()[5] for line in run("dpkg-deb", "-c", package).splitlines() if not line.startswith("d")}
            for package in packages
        ]
        self.assertEqual(3, len(contents))
        self.assertEqual(sum(len(files) for files in contents), len(set.union(*contents)))

    def test_can_be_installed_used_and_removed(self):
        self.dpkg("--install", *packages)
        usr = os.path.join(self.root, "usr")
        libraries = os.path.dirname(glob.glob(f"{usr}/lib/*/libvorn.so")[0])
        environment = {**os.environ, "LD_LIBRARY_PATH": libraries, "PKG_CONFIG_PATH": f"{libraries}/pkgconfig"}
        self.assertRegex(run(f"{usr}/bin/vorn", "--version"), r"^vorn \d")
        self.assertIn("vorn check", run("man", "-E", "UTF-8", f"{usr}/share/man/man1/vorn.1.gz"))

        program = os.path.join(self.folder, "consumer")
        source = os.path.join(SOURCES, "tests", "package", "consumer", "library_consumer.cpp")
        flags = run("pkg-config", "--cflags", "--libs", "vorn", env=environment).split()
        run("g++", "-std=c++20", source, "-o", program, *flags)
        self.assertEqual("No.6 came back\n", run(program, env=environment))

        self.dpkg("--purge", *[os.path.basename(package).split("_")[0] for package in packages])
        self.assertEqual(set(), {name for name in names_below(self.root) if not name.startswith("var/lib/dpkg")})


if __name__ == "__main__":
    packages = sorted(glob.glob(os.path.join(sys.argv.pop(1), "*.deb")))
    unittest.main()
