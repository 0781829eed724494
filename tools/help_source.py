"""What the help is made from: the table of its pages, the pages in each language, the captions."""

import re
from dataclasses import dataclass, field
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parent.parent
HELP = CHECKOUT / "help"
TABLE = CHECKOUT / "src" / "shell" / "HelpPages.h"
CAPTIONS = CHECKOUT / "assets" / "lang"


@dataclass(frozen=True)
class Language:
    tag: str  # of the folder, and of HTML
    file: str  # the tag of the program's language file
    book: str
    locale: str  # as a project of a book names it
    words: dict  # what the pages themselves do not say


LANGUAGES = (
    Language("en", "english", "zelvhelp.chm", "0x409 English (United States)", {
        "title": "zelvreg Help", "contents": "Contents", "index": "Index", "name": "English",
        "before": "Previous:", "after": "Next:"}),
    Language("de", "german", "zelvhelp-de.chm", "0x407 German (Germany)", {
        "title": "Hilfe zu zelvreg", "contents": "Inhalt", "index": "Index", "name": "Deutsch",
        "before": "Vorherige Seite:", "after": "Nächste Seite:"}),
)


class SourceError(Exception):
    """One line that says what is wrong with the source of the help."""


@dataclass
class Page:
    name: str
    context: int
    depth: int
    title: str = ""
    keywords: list = field(default_factory=list)
    text: str = ""  # Markdown, from the title on


def contents():
    """[(name, context, depth)] in the order of the program's table."""
    rows = re.findall(r'HelpPage\{"([a-z-]+)", (\d+), ([01])\}', TABLE.read_text("utf-8"))
    return [(name, int(context), int(depth)) for name, context, depth in rows]


def read_page(language, name, context, depth):
    path = HELP / language.tag / f"{name}.md"
    if not path.exists():
        raise SourceError(f"{TABLE.name} names {name}, but there is no {path.relative_to(CHECKOUT)}")
    found = re.fullmatch(r"---\nkeywords: ([^\n]+)\n---\n\n(# ([^\n]+)\n.*)", path.read_text("utf-8"), re.DOTALL)
    if not found:
        raise SourceError(f"{path.relative_to(CHECKOUT)} does not begin with its keywords and a title")
    keywords = [each.strip() for each in found[1].split(";")]
    return Page(name, context, depth, found[3].strip(), keywords, found[2])


def read_pages(language):
    """The pages of a language, in the order of the contents."""
    return [read_page(language, *row) for row in contents()]


def captions(language):
    """What the window says in a language: texts in which %1 and its kin stand for values."""
    data = (CAPTIONS / f"zelvreg-{language.file}.lang").read_bytes()
    text = data.decode("utf-8-sig" if data.startswith(b"\xef\xbb\xbf") else "cp1252")
    found = {line.partition("=")[2] for line in text.splitlines() if "=" in line}
    if language.file == "english":
        # The file leaves out what the program says by itself.
        table = (CHECKOUT / "src" / "languages" / "Texts.h").read_text("utf-8")
        for parts in re.findall(r'Text\{"[^"]+",\s*((?:"(?:[^"\\]|\\.)*"\s*)+)\}', table):
            found.add("".join(re.findall(r'"((?:[^"\\]|\\.)*)"', parts)).replace('\\"', '"'))
    return {each.replace("&", "").strip() for each in found}


def version():
    return re.search(r"project\(zelvreg VERSION ([\d.]+)",
                     (CHECKOUT / "CMakeLists.txt").read_text("utf-8"))[1]
