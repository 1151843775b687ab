"""What the rooms below the window tell people, as patterns for the window to translate.

messages.py source ROOT OUTPUT   writes the patterns of all sources as a table for the program
messages.py list ROOT            prints them, with the sources where they stand

These rooms know nothing of languages: they hand up English texts that are put together, such as
"the attribute " + name + " has no unit". The pattern of that is "the attribute %1 has no unit".
"""

import itertools
import pathlib
import re
import sys

sys.dont_write_bytecode = True
from messagerules import EXCUSED, FOREIGN, NUMBER, QUERY, ROOMS, VALUE

TOKEN = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"(?P<mark>[^(\s]*)\((?P<raw>.*?)\)(?P=mark)"|(?P<text>"(?:\\.|[^"\\\n])*")'
    r"|(?P<sign>'(?:\\.|[^'\\\n])+')|\s+|\w+|::|->|<<|>>|\+\+|\+=|[=!<>]=|&&|\|\||.", re.DOTALL)
ESCAPES = {"n": "\n", "t": "\t", "r": "\r", "0": "\0"}
CLOSING = {"(": ")", "[": "]", "{": "}"}
# Between what is one expression and the next.
BORDERS = {",", ";", "=", "return", "<<", ">>", "&&", "||", "+=", "==", "!=", "<=", ">=", "throw",
           "case", "else"}


class Text(str):
    """A literal."""


def unescaped(literal):
    return re.sub(r"\\(.)", lambda found: ESCAPES.get(found[1], found[1]), literal, flags=re.DOTALL)


def tokens(source):
    lines = ["" if line.lstrip().startswith("#") else line for line in source.split("\n")]
    for token in TOKEN.finditer("\n".join(lines)):
        if token["raw"] is not None:
            yield Text(token["raw"])
        elif token["text"] or token["sign"]:
            yield Text(unescaped(token.group()[1:-1]))
        elif not token.group().isspace() and not token.group().startswith(("//", "/*")):
            yield token.group()


def tree(source):
    """The tokens, with lists for what stands in brackets: the bracket and what it holds."""
    stack = [["{"]]
    for token in tokens(source):
        if isinstance(token, Text) or token not in "()[]{}":
            stack[-1].append(token)
        elif token in CLOSING:
            stack.append([token])
        elif len(stack) > 1:
            group = stack.pop()
            stack[-1].append(group)
            if token == "}":
                stack[-1].append(";")
    return stack[0]


def divided(nodes, borders):
    part = []
    for node in nodes:
        if isinstance(node, str) and not isinstance(node, Text) and node in borders:
            yield part
            part = []
        else:
            part.append(node)
    yield part


def is_sign(node, sign):
    return isinstance(node, str) and not isinstance(node, Text) and node == sign


def choices(nodes):
    """Both sides of "a ? b : c", or the expression itself."""
    at = next((i for i, node in enumerate(nodes) if is_sign(node, "?")), None)
    if at is None:
        # A label, a bit field or the begin of a loop.
        return [list(part) for part in divided(nodes, {":"})][-1:]
    depth = 0
    for i in range(at + 1, len(nodes)):
        if is_sign(nodes[i], "?"):
            depth += 1
        elif is_sign(nodes[i], ":"):
            if depth == 0:
                return choices(nodes[at + 1:i]) + choices(nodes[i + 1:])
            depth -= 1
    return [nodes[at + 1:]]


def written(node):
    if isinstance(node, list):
        return node[0] + "".join(written(each) for each in node[1:]) + CLOSING[node[0]]
    return '"' if isinstance(node, Text) else node


