# The short commands. The build itself is CMake's: see CMakePresets.json.

FORMATTED_DIRS = $(wildcard vorn host tests bench fuzz examples)
FORMATTED_FILES = find $(FORMATTED_DIRS) \( -name '*.h' -o -name '*.cpp' \) -print0
CLANG_FORMAT = clang-format-14

.PHONY: demo test bench dependencies configure format check-format clean

demo: configure
	cmake --build --preset release --target vorn_cli
	tools/demo.sh

test: configure
	cmake --build --preset release
	ctest --preset release

bench: configure
	cmake --build --preset release --target vorn_bench
	build/release/bench/vorn_bench

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
