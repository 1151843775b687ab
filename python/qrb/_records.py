"""Point attribute definitions and settings, and the library's records behind them."""

from __future__ import annotations

import ctypes
import dataclasses
import math
import weakref
from dataclasses import dataclass
from enum import IntEnum
from typing import Any, Dict, Optional, Type, TypeVar, Union

from . import _prototypes
from ._error import known
from ._library import Library, load
from ._prototypes import DataType
from ._values import encoded, real, whole


class StorageClass(IntEnum):
    """How many values an attribute has: one for the whole file, one per point."""

    CONSTANT = 1
    VARIABLE = 2
    DYNAMIC = 3


class Compression(IntEnum):
    """How the values of an attribute are transformed before they are packed."""

    DEFAULT = 0
    DELTA = 1
    SHUFFLE = 2
    DELTA_SHUFFLE = 3


class ChunkMode(IntEnum):
    """What limits the leaves of the index."""

    POINT_COUNT = 1
    EDGE_LENGTH = 2


class LodMode(IntEnum):
    """How points of a level of detail are made of those below."""

    THINOUT = 1
    COMBINE = 2


class Record:
    """A record of the library: "point_attribute", "create_settings" or "open_settings"."""

    def __init__(self, library: Library, kind: str) -> None:
        self.library = library
        self._prefix = f"qrb_pointcloud_{kind}"
        handle = ctypes.POINTER(getattr(_prototypes, f"qrb_{kind}"))()
        library.free_call(f"{self._prefix}_new_cf", ctypes.byref(handle))
        # Calls take the record itself as an argument, which keeps it until they are over.
        self._as_parameter_ = handle
        delete = getattr(library, f"{self._prefix}_delete_cf")
        weakref.finalize(self, delete, handle).atexit = False

    def number(self, field: str, kind: Any) -> Any:
        number = kind()
        self.library.free_call(f"{self._prefix}_get_{field}_cf", self, ctypes.byref(number))
        return number.value

    def text(self, field: str) -> str:
        return self.library.owned_text(f"{self._prefix}_get_{field}_cf", self)

    def attribute(self, field: str, record: "Record") -> None:
        self.library.free_call(f"{self._prefix}_get_{field}_cf", self, record)

    def set(self, field: str, value: Any) -> None:
        self.library.free_call(f"{self._prefix}_set_{field}_cf", self, value)

    def load_json(self, json: str) -> None:
        self.library.free_call(f"{self._prefix}_json_load_cf", self, encoded(json, "json"))

    def save_json(self) -> str:
        return self.library.owned_text(f"{self._prefix}_json_save_cf", self)

    def data_type(self) -> DataType:
        number = ctypes.c_uint32()
        self.library.free_call(f"{self._prefix}_data_type_cf", self, ctypes.byref(number))
        return DataType(number.value)


class _Field:
    """How one field goes to and from a record."""

    def __init__(self, name: str, kind: Any, enumeration: Optional[Type[IntEnum]] = None) -> None:
        self.name = name
        self.kind = kind
        self.enumeration = enumeration

    def read(self, record: Record) -> Any:
        if self.kind is str:
            return record.text(self.name)
        if self.kind is Attribute:
            inner = Record(record.library, "point_attribute")
            record.attribute(self.name, inner)
            return Attribute.of_record(inner)
        value = record.number(self.name, ctypes.c_uint8 if self.kind is bool else self.kind)
        if self.kind is bool:
            return bool(value)
        return known(self.enumeration, value) if self.enumeration else value

    def write(self, record: Record, value: Any) -> None:
        if self.kind is str:
            value = encoded(value, self.name)
        elif self.kind is Attribute:
            value = value.record(record.library)
        elif self.kind is bool:
            value = int(bool(value))
        elif self.kind is ctypes.c_double:
            value = real(value, self.name)
        else:
            value = whole(value, self.name, 8 * ctypes.sizeof(self.kind))
        record.set(self.name, value)


R = TypeVar("R", bound="_RecordClass")


class _RecordClass:
    """What the classes of records share. Fields that are None are the library's to say."""

    _kind: str
    _fields: Dict[str, "_Field"]

    @classmethod
    def of_record(cls: Type[R], record: Record) -> R:
        values = {name: field.read(record) for name, field in cls._fields.items()}
        return cls(**values)

    def record(self, library: Library) -> Record:
        record = Record(library, self._kind)
        for name, field in self._fields.items():
            value = getattr(self, name)
            if value is not None:
                field.write(record, value)
        return record

    @classmethod
    def from_json(cls: Type[R], json: str, library: Optional[Library] = None) -> R:
        """From the library's JSON text; members that are missing are as in a new record."""
        record = Record(library or load(), cls._kind)
        record.load_json(json)
        return cls.of_record(record)

    def to_json(self, library: Optional[Library] = None) -> str:
        """The library's JSON text."""
        return self.record(library or load()).save_json()


