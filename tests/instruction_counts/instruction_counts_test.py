#!/usr/bin/env python3
"""Guards how many instructions the main jobs take: instruction_counts_test.py PROBE COMPILER [--renew]

Times differ from run to run; what callgrind counts does not, so a change that makes a job slower is seen when it is
made. The counts that are expected stand in counts/COMPILER.txt, one line for each job. More than 10 % above them is a
failure; more than 20 % below asks for new numbers, so that what was gained is kept. `make instruction-counts` counts
anew and writes the file (--renew), also for a compiler that has none yet.

Exits with 77, which ctest shows as skipped, where no numbers are kept for the compiler.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile

JOBS = ["read", "write", "edit", "save", "load"]
MOST_ABOVE = 0.10
MOST_BELOW = 0.20
SKIPPED = 77
RENEW = "make instruction-counts"

COUNTS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "counts")

# The C library picks its routines for copying and comparing by what the processor can do, and some thresholds by the
# size of its caches: every machine is to take the plain ones. Names are resolved before the count begins.
PLAIN_LIBRARY = ":".join(
    [
        "glibc.cpu.hwcaps="
        + ",".join(
            "-" + feature
            for feature in (
                "AVX512F AVX512VL AVX512BW AVX512CD AVX512DQ AVX512ER AVX512PF AVX2 AVX FMA FMA4 ERMS FSRM RTM "
                "SSSE3 SSE4_1 SSE4_2 BMI1 BMI2 LZCNT MOVBE POPCNT XSAVEC XSAVE Fast_Unaligned_Load "
                "Fast_Unaligned_Copy Fast_Copy_Backward AVX_Fast_Unaligned_Load Prefer_No_VZEROUPPER"
            ).split()
        ),
        "glibc.cpu.x86_data_cache_size=0x8000",
        "glibc.cpu.x86_shared_cache_size=0x100000",
        "glibc.cpu.x86_non_temporal_threshold=0xc0000",
        "glibc.cpu.x86_rep_movsb_threshold=0x10000",
        "glibc.cpu.x86_rep_stosb_threshold=0x10000",
    ]
)


def count(probe, job):
    """How many instructions a job takes."""
    with tempfile.TemporaryDirectory() as folder:
        out = os.path.join(folder, "callgrind.out")
        command = [shutil.which("valgrind"), "--tool=callgrind", "--instr-atstart=no", f"--callgrind-out-file={out}"]
        # Nothing else of the environment: where it lies in memory must not matter.
        environment = {"PATH": "/usr/bin:/bin", "LC_ALL": "C", "LD_BIND_NOW": "1", "GLIBC_TUNABLES": PLAIN_LIBRARY}
        run = subprocess.run(command + [probe, job], env=environment, capture_output=True, text=True, cwd=folder)
        if run.returncode != 0:
            sys.exit(f"{job}: the probe failed\n{run.stdout}{run.stderr}")
        with open(out, encoding="utf-8", errors="replace") as file:
            totals = re.findall(r"^(?:totals|summary): (\d+)", file.read(), re.MULTILINE)
    if not totals or int(totals[-1]) == 0:
        sys.exit(f"{job}: callgrind counted nothing")
    return int(totals[-1])


def read_expected(path):
    expected = {}
    with open(path, encoding="utf-8") as file:
        for line in file:
            words = line.split("#")[0].split()
            if words:
                expected[words[0]] = int(words[1])
    return expected


def verdict(number, expected):
    """What is wrong with a count, or None."""
    change = number / expected - 1.0
    if change > MOST_ABOVE:
        return f"more than {MOST_ABOVE:.0%} above: find out why; if it has to be, `{RENEW}` keeps the new number"
    if change < -MOST_BELOW:
        return f"more than {MOST_BELOW:.0%} below: `{RENEW}` keeps what was gained"
    return None


def main():
    probe, compiler = sys.argv[1], sys.argv[2]
    path = os.path.join(COUNTS, compiler + ".txt")
    renew = "--renew" in sys.argv[3:]
    if not renew and not os.path.exists(path):
        print(f"No instruction counts are kept for {compiler}; `{RENEW} PRESET=...` with its preset adds them.")
        return SKIPPED
    if shutil.which("valgrind") is None:
        print("valgrind is not installed: instructions cannot be counted")
        return 1
    numbers = {job: count(os.path.abspath(probe), job) for job in JOBS}
    if renew:
        with open(path, "w", encoding="utf-8") as file:
            file.write("# Instructions of the main jobs, written by `make instruction-counts`.\n")
            file.writelines(f"{job} {number}\n" for job, number in numbers.items())
    expected = read_expected(path)
    failed = sorted(set(expected) ^ set(JOBS))
    for job in failed:
        print(f"{job}: in {path} or among the jobs, but not in both")
    for job in JOBS:
        if job not in expected:
            continue
        problem = verdict(numbers[job], expected[job])
        change = numbers[job] / expected[job] - 1.0
        told = f": {problem}" if problem else ""
        print(f"{job:6} {numbers[job]:12} of {expected[job]:12} expected, {change:+.2%}{told}")
        failed += [job] if problem else []
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
