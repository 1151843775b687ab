"""A context of the library: its lock, its calls, and what becomes of handles that are dropped.

The library wants one thread at a time on a context and on what was made from it. Every call holds
the context's lock until its texts are copied, so that threads wait for each other. Finalizers run
anywhere, also in the midst of another call: they only put handles aside, which are deleted when
nobody is at work.
"""

from __future__ import annotations

import collections
import ctypes
import os
import platform
import threading
import weakref
from typing import Any, Deque, List, Tuple

from ._error import Error
from ._library import Library
from ._prototypes import SUCCESS, ErrorCode, qrb_context
from ._values import decoded, encoded, unpacked
from ._version import __version__

_API = (
    f"QRB for Python {__version__} ({platform.python_implementation()} {platform.python_version()})"
)


class _State:
    """What the finalizer needs of a context."""

    def __init__(self, library: Library, handle: Any) -> None:
        self.library = library
        self.handle = handle
        self.lock = threading.RLock()
        self.held = 0  # by the thread that has the lock
        self.discarded: Deque[Tuple[str, Any]] = collections.deque()

    def delete(self) -> None:
        """Deletes the context with all that was made from it, unless a thread is at work on it."""
        if not self.lock.acquire(blocking=False):
            return
        try:
            handle, self.handle = self.handle, None
            if handle:
                self.library.qrb_context_delete(handle)
        finally:
            self.lock.release()


class Context:
    """Use it as a context manager to hold the lock over several calls."""

    def __init__(self, library: Library, log_level: str, log_path: str) -> None:
        self.library = library
        handle = ctypes.POINTER(qrb_context)()
        status = library.qrb_context_new_with_api(
            ctypes.byref(handle),
            encoded(_API, "The interface"),
            encoded(log_level, "The log level"),
            encoded(log_path, "The path of the log"),
        )
        self._state = _State(library, handle)
        self._finalizer = weakref.finalize(self, self._state.delete)
        _contexts.add(self)
        if status != SUCCESS:
            self._finalizer()
            raise Error(
                ErrorCode.ARGUMENT,
                f'The library can\'t log "{log_level}" to "{log_path}".',
                "The level is TRACE, DEBUG, INFO, WARNING, ERROR or OFF; the file must be writable.",
            )

    def __enter__(self) -> "Context":
        state = self._state
        state.lock.acquire()
        state.held += 1
        if state.held == 1 and state.discarded:
            self._delete_discarded()
        return self

    def __exit__(self, *_: Any) -> None:
        self._state.held -= 1
        self._state.lock.release()

    @property
    def is_open(self) -> bool:
        return bool(self._state.handle)

    def close(self) -> None:
        with self:
            handle, self._state.handle = self._state.handle, None
            self._state.discarded.clear()
            if handle and self.library.qrb_context_delete(handle) != SUCCESS:
                self._state.handle = handle
                raise self._last_error()
        self._finalizer.detach()

    def call(self, name: str, *arguments: Any) -> None:
        """Calls a function with the context as its first argument; raises Error where it fails."""
        with self:
            if not self._state.handle:
                raise Error(ErrorCode.STATE, "The database is closed.", "Open it again.")
            if getattr(self.library, name)(self._state.handle, *arguments) != SUCCESS:
                raise self._last_error()

    def number(self, kind: Any, name: str, *arguments: Any) -> Any:
        """The number that the function writes to its last argument, of this ctypes type."""
        number = kind()
        self.call(name, *arguments, ctypes.byref(number))
        return number.value

    def flag(self, name: str, *arguments: Any) -> bool:
        return bool(self.number(ctypes.c_uint8, name, *arguments))

    def text(self, name: str, *arguments: Any) -> str:
        """The same of a text."""
        with self:
            text = ctypes.c_char_p()
            self.call(name, *arguments, ctypes.byref(text))
            return decoded(text.value)

    def names(self, name: str, *arguments: Any) -> List[str]:
        """The same of a list of names, which takes two arguments."""
        with self:
            count, names = ctypes.c_uint32(), ctypes.c_char_p()
            self.call(name, *arguments, ctypes.byref(count), ctypes.byref(names))
            return unpacked(count.value, names)

    def handle(self, kind: Any, name: str, *arguments: Any) -> Any:
        """The same of a handle to this opaque type."""
        handle = ctypes.POINTER(kind)()
        self.call(name, *arguments, ctypes.byref(handle))
        return handle

    def discard(self, name: str, handle: Any) -> None:
        """Has the function called on a handle as soon as nobody is at work; never fails."""
        state = self._state
        state.discarded.append((name, handle))
        if state.lock.acquire(blocking=False):
            try:
                if state.held == 0:
                    self._delete_discarded()
            finally:
                state.lock.release()

    def _delete_discarded(self) -> None:
        state = self._state
        while state.discarded:
            name, handle = state.discarded.popleft()
            if state.handle:
                getattr(self.library, name)(state.handle, handle)

    def _last_error(self) -> Error:
        code, text, details = ctypes.c_int32(), ctypes.c_char_p(), ctypes.c_char_p()
        status = SUCCESS - 1
        if self._state.handle:
            status = self.library.qrb_context_get_last_error(
                self._state.handle, ctypes.byref(code), ctypes.byref(text), ctypes.byref(details)
            )
        if status != SUCCESS:
            return Error(ErrorCode.INTERNAL, "The library failed and does not tell why.")
        return Error(code.value, decoded(text.value), decoded(details.value))


_contexts: "weakref.WeakSet[Context]" = weakref.WeakSet()


def _forget_contexts() -> None:
    """In a forked process: the library's threads and locks stayed in the parent."""
    for context in list(_contexts):
        state = context._state
        state.handle, state.held, state.lock = None, 0, threading.RLock()
        state.discarded.clear()


if hasattr(os, "register_at_fork"):
    os.register_at_fork(after_in_child=_forget_contexts)
