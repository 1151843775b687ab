"""An open database."""

from __future__ import annotations

import ctypes
import json
import os
from enum import IntEnum
from typing import Any, Iterable, List, Mapping, NamedTuple, Optional, Tuple, Union

from ._attributes import Attributes
from ._callbacks import Authentication, Kept, Progress, progress_function
from ._error import known
from ._findings import Findings, Schema, findings_of, schema_text
from ._handle import Handle
from ._index import IndexNode, Number, extreme, read_index, revision
from ._library import load
from ._metadata import Metadata
from ._pending import Transaction
from ._records import Attribute, CreateSettings, LodMode, OpenSettings
from ._selection import Selection, count
from ._signature import Key, key_arguments
from ._transactions import Changelog, Transactions
from ._values import PathLike, encoded, encoded_path


class Report(IntEnum):
    """The forms of a report."""

    TEXT = 1
    JSON = 2
    HTML = 3
    HISTOGRAMS = 4
    CHECK = 5


class LevelOfDetail(NamedTuple):
    mode: Union[LodMode, int]
    #: Per cent of the points (THINOUT), or up to 2^(n size) points per node (COMBINE); 0 is off.
    size: int


class Database:
    """An open database; use it as a context manager, or close() it.

    Closing rolls back a pending transaction and ends selections: what is used afterwards raises
    Error. Several threads may use a database: each call waits until the one before is over. Other
    databases, also of the same file, are used at the same time.
    """

    def __init__(self, handle: Handle, path: str) -> None:
        self._handle = handle
        self.path = path
        #: Its parts.
        self.attributes = Attributes(handle)
        self.metadata = Metadata(handle)
        self.transactions = Transactions(handle)
        self.changelog = Changelog(handle)

    def __enter__(self) -> "Database":
        return self

    def __exit__(self, *_: Any) -> None:
        self.close()

    def __repr__(self) -> str:
        return f"<qrb.Database {self.path!r}, {'open' if self.is_open else 'closed'}>"

    @property
    def is_open(self) -> bool:
        with self._handle.context as context:
            return context.is_open and self._handle.flag("is_open")

    def close(self) -> None:
        """Closes the file. Closing a closed database does nothing."""
        with self._handle.context as context:
            if context.is_open:
                self._handle.call("close")
                self._handle.call("delete")
                context.close()

    @property
    def uuid(self) -> str:
        """The identity of the file: 36 lower-case characters."""
        return self._handle.text("get_uuid")

    @property
    def is_empty(self) -> bool:
        """Whether there are no points."""
        return self._handle.flag("is_empty")

    def select(
        self,
        filter: str = "",
        attributes: Optional[Iterable[str]] = None,
        *,
        batch: int = 100_000,
        node: int = 0,
        nodes: Optional[Iterable[int]] = None,
        types: Optional[Mapping[str, Any]] = None,
    ) -> Selection:
        """Points batch by batch.

        filter: expression, such as "tarvo.class == 2"; empty: all points.
        attributes: names ("NAME") or elements ("NAME[I]"); None: all attributes.
        batch: the most points of a batch.
        node: only points in this index node's leaves and below; 0: all.
        nodes: only points stored in these index nodes themselves; in inner ones these are the
            points of the level of detail.
        types: data types by name, as DataType or what numpy.dtype takes (without NumPy a character
            of the module struct). The others are whole numbers of the type that holds every value
            of their attribute, or doubles.
        """
        return Selection(self._handle, filter, attributes, batch, node, nodes, types)

    def count(
        self, filter: str = "", *, node: int = 0, nodes: Optional[Iterable[int]] = None
    ) -> int:
        """The number of points that select() would read."""
        return count(self._handle, filter, node, nodes)

    def index(self, filter: str = "") -> IndexNode:
        """The root of the index, with all nodes, or those that hold points which may pass the
        filter, and their ancestors."""
        return read_index(self._handle, filter)

    def minimum(
        self, attribute: str, *, node: int = 0, invalid: bool = False
    ) -> Union[Number, Tuple[Number, ...]]:
        """The smallest value in a node and below (0: in all), known to the index; a tuple for
        attributes of several values per point. invalid: invalid values count, too."""
        return extreme(self._handle, "minimum", attribute, node, invalid)

    def maximum(
        self, attribute: str, *, node: int = 0, invalid: bool = False
    ) -> Union[Number, Tuple[Number, ...]]:
        """The largest value in the same way."""
        return extreme(self._handle, "maximum", attribute, node, invalid)

    def revision(self, attribute: str, *, node: int = 0) -> int:
        """The transaction that last changed the attribute in a node and below (0: anywhere)."""
        return revision(self._handle, attribute, node)

    def transaction(
        self,
        title: str = "",
        *,
        agent: str = "Python",
        comments: str = "",
        settings: str = "",
        progress: Optional[Progress] = None,
        key: Optional[Key] = None,
        method: Optional[int] = None,
    ) -> Transaction:
        """Begins a transaction, which nobody else may do until it is ended.

        settings: a JSON text about the work done. progress, key, method: of the commit at the end
        of a with block, see Transaction.commit().
        """
        key_arguments(key, method)
        texts = {"title": title, "agent": agent, "comments": comments, "settings": settings}
        id = self._handle.number(
            ctypes.c_uint32,
            "transaction_begin",
            *(encoded(text, f"The {name}") for name, text in texts.items()),
        )
        return Transaction(self._handle, id, progress, key, method)

    @property
    def level_of_detail(self) -> LevelOfDetail:
        with self._handle.context:
            mode = self._handle.number(ctypes.c_uint32, "management_get_lod_mode")
            size = self._handle.number(ctypes.c_uint32, "management_get_chunk_size_lod")
        return LevelOfDetail(known(LodMode, mode), size)

    def validate(self, schema: Schema, *, strict: bool = False) -> Findings:
        """Compares the file with a file schema (a JSON text or what stands for it) and the
        catalogue. strict: what the schema does not name is found, too."""
        return findings_of(
            self._handle,
            "management_validate",
            schema_text(schema, "The schema"),
            int(bool(strict)),
        )

    def inspect(self, form: Union[Report, str] = Report.TEXT) -> Any:
        """A report: a str, or for JSON and CHECK the object that the JSON text is about. CHECK reads
        everything that the kept transactions reach: its fault_count is 0 where all is well."""
        report = Report[form.upper()] if isinstance(form, str) else Report(form)
        text = self._handle.text("inspect", report)
        return json.loads(text) if report in (Report.JSON, Report.CHECK) else text

    def vacuum(self, *, progress: Optional[Progress] = None) -> None:
        """Gives the disk space of forgotten states back."""
        kept = Kept()
        function = progress_function(progress, kept)
        with self._handle.context, kept:
            self._handle.call("management_vacuum", function, None)

    def clear_cache(self) -> None:
        """Drops what is kept in memory to answer faster."""
        self._handle.call("clear_cache")


