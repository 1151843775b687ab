"""Texts and numbers of Python on their way across the C interface, and back."""

from __future__ import annotations

import ctypes
import operator
import os
from typing import Any, List, Optional, Union

PathLike = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]


def encoded(text: str, what: str) -> bytes:
    """UTF-8 of a text. Raises TypeError, and ValueError where the interface can't carry it."""
    if not isinstance(text, str):
        raise TypeError(f"{what} must be a str, not {type(text).__name__}.")
    place = text.find("\0")
    if place >= 0:
        raise ValueError(f"{what} holds a NUL character (at place {place}).")
    try:
        return text.encode("utf-8")
    except UnicodeEncodeError as error:
        raise ValueError(
            f"{what} holds a surrogate (at place {error.start}), which UTF-8 can't have."
        ) from None


def encoded_path(path: PathLike, what: str = "The path") -> bytes:
    return encoded(os.fsdecode(path), what)


def decoded(text: Optional[bytes]) -> str:
    """A text of the library; null is the empty one. Bytes that are no UTF-8 show as \\xNN."""
    return (text or b"").decode("utf-8", "backslashreplace")


def unpacked(count: int, names: ctypes.c_char_p) -> List[str]:
    """A list of names: count zero-terminated texts one after another."""
    texts: List[str] = []
    address = ctypes.cast(names, ctypes.c_void_p).value or 0
    for _ in range(count):
        text = ctypes.string_at(address)
        texts.append(decoded(text))
        address += len(text) + 1
    return texts


def whole(value: Any, what: str, bits: int = 32, least: int = 0) -> int:
    """A whole number from least to what so many bits hold: ctypes would cut silently."""
    try:
        number = operator.index(value)
    except TypeError:
        raise TypeError(f"{what} must be a whole number, not {type(value).__name__}.") from None
    largest = 2**bits - 1
    if not least <= number <= largest:
        raise ValueError(f"{what} is {number}: it must be from {least} to {largest}.")
    return number


def real(value: Any, what: str) -> float:
    if isinstance(value, (str, bytes)):
        raise TypeError(f"{what} must be a number, not {type(value).__name__}.")
    try:
        return float(value)
    except TypeError:
        raise TypeError(f"{what} must be a number, not {type(value).__name__}.") from None


def whole_list(values: Any, what: str) -> "ctypes.Array[ctypes.c_uint32]":
    """Numbers of nodes or transactions as the interface takes them; an empty list has an address."""
    if isinstance(values, (str, bytes)) or not hasattr(values, "__iter__"):
        raise TypeError(f"{what} must be a sequence of whole numbers.")
    numbers = [whole(value, f"A member of {what}") for value in values]
    return (ctypes.c_uint32 * max(1, len(numbers)))(*numbers)
