#!/usr/bin/env python3
"""Lets every call to the system that the tool makes for its files fail, one after the other: file_faults_test.py VORN

strace makes the n-th call of a kind fail, for every n that a job has. Whatever fails, the tool ends by itself with an
exit code of its own and a message, the input is as it was, and what is written is there whole or not at all.
"""

import os
import re
import shutil
import stat
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SAMPLES = os.path.join(ROOT, "samples")
SKIPPED = 77
# In memory where that is to be had: most of the time would go by with flushing to a disk.
SCRATCH = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None

# What fails, and with what. A write may also take less than it was given, which is no failure and loses nothing.
FAULTS = [
    ("openat", "EACCES"), ("openat", "EMFILE"), ("read", "EIO"), ("write", "ENOSPC"), ("write", "EIO"),
    ("fsync", "EIO"), ("close", "EIO"), ("rename", "EACCES"), ("link", "EPERM"), ("unlink", "EACCES"),
    ("newfstatat", "EACCES"), ("statx", "EACCES"), ("fstatat64", "EACCES"), ("fchown", "EPERM"), ("fchown32", "EPERM"),
    ("fchmod", "EPERM"), ("access", "EACCES"), ("access", "EINTR"), ("flock", "EINTR"), ("flock", "ENOLCK"),
    ("getdents64", "EIO"), ("readlink", "EIO"), ("mkdir", "EACCES"), ("fcntl", "EBADF"), ("fcntl64", "EBADF"),
    ("statfs", "EIO"), ("statfs64", "EIO"), ("fstat", "EACCES"), ("fstat64", "EACCES"), ("renameat", "EACCES"),
    ("renameat2", "EACCES"), ("linkat", "EPERM"), ("unlinkat", "EACCES"), ("faccessat", "EACCES"),
    ("faccessat", "EINTR"), ("faccessat2", "EACCES"), ("readlinkat", "EIO"), ("mkdirat", "EACCES"),
]  # fmt: skip
KINDS = sorted({kind for kind, _ in FAULTS})
# A kind has another name on another machine; under one of its names each occurs in some job.
NAMES = [{"newfstatat", "statx", "fstatat64", "fstat", "fstat64"}, {"fchown", "fchown32"}, {"fcntl", "fcntl64"}]
NAMES += [{"statfs", "statfs64"}, {"rename", "renameat", "renameat2"}, {"access", "faccessat", "faccessat2"}]
NAMES += [{kind, kind + "at"} for kind in ("link", "unlink", "readlink", "mkdir")]
NAMES += [{kind} for kind in KINDS if not any(kind in names for names in NAMES)]

# What no job may get over: whatever of this fails, data was not read, or is not safely on the disk. Other faults have
# ways around them (a copy where there can be no second name), or do not matter (to close what was read).
FATAL_OF_INPUT = {"open", "read"}
FATAL_OF_OUTPUT = {"open", "write", "fsync", "close", "rename"}

# Calls about files or their numbers that are let alone: for memory, and whether an output is a terminal.
NOT_FOR_FILES = {"mmap", "mmap2", "ioctl"}



def plain(kind):
    """A kind's name without what says that it takes a directory."""
    return re.sub(r"at2?$", "", kind)


tool = None  # from the command line


class Call:
    """A call to the system: its kind, which of its kind it is in its thread, and whether the job must not get over it."""

    def __init__(self, kind, number, is_fatal):
        self.kind = kind
        self.number = number
        self.is_fatal = is_fatal


class Job:
    """A command of the tool on files of its own."""

    def __init__(self, directory, arguments, inputs, outputs):
        self.directory = directory
        self.arguments = arguments
        self.inputs = inputs
        self.outputs = outputs
        self.original = self.files()

    def files(self):
        """By name: a file's content and who may do what with it, or where a link leads."""
        found = {}
        for folder, _, names in os.walk(self.directory):
            for name in names:
                path = os.path.join(folder, name)
                found[os.path.relpath(path, self.directory)] = self.file(path)
        return found

    @staticmethod
    def file(path):
        if os.path.islink(path):
            return os.readlink(path)
        with open(path, "rb") as file:
            return file.read(), stat.S_IMODE(os.stat(path).st_mode)

    def restore(self):
        shutil.rmtree(self.directory)
        os.mkdir(self.directory)
        for name, held in self.original.items():
            path = os.path.join(self.directory, name)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            if isinstance(held, str):
                os.symlink(held, path)
                continue
            with open(path, "wb") as file:
                file.write(held[0])
            os.chmod(path, held[1])

    def run(self, *options):
        environment = {"HOME": self.directory, "XDG_CONFIG_HOME": self.directory, "PATH": os.environ["PATH"]}
        command = ["strace", "-f", "-qq", *options, tool, *self.arguments]
        return subprocess.run(command, capture_output=True, check=False, cwd=self.directory, env=environment)

    def calls(self):
        """What the job asks of the system once it has begun to deal with its files."""
        with tempfile.NamedTemporaryFile("r") as log:
            self.restore()
            result = self.run("-y", "-o", log.name, "-e", "trace=%file,%desc")
            if result.returncode not in (0, 2):
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
            # The tool's start and the loader of programs come first; the files of the job have names of their own.
            begun = begun or kind != "execve" and any(name in text for name in [*self.inputs, *self.outputs])
            if begun and kind not in NOT_FOR_FILES:
                found.append(Call(kind, counts[thread, kind], self.is_fatal(kind, text)))
        return found

    def is_fatal(self, kind, text):
        """By the file that a call names or, behind its number, is told to be about; new content has a name of its own
        until it is whole.
        """
        is_input = any(f'"{name}"' in text or f"/{name}>" in text for name in self.inputs)
        is_new = re.search(r'\.tmp[">]', text)
        return bool(is_input and plain(kind) in FATAL_OF_INPUT or is_new and plain(kind) in FATAL_OF_OUTPUT)


