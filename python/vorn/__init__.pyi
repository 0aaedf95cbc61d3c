# Made by python/make_stubs.py.
import datetime
import enum
import os
from collections.abc import Iterable, Iterator, Sequence
from typing import Any, Dict, List, Optional, Tuple, TypeVar, Union, overload

import numpy
import numpy.typing

from .errors import BusyError as BusyError
from .errors import DocumentError as DocumentError
from .errors import EditError as EditError
from .errors import Error as Error
from .errors import ExpiredError as ExpiredError
from .errors import InvalidArgumentError as InvalidArgumentError
from .errors import TextError as TextError

__all__: List[str]
__version__: str

_Element = TypeVar("_Element")

class _Collection(Sequence[_Element]):
    def __len__(self) -> int: ...
    def __bool__(self) -> bool: ...
    def __iter__(self) -> Iterator[_Element]: ...
    def __contains__(self, element: object) -> bool: ...
    @overload
    def __getitem__(self, index: int) -> _Element: ...
    @overload
    def __getitem__(self, index: slice) -> List[_Element]: ...
    def __setitem__(self, index: int, element: _Element) -> None: ...
    def __delitem__(self, index: Union[int, slice]) -> None: ...
    def append(self, element: _Element) -> None: ...
    def insert(self, index: int, element: _Element) -> None: ...
    def extend(self, elements: Iterable[_Element]) -> None: ...
    def pop(self, index: int = ...) -> _Element: ...
    def remove(self, element: _Element) -> None: ...
    def clear(self) -> None: ...
    def index(self, element: Any, start: int = ..., stop: int = ...) -> int: ...
    def count(self, element: Any) -> int: ...
    def __copy__(self) -> List[_Element]: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> List[_Element]: ...

class Side(enum.Enum):
    """Side of the centre line, looking along it. Offsets are negative on the left."""
    CENTER = 0
    LEFT = 1
    RIGHT = 2

class Existence(enum.Enum):
    """Whether a point exists. EMPTY is an attribute without a text."""
    EMPTY = 0
    FALSE = 1
    TRUE = 2

class ComponentType(enum.Enum):
    """Kind of surface that leads to a point."""
    ROADBED_FILL = 0
    ROADBED_CUT = 1
    SLOPE_FILL = 2
    SLOPE_CUT = 3
    BERM_FILL = 4
    BERM_CUT = 5
    OTHER = 6
    ROADBED = 7
    SLOPE = 8
    BERM = 9

class SlopeType(enum.Enum):
    """How y is read in edition 2.0: as a grade in percent or as a slope ratio."""
    PERCENT = 0
    RATE = 1

class DataType(enum.Enum):
    """How x and y are read from edition 4.0 on."""
    WIDTH_HEIGHT = 0
    PERCENT = 1
    RATE = 2

class ElementType(enum.Enum):
    """Finer kind of road element."""
    CARRIAGEWAY = 0
    MEDIAN = 1
    SHOULDER = 2
    STOPPING_LANE = 3
    SIDEWALK = 4
    PLANTING_STRIP = 5
    FRONTAGE_ROAD = 6
    TRACK_BED = 7
    SEPARATOR = 8
    MARGINAL_STRIP = 9
    SUBGRADE = 10
    ROAD_BODY = 11
    EXCAVATION = 12
    SLOPE_FILL = 13
    SLOPE_CUT = 14
    BERM_FILL = 15
    BERM_CUT = 16
    RETAINING_WALL = 17
    SIDE_DITCH = 18
    PAVEMENT = 19
    OTHER = 20
    LEVEE_CROWN = 21
    EARTHWORK_SURFACE_FILL = 22

class FormCategory(enum.Enum):
    """What a build form is for."""
    NONE = 0
    STRUCTURE = 1

class WorkType(enum.Enum):
    """Work that a control target is for."""
    CUT_WORK = 0
    FILL_WORK = 1

class ControlItem(enum.Enum):
    """What a control target measures."""
    SLOPE_LENGTH = 0
    WIDTH = 1
    HEIGHT = 2
    THICKNESS = 3
    DEPTH = 4
    XSECT_AREA = 5
    LENGTH = 6
    AREA = 7

class TargetPointType(enum.Enum):
    """Which pair of points bounds a measurement."""
    SHOULDER_TOE = 0
    TOE_SHOULDER = 1
    INNER_OUTER = 2
    LEFT_RIGHT = 3
    TARGET_POINT = 4
    UPPER_LOWER = 5
    LOWER_UPPER = 6

class Work(enum.Enum):
    """Kind of construction work that a document describes."""
    ROAD_EARTHWORK = 0
    RIVER_COAST_EROSION_CONTROL = 1
    ROAD_PAVEMENT = 2
    RIVER_PAVEMENT = 3
    ROAD_BURIED_STRUCTURE = 4
    OTHER = 5
    MAFF_COMMON_EARTHWORK = 6
    MAFF_PIPELINE = 7
    MAFF_FARM_FIELD = 8

class RoadClass(enum.Enum):
    """Class of a road under the road structure ordinance: type and class."""
    TYPE1_CLASS1 = 0
    TYPE1_CLASS2 = 1
    TYPE1_CLASS3 = 2
    TYPE1_CLASS4 = 3
    TYPE2_CLASS1 = 4
    TYPE2_CLASS2 = 5
    TYPE3_CLASS1 = 6
    TYPE3_CLASS2 = 7
    TYPE3_CLASS3 = 8
    TYPE3_CLASS4 = 9
    TYPE3_CLASS5 = 10
    TYPE4_CLASS1 = 11
    TYPE4_CLASS2 = 12
    TYPE4_CLASS3 = 13
    TYPE4_CLASS4 = 14

class RiverClass(enum.Enum):
    """Class of a river."""
    CLASS1 = 0
    CLASS2 = 1

class DesignSpeed(enum.Enum):
    """Design speed in km/h."""
    KMH120 = 0
    KMH100 = 1
    KMH80 = 2
    KMH60 = 3
    KMH50 = 4
    KMH40 = 5
    KMH30 = 6
    KMH20 = 7

class GeodeticDatum(enum.Enum):
    """Horizontal geodetic datum."""
    JGD2000 = 0
    TOKYO = 1
    WORLD = 2
    JGD2011 = 3

class HorizontalCoordinates(enum.Enum):
    """Plane rectangular system of Japan, or latitude and longitude."""
    PLANE1 = 0
    PLANE2 = 1
    PLANE3 = 2
    PLANE4 = 3
    PLANE5 = 4
    PLANE6 = 5
    PLANE7 = 6
    PLANE8 = 7
    PLANE9 = 8
    PLANE10 = 9
    PLANE11 = 10
    PLANE12 = 11
    PLANE13 = 12
    PLANE14 = 13
    PLANE15 = 14
    PLANE16 = 15
    PLANE17 = 16
    PLANE18 = 17
    PLANE19 = 18
    GEODETIC = 19

class ControlPointClass(enum.Enum):
    """Class of a horizontal control point."""
    GNSS_STATION = 0
    FIRST_ORDER = 1
    SECOND_ORDER = 2
    THIRD_ORDER = 3
    FOURTH_ORDER = 4
    GRADE1 = 5
    GRADE2 = 6
    GRADE3 = 7
    GRADE4 = 8

class BenchMarkClass(enum.Enum):
    """Class of a levelling bench mark."""
    FIRST_ORDER = 0
    SECOND_ORDER = 1
    THIRD_ORDER = 2
    GRADE1 = 3
    GRADE2 = 4
    GRADE3 = 5
    GRADE4 = 6
    SIMPLE = 7

class ProjectPhase(enum.Enum):
    """Phase of a project."""
    OUTLINE = 0
    PRELIMINARY = 1
    DETAILED = 2
    CONSTRUCTION = 3

class MarkType(enum.Enum):
    """Series of labels that mark points."""
    DIGITS = 0
    CAPITALS = 1
    SMALL_LETTERS = 2

class Edition(enum.Enum):
    """Edition of the exchange documents; ROAD_GEOMETRY cannot be written."""
    V2_0 = '2.0'
    V4_0 = '4.0'
    V4_1 = '4.1'
    MAFF_1_0 = 'maff-1.0'
    ROAD_GEOMETRY = 'RoadGm'

class Encoding(enum.Enum):
    """Encoding of a document to write."""
    UTF_8 = 'UTF-8'
    SHIFT_JIS = 'Shift_JIS'

class Severity(enum.Enum):
    """An ERROR makes a document invalid, a NOTE does not."""
    ERROR = 'error'
    NOTE = 'note'

class SampleKind(enum.Enum):
    """Kind of work that a sample design describes."""
    ROAD = 'road'
    RIVER = 'river'
    FARM = 'farm'

class TableContent(enum.Enum):
    """What the rows of a table are: points of the build forms, of the existing ground, or of control targets."""
    POINTS = 'points'
    GROUND = 'ground'
    TARGETS = 'targets'

class Language(enum.Enum):
    """Language of a drawing's own words; texts of the design are never translated."""
    ENGLISH = 'en'
    JAPANESE = 'ja'

