"""Functions of the caller that the library calls."""

from __future__ import annotations

import ctypes
import sys
from typing import Any, Callable, Optional

from ._prototypes import qrb_authentication_function, qrb_progress_function

#: Receives the part of the work that is done, 0.0 to 1.0; False stops it (None goes on).
Progress = Callable[[float], Optional[bool]]

#: Receives a challenge and the number of bytes of the answer, which it returns; None if it can't.
Authentication = Callable[[bytes, int], Optional[bytes]]


class Kept:
    """Keeps what a function of the caller raised until the library's call is over.

    Use it as a context manager around that call: where it failed, the caller's own exception wins
    over the library's "cancelled". A call that succeeded has done its work: raising then would make
    it look undone, so the exception goes to sys.unraisablehook.
    """

    def __init__(self) -> None:
        self._raised: Optional[BaseException] = None

    def run(self, function: Callable[..., Any], *arguments: Any) -> Any:
        """What the function returns; None where it raised, or has raised before."""
        if self._raised is None:
            try:
                return function(*arguments)
            except BaseException as error:  # noqa: B902 - none may pass through the library
                self._raised = error
        return None

    @property
    def has_raised(self) -> bool:
        return self._raised is not None

    def __enter__(self) -> "Kept":
        return self

    def __exit__(self, _: Any, error: Optional[BaseException], __: Any) -> None:
        raised, self._raised = self._raised, None
        if raised is None:
            return
        if error is not None:
            raise raised
        sys.unraisablehook(_Unraisable(raised))  # type: ignore[arg-type]


class _Unraisable:
    def __init__(self, error: BaseException) -> None:
        self.exc_type = type(error)
        self.exc_value = error
        self.exc_traceback = error.__traceback__
        self.err_msg = "Exception ignored, because the work was done already, in a function called"
        self.object = "the database library"


def progress_function(progress: Optional[Progress], kept: Kept) -> Any:
    """The C function for a progress function; null for None. It must outlive the call."""
    if progress is None:
        return qrb_progress_function(0)
    if not callable(progress):
        raise TypeError(f"progress must be a function, not {type(progress).__name__}.")

    def call(percent: int, _: Any) -> int:
        return 1 if kept.run(_goes_on, progress, percent / 100) else 0

    return qrb_progress_function(call)


def _goes_on(progress: Progress, fraction: float) -> bool:
    answer = progress(fraction)
    return answer is None or bool(answer)


def authentication_function(authentication: Authentication, kept: Kept) -> Any:
    """The C function for an authentication function; it must outlive its context."""
    if not callable(authentication):
        raise TypeError(f"authentication must be a function, not {type(authentication).__name__}.")

    def answer(challenge: bytes, size: int) -> Optional[bytes]:
        given = authentication(challenge, size)
        if given is None:
            return None
        given = bytes(given)
        if len(given) != size:
            raise ValueError(f"The answer has {len(given)} bytes: {size} are asked for.")
        return given

    def call(challenge: Any, challenge_size: int, out: Any, size: int, _: Any) -> int:
        question = ctypes.string_at(challenge, challenge_size) if challenge else b""
        given = kept.run(answer, question, size)
        if given is None:
            return 0
        ctypes.memmove(out, given, size)
        return 1

    return qrb_authentication_function(call)
