"""Reading points."""

from __future__ import annotations

import ctypes
import weakref
from typing import Any, Dict, Iterable, Iterator, List, Mapping, Optional

from ._buffers import Output, data_type_of, joined
from ._error import Error
from ._handle import Handle
from ._prototypes import DataType, ErrorCode, qrb_query_select
from ._values import encoded, whole, whole_list

LARGEST_COUNT = 2**32 - 1


def new_query(handle: Handle, kind: str, type: Any, filter: str, node: int, nodes: Any) -> Any:
    """A select, fill or invert query of all points, of those of a node and below, or of those
    stored in the nodes listed."""
    expression = encoded(filter, "The filter")
    number = whole(node, "The node")
    if nodes is None:
        return handle.handle(type, f"query_{kind}_new", number, expression)
    if number != 0:
        raise TypeError("node and nodes can't be given together.")
    nodes = list(nodes)
    listed = whole_list(nodes, "nodes")
    return handle.handle(type, f"query_{kind}_nodes_new", listed, len(nodes), expression)


class Query:
    """A query of the library that handles points portion by portion; deletes itself at the end."""

    def __init__(self, handle: Handle, kind: str, query: Any) -> None:
        self.handle = handle
        self._kind = kind
        self.query = query
        delete = f"qrb_pointcloud_query_{kind}_delete"
        self._finalizer = weakref.finalize(self, handle.context.discard, delete, query)

    def call(self, name: str, *arguments: Any) -> None:
        self.handle.context.call(
            f"qrb_pointcloud_query_{self._kind}_{name}", self.query, *arguments
        )

    def bind(self, name: str, data_type: DataType, buffer: Any, stride: int) -> None:
        self.call("bind", encoded(name, "The name of an attribute"), data_type, buffer, stride)

    def next(self, count: int) -> int:
        processed = ctypes.c_uint32()
        self.call("next", count, ctypes.byref(processed))
        return processed.value

    def drain(self, portion: int) -> int:
        """Has all points handled, at most so many at a time, and returns their number."""
        total = 0
        while True:
            processed = self.next(portion)
            if processed == 0:
                return total
            total += processed

    def progress(self) -> float:
        percent = ctypes.c_uint32()
        self.call("progress", ctypes.byref(percent))
        return percent.value / 100

    def close(self) -> None:
        """Tells what the library says at the end of the query."""
        if self._finalizer.detach() and self.handle.context.is_open:
            self.call("delete")

    def __enter__(self) -> "Query":
        return self

    def __exit__(self, kind: Any, *_: Any) -> None:
        if kind is None:
            self.close()
        else:
            self._finalizer()


class Batch(Mapping[str, Any]):
    """Columns of some points by attribute name, in the order in which they were asked for.

    A column is an array of the shape (n,), or (n, length) for attributes of several values per
    point. Its memory is its own: it stays as it is, whatever becomes of the query and the database.
    """

    def __init__(self, count: int, columns: Dict[str, Any]) -> None:
        #: Number of points.
        self.count = count
        self._columns = columns

    def __getitem__(self, name: str) -> Any:
        return self._columns[name]

    def __iter__(self) -> Iterator[str]:
        return iter(self._columns)

    def __len__(self) -> int:
        """Number of columns."""
        return len(self._columns)

    def __repr__(self) -> str:
        return f"<qrb.Batch of {self.count} points: {', '.join(self._columns)}>"


class Selection:
    """Points of a database, batch by batch: an iterator that can be used once.

    It reads the state that the database had when it was made, or its pending transaction. Closing
    the database ends it. Threads may share it: each batch goes to one.
    """

    def __init__(
        self,
        handle: Handle,
        filter: str,
        attributes: Optional[Iterable[str]],
        batch: int,
        node: int,
        nodes: Optional[Iterable[int]],
        types: Optional[Mapping[str, Any]],
    ) -> None:
        self._context = handle.context
        self._batch = whole(batch, "batch", 32, 1)
        chosen = dict(types or {})
        listed: List[str]
        if attributes is None:
            listed = handle.names("point_attributes_list")
        elif isinstance(attributes, str):
            listed = [attributes]
        else:
            listed = list(attributes)
        if len(set(listed)) < len(listed):
            raise ValueError("An attribute is asked for twice.")
        unknown = set(chosen) - set(listed)
        if unknown:
            raise ValueError(f"types names what is not asked for: {', '.join(sorted(unknown))}.")
        self._columns = {}
        for name in listed:
            record, length = handle.attribute_of(name)
            data_type = chosen.get(name)
            self._columns[name] = (
                handle.natural_type(record) if data_type is None else data_type_of(data_type),
                length,
            )
        query = new_query(handle, "select", qrb_query_select, filter, node, nodes)
        self._query: Optional[Query] = Query(handle, "select", query)
        self._outputs: Optional[Dict[str, Output]] = None
        self._is_read = False
        if nodes is None:
            self._batch = min(self._batch, max(1, count(handle, "", node, None)))

    def __iter__(self) -> "Selection":
        return self

    def __next__(self) -> Batch:
        with self._context:
            if self._is_read:
                raise StopIteration
            if self._query is None:
                raise Error(ErrorCode.STATE, "The selection is closed.")
            outputs = self._bound(self._query)
            processed = self._query.next(self._batch)
            if processed == 0:
                self._is_read = True
                self.close()
                raise StopIteration
            columns = {name: output.copy(processed) for name, output in outputs.items()}
        return Batch(processed, columns)

    def read(self) -> Batch:
        """All points that are left, in one batch."""
        batches = list(self)
        if len(batches) == 1:
            return batches[0]
        columns = {
            name: joined([batch[name] for batch in batches], data_type, length)
            for name, (data_type, length) in self._columns.items()
        }
        return Batch(sum(batch.count for batch in batches), columns)

    def _bound(self, query: Query) -> Dict[str, Output]:
        """The memory that the library fills with each batch."""
        if self._outputs is None:
            self._outputs = {
                name: Output(data_type, length, self._batch)
                for name, (data_type, length) in self._columns.items()
            }
            for name, output in self._outputs.items():
                query.bind(name, output.data_type, output.address, output.stride)
        return self._outputs

    @property
    def progress(self) -> float:
        """The part of the work that is done, 0.0 to 1.0."""
        with self._context:
            return 1.0 if self._query is None else self._query.progress()

    def close(self) -> None:
        """Ends the query; nothing more comes. Batches stay."""
        with self._context:
            query, self._query, self._outputs = self._query, None, None
            if query is not None:
                query.close()

    def __enter__(self) -> "Selection":
        return self

    def __exit__(self, *_: Any) -> None:
        self.close()


def count(handle: Handle, filter: str, node: int, nodes: Optional[Iterable[int]]) -> int:
    query = new_query(handle, "select", qrb_query_select, filter, node, nodes)
    with Query(handle, "select", query) as selected:
        return selected.drain(LARGEST_COUNT)