class ControlTargetPoint:
    """A point of a control target: the build form and the code of the composed point on which
    it stands, and the station of its cross section."""
    def __init__(self, station: Optional[float] = ..., form_name: str = ..., code: str = ..., is_behind_change: bool = ...) -> None:
        """A point that stands alone, until it is added to a target's `points`."""
    def copy(self) -> ControlTargetPoint:
        """A copy that stands alone."""
    def __copy__(self) -> ControlTargetPoint: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> ControlTargetPoint: ...
    @property
    def station(self) -> Optional[float]:
        """Station of the cross section in metres."""
    @station.setter
    def station(self, value: Optional[float]) -> None: ...
    @property
    def is_behind_change(self) -> bool:
        """Whether the cross section is the one behind a change of shape."""
    @is_behind_change.setter
    def is_behind_change(self, value: bool) -> None: ...
    @property
    def form_name(self) -> str:
        """Name of the build form."""
    @form_name.setter
    def form_name(self, value: str) -> None: ...
    @property
    def code(self) -> str:
        """Code of the composed point."""
    @code.setter
    def code(self, value: str) -> None: ...
    @property
    def side(self) -> Optional[Side]:
        """Side of the centre line; None until filled."""
    @side.setter
    def side(self, value: Optional[Side]) -> None: ...
    @property
    def offset(self) -> Optional[float]:
        """Distance from the centre line in metres, negative on the left; None until filled."""
    @offset.setter
    def offset(self, value: Optional[float]) -> None: ...
    @property
    def elevation(self) -> Optional[float]:
        """Height in metres; None until filled."""
    @elevation.setter
    def elevation(self, value: Optional[float]) -> None: ...
    @property
    def point_id(self) -> Optional[int]:
        """Identifier of the composed point; None until filled."""
    @point_id.setter
    def point_id(self, value: Optional[int]) -> None: ...
    @property
    def is_valid(self) -> bool:
        """Whether the station is set, and form and code are named."""

class ControlTargetPoints(_Collection[ControlTargetPoint]):
    """The points of a control target."""

class ControlTarget:
    """One as-built control item: what is measured, for which work, over which scope and region,
    and between which points. Edition 2.0 carries the codes of the points in the target, which
    stands in its form; later editions carry target points, and the target stands in the set."""
    def __init__(self, control_item: Optional[ControlItem] = ..., work_type: Optional[WorkType] = ...) -> None:
        """A target that stands alone, until it is added to the `targets` of a set or a form."""
    def copy(self) -> ControlTarget:
        """A copy that stands alone."""
    def __copy__(self) -> ControlTarget: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> ControlTarget: ...
    @property
    def control_item(self) -> Optional[ControlItem]:
        """What is measured."""
    @control_item.setter
    def control_item(self, value: Optional[ControlItem]) -> None: ...
    @property
    def work_type(self) -> Optional[WorkType]:
        """For which work."""
    @work_type.setter
    def work_type(self, value: Optional[WorkType]) -> None: ...
    @property
    def target_scope(self) -> str:
        """Over which scope."""
    @target_scope.setter
    def target_scope(self, value: str) -> None: ...
    @property
    def target_region(self) -> str:
        """Over which region."""
    @target_region.setter
    def target_region(self, value: str) -> None: ...
    @property
    def target_point_type(self) -> Optional[TargetPointType]:
        """Which pair of points bounds the measurement."""
    @target_point_type.setter
    def target_point_type(self, value: Optional[TargetPointType]) -> None: ...
    @property
    def side(self) -> Optional[Side]:
        """Side of the centre line."""
    @side.setter
    def side(self, value: Optional[Side]) -> None: ...
    @property
    def is_exported(self) -> bool:
        """Whether the target is written to documents."""
    @is_exported.setter
    def is_exported(self, value: bool) -> None: ...
    @property
    def serial_id(self) -> Optional[int]:
        """Running identifier within the collection; None when unassigned."""
    @serial_id.setter
    def serial_id(self, value: Optional[int]) -> None: ...
    @property
    def code_text(self) -> str:
        """The codes as edition 2.0 has them, separated by blanks."""
    @code_text.setter
    def code_text(self, value: str) -> None: ...
    @property
    def codes(self) -> List[str]:
        """The codes of the points: those of `code_text` in edition 2.0, otherwise those of `points`."""
    @property
    def points(self) -> ControlTargetPoints:
        """The points, from edition 4.0 on."""
    @property
    def is_valid(self) -> bool:
        """Whether codes, scope, region, work type, control item and kind of points are given and valid."""

class ControlTargets(_Collection[ControlTarget]):
    """The control targets of a set or of a form."""

class ComposedPoint:
    """One vertex of a build form's polyline.

    Two input values, relative to the previous point, give its position: x and y are a width and a height
    difference (metres), a width and a grade in percent, or a height difference and a slope ratio. `slope_type`
    tells which in edition 2.0, `data_type` in later ones. `offset` and `height` are the position computed from
    them."""
    def __init__(self, code: str = ..., side: Optional[Side] = ..., x: Optional[float] = ..., y: Optional[float] = ..., data_type: Optional[DataType] = ..., existence: Optional[Existence] = ...) -> None:
        """A point that stands alone, until it is added to a form's `points`."""
    def copy(self) -> ComposedPoint:
        """A copy that stands alone."""
    def __copy__(self) -> ComposedPoint: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> ComposedPoint: ...
    @property
    def x(self) -> Optional[float]:
        """First input value: width, or height difference of a ratio point, in metres."""
    @x.setter
    def x(self, value: Optional[float]) -> None: ...
    @property
    def y(self) -> Optional[float]:
        """Second input value: height difference (metres), grade (percent) or slope ratio (horizontal per height)."""
    @y.setter
    def y(self, value: Optional[float]) -> None: ...
    @property
    def offset(self) -> Optional[float]:
        """Computed horizontal distance from the centre line in metres, negative on the left."""
    @offset.setter
    def offset(self, value: Optional[float]) -> None: ...
    @property
    def height(self) -> Optional[float]:
        """Computed height in metres."""
    @height.setter
    def height(self, value: Optional[float]) -> None: ...
    @property
    def ratio(self) -> Optional[float]:
        """Derived slope ratio x / y."""
    @ratio.setter
    def ratio(self, value: Optional[float]) -> None: ...
    @property
    def percent(self) -> Optional[float]:
        """Derived grade y / x in percent."""
    @percent.setter
    def percent(self, value: Optional[float]) -> None: ...
    @property
    def side(self) -> Optional[Side]:
        """Side of the centre line."""
    @side.setter
    def side(self, value: Optional[Side]) -> None: ...
    @property
    def existence(self) -> Optional[Existence]:
        """Whether the point exists."""
    @existence.setter
    def existence(self, value: Optional[Existence]) -> None: ...
    @property
    def component_type(self) -> Optional[ComponentType]:
        """Kind of surface. Setting it keeps the former one in `former_component_type`."""
    @component_type.setter
    def component_type(self, value: Optional[ComponentType]) -> None: ...
    @property
    def former_component_type(self) -> Optional[ComponentType]:
        """The component type before it was last set."""
    @property
    def slope_type(self) -> Optional[SlopeType]:
        """How y is read in edition 2.0."""
    @slope_type.setter
    def slope_type(self, value: Optional[SlopeType]) -> None: ...
    @property
    def data_type(self) -> Optional[DataType]:
        """How x and y are read from edition 4.0 on."""
    @data_type.setter
    def data_type(self, value: Optional[DataType]) -> None: ...
    @property
    def element_type(self) -> Optional[ElementType]:
        """Finer kind of road element."""
    @element_type.setter
    def element_type(self, value: Optional[ElementType]) -> None: ...
    @property
    def goes_on(self) -> bool:
        """Whether the polyline goes on through the point; False at a crossing with the existing ground."""
    @goes_on.setter
    def goes_on(self, value: bool) -> None: ...
    @property
    def is_ke_point(self) -> bool:
        """Whether it is a KE point."""
    @property
    def is_cross_point(self) -> bool:
        """Whether it is a crossing point."""
    @property
    def code(self) -> str:
        """Design code, the survey name."""
    @code.setter
    def code(self, value: str) -> None: ...
    @property
    def xsect_name(self) -> str:
        """Cross-section name."""
    @xsect_name.setter
    def xsect_name(self, value: str) -> None: ...
    @property
    def xsect_type_id(self) -> int:
        """Identifier of the cross-section (work) type, 0 for none."""
    @xsect_type_id.setter
    def xsect_type_id(self, value: int) -> None: ...
    @property
    def xsect_name_id(self) -> int:
        """Identifier of the cross-section name, 0 for none."""
    @xsect_name_id.setter
    def xsect_name_id(self, value: int) -> None: ...
    @property
    def pair_id(self) -> Optional[int]:
        """Identifier of the as-built pair, None for none."""
    @pair_id.setter
    def pair_id(self, value: Optional[int]) -> None: ...
    @property
    def form_id(self) -> Optional[int]:
        """Identifier of the build form that owns the point, None for none."""
    @form_id.setter
    def form_id(self, value: Optional[int]) -> None: ...
    @property
    def connects_to_previous(self) -> bool:
        """Whether it connects to the previous point by itself."""
    @connects_to_previous.setter
    def connects_to_previous(self, value: bool) -> None: ...
    @property
    def connects_to_next(self) -> bool:
        """Whether it connects to the next point by itself."""
    @connects_to_next.setter
    def connects_to_next(self, value: bool) -> None: ...
    @property
    def measurements(self) -> List[Tuple[int, int]]:
        """Measurement records, of two numbers each, as a list of its own."""
    @measurements.setter
    def measurements(self, value: List[Tuple[int, int]]) -> None: ...
    @property
    def sub_code(self) -> str:
        """Design code, the survey name, in the second of two work types."""
    @sub_code.setter
    def sub_code(self, value: str) -> None: ...
    @property
    def sub_xsect_name(self) -> str:
        """Cross-section name, in the second of two work types."""
    @sub_xsect_name.setter
    def sub_xsect_name(self, value: str) -> None: ...
    @property
    def sub_xsect_type_id(self) -> int:
        """Identifier of the cross-section (work) type, 0 for none, in the second of two work types."""
    @sub_xsect_type_id.setter
    def sub_xsect_type_id(self, value: int) -> None: ...
    @property
    def sub_xsect_name_id(self) -> int:
        """Identifier of the cross-section name, 0 for none, in the second of two work types."""
    @sub_xsect_name_id.setter
    def sub_xsect_name_id(self, value: int) -> None: ...
    @property
    def sub_pair_id(self) -> Optional[int]:
        """Identifier of the as-built pair, None for none, in the second of two work types."""
    @sub_pair_id.setter
    def sub_pair_id(self, value: Optional[int]) -> None: ...
    @property
    def sub_form_id(self) -> Optional[int]:
        """Identifier of the build form that owns the point, None for none, in the second of two work types."""
    @sub_form_id.setter
    def sub_form_id(self, value: Optional[int]) -> None: ...
    @property
    def sub_connects_to_previous(self) -> bool:
        """Whether it connects to the previous point by itself, in the second of two work types."""
    @sub_connects_to_previous.setter
    def sub_connects_to_previous(self, value: bool) -> None: ...
    @property
    def sub_connects_to_next(self) -> bool:
        """Whether it connects to the next point by itself, in the second of two work types."""
    @sub_connects_to_next.setter
    def sub_connects_to_next(self, value: bool) -> None: ...
    @property
    def sub_measurements(self) -> List[Tuple[int, int]]:
        """Measurement records, of two numbers each, as a list of its own, in the second of two work types."""
    @sub_measurements.setter
    def sub_measurements(self, value: List[Tuple[int, int]]) -> None: ...
    @property
    def control_flags(self) -> int:
        """A set of bits kept for applications."""
    @control_flags.setter
    def control_flags(self, value: int) -> None: ...
    @property
    def draw_id(self) -> int:
        """Identifier of the drawing entity."""
    @draw_id.setter
    def draw_id(self, value: int) -> None: ...
    @property
    def serial_id(self) -> Optional[int]:
        """Running identifier within the form: 0 for a centre point, None when unassigned."""
    @serial_id.setter
    def serial_id(self, value: Optional[int]) -> None: ...
    @property
    def origin_id(self) -> Optional[int]:
        """Serial of the point that this was copied from."""
    @origin_id.setter
    def origin_id(self, value: Optional[int]) -> None: ...
    @property
    def parent_id(self) -> Optional[int]:
        """Serial of the parent form's point that this one hangs on."""
    @parent_id.setter
    def parent_id(self, value: Optional[int]) -> None: ...
    @property
    def connection_id(self) -> int:
        """Connection identifier, that of a crossing point."""
    @connection_id.setter
    def connection_id(self, value: int) -> None: ...
    @property
    def target_index(self) -> int:
        """Index of the control target that uses the point, as the application counts."""
    @target_index.setter
    def target_index(self, value: int) -> None: ...
    @property
    def draw_pair_ids(self) -> List[int]:
        """Identifiers of drawing entities paired with the point, as a list of its own."""
    @draw_pair_ids.setter
    def draw_pair_ids(self, value: List[int]) -> None: ...
    @property
    def spatial_pair_ids(self) -> List[int]:
        """Identifiers of the three-dimensional pairs that the point connects to, as a list of its own."""
    @spatial_pair_ids.setter
    def spatial_pair_ids(self, value: List[int]) -> None: ...
    @property
    def connects_by_itself(self) -> bool:
        """Whether the point is to be connected by itself."""
    @connects_by_itself.setter
    def connects_by_itself(self, value: bool) -> None: ...
    @property
    def is_connected(self) -> bool:
        """Whether the point is connected."""
    @is_connected.setter
    def is_connected(self, value: bool) -> None: ...
    @property
    def is_valid(self) -> bool:
        """Whether the point has a code and tells its existence."""

