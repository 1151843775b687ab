"""The texts of the window: all of them go through tr(), and each has its translation.

texts.py sources ROOT                      tells literals that users would read in English only
texts.py translations ROOT LUPDATE FILE... tells what is wrong with files of translations
"""

import collections
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

TOKEN = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)"|(?P<text>"(?:\\.|[^"\\\n])*")'
    r"|'(?:\\.|[^'\\\n])+'|\s+|(?P<name>\w+)|.", re.DOTALL)

# Two words, or one that begins as the texts on buttons do.
WORDS = re.compile(r"[A-Za-z]{2,}[,.:;]?\s+[A-Za-z%]|^&?[A-Z][a-z]+[\s.:]*$")
# The second text of tr() tells texts of two meanings apart.
TRANSLATED = re.compile(r'(\btr|\bQT_TR_NOOP)\s*\(("[^"]*",)?$|\bQT_TRANSLATE_NOOP\s*\(\s*"\w+"\s*,$')
# Names that settings have, or what goes into the changelog of a file.
KEPT = re.compile(
    r"(\b(value|setValue|contains|remove|m_settings|m_store|(in|m_in)Transaction|setStyleSheet"
    r"|setOrganizationName|QKeySequence)\(|\b\w+(Key|Group)\s*=|#include)\s*$")
EXCUSED = {
    # What the terminal is told.
    "window/frame/commandline.cpp": "",
    "window/app/language.cpp": "",
    # Titles and comments of transactions, which stand in the file.
    "window/dialogs/dialogexportasqrb.cpp": "Export",
    "window/dialogs/dialoglevelofdetail.cpp": "Update LOD|LOD mode: ",
    "window/frame/pointimport.cpp": "Import",
    "window/panels/metadatapanel.cpp": "%1 meta data item %2|Add|Edit",
    # What is looked for in what others have written.
    "window/frame/givenfiles.cpp": "a database file",
    "window/panels/pointdatacolumns.cpp": "Time|Primary Attributes",
    # Commands of the filter's field.
    "window/panels/indexsearch.cpp": "find (largest|fullest) (leaf|node)",
    "window/dialogs/filterinsertmenu.cpp": "find (largest|fullest) (leaf|node)",
    "window/common/programsettings.h": "MainWindow",
    # Names of objects.
    "window/panels/inspectionpanel.cpp": "Inspection",
    "window/panels/transactionspanel.cpp": "Transactions",
    "window/common/aside.h": "Cancelled.",
    "window/common/iconengine.cpp": "icon ",
    # Programs of the graphics card.
    "window/view/glprogram.cpp": "",
    # Where the translations of other texts are looked up.
    "window/common/messages.cpp": "Messages",
}


def literals(source):
    """The places, the code in front and the texts of literals; neighbours are one."""
    place, text = None, ""
    for token in TOKEN.finditer(source):
        blank = token.group().isspace() or token.group().startswith(("//", "/*"))
        if token["text"]:
            place = token.start() if place is None else place
            text += token["text"][1:-1]
        elif not blank and place is not None:
            yield place, source[:place].rstrip(), text
            place, text = None, ""


def untranslated(root):
    for path in sorted((root / "window").rglob("*")):
        if path.suffix not in (".cpp", ".h"):
            continue
        source = path.read_text()
        name = str(path.relative_to(root))
        for place, front, text in literals(source):
            if not WORDS.search(re.sub(r"\\[nt\"]", " ", text)):
                continue
            if TRANSLATED.search(front[-80:]) or KEPT.search(front[-80:]):
                continue
            if name in EXCUSED and re.match(EXCUSED[name], text):
                continue
            yield f"{name}:{source.count(chr(10), 0, place) + 1}: not in tr(): \"{text}\""


def shape(text):
    """What a translation has to have in common with its source."""
    return {
        "placeholders": sorted(re.findall(r"%L?(\d)", text)),
        "marks of keys": len(re.findall(r"(?<!&)&(?!&)", re.sub(r"&&", "", text))),
        "dots in front": text.startswith("..."),
        "end": re.search(r"(\s?\.\.\.|:)?$", text).group(),
        "blanks at the ends": (text[:1].isspace(), text[-1:].isspace()),
        "line ends": text.count("\n"),
        "markup": re.findall(r"<[^>]*>", text),
        "code": re.findall(r"<i>.*?</i>|\*\.[\w?*]+|\w+::\w+", text),
    }


def faults_of(file, root, lupdate):
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(folder) / file.name
        shutil.copy(file, copy)
        # What the rooms below the window tell people.
        messages = pathlib.Path(folder) / "messages.cpp"
        subprocess.run([sys.executable, root / "window/translations/messages.py", "source", root,
                        messages], check=True)
        subprocess.run([lupdate, "-silent", "-I", root, "-locations", "none", root / "window",
                        messages, "-ts", copy], check=True, capture_output=True)
        messages = ElementTree.parse(copy).getroot().iter("message")
    keys = collections.Counter()
    for message in messages:
        source = message.findtext("source")
        translation = message.find("translation")
        text = translation.text or ""
        if translation.get("type") == "unfinished":
            yield f"{file.name}: no translation of \"{source}\""
        elif translation.get("type"):
            yield f"{file.name}: nothing says \"{source}\" any more"
        else:
            keys[source] += 1
            for what, wanted in shape(source).items():
                if shape(text)[what] != wanted:
                    yield f"{file.name}: other {what} in \"{text}\" than in \"{source}\""
    if not keys:
        yield f"{file.name}: no texts"


def main(mode, root, *rest):
    root = pathlib.Path(root)
    if mode == "sources":
        faults = list(untranslated(root))
    else:
        lupdate, *files = rest
        faults = [fault for file in files
                  for fault in faults_of(pathlib.Path(file), root, lupdate)]
        if not files:
            faults.append("no files of translations")
    print("\n".join(faults))
    return bool(faults)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
