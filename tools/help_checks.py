"""What must hold of the help: links, captions, options of the program, and what was made of it."""

import filecmp
import re
import struct
import subprocess
import tempfile
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote

from help_book import CONTEXTS, TEXTS, run, write_book
from help_output import pandoc, write_site
from help_source import CHECKOUT, HELP, LANGUAGES, TABLE, captions, contents, read_pages

MADE = CHECKOUT / "docs" / "manual"


class Links(HTMLParser):
    """The places of a page, and the places that it names."""

    def __init__(self, text):
        super().__init__()
        self.anchors, self.targets = set(), []
        self.feed(text)

    def handle_starttag(self, tag, attrs):
        for name, value in attrs:
            if name == "id" or (tag == "a" and name == "name"):
                self.anchors.add(value)
            elif name in ("href", "src") and value:
                self.targets.append(value)


def broken_links(pages):
    """`pages` is {path: HTML}; all links but those to other computers must lead to a file, and to a
    place in it if it is one of the pages."""
    parsed = {path: Links(text) for path, text in pages.items()}
    for path, links in parsed.items():
        for target in links.targets:
            if re.match(r"[a-z]+:", target):
                continue
            file, _, anchor = target.partition("#")
            place = (path.parent / unquote(file)).resolve() if file else path
            if not place.exists() and place not in parsed:
                yield f"{path.relative_to(CHECKOUT)}: {target} leads nowhere"
            elif anchor and place in parsed and unquote(anchor) not in parsed[place].anchors:
                yield f"{path.relative_to(CHECKOUT)}: {target} leads to no heading"


def check_links():
    yield from broken_links({path: path.read_text("utf-8") for path in MADE.rglob("*.html")})
    written = [*CHECKOUT.glob("*.md"), *(CHECKOUT / "docs").glob("*.md")]
    yield from broken_links({path: pandoc(path.read_text("utf-8"), "--from=gfm", "--to=html")
                             for path in written})


def check_pages():
    rows = contents()
    for column, what in ((0, "page"), (1, "context number")):
        seen = [row[column] for row in rows]
        yield from (f"{TABLE.name}: the {what} {each} is there twice"
                    for each in set(seen) if seen.count(each) > 1)
    names = {row[0] for row in rows}
    for language in LANGUAGES:
        for path in (HELP / language.tag).glob("*.md"):
            if path.stem not in names:
                yield f"{path.relative_to(CHECKOUT)} is not in {TABLE.name}"
    pictures = [{path.name for path in (HELP / "pictures" / language.tag).glob("*")}
                for language in LANGUAGES]
    for name in sorted(set.union(*pictures) - set.intersection(*pictures)):
        yield f"help/pictures: {name} is there in one language only"


def check_captions():
    """A text in italics is a caption, as the window has it."""
    for language in LANGUAGES:
        known = [re.compile(re.sub(r"%\d", ".+", re.escape(each).replace("%", "%")))
                 for each in captions(language)]
        for page in read_pages(language):
            for quoted in re.findall(r"(?<![*\w])\*([^*\n]+)\*(?![*\w])", without_code(page.text)):
                if not any(each.fullmatch(quoted) for each in known):
                    yield f"help/{language.tag}/{page.name}.md: the window has no text *{quoted}*"


def without_code(text):
    return re.sub(r"`[^`]*`", "", re.sub(r"^(    |```).*$", "", text, flags=re.MULTILINE))


def check_made():
    with tempfile.TemporaryDirectory() as folder:
        fresh = Path(folder) / "manual"
        write_site(fresh)
        names = [{path.relative_to(top) for path in top.rglob("*") if path.is_file()}
                 for top in (fresh, MADE)]
        _, differ, _ = filecmp.cmpfiles(fresh, MADE, sorted(names[0] & names[1]), shallow=False)
        for name in sorted(differ + list(names[0] ^ names[1]), key=str):
            yield f"docs/manual/{name} is not what help/ gives; tools/manual makes it anew"


def check_books():
    """Each context number leads to its page, and the book can be searched."""
    for language in LANGUAGES:
        with tempfile.TemporaryDirectory() as folder:
            folder = Path(folder)
            write_book(folder, language)
            for inside, name in ((CONTEXTS, "contexts"), (TEXTS, "texts")):
                run(folder, "chmls", "extract", language.book, inside, name)
            table, texts = (folder / "contexts").read_bytes(), (folder / "texts").read_bytes()
            found = {context: texts[place:texts.index(b"\0", place)].decode("ascii")
                     for context, place in struct.iter_unpack("<II", table[4:])}
            listed = subprocess.run(["chmls", "list", folder / language.book], capture_output=True,
                                    text=True).stdout.split()
        for name, context, _ in contents():
            if found.get(context) != f"{name}.html" or f"/{name}.html" not in listed:
                yield f"{language.book}: the context number {context} does not lead to {name}.html"
        if "/$FIftiMain" not in listed:
            yield f"{language.book} cannot be searched"


def help_of(program, *command):
    try:
        done = subprocess.run([program, *command, "--help"], capture_output=True, text=True,
                              encoding="utf-8", stdin=subprocess.DEVNULL)
    except OSError:
        return None
    return done.stdout + done.stderr if done.returncode == 0 else None


def options_in(text):
    return set(re.findall(r"(?<![\w-])--[a-z][a-z0-9-]*", text))


def check_program(program):
    """Both pages of the console have the commands and options that the program's help has."""
    whole = help_of(program)
    if whole is None:
        yield f"{program} --help fails"
        return
    commands, texts = set(), [whole]
    for word in sorted(set(re.findall(r"^ +([a-z][a-z0-9-]*)\b", whole, re.MULTILINE))):
        text = help_of(program, word)
        # Another word that begins a line gets the answer that no such command exists.
        if text is not None and text != whole:
            commands.add(word)
            texts.append(text)
            inner = set(re.findall(r"^ +([a-z][a-z0-9-]*)\b", text, re.MULTILINE))
            texts += [each for each in (help_of(program, word, name) for name in sorted(inner)) if each]
    options = options_in("\n".join(texts))
    for language in LANGUAGES:
        path = HELP / language.tag / "console.md"
        page = path.read_text("utf-8")
        where = path.relative_to(CHECKOUT)
        yield from (f"{where} does not tell of the option {each}" for each in sorted(options - options_in(page)))
        yield from (f"{where}: the program has no option {each}" for each in sorted(options_in(page) - options))
        told = commands_of(page)
        yield from (f"{where} does not tell of the command {each}" for each in sorted(commands - told))
        yield from (f"{where}: the program has no command {each}" for each in sorted(told - commands)
                    if help_of(program, each) in (None, whole))


def commands_of(page):
    """The first words of the terms in the section of commands, which is the second."""
    section = re.split(r"^## ", page, flags=re.MULTILINE)[2]
    terms = re.findall(r"^(`.*)\n:   ", section, re.MULTILINE)
    return {term.split()[0] for each in terms for term in re.findall(r"`([^`]+)`", each)}