class ComposedPoints(_Collection[ComposedPoint]):
    """The points of a build form."""

class Crossing:
    """Where a build form crosses another one on one side."""
    def copy(self) -> Crossing:
        """A copy that stands alone."""
    def __copy__(self) -> Crossing: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> Crossing: ...
    @property
    def offset(self) -> Optional[float]:
        """Distance of the crossing from the centre line in metres; None when there is no crossing."""
    @offset.setter
    def offset(self, value: Optional[float]) -> None: ...
    @property
    def id(self) -> int:
        """Connection identifier of the crossing point."""
    @id.setter
    def id(self, value: int) -> None: ...

class BuildForm:
    """One form of a cross section: a named polyline of composed points, such as the road
    surface with its slopes and berms, a pavement layer or a structure."""
    def __init__(self, name: str = ..., xsect_type: str = ...) -> None:
        """A form that stands alone, until it is added to a section's `forms`."""
    def copy(self) -> BuildForm:
        """A copy that stands alone."""
    def __copy__(self) -> BuildForm: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> BuildForm: ...
    @property
    def name(self) -> str:
        """Name of the form. Setting it renames the form in its own control targets too."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def xsect_type(self) -> str:
        """Text of the cross-section (work) type."""
    @xsect_type.setter
    def xsect_type(self, value: str) -> None: ...
    @property
    def serial_id(self) -> Optional[int]:
        """Running identifier within the section: 0 for the design surface, None when unassigned."""
    @serial_id.setter
    def serial_id(self, value: Optional[int]) -> None: ...
    @property
    def parent_id(self) -> Optional[int]:
        """Serial of the form that this one is derived from; None for none."""
    @parent_id.setter
    def parent_id(self, value: Optional[int]) -> None: ...
    @property
    def is_org_surface(self) -> bool:
        """Whether this form takes over when the design surface is removed."""
    @is_org_surface.setter
    def is_org_surface(self, value: bool) -> None: ...
    @property
    def category(self) -> FormCategory:
        """What the form is for."""
    @category.setter
    def category(self, value: FormCategory) -> None: ...
    @property
    def pave_set_index(self) -> int:
        """Index of the pavement set."""
    @pave_set_index.setter
    def pave_set_index(self, value: int) -> None: ...
    @property
    def is_omitted(self) -> bool:
        """Whether the form is left out of documents of every edition."""
    @is_omitted.setter
    def is_omitted(self, value: bool) -> None: ...
    @property
    def is_exported(self) -> bool:
        """Whether the form is written to documents. Edition 2.0 writes every form, and writing it sets this for good."""
    @is_exported.setter
    def is_exported(self, value: bool) -> None: ...
    @property
    def cross_left(self) -> Crossing:
        """Crossing on the left."""
    @property
    def cross_right(self) -> Crossing:
        """Crossing on the right."""
    @property
    def points(self) -> ComposedPoints:
        """The points: first the start of the form (on a road surface the centre point), then those of both sides,
        each side from the centre outward."""
    @property
    def targets(self) -> ControlTargets:
        """Control targets in the form; editions from 4.0 on keep them in the set."""
    @property
    def offsets(self) -> numpy.typing.NDArray[numpy.float64]:
        """Offsets of the points in metres, negative on the left, as a read-only array; NaN where unset."""
    @property
    def heights(self) -> numpy.typing.NDArray[numpy.float64]:
        """Heights of the points in metres, as a read-only array; NaN where unset."""
    @property
    def x(self) -> numpy.typing.NDArray[numpy.float64]:
        """First input values of the points (`ComposedPoint.x`), as a read-only array; NaN where unset."""
    @property
    def y(self) -> numpy.typing.NDArray[numpy.float64]:
        """Second input values of the points (`ComposedPoint.y`), as a read-only array; NaN where unset."""
    @property
    def is_surface(self) -> bool:
        """Whether it is the design surface."""
    @property
    def is_valid(self) -> bool:
        """Whether the form has a name and valid points and control targets."""
    def find_point(self, code: str) -> Optional[ComposedPoint]:
        """The first point of that code (exactly); None when there is none."""
    def recalc(self, center_height: Optional[float]) -> None:
        """Recomputes the positions of all points from their input values, as the design's edition reads them.

        :param center_height: height of the centre line in metres; None counts as 0"""

class BuildForms(_Collection[BuildForm]):
    """The build forms of a cross section."""

class GroundPoint:
    """One point of the existing ground."""
    def __init__(self, offset: Optional[float] = ..., height: Optional[float] = ..., name: str = ...) -> None:
        """A point that stands alone, until it is added to a ground form's `points`."""
    def copy(self) -> GroundPoint:
        """A copy that stands alone."""
    def __copy__(self) -> GroundPoint: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> GroundPoint: ...
    @property
    def offset(self) -> Optional[float]:
        """Horizontal distance from the centre line in metres, negative on the left."""
    @offset.setter
    def offset(self, value: Optional[float]) -> None: ...
    @property
    def height(self) -> Optional[float]:
        """Ground height in metres."""
    @height.setter
    def height(self, value: Optional[float]) -> None: ...
    @property
    def name(self) -> str:
        """Name of the point."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def is_valid(self) -> bool:
        """Whether offset and height are both set."""

class GroundPoints(_Collection[GroundPoint]):
    """The points of a ground form."""

class GroundForm:
    """The terrain before construction in one cross section."""
    def __init__(self, name: str = ...) -> None:
        """A ground form that stands alone, until it is added to a section."""
    def copy(self) -> GroundForm:
        """A copy that stands alone."""
    def __copy__(self) -> GroundForm: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> GroundForm: ...
    @property
    def name(self) -> str:
        """Name of the ground form."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def points(self) -> GroundPoints:
        """The points of the ground, from left to right."""
    @property
    def offsets(self) -> numpy.typing.NDArray[numpy.float64]:
        """Offsets of the points in metres, negative on the left, as a read-only array; NaN where unset."""
    @property
    def heights(self) -> numpy.typing.NDArray[numpy.float64]:
        """Heights of the points in metres, as a read-only array; NaN where unset."""
    @property
    def is_valid(self) -> bool:
        """Whether the form has a name and at least two valid points."""

