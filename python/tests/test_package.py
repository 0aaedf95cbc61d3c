"""The package: its stubs, its installation by pip, and the example."""

from __future__ import annotations

import ast
import os
import subprocess
import sys
from pathlib import Path

import pytest

import vorn
from conftest import ROOT, SAMPLES

PACKAGE = Path(vorn.__file__).parent
PYTHON = ROOT / "python"
SYSTEM = {key: value for key, value in os.environ.items() if key != "LD_PRELOAD"}


def test_stubs_are_those_of_the_module() -> None:
    made = subprocess.run([sys.executable, PYTHON / "make_stubs.py", PACKAGE.parent], capture_output=True, text=True,
                          encoding="utf-8")
    assert made.returncode == 0, made.stderr
    assert made.stdout == (PYTHON / "vorn" / "__init__.pyi").read_text(encoding="utf-8"), "run make_stubs.py"


def test_every_public_name_is_in_the_stubs() -> None:
    tree = ast.parse((PACKAGE / "__init__.pyi").read_text(encoding="utf-8"))
    classes = {node.name: node for node in tree.body if isinstance(node, ast.ClassDef)}
    names = set(classes) | {node.name for node in tree.body if isinstance(node, ast.FunctionDef)}
    names |= {alias.asname for node in tree.body if isinstance(node, ast.ImportFrom) for alias in node.names
              if alias.asname}
    assert set(vorn.__all__) <= names
    for name, node in classes.items():
        if not hasattr(vorn, name):
            continue
        members = {item.name for item in node.body if isinstance(item, ast.FunctionDef)}
        members |= {target.id for item in node.body if isinstance(item, ast.Assign) for target in item.targets
                    if isinstance(target, ast.Name)}
        members |= {item.name for item in classes["_Collection"].body if isinstance(item, ast.FunctionDef)}
        public = {member for member in vars(getattr(vorn, name)) if not member.startswith("_")}
        assert public <= members, name
    assert (PACKAGE / "py.typed").exists()


def test_everything_has_a_docstring() -> None:
    for name in vorn.__all__:
        value = getattr(vorn, name)
        assert value.__doc__, name
        for member, attribute in vars(value).items() if isinstance(value, type) else ():
            if isinstance(attribute, property):
                assert attribute.__doc__, f"{name}.{member}"


def test_mypy() -> None:
    environment = {**SYSTEM, "MYPYPATH": os.pathsep.join([str(PACKAGE.parent), str(PYTHON / "tests")])}
    result = subprocess.run(
        [sys.executable, "-m", "mypy", "--config-file", PYTHON / "pyproject.toml", "--no-error-summary",
         "--cache-dir", PACKAGE.parent / ".mypy_cache",
         *sorted((PYTHON / "tests").glob("*.py")), PYTHON / "examples" / "plot_widths.py"],
        capture_output=True, text=True, env=environment, cwd=PYTHON / "tests")
    assert result.returncode == 0, result.stdout + result.stderr


def test_the_example(tmp_path: Path) -> None:
    pytest.importorskip("matplotlib")
    pictures: dict[str, list[str]] = {"widths.png": [], "carriageway.png": ["--codes", "L1,R1"]}
    for name, arguments in pictures.items():
        picture = tmp_path / name
        environment = {**os.environ, "PYTHONPATH": str(PACKAGE.parent), "MPLCONFIGDIR": str(tmp_path)}
        result = subprocess.run(
            [sys.executable, PYTHON / "examples" / "plot_widths.py", SAMPLES / "road-4.1.xml", "-o", picture,
             *arguments], capture_output=True, text=True, env=environment)
        assert result.returncode == 0, result.stderr
        assert picture.read_bytes().startswith(b"\x89PNG") and picture.stat().st_size > 10000


@pytest.mark.skipif("VORN_TEST_INSTALL" not in os.environ, reason="takes minutes: VORN_TEST_INSTALL=1 runs it")
def test_installing_without_the_network(tmp_path: Path) -> None:
    venv = tmp_path / "venv"
    outside = {key: value for key, value in SYSTEM.items() if key != "PYTHONPATH"}
    subprocess.run([sys.executable, "-m", "venv", "--system-site-packages", venv], check=True)
    python = venv / "bin" / "python"
    subprocess.run([python, "-m", "pip", "install", "--no-build-isolation", "--no-index", PYTHON], check=True,
                   env=outside)
    program = "import vorn; print(len(vorn.sample(sections=3).sets[0].sections), vorn.__file__)"
    result = subprocess.run([python, "-c", program], capture_output=True, text=True, check=True, cwd=tmp_path,
                            env=outside)
    assert result.stdout.startswith("3 ") and str(venv) in result.stdout
    assert (Path(result.stdout.split()[1]).parent / "__init__.pyi").exists()
