"""The point index, and what its nodes know of values."""

from __future__ import annotations

import ctypes
from dataclasses import dataclass
from typing import Any, Iterator, List, Tuple, Union

from ._buffers import Output
from ._handle import Handle
from ._prototypes import qrb_graph_node, qrb_query_stat
from ._selection import Query
from ._values import encoded, whole

Number = Union[int, float]


@dataclass(frozen=True)
class IndexNode:
    """A node of the index, which is a tree; a leaf has no children."""

    #: From 1; 0: an empty index.
    id: int
    #: The transaction that last changed it.
    revision: int
    #: Points in this node's leaves and below.
    total: int
    #: Points stored in the node itself; in an inner one for display (level of detail).
    own: int
    children: Tuple["IndexNode", ...] = ()

    def walk(self) -> Iterator["IndexNode"]:
        """This node and all below, parents before children."""
        waiting = [self]
        while waiting:
            node = waiting.pop()
            yield node
            waiting.extend(reversed(node.children))


def _copy(node: Any) -> IndexNode:
    """The tree is as deep as the index, some dozens of levels, which bounds the recursion."""
    children = node.children
    return IndexNode(
        node.id,
        node.revision,
        node.point_count_total,
        node.point_count_node,
        tuple(_copy(children[i].contents) for i in range(node.child_count) if children[i]),
    )


def _stat(handle: Handle) -> Query:
    return Query(handle, "stat", handle.handle(qrb_query_stat, "query_stat_new"))


def read_index(handle: Handle, filter: str) -> IndexNode:
    expression = encoded(filter, "The filter")
    context = handle.context
    with context, _stat(handle) as query:
        root = context.handle(qrb_graph_node, "qrb_pointcloud_graph_node_new")
        try:
            if expression:
                query.call("index_filter", root, expression)
            else:
                query.call("index", root)
            return _copy(root.contents)
        finally:
            context.call("qrb_pointcloud_graph_node_delete", root)


def _number_of(handle: Handle, node: int) -> int:
    """The number of a node; 0 stands for the root, whose number the index tells."""
    return whole(node, "The node") or read_index(handle, "find largest node").id


def extreme(
    handle: Handle, which: str, attribute: str, node: int, invalid: bool
) -> Union[Number, Tuple[Number, ...]]:
    function = which if invalid else f"{which}_cleaned"
    record, length = handle.attribute_of(attribute)
    output = Output(handle.natural_type(record), length, 1)
    name = encoded(attribute, "The name of an attribute")
    with handle.context, _stat(handle) as query:
        number = _number_of(handle, node)
        query.call(function, number, name, output.data_type, output.address)
    numbers: List[Any] = output.copy(1).tolist()
    return numbers[0] if length == 1 else tuple(numbers[0])


def revision(handle: Handle, attribute: str, node: int) -> int:
    number = ctypes.c_uint32()
    name = encoded(attribute, "The name of an attribute")
    with handle.context, _stat(handle) as query:
        query.call("revision", _number_of(handle, node), name, ctypes.byref(number))
    return number.value