class GroundForms(_Collection[GroundForm]):
    """The ground forms of a cross section."""

class CrossSection:
    """One design cross section at one station of the centre line."""
    def __init__(self, station: Optional[float] = ..., name: str = ...) -> None:
        """A section that stands alone, until it is added to a set's `sections`."""
    def copy(self) -> CrossSection:
        """A copy that stands alone."""
    def __copy__(self) -> CrossSection: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> CrossSection: ...
    @property
    def station(self) -> Optional[float]:
        """Station: distance along the centre line in metres."""
    @station.setter
    def station(self, value: Optional[float]) -> None: ...
    @property
    def name(self) -> str:
        """Name of the section, such as No.6."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def height(self) -> Optional[float]:
        """Height of the centre line in metres. Documents do not hold it."""
    @height.setter
    def height(self, value: Optional[float]) -> None: ...
    @property
    def is_control_section(self) -> bool:
        """Whether this is an as-built control section."""
    @is_control_section.setter
    def is_control_section(self, value: bool) -> None: ...
    @property
    def is_behind_change(self) -> bool:
        """Whether this is the section behind a change of shape."""
    @is_behind_change.setter
    def is_behind_change(self, value: bool) -> None: ...
    @property
    def shift_height(self) -> Optional[float]:
        """Shift of the section upward in metres."""
    @shift_height.setter
    def shift_height(self, value: Optional[float]) -> None: ...
    @property
    def shift_offset(self) -> Optional[float]:
        """Shift of the section sideways in metres, negative to the left."""
    @shift_offset.setter
    def shift_offset(self, value: Optional[float]) -> None: ...
    @property
    def direction_angle(self) -> str:
        """Direction angle as the document writes it."""
    @direction_angle.setter
    def direction_angle(self, value: str) -> None: ...
    @property
    def target_point_id(self) -> str:
        """Identifier of the target point."""
    @target_point_id.setter
    def target_point_id(self, value: str) -> None: ...
    @property
    def section_id(self) -> Optional[int]:
        """Identifier in projects; None when unassigned."""
    @section_id.setter
    def section_id(self, value: Optional[int]) -> None: ...
    @property
    def writes_ground(self) -> bool:
        """Whether the existing ground is in use and written to documents. Reading sets it."""
    @writes_ground.setter
    def writes_ground(self, value: bool) -> None: ...
    @property
    def forms(self) -> BuildForms:
        """The build forms: the design surface and those derived from it."""
    @property
    def ground_forms(self) -> GroundForms:
        """The forms of the existing ground."""
    @property
    def is_valid(self) -> bool:
        """Whether the station is set, and there is at least one form, each valid."""
    @property
    def has_ground(self) -> bool:
        """Whether the existing ground is in use and has points."""
    def find_form(self, name: str, code: Optional[str] = ...) -> Optional[BuildForm]:
        """The first form of that name (exactly) that, when a code is given, has a point of that code; otherwise None."""
    def recalc(self, center_height: Optional[float]) -> None:
        """Recomputes the positions of all points from their input values, as the design's edition reads them.

        :param center_height: height of the centre line in metres; None counts as 0"""
    def recalc_crossings(self) -> None:
        """Recomputes the crossing points with the existing ground on both sides. The points have to be placed first.
        Forms and points are to be taken from the section again."""
    def mirror(self) -> None:
        """Exchanges left and right. Forms and points are to be taken from the section again.
        `DesignEditor.mirror` keeps control targets and input values in step."""
    def to_svg(self, *, center_height: Optional[float] = ..., scale: Optional[float] = ..., exaggeration: float = ..., language: Language = ...) -> str:
        """The section as an SVG drawing in millimetres, to scale. Notebooks show it by themselves.

        :param center_height: height of the centre line in metres, where the design does not tell it
        :param scale: draw at 1:scale; None takes the largest usual one that fits an A3 sheet
        :param exaggeration: how many times heights are drawn larger than widths
        :param language: of the drawing's own words
        :raises ValueError: the section stands in no document"""

class CrossSections(_Collection[CrossSection]):
    """The cross sections of a set, ordered by station."""

class CrossSectionSet:
    """The design cross sections of one road alignment and one vertical alignment, ordered by
    station, with the set's own control targets."""
    def __init__(self, ref_align: str = ..., ref_vertical: str = ...) -> None:
        """A set that stands alone, until it is added to a document's `sets`."""
    def copy(self) -> CrossSectionSet:
        """A copy that stands alone."""
    def __copy__(self) -> CrossSectionSet: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> CrossSectionSet: ...
    @property
    def ref_align(self) -> str:
        """Name of the road alignment."""
    @ref_align.setter
    def ref_align(self, value: str) -> None: ...
    @property
    def ref_vertical(self) -> str:
        """Name of the vertical alignment."""
    @ref_vertical.setter
    def ref_vertical(self, value: str) -> None: ...
    @property
    def project_phase(self) -> str:
        """Phase of the project."""
    @project_phase.setter
    def project_phase(self, value: str) -> None: ...
    @property
    def is_along_alignment(self) -> bool:
        """Whether the sections stand along the alignment."""
    @is_along_alignment.setter
    def is_along_alignment(self, value: bool) -> None: ...
    @property
    def sections(self) -> CrossSections:
        """The cross sections, ordered by station."""
    @property
    def targets(self) -> ControlTargets:
        """The set's control targets; edition 2.0 keeps them in the forms."""
    @property
    def is_valid(self) -> bool:
        """Whether both alignments are named, and there is at least one section, each valid."""
    def find_section(self, station: float, is_behind_change: bool = ...) -> Optional[CrossSection]:
        """The section less than 1e-6 m from a station (metres); of the two at a change of shape the one before it, or the
        one behind it. None when there is none."""
    def add_section(self, section: CrossSection) -> None:
        """Adds a section in the order of stations, behind one at the same station."""

class CrossSectionSets(_Collection[CrossSectionSet]):
    """The cross-section sets of a document."""

class FileInfo:
    """When a document was created and last changed, with a free note."""
    def __init__(self, create_date: Optional[datetime.datetime] = ..., change_date: Optional[datetime.datetime] = ..., note: str = ...) -> None:
        """File information that stands alone, until it is added to a document's `file_infos`."""
    def copy(self) -> FileInfo:
        """A copy that stands alone."""
    def __copy__(self) -> FileInfo: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> FileInfo: ...
    @property
    def create_date(self) -> Optional[datetime.datetime]:
        """When the document was created, to the second."""
    @create_date.setter
    def create_date(self, value: Optional[datetime.datetime]) -> None: ...
    @property
    def change_date(self) -> Optional[datetime.datetime]:
        """When the document was last changed, to the second."""
    @change_date.setter
    def change_date(self, value: Optional[datetime.datetime]) -> None: ...
    @property
    def note(self) -> str:
        """A free note; it is not written without a change date."""
    @note.setter
    def note(self, value: str) -> None: ...

class FileInfos(_Collection[FileInfo]):
    """The file information of a document."""

class StructureType:
    """The kind of construction work that a document describes."""
    def __init__(self, work: Optional[Work] = ...) -> None:
        """A structure type that stands alone."""
    def copy(self) -> StructureType:
        """A copy that stands alone."""
    def __copy__(self) -> StructureType: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> StructureType: ...
    @property
    def work(self) -> Optional[Work]:
        """Kind of work; None when the name is none of those known."""
    @work.setter
    def work(self, value: Optional[Work]) -> None: ...
    @property
    def work_name(self) -> str:
        """Name of the kind of work."""
    @work_name.setter
    def work_name(self, value: str) -> None: ...
    @property
    def job_name(self) -> str:
        """Name of the job."""
    @job_name.setter
    def job_name(self, value: str) -> None: ...
    @property
    def company(self) -> str:
        """Name of the company."""
    @company.setter
    def company(self, value: str) -> None: ...
    @property
    def station_type(self) -> str:
        """Kind of station numbering: NO, SP, STA or 距離標."""
    @station_type.setter
    def station_type(self, value: str) -> None: ...
    @property
    def is_valid(self) -> bool:
        """Whether kind of work and station numbering are known."""