class Patterns:
    def __init__(self):
        self.found = {}  # what is put in and where they stand, by pattern
        self.source = ""

    def operand(self, nodes):
        """The texts that it can be; a text is a list of literals and expressions."""
        if nodes and all(isinstance(node, Text) for node in nodes):
            return [[Text("".join(nodes))]]
        head = "".join(written(node) for node in nodes[:-1])
        if nodes and isinstance(nodes[-1], list) and nodes[-1][0] == "(":
            inside = nodes[-1][1:]
            alone = not any(is_sign(node, ",") for node in inside)
            if alone and inside and head in ("", "std::string", "std::string_view"):
                return self.texts(inside)
            parts = list(divided(inside, {","}))
            if head.endswith("counted") and len(parts) == 2 and len(parts[1]) == 1 \
                    and isinstance(parts[1][0], Text):
                number = "groupedText(" + "".join(written(node) for node in parts[0]) + ")"
                return [[number, Text(" " + parts[1][0] + end)] for end in ("", "s")]
        self.look(nodes)
        return [["".join(written(node) for node in nodes)]]

    def texts(self, nodes):
        """All that a chain of "+" can be."""
        result = []
        for choice in choices(nodes):
            parts = list(divided(choice, {"+"}))
            if len(parts) > 1 and not parts[0]:
                parts = parts[1:]
            for one in itertools.product(*(self.operand(part) for part in parts)):
                result.append([piece for part in one for piece in part])
        return result

    def look(self, nodes):
        """Keeps the texts of the expressions within."""
        for node in nodes:
            if isinstance(node, list):
                self.statements(node[1:])

    def statements(self, nodes):
        for part in divided(nodes, BORDERS):
            at = next((i for i, node in enumerate(part) if is_sign(node, "?")), None)
            if at is not None:
                self.look(part[:at])
            for text in self.texts(part):
                if any(isinstance(piece, Text) for piece in text):
                    self.keep(text)

    def keep(self, text):
        pattern, captures = "", []

        def put(expression):
            # Two beside each other can't be told apart.
            if not re.search(r"%\d$", pattern):
                captures.append([])
            captures[-1].append(expression)
            return "" if len(captures[-1]) > 1 else f"%{len(captures)}"

        for piece in text:
            if isinstance(piece, Text):
                for part in re.split(r"(%\d)", piece):
                    pattern += put(part) if re.fullmatch(r"%\d", part) else part
            else:
                pattern += put(piece)
        pattern = pattern.strip()
        if is_for_people(pattern) and not self.is_excused(pattern):
            kinds = [kind(each) for each in captures]
            for i in range(len(kinds)):
                if f'"%{i + 1}' in pattern and kinds[i] == "m":
                    kinds[i] = "v"
            self.found.setdefault(pattern, ("".join(kinds), self.source))

    def is_excused(self, pattern):
        return QUERY.match(pattern) or any(
            self.source.startswith(begin) and re.match(texts, pattern)
            for begin, texts in EXCUSED.items())

    def read(self, root, path):
        self.source = str(path.relative_to(root))
        source = re.sub(r"static_assert\(.*?\);", "", path.read_text(), flags=re.DOTALL)
        self.statements(tree(source)[1:])


def kind(expressions):
    """A number, a value or perhaps a message."""
    if len(expressions) == 1 and NUMBER.search(expressions[0]):
        return "n"
    return "v" if any(VALUE.search(each) for each in expressions) else "m"


def is_for_people(pattern):
    """Two words, or one and what is put in; its own letters are enough to know it by."""
    words = re.sub(r"%\d", "", pattern)
    return re.search(r"[a-z]{2}", words) and (
        re.search(r"[A-Za-z\d\"',)\]][,.:;]?\s+[A-Za-z\"%(]", pattern))


def patterns_of(root):
    """What is put in and where they stand, by pattern."""
    patterns = Patterns()
    for text in FOREIGN:
        patterns.found[text] = ("", "others")
    for room in ROOMS:
        for path in sorted((root / room).rglob("*")):
            if path.suffix in (".cpp", ".h"):
                patterns.read(root, path)
    return patterns.found


def literal(text):
    text = text.replace("\\", r"\\").replace('"', r"\"").replace("\n", r"\n").replace("\t", r"\t")
    return f'"{text}"'


def table(patterns):
    yield "// Made by messages.py."
    yield '#include "window/common/messagepatterns.h"'
    yield ""
    yield "#include <QtGlobal>"
    yield ""
    yield "namespace tarvo::window {"
    yield ""
    yield "static constexpr MessagePattern patterns[] = {"
    for pattern, (kinds, _) in sorted(patterns.items()):
        yield f'    {{QT_TRANSLATE_NOOP("Messages", {literal(pattern)}), "{kinds}"}},'
    yield "};"
    yield ""
    yield "std::span<const MessagePattern> messagePatterns() {"
    yield "    return patterns;"
    yield "}"
    yield ""
    yield "}  // namespace tarvo::window"


def main(mode, root, *output):
    patterns = patterns_of(pathlib.Path(root))
    if mode == "source":
        pathlib.Path(output[0]).write_text("\n".join(table(patterns)) + "\n")
        return
    for pattern, (kinds, source) in patterns.items():
        print(source, literal(pattern), kinds, sep="\t")


if __name__ == "__main__":
    main(*sys.argv[1:])
