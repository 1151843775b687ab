"""Writes the points within a polygon to a PLY file.

The format: G. Turk, The PLY Polygon File Format (1994): a header in text, then the points one after
another, here in binary form with the least byte first.
"""

import itertools
import struct

import qrb
from points import coordinates, element, numpy, whole_file, with_values
from polygon import Polygons, read_polygons

#: What a data type is called in PLY, and in the modules struct and numpy. PLY has no whole numbers
#: of 64 bits.
_TYPES = {
    qrb.DataType.UINT8: ("uchar", "B"),
    qrb.DataType.INT8: ("char", "b"),
    qrb.DataType.UINT16: ("ushort", "H"),
    qrb.DataType.INT16: ("short", "h"),
    qrb.DataType.UINT32: ("uint", "I"),
    qrb.DataType.INT32: ("int", "i"),
    qrb.DataType.SINGLE: ("float", "f"),
    qrb.DataType.DOUBLE: ("double", "d"),
}
#: What other programs call the elements of these.
_KNOWN = {
    "tarvo.rgba": ("red", "green", "blue", "alpha"),
    "tarvo.surface_normal": ("nx", "ny", "nz"),
}


def run(db, parameters, report):
    polygons = Polygons(read_polygons(parameters["polygon"]))
    position = coordinates(db)
    columns = _columns(db, position, parameters["attributes"])
    count = 0
    with whole_file(parameters["file"], db) as file:
        _write_header(file, columns, count)
        for batch in _within(db, polygons, position, columns, parameters["filter"], report):
            count += _write_points(file, columns, batch)
        file.seek(0)
        _write_header(file, columns, count)
    report.text(f"{count:,} points lie within the polygon.", "Points")
    report.file(parameters["file"], "Points within the polygon")


def _columns(db, position, attributes):
    """What is written, by the name of the property: the attribute or element, and its data type."""
    columns = {letter: (name, qrb.DataType.DOUBLE) for letter, name in zip("xyz", position)}
    for name in attributes:
        attribute, chosen = element(db, name)
        if attribute.name == db.attributes.primary:
            continue
        data_type = attribute.data_type()
        data_type = data_type if data_type in _TYPES else qrb.DataType.DOUBLE
        for i in range(attribute.length) if chosen is None else [chosen]:
            column = attribute.name if attribute.length == 1 else f"{attribute.name}[{i}]"
            if column not in (of for of, _ in columns.values()):
                columns[_property(attribute, i, columns)] = (column, data_type)
    return columns


def _property(attribute, number, columns):
    """A name that a property may have, and none has yet."""
    if attribute.name in _KNOWN and number < len(_KNOWN[attribute.name]):
        name = _KNOWN[attribute.name][number]
    else:
        name = attribute.name.removeprefix("tarvo.").replace(".", "_")
        name += f"_{number}" if attribute.length > 1 else ""
    candidates = itertools.chain([name], (f"{name}_{i}" for i in itertools.count(2)))
    return next(candidate for candidate in candidates if candidate not in columns)


def _write_header(file, columns, count):
    """The header, as long for every number of points: it is written again when that is known."""
    number = str(count)
    lines = [
        "ply",
        "format binary_little_endian 1.0",
        "comment " + "-" * (20 - len(number)),
        f"element vertex {number}",
        *(f"property {_TYPES[data_type][0]} {name}" for name, (_, data_type) in columns.items()),
        "end_header",
    ]
    file.write(("\n".join(lines) + "\n").encode("ascii"))


def _within(db, polygons, position, columns, filter, report):
    """The points within: batches of columns, in the order of the properties."""
    filter = with_values(db, filter, position)
    terms = [filter] if filter else []
    for name, least, greatest in zip(position, polygons.least, polygons.greatest):
        terms += [f"{name} >= {least!r}", f"{name} <= {greatest!r}"]
    types = dict(columns.values())
    with db.select(" && ".join(terms), list(types), types=types) as selection:
        for batch in selection:
            is_within = polygons.hold(batch[position[0]], batch[position[1]])
            if numpy is not None:
                yield [batch[name][is_within] for name in types]
            else:
                yield [list(itertools.compress(batch[name], is_within)) for name in types]
            report.progress(selection.progress, "Writing")


def _write_points(file, columns, batch):
    """Writes points and returns their number."""
    formats = [_TYPES[data_type][1] for _, data_type in columns.values()]
    if numpy is not None:
        fields = [(name, f"<{format}") for name, format in zip(columns, formats)]
        records = numpy.empty(len(batch[0]), dtype=fields)
        for name, values in zip(columns, batch):
            records[name] = values
        file.write(records.tobytes())
    else:
        record = struct.Struct("<" + "".join(formats))
        file.write(b"".join(record.pack(*values) for values in zip(*batch)))
    return len(batch[0])
