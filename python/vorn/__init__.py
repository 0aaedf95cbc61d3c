"""Design data of roads, rivers and farm works: documents, projects, and editing.

    import vorn

    design = vorn.DesignDocument.read("design.xml")
    for section in design.sets[0].sections:
        section.is_control_section = True
    design.write("design.xml")
"""

from . import _vorn
from ._vorn import *  # noqa: F403 - the names are listed below
from .errors import (
    BusyError,
    DocumentError,
    EditError,
    Error,
    ExpiredError,
    InvalidArgumentError,
    TextError,
)

__version__: str = _vorn.__version__
__all__ = sorted(name for name in vars(_vorn) if not name.startswith("_"))
__all__ += ["BusyError", "DocumentError", "EditError", "Error", "ExpiredError", "InvalidArgumentError", "TextError"]