class CoordinateSystem:
    """A coordinate reference system. Alignments refer to it by its name."""
    def __init__(self) -> None: ...
    def copy(self) -> CoordinateSystem:
        """A copy that stands alone."""
    def __copy__(self) -> CoordinateSystem: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> CoordinateSystem: ...
    @property
    def name(self) -> str:
        """Name of the system."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def geodetic_datum(self) -> Optional[GeodeticDatum]:
        """Horizontal geodetic datum."""
    @geodetic_datum.setter
    def geodetic_datum(self, value: Optional[GeodeticDatum]) -> None: ...
    @property
    def vertical_datum(self) -> str:
        """Designation of the vertical datum."""
    @vertical_datum.setter
    def vertical_datum(self, value: str) -> None: ...
    @property
    def vertical_height(self) -> float:
        """Length in metres that goes with the vertical datum."""
    @vertical_height.setter
    def vertical_height(self, value: float) -> None: ...
    @property
    def coordinates(self) -> Optional[HorizontalCoordinates]:
        """Plane rectangular system, or latitude and longitude."""
    @coordinates.setter
    def coordinates(self, value: Optional[HorizontalCoordinates]) -> None: ...
    @property
    def aux_code(self) -> int:
        """A code kept for applications."""
    @aux_code.setter
    def aux_code(self, value: int) -> None: ...
    @property
    def aux_text(self) -> str:
        """A text kept for applications."""
    @aux_text.setter
    def aux_text(self, value: str) -> None: ...
    @property
    def datum_code(self) -> str:
        """Code of the horizontal datum, such as JGD2011."""
    @property
    def system_code(self) -> str:
        """Code of the plane rectangular system, such as 9(X,Y)."""

class CoordinateSystems(_Collection[CoordinateSystem]):
    """The coordinate reference systems of a project."""

class ControlPoint:
    """A horizontal control point."""
    def __init__(self) -> None: ...
    def copy(self) -> ControlPoint:
        """A copy that stands alone."""
    def __copy__(self) -> ControlPoint: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> ControlPoint: ...
    @property
    def number(self) -> int:
        """Identifier within the collection."""
    @number.setter
    def number(self, value: int) -> None: ...
    @property
    def name(self) -> str:
        """Name of the point."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def point_class(self) -> Optional[ControlPointClass]:
        """Class of the point."""
    @point_class.setter
    def point_class(self, value: Optional[ControlPointClass]) -> None: ...

class BenchMark:
    """A levelling bench mark."""
    def __init__(self) -> None: ...
    def copy(self) -> BenchMark:
        """A copy that stands alone."""
    def __copy__(self) -> BenchMark: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> BenchMark: ...
    @property
    def number(self) -> int:
        """Identifier within the collection."""
    @number.setter
    def number(self, value: int) -> None: ...
    @property
    def name(self) -> str:
        """Name of the bench mark."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def point_class(self) -> Optional[BenchMarkClass]:
        """Class of the bench mark."""
    @point_class.setter
    def point_class(self, value: Optional[BenchMarkClass]) -> None: ...

class SurveyPoint:
    """A ground point, by its number and its name."""
    def __init__(self) -> None: ...
    def copy(self) -> SurveyPoint:
        """A copy that stands alone."""
    def __copy__(self) -> SurveyPoint: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> SurveyPoint: ...
    @property
    def number(self) -> int:
        """Identifier within the group."""
    @number.setter
    def number(self, value: int) -> None: ...
    @property
    def name(self) -> str:
        """Name of the point."""
    @name.setter
    def name(self, value: str) -> None: ...

class SurveyPoints(_Collection[SurveyPoint]):
    """The points of a survey group."""

class SurveyGroup:
    """A group of ground points, with two names."""
    def __init__(self) -> None: ...
    def copy(self) -> SurveyGroup:
        """A copy that stands alone."""
    def __copy__(self) -> SurveyGroup: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> SurveyGroup: ...
    @property
    def name(self) -> str:
        """Name of the group."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def name2(self) -> str:
        """Second name of the group."""
    @name2.setter
    def name2(self, value: str) -> None: ...
    @property
    def points(self) -> SurveyPoints:
        """The points."""

class HorizontalPoints(_Collection[ControlPoint]):
    """The horizontal control points of a site."""

class BenchMarks(_Collection[BenchMark]):
    """The bench marks of a site."""

class SurveyGroups(_Collection[SurveyGroup]):
    """The groups of ground points of a site."""

class ControlPoints:
    """The survey control points of a site."""
    def copy(self) -> ControlPoints:
        """A copy that stands alone."""
    def __copy__(self) -> ControlPoints: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> ControlPoints: ...
    @property
    def name(self) -> str:
        """Name of the site's points."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def horizontal_points(self) -> HorizontalPoints:
        """Horizontal control points."""
    @property
    def bench_marks(self) -> BenchMarks:
        """Levelling bench marks."""
    @property
    def groups(self) -> SurveyGroups:
        """Groups of ground points."""

class RoadInfo:
    """What a road is: its class, its design speed, its traffic class."""
    def copy(self) -> RoadInfo:
        """A copy that stands alone."""
    def __copy__(self) -> RoadInfo: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> RoadInfo: ...
    @property
    def name(self) -> str:
        """Name of the road."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def road_class(self) -> Optional[RoadClass]:
        """Class of the road."""
    @road_class.setter
    def road_class(self, value: Optional[RoadClass]) -> None: ...
    @property
    def river_class(self) -> Optional[RiverClass]:
        """Class of the river, which takes the place of the road class in river works; not part of projects."""
    @river_class.setter
    def river_class(self, value: Optional[RiverClass]) -> None: ...
    @property
    def design_speed(self) -> Optional[DesignSpeed]:
        """Design speed."""
    @design_speed.setter
    def design_speed(self, value: Optional[DesignSpeed]) -> None: ...
    @property
    def speed_kmh(self) -> Optional[int]:
        """Design speed in km/h; None when it is unset."""
    @speed_kmh.setter
    def speed_kmh(self, value: Optional[int]) -> None: ...
    @property
    def traffic_class(self) -> int:
        """Traffic class."""
    @traffic_class.setter
    def traffic_class(self, value: int) -> None: ...
    @property
    def road_class_text(self) -> str:
        """Text of the road class, such as 第3種第2級."""

class Alignment:
    """A road alignment with its cross sections."""
    def __init__(self, name: str = ...) -> None:
        """An alignment that stands alone, until it is added to a road geometry."""
    def copy(self) -> Alignment:
        """A copy that stands alone."""
    def __copy__(self) -> Alignment: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> Alignment: ...
    @property
    def name(self) -> str:
        """Name of the alignment."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def crs_name(self) -> str:
        """Name of its coordinate system."""
    @crs_name.setter
    def crs_name(self, value: str) -> None: ...
    @property
    def aux_text(self) -> str:
        """A text kept for applications."""
    @aux_text.setter
    def aux_text(self, value: str) -> None: ...
    @property
    def section_set(self) -> CrossSectionSet:
        """The set of cross sections. While the project's design is given out, it is there and not here."""
    @property
    def dates(self) -> List[Optional[datetime.datetime]]:
        """Three dates kept for applications."""
    @dates.setter
    def dates(self, value: List[Optional[datetime.datetime]]) -> None: ...

class Alignments(_Collection[Alignment]):
    """The alignments of a road geometry."""

class RoadGeometry:
    """The road, its alignments and the kind of work."""
    def copy(self) -> RoadGeometry:
        """A copy that stands alone."""
    def __copy__(self) -> RoadGeometry: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> RoadGeometry: ...
    @property
    def road(self) -> RoadInfo:
        """What the road is."""
    @property
    def alignments(self) -> Alignments:
        """The alignments."""
    @property
    def current_alignment(self) -> Optional[Alignment]:
        """The current alignment, one of `alignments`; None for none."""
    @current_alignment.setter
    def current_alignment(self, value: Optional[Alignment]) -> None: ...
    @property
    def file_infos(self) -> FileInfos:
        """When the design was created and changed."""
    @property
    def structure_type(self) -> StructureType:
        """The kind of work."""
    @property
    def text(self) -> str:
        """A text kept for applications."""
    @text.setter
    def text(self, value: str) -> None: ...

