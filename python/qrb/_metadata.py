"""The metadata items of an open database."""

from __future__ import annotations

import ctypes
import json
from typing import Any, Iterator, Mapping, MutableMapping, Optional

from ._findings import Findings, Schema, findings_of, schema_text
from ._handle import Handle
from ._signature import Key, key_arguments
from ._values import decoded, encoded


class Metadata(Mapping[str, str]):
    """The texts (mostly JSON) by name, in byte order. Within a transaction those of its state."""

    def __init__(self, handle: Handle) -> None:
        self._handle = handle

    def __contains__(self, name: object) -> bool:
        if not isinstance(name, str):
            return False
        return self._handle.flag("meta_data_exists", encoded(name, "The name"))

    def __getitem__(self, name: str) -> str:
        with self._handle.context:
            if name not in self:
                raise KeyError(name)
            value = ctypes.c_char_p()
            self._handle.call("meta_data_get", encoded(name, "The name"), ctypes.byref(value), None)
            return decoded(value.value)

    def __iter__(self) -> Iterator[str]:
        return iter(self._handle.names("meta_data_list"))

    def __len__(self) -> int:
        return len(self._handle.names("meta_data_list"))

    def __repr__(self) -> str:
        return (
            f"<{type(self).__name__} {list(self)}>" if self._handle.context.is_open else "<closed>"
        )

    def json(self, name: str) -> Any:
        """The value of an item that is a JSON text. Raises ValueError where it is none."""
        return json.loads(self[name])

    def validate(self, name: str, schema: Schema = "") -> Findings:
        """Checks an item against a JSON schema; an empty one: that of the default catalogue."""
        return findings_of(
            self._handle,
            "meta_data_validate",
            encoded(name, "The name"),
            schema_text(schema, "The schema"),
        )

    def validate_json(self, value: Any, schema: Schema) -> Findings:
        """Checks a JSON text, or what json.dumps takes, against a JSON schema."""
        return findings_of(
            self._handle,
            "meta_data_validate_json",
            _value_text(value),
            schema_text(schema, "The schema"),
        )

    def verify(self, name: str, key: Optional[Key] = None, *, method: Optional[int] = None) -> bool:
        """Whether the signature of an item is valid; without key and method: whether it has one."""
        arguments = key_arguments(key, method)
        with self._handle.context, self._handle.authenticating:
            return self._handle.flag(
                "meta_data_verify_signature", encoded(name, "The name"), *arguments
            )


class PendingMetadata(Metadata, MutableMapping[str, str]):
    """The items within a transaction, which changes them. Values that are no str are written as
    JSON."""

    def __setitem__(self, name: str, value: Any) -> None:
        self._handle.call("meta_data_set", encoded(name, "The name"), _value_text(value))

    def __delitem__(self, name: str) -> None:
        if name not in self:
            raise KeyError(name)
        self._handle.call("meta_data_remove", encoded(name, "The name"))

    def sign(self, name: str, key: Optional[Key] = None, *, method: Optional[int] = None) -> None:
        """Signs an item with a key (method 1), or by the authentication function (method 2)."""
        if key is None and method is None:
            raise TypeError("A key or the method 2 is needed; unsign() removes a signature.")
        self._sign(name, key, method)

    def unsign(self, name: str) -> None:
        self._sign(name, None, None)

    def _sign(self, name: str, key: Optional[Key], method: Optional[int]) -> None:
        arguments = key_arguments(key, method)
        with self._handle.context, self._handle.authenticating:
            self._handle.call("meta_data_create_signature", encoded(name, "The name"), *arguments)


def _value_text(value: Any) -> bytes:
    if isinstance(value, str):
        return encoded(value, "The value")
    if value is None or isinstance(value, (bytes, bytearray)):
        raise TypeError(f"A value must be a str or what json.dumps takes, not {value!r}.")
    return encoded(json.dumps(value, ensure_ascii=False, allow_nan=False), "The value")
