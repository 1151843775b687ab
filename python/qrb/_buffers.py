"""Columns of numbers: arrays that the library fills, and arrays of the caller that it reads.

With NumPy the arrays are numpy.ndarray, else memoryview. The library reads and writes their memory
itself; only what it can't read (lists, foreign byte orders, half floats) is turned into arrays
first.
"""

from __future__ import annotations

import array
import ctypes
import operator
import struct
import sys
from typing import Any, Iterator, List, NamedTuple, Optional, Tuple

from ._prototypes import DataType

try:
    import numpy
except ImportError:
    numpy = None  # type: ignore[assignment]

#: The native format characters of memoryview and array, as of the module struct.
_FORMATS = {
    DataType.UINT8: "B",
    DataType.INT8: "b",
    DataType.UINT16: "H",
    DataType.INT16: "h",
    DataType.UINT32: "I",
    DataType.INT32: "i",
    DataType.UINT64: "Q",
    DataType.INT64: "q",
    DataType.SINGLE: "f",
    DataType.DOUBLE: "d",
}


def _kind_and_size(character: str) -> Tuple[str, int]:
    kind = "f" if character in "fd" else "u" if character in "BHILQN?" else "i"
    return kind, struct.calcsize(character)


_TYPES = {_kind_and_size(character): type for type, character in _FORMATS.items()}
_STRIDE_LIMIT = 2**31


def size_of(data_type: DataType) -> int:
    return struct.calcsize(_FORMATS[data_type])


def _dtype(data_type: DataType) -> Any:
    kind, size = _kind_and_size(_FORMATS[data_type])
    return numpy.dtype(f"{kind}{size}")


def _type_of_format(text: str) -> Optional[DataType]:
    """The type of a memoryview's format; None where the library has none like it."""
    native = "<" if sys.byteorder == "little" else ">"
    character = text[1:] if text[:1] in ("@", "=", native) else text
    if len(character) != 1 or character not in "BHILQNbhilqn?fd":
        return None
    return _TYPES.get(_kind_and_size(character))


def data_type_of(value: Any) -> DataType:
    """A data type as callers may name it: a DataType, what numpy.dtype takes, a character of the
    module struct."""
    if isinstance(value, DataType):
        if value is DataType.NONE:
            raise ValueError("The data type NONE holds no values.")
        return value
    found = None
    if numpy is not None and not isinstance(value, int) and value is not None:
        dtype = numpy.dtype(value)
        if dtype.isnative and dtype.kind in "uif":
            found = _TYPES.get((dtype.kind, dtype.itemsize))
    elif isinstance(value, str):
        found = _type_of_format(value)
    if found is None:
        raise TypeError(f"{value!r} is no data type that the library can read or write.")
    return found


class Output:
    """Memory for the values of some points, which the library fills."""

    def __init__(self, data_type: DataType, length: int, capacity: int) -> None:
        self.data_type = data_type
        self.length = length
        self.stride = size_of(data_type) * length
        if numpy is not None:
            shape = (capacity,) if length == 1 else (capacity, length)
            self._memory: Any = numpy.empty(shape, _dtype(data_type))
            self.address = self._memory.ctypes.data
        else:
            self._memory = bytearray(max(1, capacity * self.stride))
            self._export = (ctypes.c_char * len(self._memory)).from_buffer(self._memory)
            self.address = ctypes.addressof(self._export)

    def copy(self, count: int) -> Any:
        """The values of the first points, in memory of their own."""
        if numpy is not None:
            return self._memory[:count].copy()
        return _view(self._memory[: count * self.stride], self.data_type, self.length)


def joined(columns: "List[Any]", data_type: DataType, length: int) -> Any:
    """Columns of batches, one after another; an empty one for none."""
    if numpy is None:
        memory = bytearray().join(column.cast("B") for column in columns)
        return _view(memory, data_type, length)
    if columns:
        return numpy.concatenate(columns)
    return numpy.empty((0,) if length == 1 else (0, length), _dtype(data_type))


