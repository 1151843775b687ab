"""What validations find."""

from __future__ import annotations

import json
from dataclasses import dataclass, fields
from typing import Any, Dict, List, Union

from ._error import Error
from ._handle import Handle
from ._prototypes import ErrorCode
from ._values import encoded

#: A JSON text, or what stands for it.
Schema = Union[str, Dict[str, Any], bool]

#: Of qrb_pointcloud_inspect.
_FINDINGS = 6


@dataclass(frozen=True)
class Finding:
    """One violation. Empty: not about such a thing."""

    attribute: str = ""
    #: Name of a metadata item.
    item: str = ""
    #: JSON pointer of the place in the value; empty: the whole.
    pointer: str = ""
    #: Of the JSON schema.
    keyword: str = ""
    expected: str = ""
    found: str = ""
    #: What is wrong at the place.
    text: str = ""
    #: All of it in one line.
    line: str = ""

    def __str__(self) -> str:
        return self.line


class Findings(List[Finding]):
    """What does not agree; empty where everything does."""

    def __init__(self, findings: Any = (), notes: Any = ()) -> None:
        super().__init__(findings)
        #: Texts about what was not checked.
        self.notes: List[str] = list(notes)


def schema_text(schema: Schema, what: str) -> bytes:
    """A schema as JSON text; what is no text is written as JSON."""
    if isinstance(schema, (dict, bool)):
        schema = json.dumps(schema, ensure_ascii=False, allow_nan=False)
    return encoded(schema, what)


def findings_of(handle: Handle, function: str, *arguments: Any) -> Findings:
    """What a validating function found; raises Error where it failed otherwise."""
    with handle.context:
        lines: List[str] = []
        try:
            handle.call(function, *arguments)
        except Error as error:
            if error.code != ErrorCode.VALIDATION:
                raise
            lines = (error.details or error.text).splitlines()
        try:
            report = json.loads(handle.text("inspect", _FINDINGS))
        except Error as error:
            if error.code != ErrorCode.ARGUMENT:
                raise
            # A library without records.
            return Findings(Finding(text=line, line=line) for line in lines)
    names = [field.name for field in fields(Finding)]
    return Findings(
        (Finding(**{n: one[n] for n in names if n in one}) for one in report["findings"]),
        report["notes"],
    )
