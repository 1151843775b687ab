"""The exception of the module."""

from __future__ import annotations

from enum import IntEnum
from typing import Type, TypeVar, Union

from ._prototypes import ErrorCode


E = TypeVar("E", bound=IntEnum)


def known(enumeration: Type[E], value: int) -> Union[E, int]:
    """The member of an enumeration; the bare number where it has none, as of a later library."""
    try:
        return enumeration(value)
    except ValueError:
        return value


class Error(Exception):
    """What the library, or this module in its place, can't do.

    code: an ErrorCode (a bare int where the library tells a code that the module doesn't know);
    text: what was wrong and with which value;
    details: where and why, and what to do; may be empty.
    """

    def __init__(self, code: Union[ErrorCode, int], text: str, details: str = "") -> None:
        super().__init__(code, text, details)
        self.code: Union[ErrorCode, int] = known(ErrorCode, code)
        self.text = text
        self.details = details

    def __str__(self) -> str:
        return f"{self.text}\n{self.details}" if self.details else self.text
