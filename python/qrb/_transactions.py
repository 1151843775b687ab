"""The transactions and the changelog of an open database."""

from __future__ import annotations

import ctypes
import os
import re
import tempfile
from dataclasses import dataclass
from typing import Iterable, Iterator, List, Mapping, NamedTuple, Optional

from ._error import Error
from ._handle import Handle
from ._prototypes import ErrorCode, qrb_transaction
from ._signature import Key, verify_log_entry
from ._values import PathLike, encoded_path, whole, whole_list


@dataclass(frozen=True)
class TransactionRecord:
    """A kept transaction."""

    id: int
    title: str
    #: The program that began it.
    agent: str
    comments: str
    #: The settings of the work done, a JSON text.
    settings: str
    #: When it began and was committed: ISO 8601 with milliseconds, UTC.
    start: str
    stop: str
    #: The version of the library that wrote it, a line break and the interface that asked.
    qrb: str


class Transactions(Mapping[int, TransactionRecord]):
    """The kept transactions by number, oldest first."""

    def __init__(self, handle: Handle) -> None:
        self._handle = handle

    def __iter__(self) -> Iterator[int]:
        return iter(self._ids())

    def __len__(self) -> int:
        return len(self._ids())

    def __contains__(self, id: object) -> bool:
        return id in self._ids()

    def __getitem__(self, id: int) -> TransactionRecord:
        context = self._handle.context
        number = whole(id, "The number of a transaction")
        with context:
            record = context.handle(qrb_transaction, "qrb_pointcloud_transaction_new")
            try:
                self._handle.call("transaction_details", number, record)
                texts = {
                    name: context.text(f"qrb_pointcloud_transaction_get_{name}", record)
                    for name in TransactionRecord.__dataclass_fields__
                    if name != "id"
                }
                return TransactionRecord(
                    id=context.number(ctypes.c_uint32, "qrb_pointcloud_transaction_get_id", record),
                    **texts,
                )
            except Error as error:
                if error.code == ErrorCode.NOT_FOUND:
                    raise KeyError(id) from error
                raise
            finally:
                context.call("qrb_pointcloud_transaction_delete", record)

    def _ids(self) -> List[int]:
        with self._handle.context:
            count = ctypes.c_uint32()
            self._handle.call("transaction_list", ctypes.byref(count), None)
            while True:
                room = count.value
                ids = (ctypes.c_uint32 * max(1, room))()
                self._handle.call("transaction_list", ctypes.byref(count), ids)
                if count.value <= room:  # else another process has committed meanwhile
                    return list(ids[: count.value])

    @property
    def current(self) -> int:
        """The number of the transaction that the database is at."""
        return int(self._handle.number(ctypes.c_uint32, "transaction_current"))

    @property
    def pending(self) -> bool:
        """Whether this database has begun a transaction and not ended it."""
        return self._handle.flag("transaction_pending")

    def size(self, ids: Iterable[int]) -> int:
        """The bytes that only these transactions hold."""
        listed = list(ids)
        arguments = len(listed), whole_list(listed, "ids")
        return int(self._handle.number(ctypes.c_uint64, "transaction_size", *arguments))

    def restore(self, id: int) -> None:
        """Makes the state of an older transaction the current one."""
        self._handle.call("transaction_restore", whole(id, "The number of a transaction"))

    def discard(self, ids: Iterable[int]) -> None:
        """Forgets the states of these transactions; the first and the current one stay."""
        listed = list(ids)
        self._handle.call("transaction_discard", len(listed), whole_list(listed, "ids"))

    def finalize(self) -> None:
        """Forgets every transaction but the first and the current one."""
        self._handle.call("management_finalize")


class LogEntry(NamedTuple):
    """An entry of the changelog."""

    #: The number of its transaction.
    id: int
    text: str


class Changelog:
    """What the transactions did, in words."""

    _header = re.compile(r"\[#(\d{1,19})\][^\n]*\n")

    def __init__(self, handle: Handle) -> None:
        self._handle = handle

    def text(self) -> str:
        """All of it."""
        folder = tempfile.TemporaryDirectory(prefix="qrb-")
        with folder as name:
            path = os.path.join(name, "changelog.txt")
            self.export(path)
            with open(path, encoding="utf-8", errors="backslashreplace", newline="") as file:
                return file.read()

    def __iter__(self) -> Iterator[LogEntry]:
        """The entries, oldest first."""
        text = self.text()
        headers = list(self._header.finditer(text))
        ends = [header.start() for header in headers[1:]] + [len(text)]
        for header, end in zip(headers, ends):
            yield LogEntry(int(header.group(1)), text[header.start() : end])

    def export(self, path: PathLike) -> None:
        """Writes it into a UTF-8 text file."""
        self._handle.call("changelog_export_to_textfile", encoded_path(path))

    def verify(
        self, entry: str, key: Optional[Key] = None, *, method: Optional[int] = None
    ) -> bool:
        """Whether the signature at the end of an entry's text is valid; without a key: whether it
        has one."""
        return verify_log_entry(self._handle.library, entry, key, method)
