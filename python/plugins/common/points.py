"""What the plugins share: which points they read, batch by batch, and the files that they write.

The build puts this file beside each plugin that imports it.
"""

import contextlib
import math
import os
import re

import qrb

try:
    import numpy
except ImportError:  # everything works without it, but slower
    numpy = None

#: The filter that plugins about the ground propose.
GROUND = "tarvo.class == 2"


def wrong(text, advice="", code=qrb.ErrorCode.ARGUMENT):
    """What to raise where the user has to do something: it is shown without a traceback's noise."""
    return qrb.Error(code, text, advice)


def coordinates(db):
    """The names of x, y and z: the elements of the attribute that the index is built over."""
    name = db.attributes.primary
    if db.attributes[name].length != 3:
        raise wrong(
            f'The points are indexed by "{name}", which is no position of x, y and z.',
            "The plugin needs a file whose index is built over coordinates, as imports make it.",
        )
    return [f"{name}[{i}]" for i in range(3)]


def tell_unit(db, report):
    """Says that proposals of lengths are meant for metres where the coordinates are in others."""
    unit = db.attributes[db.attributes.primary].unit
    if unit not in ("", "m"):
        report.text(
            f"The coordinates are in {unit}, and so are the lengths given. The proposed ones are "
            "meant for metres.",
            "Note",
        )


def element(db, name):
    """The definition of an attribute, and for an element such as "tarvo.rgba[0]" its number."""
    found = re.fullmatch(r"\s*([^\[\]\s]*)\s*(?:\[\s*(\d+)\s*\]\s*)?", name)
    attribute = db.attributes.get(found[1]) if found else None
    if attribute is None:
        raise wrong(
            f'The file has no attribute "{name}".',
            f"Choose one of: {', '.join(db.attributes)}.",
            qrb.ErrorCode.NOT_FOUND,
        )
    number = None if found[2] is None else int(found[2])
    if number is not None and number >= attribute.length:
        raise wrong(f'The attribute "{found[1]}" has {attribute.length} values per point.')
    return attribute, number


def definition(db, name):
    """The definition of an attribute, or of the one that an element is of."""
    return element(db, name)[0]


def single(db, name):
    """The name of an attribute of one value per point; of the coordinates, the height."""
    attribute, number = element(db, name)
    if attribute.length == 1:
        return attribute.name
    if number is not None:
        return f"{attribute.name}[{number}]"
    if attribute.name == db.attributes.primary:
        return coordinates(db)[2]
    raise wrong(
        f'The attribute "{name}" has {attribute.length} values per point.',
        f'Choose one of them: "{name}[0]" to "{name}[{attribute.length - 1}]".',
    )


def ground_filter(db, filter, report):
    """The filter; all points where it is the proposal and nothing is classified."""
    if filter.strip() == GROUND and "tarvo.class" not in db.attributes:
        report.text(
            "The file has no attribute tarvo.class: all points are used. The plugin "
            '"ground-classifier" finds those of the ground.',
            "Note",
        )
        return ""
    return filter


def with_values(db, filter, names):
    """The filter, narrowed to points that have a value of each of these attributes."""
    terms = [f"({filter})"] if filter.strip() else []
    for name in names:
        attribute = definition(db, name)
        if not math.isnan(attribute.invalid):
            terms.append(f"{name} != {name}:invalid")
        if attribute.resolution == 0:  # unrounded numbers may be NaN, which is equal to nothing
            terms.append(f"{name} == {name}")
    return " && ".join(terms)


def batches(db, filter, names, report, text="Reading", part=(0.0, 1.0)):
    """Columns of doubles, batch by batch, in the order of the names.

    part: from which to which fraction of all work the progress goes meanwhile.
    """
    types = {name: qrb.DataType.DOUBLE for name in names}
    with db.select(filter, names, types=types) as selection:
        for batch in selection:
            yield [batch[name] for name in names]
            report.progress(part[0] + (part[1] - part[0]) * selection.progress, text)


def extent(db, filter, names, report, part=(0.0, 0.0)):
    """The smallest and the largest values of the points that pass; None where none does.

    The index knows them for all points, otherwise all that pass are read."""
    if not filter:
        if db.is_empty:
            return None
        return [db.minimum(name) for name in names], [db.maximum(name) for name in names]
    least, greatest = [math.inf] * len(names), [-math.inf] * len(names)
    is_any = False
    for columns in batches(db, filter, names, report, "Looking at the extent", part):
        is_any = True
        for i, column in enumerate(columns):
            least[i] = min(least[i], float(column.min() if numpy else min(column)))
            greatest[i] = max(greatest[i], float(column.max() if numpy else max(column)))
    return (least, greatest) if is_any else None


@contextlib.contextmanager
def whole_file(name, db):
    """A binary file that appears, or takes the place of the one that was there, when it is whole:
    where the work fails or is cancelled, nothing is left of it."""
    if os.path.exists(name) and (os.path.samefile(name, db.path) or qrb.is_database(name)):
        raise wrong(f'"{name}" is a database.', "Choose another name for the output file.")
    beside = f"{name}.{os.getpid()}.part"
    try:
        with open(beside, "wb") as file:
            yield file
            file.flush()
            os.fsync(file.fileno())
        os.replace(beside, name)
    except BaseException:  # also a cancel, which is no Exception
        with contextlib.suppress(OSError):
            os.unlink(beside)
        raise
