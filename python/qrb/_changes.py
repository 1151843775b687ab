"""Changing points, portion by portion."""

from __future__ import annotations

import ctypes
from typing import Any, List, Mapping

from ._buffers import Column, Output, Value, joined
from ._handle import Handle
from ._prototypes import (
    DataType,
    qrb_query_fill,
    qrb_query_insert,
    qrb_query_invert,
    qrb_query_remove,
    qrb_query_select,
    qrb_query_update,
)
from ._selection import Query, new_query
from ._values import encoded

#: Points that go to the library in one call, which takes all of them or none.
PORTION = 1_000_000


def _columns(handle: Handle, values: Any, what: str) -> List[Column]:
    if not isinstance(values, Mapping):
        raise TypeError(f"{what} needs a mapping of attribute names to values.")
    if not values:
        raise ValueError(f"{what} needs values of at least one attribute.")
    id_name = handle.text("point_attributes_point_id_name")
    return [
        _ids(name, given)
        if name == id_name
        else Column(name, handle.attribute_of(name)[1], given)
        for name, given in values.items()
    ]


def _ids(name: str, ids: Any) -> Column:
    """Ids are never rounded, and a mask is none: it would be the points 0 and 1."""
    kind = getattr(getattr(ids, "dtype", None), "kind", "") or getattr(ids, "format", "")
    if kind in ("b", "?") or (
        isinstance(ids, (list, tuple)) and any(isinstance(id, bool) for id in ids)
    ):
        raise TypeError(f"{name}: whole numbers are needed, not a mask.")
    column = Column(name, 1, ids)
    if column.is_fractional and column.count != 0:
        raise TypeError(f"{name}: whole numbers are needed, not floating-point ones.")
    return column


def _common_count(columns: List[Column]) -> int:
    counts = {column.count for column in columns if column.count is not None}
    if not counts:
        raise ValueError("At least one array must tell the number of points.")
    if len(counts) > 1:
        told = ", ".join(f"{column.name}: {column.count}" for column in columns)
        raise ValueError(f"The arrays have different numbers of points ({told}).")
    return counts.pop()


def _bind(query: Query, columns: List[Column], begin: int, count: int) -> List[Column]:
    """Binds a portion of the columns; what is returned must live until it was handed over."""
    bound = []
    for column in columns:
        spread = column.spread(count)
        for name, data_type, buffer, stride in spread.bindings(
            0 if column.count is None else begin
        ):
            query.bind(name, data_type, buffer, stride)
        bound.append(spread)
    return bound


def insert(handle: Handle, values: Any, return_ids: bool) -> Any:
    columns = _columns(handle, values, "An insertion")
    total = _common_count(columns)
    id_type = DataType(handle.number(ctypes.c_uint32, "point_attributes_point_id_type"))
    ids: List[Any] = []
    for begin in range(0, total, PORTION):
        count = min(PORTION, total - begin)
        new = handle.handle(qrb_query_insert, "query_insert_new")
        with Query(handle, "insert", new) as query:
            bound = _bind(query, columns, begin, count)
            output = Output(id_type, 1, count if return_ids else 0)
            if return_ids:
                query.call("bind_id", output.data_type, output.address, output.stride)
            query.next(count)
            del bound
        ids.append(output.copy(count) if return_ids else None)
    return joined(ids, id_type, 1) if return_ids else total


def update_by_ids(handle: Handle, values: Any, ids: Any) -> int:
    id_name = handle.text("point_attributes_point_id_name")
    if isinstance(values, Mapping):
        values = dict(values)
        if ids is None and id_name not in values:
            raise ValueError(
                f'Which points? Give ids, a column "{id_name}", or a filter ("" for all).'
            )
        ids = values.pop(id_name) if ids is None else ids
        if id_name in values:
            raise ValueError(f'There are ids and a column "{id_name}".')
    columns = [_ids(id_name, ids), *_columns(handle, values, "An update")]
    total = _common_count(columns)
    found = 0
    for begin in range(0, total, PORTION):
        count = min(PORTION, total - begin)
        new = handle.handle(qrb_query_update, "query_update_new")
        with Query(handle, "update", new) as query:
            bound = _bind(query, columns, begin, count)
            found += query.next(count)
            del bound
    return found


def fill(handle: Handle, values: Any, filter: str, node: int, nodes: Any) -> int:
    if not isinstance(values, Mapping) or not values:
        raise TypeError("An update needs a mapping of attribute names to values.")
    given = [Value(name, handle.attribute_of(name)[1], value) for name, value in values.items()]
    new = new_query(handle, "fill", qrb_query_fill, filter, node, nodes)
    with Query(handle, "fill", new) as query:
        for value in given:
            query.bind(value.name, value.data_type, value.buffer, 0)
        return query.drain(PORTION)


def invert(handle: Handle, attribute: str, filter: str, node: int, nodes: Any) -> int:
    name = encoded(attribute, "The name of an attribute")
    new = new_query(handle, "invert", qrb_query_invert, filter, node, nodes)
    with Query(handle, "invert", new) as query:
        query.call("attribute", name)
        return query.drain(PORTION)


def remove_by_ids(handle: Handle, ids: Any) -> int:
    column = _ids("The ids", ids)
    total = _common_count([column])
    removed = 0
    for begin in range(0, total, PORTION):
        count = min(PORTION, total - begin)
        new = handle.handle(qrb_query_remove, "query_remove_new")
        with Query(handle, "remove", new) as query:
            (binding,) = column.bindings(begin)
            query.call("bind", *binding[1:])
            removed += query.next(count)
    return removed


def remove_selected(handle: Handle, filter: str) -> int:
    """One query tells all ids while their points go: it goes on reading what it began with."""
    id_name = handle.text("point_attributes_point_id_name")
    id_type = DataType(handle.number(ctypes.c_uint32, "point_attributes_point_id_type"))
    output = Output(id_type, 1, PORTION)
    ids = id_type, output.address, output.stride
    removed = 0
    selected = new_query(handle, "select", qrb_query_select, filter, 0, None)
    with handle.context, Query(handle, "select", selected) as selection:
        selection.bind(id_name, *ids)
        new = handle.handle(qrb_query_remove, "query_remove_new")
        with Query(handle, "remove", new) as query:
            query.call("bind", *ids)
            count = selection.next(PORTION)
            while count > 0:
                removed += query.next(count)
                count = selection.next(PORTION)
    return removed