def _view(memory: bytearray, data_type: DataType, length: int) -> memoryview:
    view = memoryview(memory).cast(_FORMATS[data_type])
    if length == 1 or len(view) == 0:  # a view without members has one dimension
        return view
    return view.cast("B").cast(_FORMATS[data_type], (len(view) // length, length))


class Input(NamedTuple):
    """Numbers of the caller in memory that the library can read."""

    data_type: DataType
    address: int
    shape: Tuple[int, ...]
    strides: Tuple[int, ...]
    keep: Any  # lives as long as the address is used


def input_of(values: Any, what: str) -> Input:
    """Raises TypeError or ValueError for what is no array of numbers."""
    if isinstance(values, (list, tuple, range)) or not _has_buffer(values):
        return _packed(values, what)
    if numpy is not None:
        is_array = hasattr(values, "__array__")
        return _input_of_ndarray(values if is_array else memoryview(values), what)
    view = memoryview(values)
    data_type = _type_of_format(view.format)
    if data_type is None:
        raise TypeError(f"{what}: values of the format {view.format!r} can't be stored.")
    memory = _memory_of(view)
    strides = _strides(tuple(view.shape), view.itemsize)
    return Input(data_type, ctypes.addressof(memory), tuple(view.shape), strides, memory)


def _memory_of(view: memoryview) -> Any:
    """The memory of a view; a copy where it is read-only or has gaps."""
    if view.nbytes and not view.readonly and view.c_contiguous and len(view.format) == 1:
        return (ctypes.c_char * view.nbytes).from_buffer(view.cast("B"))
    return (ctypes.c_char * max(1, view.nbytes)).from_buffer_copy(view.tobytes() or b"\0")


def _has_buffer(values: Any) -> bool:
    if numpy is not None and hasattr(values, "__array__"):
        return True
    try:
        memoryview(values).release()
    except TypeError:
        return False
    return True


def _strides(shape: Tuple[int, ...], size: int) -> Tuple[int, ...]:
    strides: List[int] = []
    for extent in reversed(shape):
        strides.insert(0, size)
        size *= extent
    return tuple(strides)


def _input_of_ndarray(values: Any, what: str) -> Input:
    if isinstance(values, numpy.ma.MaskedArray):
        raise TypeError(f"{what}: a masked array; say what stands for masked values by filled().")
    values = numpy.asarray(values)
    if values.dtype.kind == "b":
        values = values.view(numpy.uint8)
    if values.dtype == numpy.float16:
        values = values.astype(numpy.float32)
    data_type = (
        _TYPES.get((values.dtype.kind, values.dtype.itemsize))
        if values.dtype.kind in "uif"
        else None
    )
    if data_type is None:
        raise TypeError(f"{what}: values of the type {values.dtype} can't be stored.")
    if not values.dtype.isnative:
        values = values.astype(values.dtype.newbyteorder("="))
    if any(abs(stride) >= _STRIDE_LIMIT for stride in values.strides[:1]):
        values = numpy.ascontiguousarray(values)
    return Input(data_type, values.ctypes.data, values.shape, values.strides, values)


def _packed(values: Any, what: str) -> Input:
    """Numbers, sequences of numbers and sequences of those."""
    if not isinstance(values, (list, tuple, range)):
        return _of_array(_array_of([values], what), ())
    rows: List[Any] = [
        row for row in values if hasattr(row, "__len__") and not isinstance(row, (str, bytes))
    ]
    if not rows:
        return _of_array(_array_of(values, what), (len(values),))
    if len(rows) < len(values) or len({len(row) for row in rows}) > 1:
        raise ValueError(f"{what}: the rows have different lengths.")
    flat = [number for row in rows for number in row]
    return _of_array(_array_of(flat, what), (len(rows), len(rows[0])))


def _of_array(numbers: "array.array[Any]", shape: Tuple[int, ...]) -> Input:
    data_type = _TYPES[_kind_and_size(numbers.typecode)]
    address = numbers.buffer_info()[0]
    return Input(data_type, address, shape, _strides(shape, numbers.itemsize), numbers)


def _array_of(numbers: Any, what: str) -> "array.array[Any]":
    """Whole numbers stay whole: as doubles they could change beyond 2^53."""
    exact: List[Any] = []
    for number in numbers:
        try:
            exact.append(operator.index(number))
        except TypeError:
            if not hasattr(number, "__float__"):
                raise TypeError(f"{what}: {number!r} is no number.") from None
            exact.append(float(number))
    if any(isinstance(number, float) for number in exact):
        return array.array("d", exact)
    for character in "qQ":
        try:
            return array.array(character, exact)
        except OverflowError:
            pass
    raise ValueError(f"{what}: no type of 64 bits holds all these whole numbers.")


class Column:
    """Values of points for one attribute or element, checked against its number of elements."""

    def __init__(self, name: str, length: int, values: Any) -> None:
        self.name = name
        self._length = length
        self._input = input_of(values, name)
        shape = self._input.shape
        #: Number of points; None: one value for all.
        self.count: Optional[int] = shape[0] if shape else None
        expected = [(self.count, length)] + ([(self.count,), ()] if length == 1 else [])
        if tuple(shape) not in expected:
            wanted = "(n,)" if length == 1 else f"(n, {length})"
            raise ValueError(f"{name}: an array of the shape {wanted} is needed, not {shape}.")

    @property
    def is_fractional(self) -> bool:
        return self._input.data_type in (DataType.SINGLE, DataType.DOUBLE)

    def spread(self, count: int) -> "Column":
        """The same with a value for each of so many points."""
        if self.count is not None:
            return self
        numbers = self._input.keep
        if not isinstance(numbers, array.array):
            numbers = array.array(
                _FORMATS[self._input.data_type],
                ctypes.string_at(self._input.address, size_of(self._input.data_type)),
            )
        repeated = numbers * count
        column = Column.__new__(Column)
        column.name, column._length, column.count = self.name, self._length, count
        column._input = _of_array(repeated, (count,))
        return column

    def bindings(self, begin: int) -> Iterator[Tuple[str, DataType, ctypes.c_void_p, int]]:
        """What to bind for the points from begin on: name, type, buffer and stride."""
        data_type, address, shape, strides, _ = self._input
        address += begin * strides[0]
        size = size_of(data_type)
        if len(shape) == 1 or self._length == 1 or strides[1] == size:
            yield self.name, data_type, ctypes.c_void_p(address), strides[0]
            return
        for element in range(self._length):
            place = ctypes.c_void_p(address + element * strides[1])
            yield f"{self.name}[{element}]", data_type, place, strides[0]


class Value:
    """One value for many points: a number, or one per element."""

    def __init__(self, name: str, length: int, value: Any) -> None:
        self.name = name
        given = input_of(value, name)
        if given.shape not in ([(), (1,)] if length == 1 else [(length,)]):
            wanted = "one number" if length == 1 else f"{length} numbers"
            raise ValueError(
                f"{name}: {wanted} is needed, not an array of the shape {given.shape}."
            )
        self._size = size_of(given.data_type)
        if len(given.shape) == 1 and given.strides[0] != self._size:
            given = input_of(list(given.keep), name)
        self.data_type = given.data_type
        self.buffer = ctypes.c_void_p(given.address)
        self._keep = given.keep