class ControlItemNames:
    """How the as-built control items are called and their points marked."""
    def copy(self) -> ControlItemNames:
        """A copy that stands alone."""
    def __copy__(self) -> ControlItemNames: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> ControlItemNames: ...
    @property
    def road_center(self) -> str:
        """Name for the centre of the road."""
    @road_center.setter
    def road_center(self, value: str) -> None: ...
    @property
    def road_left(self) -> str:
        """Name for the left of the road."""
    @road_left.setter
    def road_left(self, value: str) -> None: ...
    @property
    def road_right(self) -> str:
        """Name for the right of the road."""
    @road_right.setter
    def road_right(self, value: str) -> None: ...
    @property
    def slope_left(self) -> str:
        """Name for slopes on the left."""
    @slope_left.setter
    def slope_left(self, value: str) -> None: ...
    @property
    def slope_right(self) -> str:
        """Name for slopes on the right."""
    @slope_right.setter
    def slope_right(self, value: str) -> None: ...
    @property
    def road_surface(self) -> str:
        """Name for the road surface."""
    @road_surface.setter
    def road_surface(self, value: str) -> None: ...
    @property
    def berm_left(self) -> str:
        """Name for berms on the left."""
    @berm_left.setter
    def berm_left(self, value: str) -> None: ...
    @property
    def berm_right(self) -> str:
        """Name for berms on the right."""
    @berm_right.setter
    def berm_right(self, value: str) -> None: ...
    @property
    def other_left(self) -> str:
        """Name for other items on the left."""
    @other_left.setter
    def other_left(self, value: str) -> None: ...
    @property
    def other_right(self) -> str:
        """Name for other items on the right."""
    @other_right.setter
    def other_right(self, value: str) -> None: ...
    @property
    def slope_marks(self) -> MarkType:
        """Labels that mark the points of slopes."""
    @slope_marks.setter
    def slope_marks(self, value: MarkType) -> None: ...
    @property
    def berm_marks(self) -> MarkType:
        """Labels that mark the points of berms."""
    @berm_marks.setter
    def berm_marks(self, value: MarkType) -> None: ...
    @property
    def road_marks(self) -> MarkType:
        """Labels that mark the points of the road."""
    @road_marks.setter
    def road_marks(self, value: MarkType) -> None: ...
    @property
    def other_marks(self) -> MarkType:
        """Labels that mark other points."""
    @other_marks.setter
    def other_marks(self, value: MarkType) -> None: ...

class ConstructionInfo:
    """Coordinate systems, survey control points, road geometry, and the names of the as-built
    control items."""
    def copy(self) -> ConstructionInfo:
        """A copy that stands alone."""
    def __copy__(self) -> ConstructionInfo: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> ConstructionInfo: ...
    @property
    def coordinate_systems(self) -> CoordinateSystems:
        """The coordinate reference systems."""
    @property
    def control_points(self) -> ControlPoints:
        """The survey control points."""
    @property
    def road_geometry(self) -> RoadGeometry:
        """The road geometry."""
    @property
    def control_names(self) -> ControlItemNames:
        """How the as-built control items are called."""

class Creator:
    """Who made the data."""
    def __init__(self) -> None: ...
    def copy(self) -> Creator:
        """A copy that stands alone."""
    def __copy__(self) -> Creator: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> Creator: ...
    @property
    def name(self) -> str:
        """Name of the creator."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def text(self) -> str:
        """A free text."""
    @text.setter
    def text(self, value: str) -> None: ...

class Creators(_Collection[Creator]):
    """Who made the data of a project."""

class ProjectInfo:
    """Name, date and phase of a project, and who made its data."""
    def copy(self) -> ProjectInfo:
        """A copy that stands alone."""
    def __copy__(self) -> ProjectInfo: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> ProjectInfo: ...
    @property
    def name(self) -> str:
        """Name of the project."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def date(self) -> Optional[datetime.datetime]:
        """Date of the project, to the second."""
    @date.setter
    def date(self, value: Optional[datetime.datetime]) -> None: ...
    @property
    def phase(self) -> ProjectPhase:
        """Phase of the project."""
    @phase.setter
    def phase(self, value: ProjectPhase) -> None: ...
    @property
    def text(self) -> str:
        """A free text."""
    @text.setter
    def text(self, value: str) -> None: ...
    @property
    def creators(self) -> Creators:
        """Who made the data."""

class RoadCenter:
    """The project itself, coordinate systems, groups of ground points, and road geometry."""
    def copy(self) -> RoadCenter:
        """A copy that stands alone."""
    def __copy__(self) -> RoadCenter: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> RoadCenter: ...
    @property
    def project(self) -> ProjectInfo:
        """The project itself."""
    @property
    def coordinate_systems(self) -> CoordinateSystems:
        """The coordinate reference systems."""
    @property
    def groups(self) -> SurveyGroups:
        """Groups of ground points."""
    @property
    def road_geometry(self) -> RoadGeometry:
        """The road geometry."""

class LandXmlPoint:
    """A ground point that is selected for the LandXML export."""
    def __init__(self, number: int = ...) -> None:
        """A point that stands alone, until it is added to the settings' `points`."""
    def copy(self) -> LandXmlPoint:
        """A copy that stands alone."""
    def __copy__(self) -> LandXmlPoint: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> LandXmlPoint: ...
    @property
    def number(self) -> int:
        """Number of the ground point (`SurveyPoint.number`)."""
    @number.setter
    def number(self, value: int) -> None: ...

class LandXmlPoints(_Collection[LandXmlPoint]):
    """The ground points of a LandXML export."""

class LandXmlAlignment:
    """An alignment's entry in the LandXML export."""
    def __init__(self, name: str = ...) -> None:
        """An entry that stands alone, until it is added to the settings' `alignments`."""
    def copy(self) -> LandXmlAlignment:
        """A copy that stands alone."""
    def __copy__(self) -> LandXmlAlignment: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> LandXmlAlignment: ...
    @property
    def name(self) -> str:
        """Name of the alignment."""
    @name.setter
    def name(self, value: str) -> None: ...
    @property
    def text(self) -> str:
        """A text kept for applications."""
    @text.setter
    def text(self, value: str) -> None: ...
    @property
    def flag(self) -> int:
        """Not 0 when the alignment is selected; what else it says is the application's."""
    @flag.setter
    def flag(self, value: int) -> None: ...
    @property
    def code1(self) -> Optional[int]:
        """A code kept for applications; None when it is not set."""
    @code1.setter
    def code1(self, value: Optional[int]) -> None: ...
    @property
    def code2(self) -> Optional[int]:
        """A code kept for applications; None when it is not set."""
    @code2.setter
    def code2(self, value: Optional[int]) -> None: ...
    @property
    def code3(self) -> Optional[int]:
        """A code kept for applications; None when it is not set."""
    @code3.setter
    def code3(self, value: Optional[int]) -> None: ...

class LandXmlAlignments(_Collection[LandXmlAlignment]):
    """The alignments of a LandXML export."""

class LandXmlSettings:
    """What a project's export to LandXML is set to. The export itself is the application's."""
    def copy(self) -> LandXmlSettings:
        """A copy that stands alone."""
    def __copy__(self) -> LandXmlSettings: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> LandXmlSettings: ...
    @property
    def project_name(self) -> str:
        """Name of the project."""
    @project_name.setter
    def project_name(self, value: str) -> None: ...
    @property
    def project_description(self) -> str:
        """Description of the project."""
    @project_description.setter
    def project_description(self, value: str) -> None: ...
    @property
    def points(self) -> LandXmlPoints:
        """The selected ground points."""
    @property
    def alignments(self) -> LandXmlAlignments:
        """The alignments."""
    @property
    def point_option1(self) -> int:
        """An option of the ground points, kept for applications."""
    @point_option1.setter
    def point_option1(self, value: int) -> None: ...
    @property
    def point_option2(self) -> int:
        """An option of the ground points, kept for applications."""
    @point_option2.setter
    def point_option2(self, value: int) -> None: ...
    @property
    def any_flag(self) -> int:
        """1 in new data; of older projects, 1 when any alignment was selected, otherwise 0."""
    @any_flag.setter
    def any_flag(self, value: int) -> None: ...
    @property
    def option1(self) -> int:
        """An option kept for applications."""
    @option1.setter
    def option1(self, value: int) -> None: ...
    @property
    def option2(self) -> int:
        """An option kept for applications while the project is open; projects do not hold it."""
    @option2.setter
    def option2(self, value: int) -> None: ...
    @property
    def option3(self) -> int:
        """An option kept for applications."""
    @option3.setter
    def option3(self, value: int) -> None: ...
    @property
    def value(self) -> float:
        """A number kept for applications."""
    @value.setter
    def value(self, value: float) -> None: ...
    @property
    def texts(self) -> List[str]:
        """Texts kept for applications, as a list of its own."""
    @texts.setter
    def texts(self, value: List[str]) -> None: ...

class RoadData:
    """All road and survey data of a project."""
    def copy(self) -> RoadData:
        """A copy that stands alone."""
    def __copy__(self) -> RoadData: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> RoadData: ...
    @property
    def construction(self) -> ConstructionInfo:
        """The construction information."""
    @property
    def road_center(self) -> RoadCenter:
        """The road-centre data."""
    @property
    def land_xml(self) -> LandXmlSettings:
        """What the export to LandXML is set to."""

def vertical_datums() -> List[Tuple[str, str, float]]:
    """The vertical datums of Japan: the body of water, the designation (`CoordinateSystem.vertical_datum`), and the
    height of the zero above that of Tokyo Bay in metres. Two have the designation A.P."""

class UnreadValue:
    """A value of a document that was not understood; it is not written again."""
    def __eq__(self, other: object) -> bool: ...
    def __copy__(self) -> UnreadValue: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> UnreadValue: ...
    @property
    def line(self) -> int:
        """Line of the document, from 1."""
    @property
    def where(self) -> str:
        """Element and attribute."""
    @property
    def text(self) -> str:
        """The value as the document has it."""
    @property
    def reason(self) -> str:
        """Why it was not understood."""

