# The short commands. The build itself is CMake's: see CMakePresets.json.

FORMATTED_DIRS = $(wildcard vorn host tests bench fuzz examples python)
FORMATTED_FILES = find $(FORMATTED_DIRS) \( -name '*.h' -o -name '*.cpp' \) -print0
CLANG_FORMAT = clang-format-14

.PHONY: demo test docs bench instruction-counts coverage mutants fuzz dependencies configure format check-format \
  clean thorough m32 win64 win32 platform-dependencies clang static-analysis valgrind python-install command-line deb

demo: configure
	cmake --build --preset release --target vorn_cli
	tools/demo.sh

test: configure
	cmake --build --preset release
	ctest --preset release

# What takes too long for every change: most of a day on two cores. .ci/run does the rest.
thorough: clang static-analysis valgrind python-install deb m32 win64 win32 mutants
	$(MAKE) fuzz FUZZ_SECONDS=1800

clang: dependencies
m32 win64: platform-dependencies
clang m32 win64:
	cmake --preset $@
	cmake --build --preset $@
	ctest --preset $@

# clang-tidy and cppcheck.
static-analysis: configure
	tools/static_analysis.sh build/release

# Installs the Python package with pip, into an environment of its own and without the network.
python-install: configure
	cmake --build --preset release
	ctest --preset release -C Long -R '^python_install$$'

# The man page and the shell completions, from the tool's own help; `make test` compares with them.
command-line: configure
	cmake --build --preset release --target vorn_renew_command_line

# Debian packages in build/deb: libvorn0.1, libvorn-dev, vorn. They are looked over, installed in a folder and removed.
deb: dependencies
	cmake --preset deb
	cmake --build --preset deb
	rm -f build/deb/*.deb
	cpack --preset deb
	tests/package/debian_packages_test.py build/deb

valgrind: test
	tools/valgrind_tests.sh build/release

# Nothing runs 32-bit programs of Windows here.
win32: platform-dependencies
	cmake --preset $@
	cmake --build --preset $@

platform-dependencies:
	@tools/install_dependencies.sh --platforms

# The reference, a page for each subsystem: build/release/docs/html/index.html.
.PHONY: docs
docs: configure
	cmake --build --preset release --target vorn_docs

bench: configure
	cmake --build --preset release --target vorn_bench
	build/release/bench/vorn_bench

# Keeps the instruction counts of the sources as they are; `make test` compares with them. Another compiler's preset:
# make instruction-counts PRESET=clang
PRESET = release

instruction-counts: dependencies
	cmake --preset $(PRESET)
	cmake --build --preset $(PRESET) --target vorn_renew_instruction_counts

# What the library's own tests run of it. The page for the browser is build/coverage/coverage/index.html.
coverage: dependencies
	cmake --preset coverage
	cmake --build --preset coverage --target vorn_tests vorn_allocation_failure_tests vorn_archive_memory_tests
	tools/coverage.py

# Changes the library in one place at a time and asks its tests. More of them: make mutants MUTANTS=3000 MUTANT_SEED=2
MUTANTS = 300
MUTANT_SEED = 1
MUTANT_JOBS = 1

mutants: coverage
	tools/mutate.py --count $(MUTANTS) --seed $(MUTANT_SEED) --jobs $(MUTANT_JOBS)

# Starts from the corpus in the sources and keeps what it finds in the build. One target: make fuzz FUZZ_TARGET=document
FUZZ_TARGETS = archive document project text editing
FUZZ_TARGET = $(FUZZ_TARGETS)
FUZZ_SECONDS = 600
FUZZ_DIR = build/fuzz/fuzz
FUZZ_LIMITS = -max_len=65536 -rss_limit_mb=1024 -malloc_limit_mb=128 -timeout=10
FUZZ_SAMPLES_document = tests/data/documents
FUZZ_SAMPLES_project = tests/data/projects

fuzz: $(FUZZ_TARGET:%=fuzz-%)

fuzz-%: dependencies
	cmake --preset fuzz
	cmake --build --preset fuzz --target vorn_$*_fuzz
	mkdir -p $(FUZZ_DIR)/found/$*
	$(FUZZ_DIR)/vorn_$*_fuzz $(FUZZ_LIMITS) -max_total_time=$(FUZZ_SECONDS) -print_final_stats=1 \
	  $(patsubst %,-dict=%,$(wildcard fuzz/$*.dict)) -artifact_prefix=$(FUZZ_DIR)/ \
	  $(FUZZ_DIR)/found/$* fuzz/corpus/$* $(FUZZ_SAMPLES_$*)

configure: dependencies
	cmake --preset release

dependencies:
	@tools/install_dependencies.sh

format:
	$(FORMATTED_FILES) | xargs -0 -r $(CLANG_FORMAT) -i

check-format:
	$(FORMATTED_FILES) | xargs -0 -r $(CLANG_FORMAT) --dry-run --Werror

clean:
	rm -rf build out
