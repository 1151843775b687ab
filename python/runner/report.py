"""What a plugin tells the program that runs it."""

import base64
import json
import os
import threading
import time

# Of progress, which may come very often.
_LEAST_SECONDS_BETWEEN = 0.05


class Channel:
    """Writes messages, a JSON object a line, whole even when several threads write."""

    def __init__(self, stream):
        self._stream = stream
        self._lock = threading.Lock()
        self._process = os.getpid()

    def send(self, **message):
        if os.getpid() != self._process:
            return  # of a plugin that has forked: the first process tells what came of it
        # Names of files may hold halves of characters.
        text = json.dumps(message, allow_nan=False, ensure_ascii=False)
        line = text.encode("utf-8", "replace") + b"\n"
        with self._lock:
            self._stream.write(line)
            self._stream.flush()


class Report:
    """The third argument of a plugin's ``run``: progress and results, shown as they come.

    ``transaction``: the pending transaction of a plugin that writes (``qrb.Transaction``), to
    insert, update and remove with; it is committed when ``run`` returns, and rolled back when it
    raises. None for a plugin that does not write.
    """

    def __init__(self, channel):
        self.transaction = None
        self._channel = channel
        self._last = -1.0

    def progress(self, fraction, text=""):
        """Tell how far the work is: ``fraction`` from 0 to 1, ``text``: what is being done."""
        now = time.monotonic()
        if now - self._last >= _LEAST_SECONDS_BETWEEN or fraction >= 1:
            self._last = now
            self._channel.send(type="progress", value=float(fraction), text=str(text))

    def text(self, text, title=""):
        """Show a plain text."""
        self._channel.send(type="text", title=str(title), text=str(text))

    def html(self, html, title=""):
        """Show a text in the HTML that a rich-text view knows: headings, paragraphs, lists, tables.

        Texts that come from a file have to be escaped (``html.escape``)."""
        self._channel.send(type="html", title=str(title), text=str(html))

    def picture(self, png, title=""):
        """Show a picture: the bytes of a PNG file, or the name of one."""
        if isinstance(png, (str, os.PathLike)):
            with open(png, "rb") as file:
                png = file.read()
        if not bytes(png[:8]) == b"\x89PNG\r\n\x1a\n":
            raise ValueError("a picture has to be PNG")
        self._channel.send(
            type="picture", title=str(title), png=base64.b64encode(png).decode("ascii")
        )

    def table(self, columns, rows, title=""):
        """Show a table that can be copied and saved.

        ``columns``: the titles. ``rows``: a sequence per row with a value per column; a number may
        come with the places to show as a pair ``(number, places)``. Columns of numbers stand right.
        """
        columns = [str(column) for column in columns]
        cells, numeric = [], [True] * len(columns)
        for row in rows:
            row = list(row)
            if len(row) != len(columns):
                raise ValueError(f"a row has {len(row)} values, the table {len(columns)} columns")
            numeric = [so_far and _is_number(value) for so_far, value in zip(numeric, row)]
            cells.append([_cell(value) for value in row])
        described = [
            {"title": title, "align": "right" if right and cells else "left"}
            for title, right in zip(columns, numeric)
        ]
        self._channel.send(type="table", title=str(title), columns=described, rows=cells)

    def file(self, name, title=""):
        """Tell of a file that was written."""
        self._channel.send(type="file", title=str(title), text=os.path.abspath(name))


def _is_number(value):
    if isinstance(value, tuple):
        value = value[0]
    return hasattr(value, "__float__") and not isinstance(value, (str, bool))


def _cell(value):
    if value is None:
        return ""
    if isinstance(value, tuple):
        number, places = value
        return f"{float(number):.{places}f}"
    if isinstance(value, float):
        return repr(float(value))
    return str(value)
