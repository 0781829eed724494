"""Where a source can be changed so that it does something else, found in clang's tree of it.

A change replaces a part of one line or more by another text that holds as many line breaks. It need not
compile: whoever tries it drops what does not.
"""

import re
from dataclasses import dataclass

from clang.cindex import Config, CursorKind, Index, TokenKind, TranslationUnit, TypeKind

Config.set_library_file("libclang-14.so.1")

# What each operator becomes.
OPERATORS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&",
             "+": "-", "-": "+", "*": "/", "/": "*", "%": "/", "<<": ">>", ">>": "<<", "&": "|", "|": "&",
             "^": "&", "++": "--", "--": "++", "+=": "-=", "-=": "+=", "&=": "|=", "|=": "&=", "!": "",
             "~": ""}
BOOLEANS = {"true": "false", "false": "true"}
CHARACTERS = {"": "char", "u": "char16_t", "L": "wchar_t", "U": "char32_t", "u8": "char8_t"}
# What an operator belongs to; a `<` of a template or a `&` of a type belongs to something else.
COMPUTING = {CursorKind.BINARY_OPERATOR, CursorKind.UNARY_OPERATOR, CursorKind.CALL_EXPR,
             CursorKind.COMPOUND_ASSIGNMENT_OPERATOR, CursorKind.DECL_REF_EXPR,
             CursorKind.OVERLOADED_DECL_REF, CursorKind.UNEXPOSED_EXPR, CursorKind.CONDITIONAL_OPERATOR}
INTEGERS = {TypeKind.INT, TypeKind.UINT, TypeKind.LONG, TypeKind.ULONG, TypeKind.LONGLONG, TypeKind.SHORT,
            TypeKind.ULONGLONG, TypeKind.USHORT, TypeKind.UCHAR, TypeKind.SCHAR, TypeKind.CHAR_S}
BODIES = {CursorKind.COMPOUND_STMT, CursorKind.IF_STMT, CursorKind.FOR_STMT, CursorKind.WHILE_STMT,
          CursorKind.CXX_FOR_RANGE_STMT, CursorKind.CASE_STMT, CursorKind.DEFAULT_STMT}


@dataclass(frozen=True, order=True)
class Point:
    """A change of one source: the bytes from `start` to `end` become `new`."""
    path: str
    start: int
    end: int
    new: str
    # The place and what stands there, for people.
    line: int
    column: int
    old: str

    def applied(self, content):
        return content[:self.start] + self.new.encode() + content[self.end:]

    def words(self):
        """The change on one line."""
        old, new = (re.sub(r"\s+", " ", text).strip() for text in (self.old, self.new))
        return f"{old} -> {new or 'nothing'}"

    def __str__(self):
        return f"{self.path}:{self.line}:{self.column}: {self.words()}"


