"""The point attributes of an open database."""

from __future__ import annotations

import ctypes
from contextlib import ExitStack
from typing import Any, Iterable, Iterator, List, Mapping, MutableMapping, NamedTuple, Tuple, Union

from ._error import Error
from ._handle import Handle
from ._prototypes import DataType, ErrorCode, qrb_pointcloud
from ._records import Attribute, Record
from ._values import decoded, encoded


class Group(NamedTuple):
    """Where an attribute is shown."""

    name: str
    #: Place within the group, from 0.
    rank: int


def _group(handle: Handle, function: str, name: str) -> Group:
    with handle.context:
        text, rank = ctypes.c_char_p(), ctypes.c_uint32()
        handle.call(function, encoded(name, "The name"), ctypes.byref(text), ctypes.byref(rank))
        return Group(decoded(text.value), rank.value)


class Catalogue(Mapping[str, Attribute]):
    """The library's default definitions by name, in their order."""

    def __init__(self, handle: Handle) -> None:
        self._handle = handle

    def __getitem__(self, name: str) -> Attribute:
        record = Record(self._handle.library, "point_attribute")
        try:
            self._handle.call("point_attributes_get_default", encoded(name, "The name"), record)
        except Error as error:
            if error.code == ErrorCode.NOT_FOUND:
                raise KeyError(name) from error
            raise
        return Attribute.of_record(record)

    def __iter__(self) -> Iterator[str]:
        return iter(self._handle.names("point_attributes_list_default"))

    def __len__(self) -> int:
        return len(self._handle.names("point_attributes_list_default"))

    def group(self, name: str) -> Group:
        return _group(self._handle, "point_attributes_group_default", name)


class Attributes(Mapping[str, Attribute]):
    """The definitions by name: the primary attribute, the point id, then in order of addition.

    Within a transaction they are those of its state.
    """

    def __init__(self, handle: Handle) -> None:
        self._handle = handle

    def __contains__(self, name: object) -> bool:
        if not isinstance(name, str):
            return False
        return self._handle.flag("point_attributes_exists", encoded(name, "The name"))

    def __getitem__(self, name: str) -> Attribute:
        try:
            return Attribute.of_record(self._handle.attribute_record(name))
        except Error as error:
            if error.code == ErrorCode.NOT_FOUND:
                raise KeyError(name) from error
            raise

    def __iter__(self) -> Iterator[str]:
        return iter(self._handle.names("point_attributes_list"))

    def __len__(self) -> int:
        return len(self._handle.names("point_attributes_list"))

    def __repr__(self) -> str:
        return (
            f"<{type(self).__name__} {list(self)}>" if self._handle.context.is_open else "<closed>"
        )

    @property
    def primary(self) -> str:
        """The name of the attribute that the index is built over."""
        return self._handle.text("point_attributes_primary_attribute_name")

    @property
    def point_id(self) -> str:
        """The name of the attribute that identifies points."""
        return self._handle.text("point_attributes_point_id_name")

    @property
    def point_id_type(self) -> DataType:
        return DataType(self._handle.number(ctypes.c_uint32, "point_attributes_point_id_type"))

    @property
    def point_id_unit(self) -> str:
        return self._handle.text("point_attributes_point_id_unit")

    @property
    def catalogue(self) -> Catalogue:
        """The library's default definitions."""
        return Catalogue(self._handle)

    def matching(self, pattern: str) -> List[str]:
        """The names that a pattern with * and ? matches as a whole, or that carry a tag ("#TAG");
        all for the empty text. Case matters."""
        return self._handle.names("point_attributes_list_filtered", encoded(pattern, "The pattern"))

    def group(self, name: str) -> Group:
        return _group(self._handle, "point_attributes_group", name)

    def merged(self, name: str, others: Iterable["Attributes"]) -> Attribute:
        """A definition that holds every value of the attribute in this and the other databases."""
        record = Record(self._handle.library, "point_attribute")
        with ExitStack() as locks:
            handles, number = self._locked(others, locks)
            self._handle.call(
                "point_attributes_get_merged",
                handles,
                number,
                encoded(name, "The name"),
                record,
            )
        return Attribute.of_record(record)

    def merged_names(self, others: Iterable["Attributes"]) -> List[str]:
        """The names that this or any of the other databases has, this one's first."""
        with ExitStack() as locks:
            handles, number = self._locked(others, locks)
            names = self._handle.names("point_attributes_get_merged_all", handles, number)
        return names

    def _locked(self, others: Iterable["Attributes"], locks: ExitStack) -> Tuple[Any, int]:
        """The handles of other databases, which the call uses like this one. Locks are taken in one
        order everywhere."""
        listed = list(others)
        for other in listed:
            if not isinstance(other, Attributes):
                raise TypeError("others must be the attributes of databases.")
        for context in sorted({each._handle.context for each in [self, *listed]}, key=id):
            locks.enter_context(context)
            if not context.is_open:
                raise Error(ErrorCode.STATE, "The database is closed.", "Open it again.")
        pointers = [other._handle.pointcloud for other in listed]
        kind = ctypes.POINTER(qrb_pointcloud) * max(1, len(pointers))
        return kind(*pointers), len(pointers)


class PendingAttributes(Attributes, MutableMapping[str, Attribute]):
    """The definitions within a transaction, which changes them.

    attributes[name] = definition adds it, or replaces the one of this name: values are carried over
    where the new range holds them.
    """

    def add(self, attribute: Union[Attribute, str]) -> None:
        """Adds a definition, or by its name one of the catalogue; points read its default value."""
        if isinstance(attribute, Attribute):
            record = attribute.record(self._handle.library)
            self._handle.call("point_attributes_add", record)
        else:
            self._handle.call("point_attributes_add_default", encoded(attribute, "The attribute"))

    def __setitem__(self, name: str, attribute: Attribute) -> None:
        if not isinstance(attribute, Attribute):
            raise TypeError(f"A definition must be an Attribute, not {type(attribute).__name__}.")
        if attribute.name != name:
            raise ValueError(f'The definition has the name "{attribute.name}", not "{name}".')
        if name not in self:
            self.add(attribute)
        else:
            record = attribute.record(self._handle.library)
            self._handle.call("point_attributes_put", record)

    def __delitem__(self, name: str) -> None:
        """Removes a definition and all its values."""
        if name not in self:
            raise KeyError(name)
        self._handle.call("point_attributes_remove", encoded(name, "The name"))

    def discard(self, name: str) -> None:
        """Forgets all values and keeps the definition: points read the default value again."""
        self._handle.call("point_attributes_discard", encoded(name, "The name"))

    def duplicate(self, name: str, new_name: str) -> None:
        """Adds a copy of a definition, with the values of all points."""
        self._handle.call(
            "point_attributes_duplicate",
            encoded(name, "The name"),
            encoded(new_name, "The new name"),
        )