def strace_works():
    try:
        command = ["strace", "-qq", "-o", os.devnull, "-e", "inject=fsync:error=EIO:when=1", "true"]
        return subprocess.run(command, capture_output=True, check=False).returncode == 0
    except OSError:
        return False


class FileFaults(unittest.TestCase):
    occurred = set()
    jobs = 0

    @classmethod
    def tearDownClass(cls):
        if cls.jobs < sum(name.startswith("test_") for name in dir(cls)):
            return  # some of them only
        missing = [names for names in NAMES if not names & cls.occurred]
        if missing:
            raise AssertionError(f"no job makes these calls: {missing}")

    def setUp(self):
        type(self).jobs += 1
        self.scratch = tempfile.TemporaryDirectory(prefix="vorn-faults-", dir=SCRATCH)
        self.addCleanup(self.scratch.cleanup)

    def job(self, arguments, inputs, outputs, before=(), prepare=lambda directory: None):
        """A job whose inputs are samples, by the name that they have here; `before` are commands that prepare it, and
        `prepare` does what no command can.
        """
        directory = os.path.join(self.scratch.name, "job")
        os.mkdir(directory)
        for name in inputs:
            if name.endswith(".xml"):
                shutil.copy(os.path.join(SAMPLES, "road-4.1.xml"), os.path.join(directory, name))
        for command in before:
            subprocess.run([tool, *command], cwd=directory, check=True, capture_output=True,
                           env={"HOME": directory, "XDG_CONFIG_HOME": directory})  # fmt: skip
        prepare(directory)
        for name in outputs:  # a file that only its owner may read stays one
            if os.path.isfile(os.path.join(directory, name)):
                os.chmod(os.path.join(directory, name), 0o600)
        return Job(directory, arguments, inputs, outputs)

    def check(self, job, new_backup=None):
        """Lets the job fail at every call.
        @param new_backup the name that the former file has once the job has succeeded
        """
        job.restore()
        self.assertEqual(job.run("-o", os.devnull, "-e", "trace=none").returncode, 0)
        done = job.files()
        self.assertNotEqual(done, job.original, "the job does nothing")

        fatal = set()

        def judge(call, result):
            if call.is_fatal:
                fatal.add(plain(call.kind))
                self.assertNotEqual(result.returncode, 0, "success was told in spite of it")
            self.check_outcome(job, done, call.kind, result, new_backup)

        self.let_every_call_fail(job, judge)
        self.assertEqual(fatal, FATAL_OF_OUTPUT | (FATAL_OF_INPUT if job.inputs else set()))

    def check_refused(self, job):
        """Lets a job that is refused fail at every call: whatever cannot be found out, nothing is written."""
        job.restore()
        self.assertEqual(job.run("-o", os.devnull, "-e", "trace=none").returncode, 2)

        def judge(_, result):
            self.assertEqual(result.returncode, 2, result.stderr.decode("utf-8", "replace"))
            self.assertEqual(job.files(), job.original)

        self.let_every_call_fail(job, judge)

    def let_every_call_fail(self, job, judge):
        """Calls judge(call, result) for the job with every fault: the call that failed, and how the job ended."""
        points = {}  # the same number in several threads is one fault
        for call in sorted(job.calls(), key=lambda call: call.is_fatal):
            points[call.kind, call.number] = call
        self.assertGreater(len(points), 5)
        kinds = {kind for kind, _ in points}
        self.assertLessEqual(kinds, set(KINDS), "calls of these kinds are not made to fail")
        self.occurred.update(kinds)
        for kind, error in FAULTS:
            for call in sorted((c for c in points.values() if c.kind == kind), key=lambda call: call.number):
                with self.subTest(kind=kind, error=error, number=call.number):
                    job.restore()
                    fault = f"inject={kind}:error={error}:when={call.number}"
                    judge(call, job.run("-o", os.devnull, "-e", "trace=" + kind, "-e", fault))

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

    def test_a_project_that_is_not_named_like_one_is_saved(self):
        def rename(directory):
            os.rename(os.path.join(directory, "p.vorn"), os.path.join(directory, "out.dat"))

        job = self.job(["convert", "in.xml", "out.dat"], ["in.xml"], ["out.dat"], prepare=rename,
                       before=[["sample", "p.vorn", "--sections", "3"]])  # fmt: skip
        self.check(job, new_backup="out.dat.bak")

    def test_a_document_is_written_through_a_link(self):
        def link(directory):
            os.symlink("real.xml", os.path.join(directory, "out.xml"))

        self.check(self.job(["convert", "in.xml", "out.xml"], ["in.xml"], ["real.xml"], prepare=link,
                            before=[["sample", "real.xml", "--sections", "2"]]))  # fmt: skip

    def test_a_drawing_does_not_replace_a_design(self):
        self.check_refused(self.job(["export", "in.xml", "--format", "dxf", "-o", "other.xml"], ["in.xml"], ["other.xml"],
                                    before=[["sample", "other.xml", "--sections", "2"]]))  # fmt: skip

    def test_a_table_replaces_a_former_one(self):
        self.check(self.job(["export", "in.xml", "-o", "out.csv"], ["in.xml"], ["out.csv"],
                            before=[["export", "in.xml", "-o", "out.csv", "--what", "ground"]]))  # fmt: skip

    def test_geojson_is_exported(self):
        self.check(self.job(["export", "in.xml", "-o", "out.geojson"], ["in.xml"], ["out.geojson"]))

    def test_the_first_setting_is_stored(self):
        self.check(self.job(["settings", "set", "RoadInfo.speed", "3"], [], ["vorn/vorn.toml"]))

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
