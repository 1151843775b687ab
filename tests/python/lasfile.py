"""Point formats 0 to 3 of LAS files, read in the plainest way."""

import struct


class LasFile:
    #: Name: place within a point and format of its values.
    RETURNS = {
        "tarvo.target_index": (0, 8),
        "tarvo.target_count": (3, 8),
        "tarvo.scan_direction": (6, 2),
        "las.edge_of_flight_line": (7, 2),
    }
    CLASSES = {
        "tarvo.class": (0, 32),
        "las.synthetic": (5, 2),
        "las.key_point": (6, 2),
        "las.withheld": (7, 2),
    }

    def __init__(self, path):
        self.bytes = path.read_bytes()
        self.format, self.length = struct.unpack_from("<BH", self.bytes, 104)
        (self.start,) = struct.unpack_from("<I", self.bytes, 96)
        (self.count,) = struct.unpack_from("<I", self.bytes, 107)
        self.scale = struct.unpack_from("<3d", self.bytes, 131)
        self.offset = struct.unpack_from("<3d", self.bytes, 155)

    def column(self, place, format):
        at = self.start + place
        values = [
            struct.unpack_from(f"<{format}", self.bytes, at + i * self.length)
            for i in range(self.count)
        ]
        return [value[0] if len(value) == 1 else list(value) for value in values]

    def columns(self):
        """All values but coordinates by attribute name."""
        columns = {
            "tarvo.intensity": self.column(12, "H"),
            "tarvo.scan_angle": self.column(16, "b"),
            "las.user_data": self.column(17, "B"),
            "las.point_source_id": self.column(18, "H"),
        }
        for place, fields in ((14, self.RETURNS), (15, self.CLASSES)):
            flags = self.column(place, "B")
            for name, (shift, values) in fields.items():
                columns[name] = [flag >> shift & values - 1 for flag in flags]
        if self.format in (1, 3):
            columns["tarvo.timestamp"] = self.column(20, "d")
        if self.format in (2, 3):
            columns["tarvo.rgba"] = self.column(20 if self.format == 2 else 28, "3H")
        if self.format == 3 and self.length == 34 + 27:  # the extra bytes of the one file with any
            columns["las.extra.colors"] = self.column(34, "3H")
            columns["las.extra.reserved"] = self.column(40, "7B")
            columns["las.extra.flags"] = self.column(47, "2b")
            columns["las.extra.intensity"] = self.column(49, "I")
            columns["las.extra.time"] = self.column(53, "Q")
        return columns

    def coordinates(self):
        """Stored whole numbers, not scaled."""
        return self.column(0, "3i")
