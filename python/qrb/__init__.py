"""Point-cloud database files: read, filter, change.

    import qrb

    with qrb.open("survey.qrbx") as db:
        for batch in db.select("tarvo.class == 2", ["tarvo.xyz", "tarvo.intensity"]):
            print(batch.count, batch["tarvo.xyz"].max(axis=0))

README.md has a tutorial. Arrays are NumPy's where it is installed, else memoryview.
"""

from ._attributes import Attributes, Catalogue, Group, PendingAttributes
from ._database import (
    Database,
    LevelOfDetail,
    LibraryInfo,
    Report,
    create,
    is_database,
    library_info,
    open,
)
from ._error import Error
from ._findings import Finding, Findings
from ._index import IndexNode
from ._library import Library, load
from ._metadata import Metadata, PendingMetadata
from ._pending import Transaction
from ._prototypes import DataType, ErrorCode
from ._records import (
    Attribute,
    ChunkMode,
    Compression,
    CreateSettings,
    LodMode,
    OpenSettings,
    StorageClass,
)
from ._selection import Batch, Selection
from ._transactions import Changelog, LogEntry, TransactionRecord, Transactions
from ._version import __version__

__all__ = [
    "Attribute",
    "Attributes",
    "Batch",
    "Catalogue",
    "Changelog",
    "ChunkMode",
    "Compression",
    "CreateSettings",
    "DataType",
    "Database",
    "Error",
    "ErrorCode",
    "Finding",
    "Findings",
    "Group",
    "IndexNode",
    "LevelOfDetail",
    "Library",
    "LibraryInfo",
    "LodMode",
    "LogEntry",
    "Metadata",
    "OpenSettings",
    "PendingAttributes",
    "PendingMetadata",
    "Report",
    "Selection",
    "StorageClass",
    "Transaction",
    "TransactionRecord",
    "Transactions",
    "__version__",
    "create",
    "is_database",
    "library_info",
    "load",
    "open",
]
