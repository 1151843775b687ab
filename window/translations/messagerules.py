"""Which texts of the rooms below the window are messages, and what is put into them."""

import re

ROOMS = ["core", "engine", "exchange", "files", "numbers", "plugin", "qrb", "simulation", "view"]

# Sources whose texts are not translated, by the beginnings of their names, and patterns of others.
EXCUSED = {
    # Names, titles, descriptions and comments, which go into files.
    "engine/session/changelogentry": "",
    "engine/session/changelog.cpp": "Changelog: imported",
    "engine/session/session.cpp": "Database creation$",
    "engine/query/redefine.cpp": "Attribute \"%1\": redefined|Point attributes: discarded|given other",
    "exchange/e57/columns.cpp": "Number of the scan",
    "exchange/import/agreement.h": "%1 were taken as they are",
    "exchange/las/crsrecords": "",
    "exchange/las/dimensions": "",
    "exchange/las/extrabytes.cpp": "Bytes of the point record",
    "exchange/las/geokeys.cpp": "[PG]CS Name =",
    "exchange/las/origin": "",
    "exchange/las/record": "laszip encoded|Compression of the points",
    "exchange/las/compressedpoints.cpp": "laszip encoded",
    "exchange/las/units": "",
    "exchange/las/write.cpp": "Extra bytes$",
    "exchange/ply/write.cpp": r"ply\n|1\.0\n|element vertex|property ",
    "exchange/ptx/source.cpp": "Row of|Column of|Number of",
    "simulation/": "Simulated",
    # Reports, which are saved and sent as they are.
    "engine/report/facts": "",
    "engine/report/histogramreport": "",
    "engine/report/htmlreport": "",
    "engine/report/jsonreport": "",
    "engine/report/phrases": "",
    "engine/report/textreport": "",
    # What is written for programs, and names of them.
    "engine/capi/context.cpp": r"MIT License|Point cloud database|QRB Library|%1 \(%2, Zstandard",
    "engine/query/findnode": "",
    "engine/session/signature.cpp": "signature 2",
    "engine/store/container.cpp": "SQLite",
    "plugin/interpreter.cpp": "import sys",
    "plugin/manifest.cpp": "(in|out)put file",
    "plugin/trust.cpp": "TARVO",
    "qrb/context.cpp": r"QRB Interface|\d",
}
# What other libraries say within the messages: why a file can't be used, what is wrong with JSON,
# with XML and with the container.
FOREIGN = [
    "Permission denied", "Operation not permitted", "No such file or directory", "File exists",
    "Is a directory", "Not a directory", "Directory not empty", "File name too long",
    "No space left on device", "Disk quota exceeded", "File too large", "Read-only file system",
    "Too many open files", "Input/output error", "Text file busy", "Device or resource busy",
    "Cannot allocate memory", "Exec format error", "Broken pipe",
    "The document is empty.", "The document root must not be followed by other values.",
    "Invalid value.", "Missing a name for object member.",
    "Missing a colon after a name of object member.",
    "Missing a comma or } after an object member.",
    "Missing a comma or ] after an array element.", "Incorrect hex digit after \\u escape in string.",
    "The surrogate pair in string is invalid.", "Invalid escape character in string.",
    "Missing a closing quotation mark in string.", "Invalid encoding in string.",
    "Number too big to be stored in double.", "Miss fraction part in number.",
    "Miss exponent in number.", "Terminate parsing due to Handler error.",
    "Unspecific syntax error.",
    "Error parsing document declaration/processing instruction", "Error parsing comment",
    "Error parsing CDATA section", "Error parsing document type declaration",
    "Error parsing PCDATA section", "Error parsing start element tag",
    "Error parsing element attribute", "Error parsing end element tag",
    "Start-end tags mismatch", "No document element found",
    "Could not determine tag type", "Out of memory",
    "file is not a database", "database disk image is malformed", "database is locked",
    "disk I/O error", "database or disk is full", "attempt to write a readonly database",
    "unable to open database file", "out of memory",
]
# What is asked of the container, and JSON.
QUERY = re.compile(r'(SELECT|PRAGMA|INSERT|DELETE|CREATE|BEGIN|UPDATE) |\{"')

# What is put in: numbers, and texts that users gave, which are never taken for messages.
NUMBER = re.compile(
    r"to_string|numberText|wholeText|groupedText|canonicalText|^(least|most)$|\bplain\(|GetErrorOffset|^%\d$")
VALUE = re.compile(
    r"[fF]ileName|directory|\.(attribute|name|value|column|property|epoch|timescale)\b|column\."
    r"|(token|cell|m_inexact)(\.|->)text|quoted|choice|^(value|list|others)$|[vV]ersion|substr|symbol|m_text")
