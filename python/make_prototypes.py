#!/usr/bin/env python3
"""Writes qrb/_prototypes.py from the C interface.

    python/make_prototypes.py            writes the module
    python/make_prototypes.py --check    tells by its exit code whether the module is up to date

The module stands in the tree, because an installed package has no C headers beside it.
"""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent
INTERFACE = ROOT.parent / "include" / "qrb"
MODULE = ROOT / "qrb" / "_prototypes.py"

HEAD = '''"""Prototypes of the C interface. Made by make_prototypes.py: change that, not this."""

from ctypes import CFUNCTYPE, POINTER, Structure
from ctypes import c_char_p, c_double, c_int32, c_int64, c_uint8, c_uint32, c_uint64, c_void_p
from enum import IntEnum
from typing import Any, Dict, Tuple
'''

SIMPLE = {
    "double": "c_double",
    "int32_t": "c_int32",
    "int64_t": "c_int64",
    "uint8_t": "c_uint8",
    "uint32_t": "c_uint32",
    "uint64_t": "c_uint64",
}


def without_comments(text):
    return re.sub(r"/\*.*?\*/|//[^\n]*", " ", text, flags=re.DOTALL)


def words(text):
    """A type or declaration in one line, stars apart, without const."""
    return [word for word in re.sub(r"\*", " * ", text).split() if word not in ("const", "struct")]


def python_type(text, named):
    """The ctypes type of a C type; named: types of the header that Python has by the same name."""
    parts = words(text)
    name, stars = parts[0], len(parts) - 1
    if parts[1:] != ["*"] * stars:
        raise ValueError(f"The type {text!r} is not understood.")
    if name in ("char", "void"):
        if stars == 0:
            raise ValueError(f"The type {text!r} is not understood.")
        result, stars = "c_char_p" if name == "char" else "c_void_p", stars - 1
    elif name in SIMPLE:
        result = SIMPLE[name]
    elif name in named:
        result = name
    else:
        raise ValueError(f"The type {text!r} is not understood.")
    for _ in range(stars):
        result = f"POINTER({result})"
    return result


def declaration_type(declaration, named):
    """The type of "TYPE NAME"."""
    parts = words(declaration)
    return python_type(" ".join(parts[:-1]), named)


def enum_class(name, body):
    prefix = name.upper() if name != "qrb_error_code" else "QRB_ERROR"
    title = "".join(part.capitalize() for part in name.split("_")[1:])
    lines = [f"class {title}(IntEnum):", f'    """The values of {name}."""', ""]
    for constant, value in re.findall(r"(\w+)\s*=\s*(\d+)", body):
        lines.append(f"    {constant[len(prefix) + 1:]} = {value}")
    return lines


def structure_class(name, body, named):
    lines = [f"class {name}(Structure):", "    pass", "", "", f"{name}._fields_ = ["]
    for declaration in filter(str.strip, body.split(";")):
        field = words(declaration)[-1]
        lines.append(f'    ("{field}", {declaration_type(declaration, named)}),')
    return [*lines, "]"]


def header_lines(header, named):
    """What qrb.h declares; fills named with its types."""
    lines = []
    for name, body in re.findall(r"enum (\w+) \{(.*?)\}", header, flags=re.DOTALL):
        lines += ["", "", *enum_class(name, body)]
    status = re.search(r"typedef (\w+) qrb_status;", header)
    success = re.search(r"QRB_SUCCESS = (\d+)", header)
    lines += ["", "", f"SUCCESS = {success.group(1)}", f"qrb_status = {SIMPLE[status.group(1)]}"]
    named.add("qrb_status")
    for name in re.findall(r"typedef struct (\w+) \1;", header):
        named.add(name)
        lines += ["", "", f"class {name}(Structure):", "    pass"]
    structures = re.findall(r"typedef struct (\w+) \{(.*?)\} \1;", header, flags=re.DOTALL)
    for name, body in structures:
        named.add(name)
        lines += ["", "", *structure_class(name, body, named)]
    lines += ["", ""]
    for result, name, parameters in re.findall(
        r"typedef (\w+) \(\*(\w+)\)\((.*?)\);", header, flags=re.DOTALL
    ):
        types = [declaration_type(each, named) for each in (result + " x," + parameters).split(",")]
        named.add(name)
        lines.append(f"{name} = CFUNCTYPE({', '.join(types)})")
    return lines


def function_lines(definitions, named):
    lines = ["", "# By name: the type of the result and those of the arguments."]
    lines.append("FUNCTIONS: Dict[str, Tuple[Any, Tuple[Any, ...]]] = {")
    functions = re.findall(
        r"QRB_FUNCTION\(([^,()]+),\s*(\w+),\s*\((.*?)\)\)", definitions, flags=re.DOTALL
    )
    if len(functions) != definitions.count("QRB_FUNCTION("):
        raise ValueError("functions.def has entries that are not understood.")
    for result, name, parameters in functions:
        types = [declaration_type(each, named) for each in parameters.split(",")]
        lines.append(f'    "{name}":')
        lines.append(f"        ({python_type(result, named)}, ({', '.join(types)},)),")
    return [*lines, "}"]


def module_text():
    header = without_comments((INTERFACE / "qrb.h").read_text(encoding="utf-8"))
    definitions = without_comments((INTERFACE / "functions.def").read_text(encoding="utf-8"))
    named = set()
    lines = header_lines(header, named) + function_lines(definitions, named)
    return HEAD + "\n".join(lines).replace("\n\n\n\n", "\n\n\n") + "\n"


def main():
    text = module_text()
    if sys.argv[1:] == ["--check"]:
        if MODULE.read_text(encoding="utf-8") != text:
            sys.exit(f"{MODULE.name} is out of date: run python/make_prototypes.py.")
    elif sys.argv[1:]:
        sys.exit(__doc__)
    else:
        MODULE.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main()
