#!/usr/bin/env python3
"""Lets every call to the system that the tool makes for its files fail, one after the other: file_faults_test.py VORN

strace makes the n-th call of a kind fail, for every n that a job has. Whatever fails, the tool ends by itself with an
exit code of its own and a message, the input is as it was, and what is written is there whole or not at all.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SAMPLES = os.path.join(ROOT, "samples")
SKIPPED = 77

# What fails, and with what. A write may also take less than it was given, which is no failure and loses nothing.
FAULTS = [
    ("openat", "EACCES"), ("openat", "EMFILE"), ("read", "EIO"), ("write", "ENOSPC"), ("write", "EIO"),
    ("fsync", "EIO"), ("close", "EIO"), ("rename", "EACCES"), ("link", "EPERM"), ("unlink", "EACCES"),
    ("newfstatat", "EACCES"), ("chown", "EPERM"), ("fchmodat", "EPERM"), ("chmod", "EPERM"), ("access", "EACCES"),
    ("flock", "EINTR"), ("flock", "ENOLCK"), ("getdents64", "EIO"), ("readlink", "EIO"), ("mkdir", "EACCES"),
    ("lseek", "EINVAL"), ("fcntl", "EBADF"), ("statfs", "EIO"), ("madvise", "ENOMEM"),
]  # fmt: skip
KINDS = sorted({kind for kind, _ in FAULTS})

tool = None  # from the command line


class Call:
    """A call to the system: its kind, which of its kind it is in its thread, and its text."""

    def __init__(self, kind, number, text):
        self.kind = kind
        self.number = number
        self.text = text


class Job:
    """A command of the tool on files of its own."""

    def __init__(self, directory, arguments, inputs, outputs):
        self.directory = directory
        self.arguments = arguments
        self.inputs = inputs
        self.outputs = outputs
        self.original = self.files()

    def files(self):
        found = {}
        for folder, _, names in os.walk(self.directory):
            for name in names:
                path = os.path.join(folder, name)
                with open(path, "rb") as file:
                    found[os.path.relpath(path, self.directory)] = file.read()
        return found

    def restore(self):
        shutil.rmtree(self.directory)
        os.mkdir(self.directory)
        for name, content in self.original.items():
            path = os.path.join(self.directory, name)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "wb") as file:
                file.write(content)

    def run(self, *options):
        environment = {"HOME": self.directory, "XDG_CONFIG_HOME": self.directory, "PATH": os.environ["PATH"]}
        command = ["strace", "-f", "-qq", *options, tool, *self.arguments]
        return subprocess.run(command, capture_output=True, check=False, cwd=self.directory, env=environment)

    def calls(self):
        """What the job asks of the system once it has begun to deal with its files."""
        with tempfile.NamedTemporaryFile("r") as log:
            self.restore()
            result = self.run("-o", log.name, "-e", "trace=" + ",".join(KINDS))
            if result.returncode != 0:
                raise RuntimeError(result.stderr.decode())
            lines = log.read().splitlines()
        found = []
        counts = {}
        begun = False
        for line in lines:
            match = re.match(r"(\d+) +(\w+)\((.*)", line)
            if not match:
                continue
            thread, kind, text = match.groups()
            counts[thread, kind] = counts.get((thread, kind), 0) + 1
            # The loader of programs comes first; the files of the job have names of their own.
            begun = begun or any(name in text for name in [*self.inputs, *self.outputs])
            if begun:
                found.append(Call(kind, counts[thread, kind], text))
        return found


def strace_works():
    try:
        command = ["strace", "-qq", "-o", os.devnull, "-e", "inject=fsync:error=EIO:when=1", "true"]
        return subprocess.run(command, capture_output=True, check=False).returncode == 0
    except OSError:
        return False


class FileFaults(unittest.TestCase):
    def setUp(self):
        self.scratch = tempfile.TemporaryDirectory(prefix="vorn-faults-")
        self.addCleanup(self.scratch.cleanup)

    def job(self, arguments, inputs, outputs, before=()):
        """A job whose inputs are samples, by the name that they have here; `before` are commands that prepare it."""
        directory = os.path.join(self.scratch.name, "job")
        os.mkdir(directory)
        for name in inputs:
            if name.endswith(".xml"):
                shutil.copy(os.path.join(SAMPLES, "road-4.1.xml"), os.path.join(directory, name))
        for command in before:
            subprocess.run([tool, *command], cwd=directory, check=True, capture_output=True,
                           env={"HOME": directory, "XDG_CONFIG_HOME": directory})  # fmt: skip
        return Job(directory, arguments, inputs, outputs)

    def check(self, job, new_backup=None):
        """Lets the job fail at every call.
        @param new_backup the name that the former file has once the job has succeeded
        """
        job.restore()
        self.assertEqual(job.run("-o", os.devnull, "-e", "trace=none").returncode, 0)
        done = job.files()
        self.assertNotEqual(done, job.original, "the job does nothing")

        points = {(call.kind, call.number) for call in job.calls()}
        self.assertGreater(len(points), 10)
        failures = 0
        for kind, error in FAULTS:
            for number in sorted(number for of, number in points if of == kind):
                with self.subTest(kind=kind, error=error, number=number):
                    job.restore()
                    fault = f"inject={kind}:error={error}:when={number}"
                    result = job.run("-o", os.devnull, "-e", "trace=" + kind, "-e", fault)
                    failures += result.returncode != 0
                    self.check_outcome(job, done, kind, result, new_backup)
        self.assertGreater(failures, 5, "hardly any fault made the job fail")

    def check_outcome(self, job, done, kind, result, new_backup):
        message = result.stderr.decode("utf-8", "replace")
        self.assertIn(result.returncode, (0, 1, 2), f"the tool died: {message}")
        files = job.files()
        for name in job.inputs:
            if name not in job.outputs:
                self.assertEqual(files.get(name), job.original[name], "the input was changed")
        for name in job.outputs:
            self.assertIn(files.get(name), (job.original.get(name), done[name]), f"{name} is neither old nor new")
        if result.returncode == 0:
            for name in job.outputs:
                self.assertEqual(files.get(name), done[name], "success was told, and the file is not there")
        elif kind != "write":  # the same number of another thread may be that of the message
            self.assertNotEqual(message.strip(), "", "it failed without a message")
        if new_backup:
            self.check_backup(job, files, done, new_backup)
        allowed = set(job.original) | set(done)
        left = [name for name in files if name not in allowed]
        # Only what could not be removed may be left, and a name in which that can be seen.
        self.assertTrue(all(re.search(r"\.(tmp|bak|lock)$", name) for name in left), left)
        if kind != "unlink":
            self.assertEqual(left, [], "something is left over")

    def check_backup(self, job, files, done, backup):
        """The former file is always there: under its own name, or as the backup."""
        former = job.original[job.outputs[0]]
        self.assertIn(former, [files.get(job.outputs[0]), files.get(backup)], "the former file is lost")

    def test_a_document_is_written_over_another(self):
        self.check(self.job(["convert", "in.xml", "out.xml", "--edition", "2.0"], ["in.xml"], ["out.xml"],
                            before=[["sample", "out.xml", "--sections", "2"]]))  # fmt: skip

    def test_a_document_is_written_over_its_input(self):
        job = self.job(["edit", "in.xml", "in.xml", "--mirror"], ["in.xml"], ["in.xml"])
        self.check(job)

    def test_a_project_is_made(self):
        self.check(self.job(["convert", "in.xml", "out.vorn"], ["in.xml"], ["out.vorn"]))

    def test_a_project_is_saved_and_the_former_one_kept(self):
        job = self.job(["edit", "in.vorn", "in.vorn", "--mirror"], ["in.vorn"], ["in.vorn"],
                       before=[["sample", "in.vorn", "--sections", "3"]])  # fmt: skip
        self.check(job, new_backup="in.vorn.bak")

    def test_a_project_is_saved_over_one_with_a_backup(self):
        job = self.job(["edit", "in.vorn", "in.vorn", "--mirror"], ["in.vorn"], ["in.vorn"],
                       before=[["sample", "in.vorn", "--sections", "3"], ["edit", "in.vorn", "in.vorn", "--sort", "x"]])  # fmt: skip
        self.check(job, new_backup="in.vorn.bak")

    def test_a_report_is_written(self):
        self.check(self.job(["report", "in.xml", "-o", "out.html"], ["in.xml"], ["out.html"]))

    def test_a_drawing_is_exported(self):
        self.check(self.job(["export", "in.xml", "--format", "dxf", "-o", "out.dxf"], ["in.xml"], ["out.dxf"]))

    def test_a_section_is_plotted(self):
        self.check(self.job(["plot", "in.xml", "--station", "20", "-o", "out.svg"], ["in.xml"], ["out.svg"]))

    def test_a_sample_is_written(self):
        self.check(self.job(["sample", "out.xml", "--sections", "2"], [], ["out.xml"]))

    def test_a_setting_is_stored(self):
        job = self.job(["settings", "set", "RoadInfo.speed", "3"], [], ["vorn/vorn.toml"],
                       before=[["settings", "set", "RoadInfo.speed", "4"], ["settings", "set", "RoadInfo.traffic", "2"]])  # fmt: skip
        self.check(job)


if __name__ == "__main__":
    tool = os.path.abspath(sys.argv.pop(1))
    if not strace_works():
        print("strace cannot trace here: no call is made to fail")
        sys.exit(SKIPPED)
    unittest.main(verbosity=2)