class Finding:
    """One thing found wrong in a document."""
    def __eq__(self, other: object) -> bool: ...
    def __copy__(self) -> Finding: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> Finding: ...
    @property
    def severity(self) -> Severity:
        """How bad it is."""
    @property
    def kind(self) -> str:
        """What kind of thing; the same text for like findings."""
    @property
    def place(self) -> str:
        """Where: set, station, form, point or control target."""
    @property
    def reason(self) -> str:
        """Why, in words."""
    @property
    def set_index(self) -> Optional[int]:
        """Index of the set; None for none."""
    @property
    def section_index(self) -> Optional[int]:
        """Index of the section in its set; None for none."""
    @property
    def form_index(self) -> Optional[int]:
        """Index of the form in its section; None for none."""
    @property
    def point_index(self) -> Optional[int]:
        """Index of the point in its form; None for none."""

class WriteReport:
    """What writing a document did."""
    def __eq__(self, other: object) -> bool: ...
    def __copy__(self) -> WriteReport: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> WriteReport: ...
    @property
    def replaced_characters(self) -> int:
        """How many characters became 〓."""
    @property
    def unplaced(self) -> List[Tuple[str, int]]:
        """What was carried over and had no place any more, by name and number."""

class ConversionReport:
    """What a conversion between editions did."""
    def __eq__(self, other: object) -> bool: ...
    def __copy__(self) -> ConversionReport: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> ConversionReport: ...
    @property
    def dropped(self) -> List[Tuple[str, int]]:
        """What the edition cannot hold, by name and number."""
    @property
    def not_written(self) -> List[Tuple[str, int]]:
        """What is not written in any edition, by name and number."""
    @property
    def lost_targets(self) -> List[str]:
        """Control targets that could not be carried, and why."""
    @property
    def notes(self) -> List[str]:
        """Further remarks."""
    @property
    def converted_points(self) -> int:
        """Points whose input values were re-expressed."""
    @property
    def largest_displacement(self) -> float:
        """The largest distance in metres that a point moved."""
    @property
    def largest_displacement_at(self) -> str:
        """Place of that point."""
    @property
    def far_points(self) -> int:
        """Points that moved by more than a millimetre."""
    @property
    def moved_targets(self) -> int:
        """Control targets that went from the forms to the set or back."""

class DesignDocument:
    """A design document: the model of it, and what the model does not hold, so that it
    can be written again without a loss."""
    def __init__(self, edition: Edition = ...) -> None:
        """A new document."""
    @staticmethod
    def read(path: Union[str, os.PathLike[str]], *, assume: Optional[Edition] = ..., lossy: bool = ..., most_bytes: int = ..., most_carried_items: int = ...) -> DesignDocument:
        """Reads a document. Other threads go on meanwhile.

        :param assume: edition of a document that is not recognised; without one it is refused
        :param lossy: replace characters that code page 932 cannot hold by 〓 instead of refusing the document
        :param most_bytes: a larger one is refused; reading takes memory in proportion
        :param most_carried_items: a document with more that is not of a design is refused
        :raises DocumentError: it cannot be read"""
    @staticmethod
    def from_bytes(data: bytes, name: str = ..., *, assume: Optional[Edition] = ..., lossy: bool = ..., most_bytes: int = ..., most_carried_items: int = ...) -> DesignDocument:
        """Reads the bytes of a document as `read` does; the name stands for the file in messages."""
    def write(self, path: Union[str, os.PathLike[str]], *, encoding: Encoding = ..., lossy: bool = ...) -> WriteReport:
        """Writes the document in its edition, whole or not at all, and never over a project. Other threads go on meanwhile.

        :raises DocumentError: it cannot be written; an existing file stays as it is"""
    def to_bytes(self, name: str = ..., *, encoding: Encoding = ..., lossy: bool = ...) -> bytes:
        """The bytes that `write` writes; the name stands for the file in messages."""
    def check(self) -> List[Finding]:
        """Checks the document in its own edition, and gives what is wrong in the order of the document."""
    def convert(self, edition: Edition) -> ConversionReport:
        """Converts the document to another edition; every point but a centre point keeps its position. Forms, points
        and control targets are to be taken from the document again.

        :raises DocumentError: it is a pure road-geometry document"""
    @property
    def edition(self) -> Edition:
        """The edition that the document is written in; `convert` changes it."""
    @property
    def is_edition_assumed(self) -> bool:
        """Whether the edition was not recognised but assumed."""
    @property
    def encoding_name(self) -> str:
        """What the document that was read calls its encoding."""
    @property
    def replaced_characters(self) -> int:
        """How many characters were replaced while reading."""
    @property
    def unread_values(self) -> List[UnreadValue]:
        """What was not understood in reading, and will not be written."""
    @property
    def carried(self) -> List[Tuple[str, int]]:
        """What is carried over unchanged since the model does not hold it, by name and number."""
    @property
    def file_infos(self) -> FileInfos:
        """When the document was created and changed."""
    @property
    def sets(self) -> CrossSectionSets:
        """The cross-section sets."""
    @property
    def structure_type(self) -> Optional[StructureType]:
        """The kind of work, None when the document has none. One that is set is copied."""
    @structure_type.setter
    def structure_type(self, value: Optional[StructureType]) -> None: ...
    def to_csv(self, content: TableContent = ..., *, center_height: Optional[float] = ...) -> str:
        """A table of all cross sections as comma-separated values, in metres; what is not known is empty. Sets,
        sections, forms and points count from 1.

        :param content: what the rows are
        :param center_height: height of the centre line in metres, where the design does not tell it"""
    def write_csv(self, path: Union[str, os.PathLike[str]], content: TableContent = ..., *, byte_order_mark: bool = ..., center_height: Optional[float] = ...) -> List[Tuple[str, str]]:
        """Writes what `to_csv` gives, in UTF-8.

        :param content: what the rows are
        :param byte_order_mark: begin with one, by which spreadsheets know UTF-8
        :param center_height: height of the centre line in metres, where the design does not tell it
        :returns: places and what could not be shown there
        :raises DocumentError: the file cannot be written, or is or is named like a design"""
    def to_geojson(self, *, center_height: Optional[float] = ...) -> str:
        """All cross sections as GeoJSON, with a feature for each section, line and control target. Coordinates
        are offset and height in the plane of the section, and no places on the earth.

        :param center_height: height of the centre line in metres, where the design does not tell it"""
    def write_geojson(self, path: Union[str, os.PathLike[str]], *, center_height: Optional[float] = ...) -> List[Tuple[str, str]]:
        """Writes what `to_geojson` gives.

        :param center_height: height of the centre line in metres, where the design does not tell it
        :returns: places and what could not be shown there
        :raises DocumentError: the file cannot be written, or is or is named like a design"""
    def to_dxf(self, *, center_height: Optional[float] = ..., scale: Optional[float] = ..., language: Language = ...) -> bytes:
        """A CAD drawing (DXF R12) of all cross sections side by side, in metres at true scale.

        :param center_height: height of the centre line in metres, where the design does not tell it
        :param scale: texts and marks are as large as on paper at 1:scale; None takes the largest usual one that fits
        :param language: of the drawing's own words"""
    def write_dxf(self, path: Union[str, os.PathLike[str]], *, center_height: Optional[float] = ..., scale: Optional[float] = ..., language: Language = ...) -> List[Tuple[str, str]]:
        """Writes what `to_dxf` gives.

        :param center_height: height of the centre line in metres, where the design does not tell it
        :param scale: texts and marks are as large as on paper at 1:scale; None takes the largest usual one that fits
        :param language: of the drawing's own words
        :returns: places and what could not be shown there
        :raises DocumentError: the file cannot be written, or is or is named like a design"""
    def to_html(self, name: str = ..., *, center_height: Optional[float] = ..., exaggeration: float = ..., language: Optional[Language] = ...) -> str:
        """A page for the browser: every cross section with its drawing, its control targets and what is wrong in
        it. The page needs nothing but itself.

        :param name: of the design, as the page shows it
        :param center_height: height of the centre line in metres, where the design does not tell it
        :param exaggeration: how many times heights are drawn larger than widths
        :param language: that the page begins with; None takes the reader's own"""
    def write_report(self, path: Union[str, os.PathLike[str]], name: str = ..., *, center_height: Optional[float] = ..., exaggeration: float = ..., language: Optional[Language] = ...) -> None:
        """Writes the page that `to_html` gives.

        :param name: of the design, as the page shows it
        :param center_height: height of the centre line in metres, where the design does not tell it
        :param exaggeration: how many times heights are drawn larger than widths
        :param language: that the page begins with; None takes the reader's own
        :raises DocumentError: the file cannot be written, or is or is named like a design"""

def sample(kind: SampleKind = ..., sections: int = ..., seed: int = ...) -> DesignDocument:
    """Makes a realistic synthetic design of edition 4.1; `convert` gives it another one.
    The same arguments give the same design."""

