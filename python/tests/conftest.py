"""What the tests share: the sources' documents and projects, and the tool that values are compared with."""

from __future__ import annotations

import json
import os
import subprocess
from pathlib import Path
from typing import Any, Callable

import pytest

ROOT = Path(__file__).resolve().parents[2]
DOCUMENTS = ROOT / "tests" / "data" / "documents"
PROJECTS = ROOT / "tests" / "data" / "projects"
SAMPLES = ROOT / "samples"


def stem(path: Path) -> str:
    """A file as the names of tests have it."""
    return path.stem


@pytest.fixture
def tool() -> Callable[..., Any]:
    """Runs the command-line tool and gives what it prints as JSON."""
    program = os.environ.get("VORN_TOOL", "")
    if not Path(program).is_file():
        pytest.skip("VORN_TOOL does not name the tool, or it is not built")

    def run(*arguments: object) -> Any:
        result = subprocess.run([program, *map(str, arguments)], capture_output=True, text=True, encoding="utf-8")
        assert result.returncode in (0, 1), result.stderr
        return json.loads(result.stdout)

    return run
