"""Makes the books of Windows' help viewer of the help's pages."""

import html
import shutil
import struct
import subprocess
import tempfile
import zlib
from pathlib import Path

from help_output import bodies, by_keyword, indented
from help_source import HELP, SourceError, read_pages

# The viewer's engine is that of an old browser, and knows a page's code page from this line alone.
BOOK_PAGE = """<!DOCTYPE HTML PUBLIC "-//W3C//DTD HTML 4.01 Transitional//EN">
<html lang="{tag}">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=windows-1252">
<title>{title}</title>
<link rel="stylesheet" type="text/css" href="book.css">
</head>
<body>
{body}</body>
</html>
"""

# The window "main" is the one that opens. The others never do: they bring the names of the pages into
# the book's table of texts, which the table of context numbers points into.
PROJECT = """[OPTIONS]
Binary Index=No
Binary TOC=No
Compatibility=1.1 or later
Compiled file={book}
Contents file=contents.hhc
Default Window=main
Default topic=start.html
Full-text search=Yes
Index file=index.hhk
Language={locale}
Title={title}

[WINDOWS]
main="{title}","contents.hhc","index.hhk","start.html","start.html",,,,,{style}
{windows}

[FILES]
{files}
"""
# With contents, index, search and favorites, in its usual place.
WINDOW_STYLE = "0x63520,240,0x10384e,[60,40,1060,760],,,,,,,0"

SITEMAP = """<!DOCTYPE HTML PUBLIC "-//IETF//DTD HTML//EN">
<html>
<head></head>
<body>
{items}</body>
</html>
"""

# Where a book keeps its texts, which of them its context numbers stand for, and its properties.
TEXTS, CONTEXTS, PROPERTIES = "#STRINGS", "#IVB", "#SYSTEM"

# A book bears the time twice: at this place of its header, and as the property of this number.
HEADER_TIME, TIME_PROPERTY = 0x10, 10


def of_code_page(text):
    """Bytes of Windows' Western code page; other characters by their number."""
    return text.encode("cp1252", "xmlcharrefreplace")


def sitemap_entry(name, page):
    return (f'<object type="text/sitemap"><param name="Name" value="{html.escape(name)}">'
            f'<param name="Local" value="{page.name}.html"></object>')


def project(language, pages, files):
    return of_code_page(PROJECT.format(
        book=language.book, locale=language.locale, title=language.words["title"],
        style=WINDOW_STYLE, files="\n".join(files), windows="\n".join(
            f'page_{page.context}="",,,"{page.name}.html",,,,,,{WINDOW_STYLE}' for page in pages)))


def write_pages(work, language, pages):
    """Writes the pages with what they show; returns the names of all files."""
    files = ["book.css"]
    shutil.copyfile(HELP / "book.css", work / "book.css")
    if (HELP / "pictures" / language.tag).exists():
        shutil.copytree(HELP / "pictures" / language.tag, work / "pictures")
        files += sorted(f"pictures/{each.name}" for each in (work / "pictures").iterdir())
    for page, body in zip(pages, bodies(pages)):
        body = body.replace(f"../pictures/{language.tag}/", "pictures/")
        (work / f"{page.name}.html").write_bytes(of_code_page(BOOK_PAGE.format(
            tag=language.tag, title=html.escape(page.title, quote=False), body=body)))
        files.append(f"{page.name}.html")
    tree = indented(pages, lambda page: sitemap_entry(page.title, page))
    entries = "".join(f"<li>{sitemap_entry(keyword, page)}</li>\n"
                      for keyword, those in by_keyword(pages) for page in those)
    (work / "contents.hhc").write_bytes(of_code_page(SITEMAP.format(items=tree)))
    (work / "index.hhk").write_bytes(of_code_page(SITEMAP.format(items=f"<ul>\n{entries}</ul>\n")))
    return files


def run(work, *command):
    try:
        done = subprocess.run(command, cwd=work, text=True, capture_output=True)
    except FileNotFoundError:
        raise SourceError(f"{command[0]} is missing; ./test installs it (fp-utils)") from None
    if done.returncode:
        raise SourceError(f"{command[0]}: {(done.stdout + done.stderr).strip()}")


def part(work, language, name):
    run(work, "chmls", "extract", language.book, name, "part")
    return (work / "part").read_bytes()


def compiled(work, language, pages, files):
    """Makes the book; returns its table of texts."""
    (work / "book.hhp").write_bytes(project(language, pages, files))
    run(work, "chmcmd", "--no-html-scan", "book.hhp")
    return part(work, language, TEXTS)


def contexts(texts, pages):
    """The table of context numbers: its length, then a number and the place of a text for each."""
    table = b""
    for page in pages:
        place = texts.find(f"\0{page.name}.html\0".encode("ascii"))
        if place < 0:
            raise SourceError(f"chmcmd has left the name of {page.name}.html out of the book")
        table += struct.pack("<II", page.context, place + 1)
    return struct.pack("<I", len(table)) + table


def time_property(properties):
    """Where the time stands in the table of properties: a version, then number, length and data of each."""
    place = 4
    while place < len(properties):
        number, length = struct.unpack_from("<HH", properties, place)
        if number == TIME_PROPERTY:
            return place + 4
        place += 4 + length
    raise SourceError("chmcmd has left the time out of the book")


def without_time(work, language):
    """The book with a number made of its content instead of the two times.

    The same pages so make the same book, and a changed book still has another number than before.
    """
    book = bytearray((work / language.book).read_bytes())
    properties = part(work, language, PROPERTIES)
    if book.count(properties) != 1:
        raise SourceError("chmcmd has compressed the properties of the book")
    places = HEADER_TIME, book.index(properties) + time_property(properties)
    for place in places:
        struct.pack_into("<I", book, place, 0)
    content = zlib.crc32(book)
    for place in places:
        struct.pack_into("<I", book, place, content)
    return book


def write_book(folder, language):
    """Makes the book of a language in `folder`.

    The compiler could make the table of context numbers itself, but then it names each page with the
    folder that it lay in on this computer, and the viewer finds none of them.
    """
    pages = read_pages(language)
    with tempfile.TemporaryDirectory() as work:
        work = Path(work)
        files = write_pages(work, language, pages)
        texts = compiled(work, language, pages, files)
        (work / CONTEXTS).write_bytes(contexts(texts, pages))
        if compiled(work, language, pages, [*files, CONTEXTS]) != texts:
            raise SourceError("chmcmd has made two tables of texts of the same pages")
        (folder / language.book).write_bytes(without_time(work, language))