class EditReport:
    """What one editing step changed."""
    def __eq__(self, other: object) -> bool: ...
    def __copy__(self) -> EditReport: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> EditReport: ...
    @property
    def changes(self) -> List[Tuple[str, str]]:
        """Cross sections that changed, each with its place and what changed."""
    @property
    def remarks(self) -> List[Tuple[str, str]]:
        """Cross sections that did not change as the step would have it, and why."""
    @property
    def counts(self) -> Dict[str, int]:
        """Totals of what changed, by name."""
    @property
    def notes(self) -> List[str]:
        """What one has to know besides."""
    @property
    def has_changed(self) -> bool:
        """Whether anything changed."""

class DesignEditor:
    """Edits the cross sections of a document, a step at a time: input values follow the positions, control targets
    follow their forms, and what is carried over follows its elements.

    After a step, forms, points and control targets are to be taken from their sections again. When a step raises
    `EditError`, the design may be half edited and must not be written."""
    def __init__(self, document: DesignDocument) -> None:
        """Numbers the forms that have no serial, and places the points of sections that are not placed yet, relative
        to the centre line."""
    @property
    def document(self) -> DesignDocument:
        """The document that is edited."""
    def recalc(self, center_height: Optional[float] = ...) -> EditReport:
        """Places all points from the height of the centre line in metres; None takes each section's own."""
    def recalc_crossings(self) -> EditReport:
        """Recomputes the crossings with the existing ground. The points have to be placed first."""
    def mirror(self) -> EditReport:
        """Exchanges left and right."""
    def shift(self, offset: float, height: float = ...) -> EditReport:
        """Shifts the sections, in metres: sideways, negative to the left, which moves the points; and upward, which is
        noted and moves none."""
    def retype(self, left: str, right: str) -> EditReport:
        """Gives the sections one work type, or two for left and right."""
    def sort_forms(self, names: List[str]) -> EditReport:
        """Puts the forms of these names first, in this order."""
    def remove_form(self, name: str) -> EditReport:
        """Removes the forms of that name, with the control targets on them."""
    def rename_form(self, xsect_type: str, old_name: str, new_name: str) -> EditReport:
        """Renames the forms of a cross-section type and a name, in the control targets too."""
    def clear_codes(self) -> EditReport:
        """Empties the codes of all points."""
    def regulate_targets(self) -> EditReport:
        """Puts the control targets into their canonical form, and removes repeated ones."""
    def lost_targets(self) -> List[str]:
        """Where control targets name a form or a code that does not exist, and did before the first step."""

class Project:
    """A design with all its road data, as a project file keeps it."""
    def __init__(self) -> None:
        """A new project without road data."""
    @staticmethod
    def read(path: Union[str, os.PathLike[str]], *, most_bytes: int = ..., most_carried_items: int = ...) -> Project:
        """Reads a project of any store version. Other threads go on meanwhile.

        :param most_bytes: a larger one is refused; reading takes memory in proportion
        :param most_carried_items: a project with more that is not of a design is refused
        :raises DocumentError: it cannot be read, is damaged, or was written by a newer program"""
    @staticmethod
    def from_bytes(data: bytes, name: str = ..., *, most_bytes: int = ..., most_carried_items: int = ...) -> Project:
        """Reads the bytes of a project as `read` does; the name stands for the file in messages."""
    def save(self, path: Union[str, os.PathLike[str]], store_version: str = ...) -> List[Tuple[str, int]]:
        """Saves the project, whole or not at all; the former file stays beside it with .bak behind its name. Other
        threads go on meanwhile.

        :param store_version: 05.00, 05.50 or 06.00
        :returns: what the store version cannot hold, by name and number; the project itself keeps it
        :raises DocumentError: it cannot be saved, or its design is given out"""
    def to_bytes(self, name: str = ..., store_version: str = ...) -> bytes:
        """The bytes that `save` writes; the name stands for the file in messages."""
    def give_design(self) -> DesignDocument:
        """Hands out the design. The road data are without it until `take_design` takes it back, and what was taken
        from their collections has to be taken again."""
    def take_design(self, design: DesignDocument) -> None:
        """Makes a design the project's own in place of the one that it has. The document is used up: whatever was
        taken from it raises `ExpiredError` from then on."""
    @property
    def store_version(self) -> str:
        """Store version that the project was read in; the newest for a new one."""
    @property
    def holds_road_data(self) -> bool:
        """Whether the project holds anything besides the design. To be asked while the design is given out."""
    @property
    def data(self) -> RoadData:
        """All road and survey data."""

class FileReport:
    """What writing a file of either kind did."""
    def __eq__(self, other: object) -> bool: ...
    def __copy__(self) -> FileReport: ...
    def __deepcopy__(self, memo: Dict[Any, Any]) -> FileReport: ...
    @property
    def document(self) -> WriteReport:
        """What writing a document did."""
    @property
    def store_version(self) -> Optional[str]:
        """Store version of the project that was written; None for a document."""
    @property
    def losses(self) -> List[Tuple[str, int]]:
        """What the store version cannot hold, by name and number."""
    @property
    def former_file(self) -> Optional[str]:
        """Where the file that a project replaced is kept now; None when there was none."""
    @property
    def has_left_road_data(self) -> bool:
        """Whether a document was written of a project that holds more than the design."""

class DesignFile:
    """A design with the project that it came from, whichever of the two kinds of file it is in."""
    def __init__(self, design: DesignDocument, project: Optional[Project] = ...) -> None:
        """A design to be written, with the project that gave it, if one did."""
    @staticmethod
    def read(path: Union[str, os.PathLike[str]], *, assume: Optional[Edition] = ..., lossy: bool = ..., most_bytes: int = ..., most_carried_items: int = ...) -> DesignFile:
        """Reads a project when the file is named or begins like one, otherwise a document. Other threads go
        on meanwhile.

        :param assume: edition of a document that is not recognised; without one it is refused
        :param lossy: replace characters that code page 932 cannot hold by 〓 instead of refusing them
        :param most_bytes: a larger file is refused
        :param most_carried_items: a file with more that is not of a design is refused
        :raises DocumentError: it cannot be read"""
    @property
    def design(self) -> DesignDocument:
        """The design."""
    @property
    def project(self) -> Optional[Project]:
        """The project that the design came from, which has given it out; None for a document."""
    def write(self, path: Union[str, os.PathLike[str]], *, encoding: Encoding = ..., lossy: bool = ..., store_version: Optional[str] = ...) -> FileReport:
        """Writes a project when the file is named like one, or is one, otherwise a document, whole or not at all.
        After a project, forms, points and control targets are to be taken from the design again, and what is in
        the project's collections from the project. Other threads go on meanwhile.

        :param encoding: of a document
        :param lossy: a document has 〓 for characters that its encoding cannot hold
        :param store_version: of a project; None for that of the project read, or the newest
        :raises DocumentError: it cannot be written, or another kind of design would be lost"""

def holds_design(path: Union[str, os.PathLike[str]]) -> bool:
    """Whether there is a file that holds a design: one that begins as a project or a document does."""

def is_project_name(path: Union[str, os.PathLike[str]]) -> bool:
    """Whether a file name is that of a project: it ends with .vorn, in letters of either case."""

class UserSettings:
    """The user's settings of the dialogs for construction information: a mapping from names such as RoadInfo.speed
    to integers and texts. A setting that is not stored has its default. What is set is stored at once, and what
    another program stores counts at once. A place that cannot be read is warned of (RuntimeWarning), and all its
    settings have their defaults."""
    def __init__(self, company: str = ..., application: str = ..., *, total_station: bool = ...) -> None:
        """The settings of an application; those of the command-line tool unless told otherwise.

        :param total_station: the settings of the total-station edition, which are kept apart
        :raises DocumentError: there is no place for them"""
    @staticmethod
    def at(path: Union[str, os.PathLike[str]], *, total_station: bool = ...) -> UserSettings:
        """The settings in a file, which is TOML and need not exist yet."""
    @property
    def place(self) -> str:
        """Where they are: a file, or a key of the system registry."""
    def is_stored(self, name: str) -> bool:
        """Whether a value is stored, which is no default then."""
    @staticmethod
    def default(name: str) -> Union[int, str]:
        """What a setting is while none is stored."""
    @staticmethod
    def meaning(name: str, value: Union[int, str]) -> Optional[str]:
        """What a value of a setting stands for, such as 60 km/h; None for one that stands for nothing else."""
    def __getitem__(self, name: str) -> Union[int, str]: ...
    def __setitem__(self, name: str, value: Union[int, str]) -> None: ...
    def __contains__(self, name: object) -> bool: ...
    def __len__(self) -> int: ...
    def __iter__(self) -> Iterator[str]: ...
    def keys(self) -> List[str]:
        """The names of the settings."""
    def values(self) -> List[Union[int, str]]:
        """The values of the settings."""
    def items(self) -> List[Tuple[str, Union[int, str]]]:
        """The settings, each with its name and its value."""
    def get(self, name: str, default: Optional[Union[int, str]] = ...) -> Optional[Union[int, str]]:
        """The value of a setting, another one where there is none."""
    def load_names(self, names: ControlItemNames) -> None:
        """Gives a project the names and marks of the as-built control items."""
    def store_names(self, names: ControlItemNames) -> None:
        """Stores a project's names and marks of the as-built control items."""
    def load_road(self, road_geometry: RoadGeometry) -> None:
        """Gives a project the road class, the design speed and the traffic class."""
    def store_road(self, road_geometry: RoadGeometry) -> None:
        """Stores a project's road class, design speed and traffic class."""
