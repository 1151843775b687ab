"""Finds and loads the database library."""

from __future__ import annotations

import ctypes
import os
import sys
import threading
from pathlib import Path
from typing import TYPE_CHECKING, Any, Dict, List, Optional, Tuple

from ._error import Error
from ._prototypes import FUNCTIONS, ErrorCode, qrb_result
from ._values import PathLike, decoded

#: The environment variable that names the library's file.
VARIABLE = "QRB_LIBRARY"

if sys.platform == "win32":
    DEFAULT_NAME = "qrblib.dll"
elif sys.platform == "darwin":
    DEFAULT_NAME = "qrblib.dylib"
else:
    DEFAULT_NAME = "qrblib.so"


class Library:
    """A loaded library: every function of the C interface is an attribute by its name.

    Functions with the suffix _cf may be called on any thread; the others belong to a context.
    """

    def __init__(self, path: str) -> None:
        self.path = path
        self._module = ctypes.CDLL(path)
        for name, (result, arguments) in FUNCTIONS.items():
            try:
                function = getattr(self._module, name)
            except AttributeError:
                raise Error(
                    ErrorCode.NOT_AVAILABLE,
                    f'"{path}" is no database library: it has no function {name}().',
                    "It may be older than this module.",
                ) from None
            function.restype = result
            function.argtypes = arguments
            setattr(self, name, function)

    if TYPE_CHECKING:

        def __getattr__(self, name: str) -> Any:
            ...

    def __repr__(self) -> str:
        return f"<qrb.Library {self.path!r}>"

    def free_call(self, name: str, *arguments: Any) -> None:
        """Calls a function with the suffix _cf; raises Error where it fails."""
        result = getattr(self, name)(*arguments)
        if not result:
            return
        try:
            raise self._error_of(result)
        finally:
            self.qrb_result_delete_cf(result)

    def owned_text(self, name: str, *arguments: Any) -> str:
        """The text that such a function hands out as its last argument."""
        text = ctypes.c_char_p()
        self.free_call(name, *arguments, ctypes.byref(text))
        try:
            return decoded(text.value)
        finally:
            self.qrb_string_delete_cf(text)

    def _error_of(self, result: "ctypes._Pointer[qrb_result]") -> Error:
        code = ctypes.c_int32()
        self.free_call("qrb_result_get_error_code_cf", result, ctypes.byref(code))
        return Error(
            code.value,
            self.owned_text("qrb_result_get_error_text_cf", result),
            self.owned_text("qrb_result_get_error_details_cf", result),
        )


_loaded: Dict[str, Library] = {}
_first: Optional[Library] = None
_lock = threading.Lock()


def _candidates() -> List[Tuple[str, str]]:
    """Where the library may be, and how that place is called in words."""
    named = os.environ.get(VARIABLE)
    if named:
        return [(named, f"the environment variable {VARIABLE}")]
    beside = Path(__file__).resolve().parent / DEFAULT_NAME
    places = [(str(beside), "beside the module")] if beside.exists() else []
    return [*places, (DEFAULT_NAME, "where the platform looks for libraries")]


def _try(path: str) -> Library:
    if path not in _loaded:
        _loaded[path] = Library(path)
    return _loaded[path]


def load(library: Optional[PathLike] = None) -> Library:
    """The library of this file. Without one (None or empty): the library that was loaded first, else
    the one that the environment variable QRB_LIBRARY names, that lies beside the module, or that the
    platform finds by its name ("qrblib.so", "qrblib.dylib", "qrblib.dll").

    Libraries stay loaded. Raises Error where none can be loaded.
    """
    global _first
    with _lock:
        name = "" if library is None else os.fsdecode(library)
        if not name and _first is not None:
            return _first
        candidates = [(name, "the argument library")] if name else _candidates()
        tried = []
        for path, place in candidates:
            try:
                found = _try(path)
            except (OSError, ValueError) as error:
                tried.append(f"{path} ({place}): {error}")
                continue
            _first = _first or found
            return found
    raise Error(
        ErrorCode.NOT_FOUND,
        "The database library can't be loaded.",
        "Tried:\n  "
        + "\n  ".join(tried)
        + f"\nName its file by the argument library or the environment variable {VARIABLE}.",
    )