class Finder:
    """Collects the points of one source."""

    def __init__(self, path, content, unit):
        self.path, self.content, self.unit = path, content, unit
        self.points = set()

    def add(self, start, end, new):
        old = self.content[start:end].decode()
        line = self.content.count(b"\n", 0, start) + 1
        column = start - self.content.rfind(b"\n", 0, start)
        # The lines below stay where they are.
        self.points.add(Point(self.path, start, end, new + "\n" * (old.count("\n") - new.count("\n")),
                              line, column, old))

    def text(self, extent):
        return self.content[extent.start.offset:extent.end.offset].decode()

    def is_here(self, cursor):
        """Whether it stands in this source as it is, not in a header and not in a macro."""
        place = cursor.location
        return place.file is not None and place.file.name == self.unit.spelling and \
            cursor.extent.end.offset > cursor.extent.start.offset

    def tokens(self):
        for token in self.unit.get_tokens(extent=self.unit.cursor.extent):
            spelled = token.spelling
            if token.kind == TokenKind.PUNCTUATION and spelled in OPERATORS:
                self.operator(token, spelled)
            elif token.kind == TokenKind.KEYWORD and spelled in BOOLEANS:
                if token.cursor.kind == CursorKind.CXX_BOOL_LITERAL_EXPR:
                    self.add(token.extent.start.offset, token.extent.end.offset, BOOLEANS[spelled])
            elif token.kind == TokenKind.LITERAL:
                self.literal(token, spelled)

    def operator(self, token, spelled):
        cursor = token.cursor
        if cursor.kind not in COMPUTING:
            return
        start, end = token.extent.start.offset, token.extent.end.offset
        # The layout tells an operator between two values from one before a value.
        if spelled in ("*", "&", "-", "+") and not self.content[end:end + 1].isspace():
            if spelled == "-":
                self.add(start, end, "")
            return
        self.add(start, end, OPERATORS[spelled])

    def literal(self, token, spelled):
        start, end = token.extent.start.offset, token.extent.end.offset
        if token.cursor.kind == CursorKind.INTEGER_LITERAL:
            self.add(start, end, f"({spelled} + 1)")
            if not re.fullmatch(r"0[uUlL]*", spelled):
                self.add(start, end, f"({spelled} - 1)")
        elif token.cursor.kind == CursorKind.CHARACTER_LITERAL:
            kind = CHARACTERS.get(spelled.split("'")[0])
            if kind:
                self.add(start, end, f"{kind}({spelled} + 1)")

    def statements(self, cursor, within_body=False):
        """Calls that stand alone, what is returned, and conditions without an operator."""
        for child in cursor.get_children():
            if not self.is_here(child):
                # A namespace may be opened in a header first; its parts here are visited on their own.
                continue
            if within_body and child.kind == CursorKind.CALL_EXPR and self.ends_statement(child):
                self.add(child.extent.start.offset, child.extent.end.offset, "")
            elif child.kind == CursorKind.UNEXPOSED_EXPR and within_body:
                inner = list(child.get_children())
                if len(inner) == 1 and inner[0].kind == CursorKind.CALL_EXPR and self.ends_statement(child):
                    self.add(child.extent.start.offset, child.extent.end.offset, "")
            elif child.kind == CursorKind.RETURN_STMT:
                self.returned(child)
            elif child.kind == CursorKind.IF_STMT:
                self.condition(child)
            self.statements(child, child.kind in BODIES)

    def ends_statement(self, cursor):
        """Whether a semicolon follows, and not the bracket of a condition."""
        return self.content[cursor.extent.end.offset:].lstrip()[:1] == b";" and \
            self.content[:cursor.extent.start.offset].rstrip()[-1:] in (b";", b"{", b"}", b")", b":", b"e")

    def returned(self, statement):
        values = list(statement.get_children())
        if len(values) != 1 or not self.is_here(values[0]):
            return
        value, kind = values[0], values[0].type.get_canonical()
        start, end = value.extent.start.offset, value.extent.end.offset
        text = self.content[start:end].decode()
        if re.fullmatch(r"true|false|\{\}|-?\d+\w*|nullptr|std::nullopt", text) or text.startswith("!"):
            return
        if kind.kind == TypeKind.BOOL:
            self.add(start, end, f"!({text})")
        elif kind.kind in INTEGERS:
            self.add(start, end, f"({text}) + 1")
        else:
            self.add(start, end, "{}")

    def condition(self, statement):
        """A condition that is a name or a call becomes its opposite."""
        parts = list(statement.get_children())
        for part in parts[:2]:
            before = self.content[:part.extent.start.offset].rstrip()[-1:]
            text = self.text(part.extent)
            after = self.content[part.extent.end.offset:].lstrip()[:1]
            if part.kind in (CursorKind.CALL_EXPR, CursorKind.DECL_REF_EXPR, CursorKind.UNEXPOSED_EXPR,
                             CursorKind.MEMBER_REF_EXPR) and before in (b"(", b";") and after == b")" and \
                    not text.startswith("!") and not re.search(r" (&&|\|\||==|!=|<=?|>=?) ", text):
                self.add(part.extent.start.offset, part.extent.end.offset, f"!({text})")
                return


def points_in(path, content, file, flags):
    """All points of a source whose text is `content` and which is compiled from `file` with `flags`."""
    unit = Index.create().parse(file, args=flags, options=TranslationUnit.PARSE_NONE)
    worst = [str(each) for each in unit.diagnostics if each.severity >= 3]
    if worst:
        raise ValueError(f"{path} does not compile: {worst[0]}")
    finder = Finder(path, content, unit)
    finder.tokens()
    finder.statements(unit.cursor)
    return sorted(finder.points)
