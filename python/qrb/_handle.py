"""The database handle that all parts of an open database share."""

from __future__ import annotations

import ctypes
from typing import Any, List, Optional, Tuple

from ._callbacks import Authentication, Kept, authentication_function
from ._context import Context
from ._library import Library
from ._prototypes import DataType, qrb_pointcloud
from ._records import Record
from ._values import encoded


class Handle:
    """A database handle in a context of its own: others are used beside it on other threads."""

    def __init__(
        self,
        library: Library,
        log_level: str = "",
        log_path: str = "",
        authentication: Optional[Authentication] = None,
    ) -> None:
        self.context = Context(library, log_level, log_path)
        self.pointcloud = self.context.handle(qrb_pointcloud, "qrb_pointcloud_new")
        #: What the authentication function raised; to be used around calls that may ask it.
        self.authenticating = Kept()
        if authentication is not None:
            # Bound to the context: it lives as long as somebody can call it.
            self._authentication = authentication_function(authentication, self.authenticating)
            self.context.call("qrb_factory_set_authentication_function", self._authentication, None)

    @property
    def library(self) -> Library:
        return self.context.library

    def call(self, name: str, *arguments: Any) -> None:
        self.context.call(f"qrb_pointcloud_{name}", self.pointcloud, *arguments)

    def number(self, kind: Any, name: str, *arguments: Any) -> Any:
        return self.context.number(kind, f"qrb_pointcloud_{name}", self.pointcloud, *arguments)

    def flag(self, name: str, *arguments: Any) -> bool:
        return bool(self.number(ctypes.c_uint8, name, *arguments))

    def text(self, name: str, *arguments: Any) -> str:
        return self.context.text(f"qrb_pointcloud_{name}", self.pointcloud, *arguments)

    def names(self, name: str, *arguments: Any) -> List[str]:
        return self.context.names(f"qrb_pointcloud_{name}", self.pointcloud, *arguments)

    def handle(self, kind: Any, name: str, *arguments: Any) -> Any:
        """A handle made from this one, by a function whose last argument receives it."""
        return self.context.handle(kind, f"qrb_pointcloud_{name}", self.pointcloud, *arguments)

    def attribute_record(self, name: str) -> Record:
        record = Record(self.library, "point_attribute")
        self.call("point_attributes_get", encoded(name, "The name"), record)
        return record

    def attribute_of(self, descriptor: str) -> Tuple[Record, int]:
        """The definition that a descriptor such as "NAME" or "NAME[I]" is about, and the number of
        values per point that it stands for."""
        name, element, property = ctypes.c_char_p(), ctypes.c_int64(), ctypes.c_char_p()
        given = encoded(descriptor, "The name of an attribute")
        with self.context as context:
            context.call(
                "qrb_pointcloud_point_attribute_decode_descriptor",
                given,
                ctypes.byref(name),
                ctypes.byref(element),
                ctypes.byref(property),
            )
            bare = (name.value or b"").decode("utf-8")
        record = self.attribute_record(bare)
        return record, 1 if element.value >= 0 else record.number("length_u32", ctypes.c_uint32)

    def natural_type(self, record: Record) -> DataType:
        """The type in which the values of an attribute are read: the one that the library derives,
        or DOUBLE for what it derives SINGLE for, which tells neighbours apart but loses digits."""
        data_type = record.data_type()
        lossy = data_type in (DataType.NONE, DataType.SINGLE)
        return DataType.DOUBLE if lossy else data_type
