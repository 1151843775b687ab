"""The transaction that is being made."""

from __future__ import annotations

import weakref
from typing import Any, Iterable, Optional, Union

from . import _changes
from ._attributes import PendingAttributes
from ._callbacks import Kept, Progress, progress_function
from ._error import Error
from ._handle import Handle
from ._metadata import PendingMetadata
from ._prototypes import ErrorCode
from ._records import LodMode
from ._signature import Key, key_arguments
from ._values import PathLike, encoded, encoded_path, whole


class Transaction:
    """A begun transaction of a database; the database shows its state until it is ended.

    As a context manager it is committed at the end of the block, and rolled back where the block
    or the commit raises. One that is dropped is rolled back. Arrays of more than a million points
    go to the library in portions; where one is refused, what was taken before stays in the
    transaction.
    """

    def __init__(
        self,
        handle: Handle,
        id: int,
        progress: Optional[Progress],
        key: Optional[Key],
        method: Optional[int],
    ) -> None:
        self._handle = handle
        #: The number of the transaction.
        self.id = id
        self._commit_arguments = (progress, key, method)
        self._attributes = PendingAttributes(handle)
        self._metadata = PendingMetadata(handle)
        self._finalizer = weakref.finalize(
            self,
            handle.context.discard,
            "qrb_pointcloud_transaction_rollback",
            handle.pointcloud,
        )

    def __repr__(self) -> str:
        return f"<qrb.Transaction {self.id}, {'pending' if self.is_pending else 'ended'}>"

    @property
    def is_pending(self) -> bool:
        return self._finalizer.alive and self._handle.context.is_open

    def _checked(self) -> Handle:
        if not self._finalizer.alive:
            raise Error(ErrorCode.STATE, "The transaction has ended.", "Begin another one.")
        return self._handle

    @property
    def attributes(self) -> PendingAttributes:
        """The point attributes, to be changed."""
        self._checked()
        return self._attributes

    @property
    def metadata(self) -> PendingMetadata:
        """The metadata items, to be changed."""
        self._checked()
        return self._metadata

    def insert(self, values: Any, *, return_ids: bool = False) -> Any:
        """Adds points. values: a Batch or another mapping of attribute names ("NAME") or elements
        ("NAME[I]") to arrays of the shape (n,) or (n, length), or to one number for all points. What
        is not named gets its default value; the point id, an id of the library's choice.

        Returns the number of points, or with return_ids an array of their ids.
        """
        return _changes.insert(self._checked(), values, return_ids)

    def update(
        self,
        values: Any,
        *,
        ids: Any = None,
        filter: Optional[str] = None,
        node: int = 0,
        nodes: Optional[Iterable[int]] = None,
    ) -> int:
        """Gives points other values, and returns how many points it found.

        By id: values as for insert, with ids or a column of the point id; ids without a point are
        passed over. By filter ("" for all points): values are numbers, or sequences of a number per
        element, and all points that pass, of a node and below or of the nodes listed, get the same.
        """
        handle = self._checked()
        if filter is None and node == 0 and nodes is None:
            return _changes.update_by_ids(handle, values, ids)
        if ids is not None:
            raise TypeError("Points are told by ids or by a filter, not by both.")
        return _changes.fill(handle, values, filter or "", node, nodes)

    def invert(
        self,
        attribute: str,
        *,
        filter: str,
        node: int = 0,
        nodes: Optional[Iterable[int]] = None,
    ) -> int:
        """Gives an attribute of two values the other one in all points that pass the filter, and
        returns their number."""
        return _changes.invert(self._checked(), attribute, filter, node, nodes)

    def remove(
        self,
        ids: Any = None,
        *,
        filter: Optional[str] = None,
    ) -> int:
        """Removes the points of these ids, or those that pass a filter ("" for all), and returns how
        many there were."""
        handle = self._checked()
        if (ids is None) == (filter is None):
            raise TypeError("Points are told either by ids or by a filter.")
        if filter is not None:
            return _changes.remove_selected(handle, filter)
        return _changes.remove_by_ids(handle, ids)

    def set_level_of_detail(
        self, mode: Union[LodMode, int, None] = None, size: Optional[int] = None
    ) -> None:
        """Changes how points for display are made; the commit makes them. size: per cent of the
        points (THINOUT), or up to 2^(n size) points per node (COMBINE); 0 removes them."""
        handle = self._checked()
        with handle.context:
            if mode is not None:
                handle.call("management_set_lod_mode", whole(mode, "The mode"))
            if size is not None:
                handle.call("management_set_chunk_size_lod", whole(size, "The size"))

    def log(self, message: str) -> None:
        """Adds a message to the changelog entry."""
        self._checked().call("changelog_append_log_message", encoded(message, "The message"))

    def import_changelog(self, path: PathLike) -> None:
        """Puts the changelog of another database before this one's."""
        self._checked().call("changelog_import_from_database", encoded_path(path))

    def commit(
        self,
        *,
        progress: Optional[Progress] = None,
        key: Optional[Key] = None,
        method: Optional[int] = None,
    ) -> None:
        """Publishes the transaction. A key (method 1) signs its changelog entry; method 2 has the
        authentication function do so. Where it fails, also because progress said False, the
        transaction stays pending."""
        handle = self._checked()
        arguments = key_arguments(key, method)
        kept = Kept()
        function = progress_function(progress, kept)
        with handle.context, handle.authenticating, kept:
            if arguments[0] != 0:
                handle.call("transaction_commit_with_signature", function, None, *arguments)
            elif progress is not None:
                handle.call("transaction_commit_with_progress", function, None)
            else:
                handle.call("transaction_commit")
            self._finalizer.detach()

    def rollback(self) -> None:
        """Forgets the transaction."""
        handle = self._checked()
        with handle.context:
            handle.call("transaction_rollback")
            self._finalizer.detach()

    def __enter__(self) -> "Transaction":
        self._checked()
        return self

    def __exit__(self, kind: Any, *_: Any) -> None:
        if not self.is_pending:
            if kind is None and self._finalizer.alive:
                raise Error(
                    ErrorCode.STATE, "The database was closed: its transaction is rolled back."
                )
            return
        try:
            if kind is None:
                progress, key, method = self._commit_arguments
                self.commit(progress=progress, key=key, method=method)
        finally:
            self._finalizer()
