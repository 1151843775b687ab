"""Keys and methods of signatures."""

from __future__ import annotations

import ctypes
from typing import Any, Optional, Tuple, Union

from ._library import Library
from ._values import encoded, whole

Key = Union[bytes, bytearray, memoryview]

NONE, BY_KEY = 0, 1


def key_arguments(key: Optional[Key], method: Optional[int]) -> Tuple[int, int, Any]:
    """Method, length of the key, key. Without both: method 0, which is none."""
    if key is not None and not isinstance(key, (bytes, bytearray, memoryview)):
        raise TypeError(f"A key must be bytes, not {type(key).__name__}.")
    if method is None:
        method = NONE if key is None else BY_KEY
    data = bytes(key or b"")
    if key is not None and not data:
        raise ValueError("The key is empty.")
    kind = ctypes.c_uint8 * max(1, len(data))
    return whole(method, "The method"), len(data), kind.from_buffer_copy(data or b"\0")


def verify_log_entry(
    library: Library, entry: str, key: Optional[Key] = None, method: Optional[int] = None
) -> bool:
    valid = ctypes.c_uint8()
    library.free_call(
        "qrb_pointcloud_changelog_verify_log_entry_cf",
        encoded(entry, "The entry"),
        *key_arguments(key, method),
        ctypes.byref(valid),
    )
    return bool(valid.value)