@dataclass
class Attribute(_RecordClass):
    """The definition of a point attribute.

    Values are stored as multiples of the resolution from minimum to maximum, in the attribute's
    unit; a resolution of 0 stores floating-point numbers unrounded.
    """

    #: Unique name, such as "tarvo.xyz".
    name: str
    #: Smallest and largest value.
    minimum: float
    maximum: float
    #: Distance of two neighbouring values.
    resolution: float = 1.0
    #: Number of values per point.
    length: int = 1
    #: Value of points that were given none.
    default: float = 0.0
    #: Value that means "no value"; NaN: there is none.
    invalid: float = math.nan
    #: Symbol of the unit, such as "m".
    unit: str = ""
    title: str = ""
    description: str = ""
    #: Comma-separated tags.
    tags: str = ""
    #: Lines "VALUE=NAME".
    named_values: str = ""
    storage_class: Union[StorageClass, int] = StorageClass.VARIABLE
    compression: Union[Compression, int] = Compression.DEFAULT
    #: Level-of-detail method: "default" or a JSON text.
    lod_settings: str = "default"
    #: Factor from stored values to the unit; kept and reported, never applied.
    scale_factor: float = 1.0

    _kind = "point_attribute"

    def data_type(self, library: Optional[Library] = None) -> DataType:
        """The type that holds every value; DataType.NONE where the definition makes no sense."""
        return self.record(library or load()).data_type()

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Attribute):
            return NotImplemented
        return all(
            mine == theirs or (mine != mine and theirs != theirs)  # NaN is NaN here
            for mine, theirs in zip(dataclasses.astuple(self), dataclasses.astuple(other))
        )


Attribute._fields = {
    "name": _Field("name", str),
    "minimum": _Field("minimum_value", ctypes.c_double),
    "maximum": _Field("maximum_value", ctypes.c_double),
    "resolution": _Field("resolution", ctypes.c_double),
    "length": _Field("length_u32", ctypes.c_uint32),
    "default": _Field("default_value", ctypes.c_double),
    "invalid": _Field("invalid_value", ctypes.c_double),
    "unit": _Field("unit_symbol", str),
    "title": _Field("title", str),
    "description": _Field("description", str),
    "tags": _Field("tags", str),
    "named_values": _Field("named_values", str),
    "storage_class": _Field("storage_class", ctypes.c_uint8, StorageClass),
    "compression": _Field("compression_options", ctypes.c_uint8, Compression),
    "lod_settings": _Field("lod_settings", str),
    "scale_factor": _Field("scale_factor", ctypes.c_double),
}


@dataclass
class CreateSettings(_RecordClass):
    """How a new file is made. What is None is as the library proposes."""

    #: The attribute that the index is built over.
    primary_attribute: Optional[Attribute] = None
    chunk_mode: Union[ChunkMode, int, None] = None
    #: Points per leaf, or in mode EDGE_LENGTH the leaf edge: 2^size times the resolution.
    chunk_size: Optional[int] = None
    lod_mode: Union[LodMode, int, None] = None
    #: Per cent of the points (THINOUT), or up to 2^(n size) points per node (COMBINE); 0 is off.
    lod_size: Optional[int] = None
    #: Bytes of memory that the open file may take; 0: as few as possible.
    cache_size: Optional[int] = None
    #: 0 (none) to 100 (smallest).
    compression_level: Optional[int] = None
    #: Ids follow the order of the index (smaller files) in place of the order of insertion.
    optimize_point_id: Optional[bool] = None
    #: "single-pass" or "multi-pass".
    point_insert_mode: Optional[str] = None

    _kind = "create_settings"


CreateSettings._fields = {
    "primary_attribute": _Field("primary_attribute", Attribute),
    "chunk_mode": _Field("chunk_mode", ctypes.c_uint32, ChunkMode),
    "chunk_size": _Field("chunk_size", ctypes.c_uint32),
    "lod_mode": _Field("lod_mode", ctypes.c_uint32, LodMode),
    "lod_size": _Field("chunk_size_lod", ctypes.c_uint32),
    "cache_size": _Field("cache_size_64", ctypes.c_uint64),
    "compression_level": _Field("compression_level", ctypes.c_uint8),
    "optimize_point_id": _Field("optimize_point_id", bool),
    "point_insert_mode": _Field("point_insert_mode", str),
}


@dataclass
class OpenSettings(_RecordClass):
    """How a file is opened. What is None is as the library proposes."""

    #: Bytes of memory that the open file may take; 0: as few as possible.
    cache_size: Optional[int] = None

    _kind = "open_settings"


OpenSettings._fields = {"cache_size": _Field("cache_size_64", ctypes.c_uint64)}