def open(  # noqa: A001 - the module is used by its name
    path: PathLike,
    *,
    cache_size: Optional[int] = None,
    library: Optional[PathLike] = None,
    authentication: Optional[Authentication] = None,
    log_level: str = "",
    log_path: PathLike = "",
) -> Database:
    """Opens a database file.

    cache_size: bytes of memory that it may take. library: see load(). authentication: answers
    challenges, for signatures of method 2; receives the challenge and the number of bytes of its
    answer. log_level, log_path: of the library's log: "TRACE", "DEBUG", "INFO", "WARNING", "ERROR"
    or "OFF", and the file that lines are appended to.
    """
    name = encoded_path(path)
    handle = Handle(load(library), log_level, os.fsdecode(log_path), authentication)
    settings = OpenSettings(cache_size).record(handle.library)
    handle.call("open", name, settings)
    return Database(handle, os.fsdecode(path))


def create(
    path: PathLike,
    *,
    attributes: Iterable[Union[Attribute, str]] = (),
    primary: Union[Attribute, str, None] = None,
    settings: Optional[CreateSettings] = None,
    schema: Optional[Schema] = None,
    optionals: bool = False,
    library: Optional[PathLike] = None,
    authentication: Optional[Authentication] = None,
    log_level: str = "",
    log_path: PathLike = "",
) -> Database:
    """Creates a database file, which must not exist, and opens it. A failure leaves no file.

    attributes: definitions beside the primary attribute and the point id; a str stands for that of
    the catalogue. primary: the attribute that the index is built over; None: as the settings say.
    schema: a file schema (a JSON text or what stands for it), whose attributes and metadata items
    the file gets, with optionals the optional ones, too. The rest as for open().
    """
    name = encoded_path(path)
    handle = Handle(load(library), log_level, os.fsdecode(log_path), authentication)
    database = Database(handle, os.fsdecode(path))
    record = (settings or CreateSettings()).record(handle.library)
    if primary is not None:
        if isinstance(primary, str):
            primary = database.attributes.catalogue[primary]
        record.set("primary_attribute", primary.record(handle.library))
    added: List[Union[Attribute, str]] = []
    if isinstance(attributes, (str, Attribute)):
        added.append(attributes)
    else:
        added.extend(attributes)
    if schema is None:
        handle.call("create", name, record)
    else:
        text = schema_text(schema, "The schema")
        handle.call("create_with_schema", name, record, text, int(bool(optionals)))
    if added:
        try:
            with database.transaction("Add point attributes") as transaction:
                for attribute in added:
                    transaction.attributes.add(attribute)
        except BaseException:
            database.close()
            os.unlink(name)
            raise
    return database


class LibraryInfo(NamedTuple):
    """What a library tells of itself."""

    name: str
    version: str
    #: The file that it was loaded from.
    filename: str
    license: str
    #: The file name suffix of databases, without the dot, and the title of the file type.
    suffix: str
    title: str


def library_info(library: Optional[PathLike] = None) -> LibraryInfo:
    """Name, version and licence of the library, and its file type."""
    context = Handle(load(library)).context
    return LibraryInfo(
        *(
            context.text(f"qrb_library_{part}")
            for part in ("name", "version", "filename", "license")
        ),
        *(context.text(f"qrb_database_file_type_{part}") for part in ("suffix", "title")),
    )


def is_database(path: PathLike, *, library: Optional[PathLike] = None) -> bool:
    """Whether the file exists and is a database of the library."""
    context = Handle(load(library)).context
    return context.flag("qrb_database_file_type_check", encoded_path(path))
