"""Makes of the help's pages plain HTML and the man page."""

import html
import re
import shutil
import subprocess
from concurrent.futures import ThreadPoolExecutor

from help_source import HELP, LANGUAGES, SourceError, read_pages, version

PAGE = """<!DOCTYPE html>
<html lang="{tag}">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{title} - {book}</title>
<link rel="stylesheet" href="../style.css">
</head>
<body>
<header><a href="start.html">{book}</a> <span>{others}</span></header>
<nav aria-label="{contents}">
{tree}</nav>
<main>
{body}<p class="turn">{turn}</p>
</main>
</body>
</html>
"""

LANGUAGE_CHOICE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>zelvreg</title>
<link rel="stylesheet" href="style.css">
</head>
<body>
<main>
<h1>zelvreg</h1>
{choices}</main>
</body>
</html>
"""

def pandoc(text, *options):
    try:
        done = subprocess.run(["pandoc", "--from=markdown+gfm_auto_identifiers-implicit_figures",
                               "--columns=10000", "--wrap=none", *options],
                              input=text, capture_output=True, text=True, encoding="utf-8")
    except FileNotFoundError:
        raise SourceError("pandoc is missing; ./test installs it") from None
    if done.returncode:
        raise SourceError(f"pandoc: {done.stderr.strip()}")
    return done.stdout


def bodies(pages):
    """The HTML of each page's text. Links to pages are those of the source but for the ending."""
    def body(page):
        made = pandoc(page.text, "--to=html4")
        return re.sub(r'(<a href="[a-z-]+)\.md(["#])', r"\1.html\2", made)

    with ThreadPoolExecutor() as pool:
        return list(pool.map(body, pages))


def indented(pages, item):
    """A nested list; `item` gives what stands for a page. Pages are at depth 0 or 1."""
    text, depth = "<ul>\n", 0
    for page, after in zip(pages, [*pages[1:], None]):
        below = after is not None and after.depth > depth
        text += "<li>" + item(page) + ("\n<ul>\n" if below else "</li>\n")
        if below:
            depth += 1
        elif depth and (after is None or after.depth < depth):
            text += "</ul></li>\n"
            depth -= 1
    return text + "</ul>\n"


def write(path, text):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(text.encode("utf-8"))


def by_keyword(pages):
    """[(keyword, [page])] as an index has them."""
    found = {}
    for page in pages:
        for keyword in page.keywords:
            found.setdefault(keyword, []).append(page)
    umlauts = str.maketrans("äöüß", "aous")
    return sorted(found.items(), key=lambda each: (each[0].lower().translate(umlauts), each[0]))


def write_site(folder):
    """The pages of all languages, with the contents beside each. Removes what was there."""
    if folder.exists():
        shutil.rmtree(folder)
    for language in LANGUAGES:
        write_language(folder, language, read_pages(language))
    choices = "".join(f'<p><a href="{each.tag}/start.html" lang="{each.tag}">{each.words["title"]}'
                      f' ({each.words["name"]})</a></p>\n' for each in LANGUAGES)
    write(folder / "index.html", LANGUAGE_CHOICE.format(choices=choices))
    shutil.copyfile(HELP / "style.css", folder / "style.css")
    if (HELP / "pictures").exists():
        shutil.copytree(HELP / "pictures", folder / "pictures")


def write_language(folder, language, pages):
    words = language.words

    def link(page, start=""):
        return f'{start}<a href="{page.name}.html">{html.escape(page.title, quote=False)}</a>'

    def page_text(name, title, body, turn):
        def entry(page):
            return (f'<a href="{page.name}.html" aria-current="page">{html.escape(page.title, quote=False)}</a>'
                    if page.name == name else link(page))

        others = " ".join(f'<a href="../{other.tag}/{name}.html" lang="{other.tag}">'
                          f'{other.words["name"]}</a>' for other in LANGUAGES if other != language)
        tree = indented(pages, entry)
        tree += f'<p><a href="keywords.html">{words["index"]}</a></p>\n'
        return PAGE.format(tag=language.tag, title=html.escape(title, quote=False),
                           book=words["title"], contents=words["contents"], others=others,
                           tree=tree, body=body, turn=turn)

    made = bodies(pages)
    for number, (page, body) in enumerate(zip(pages, made)):
        turn = [link(pages[number - 1], words["before"] + " ")] if number else []
        if number + 1 < len(pages):
            turn.append(link(pages[number + 1], words["after"] + " "))
        write(folder / language.tag / f"{page.name}.html",
              page_text(page.name, page.title, body, " ".join(turn)))
    body = f"<h1>{words['index']}</h1>\n<ul>\n"
    for keyword, those in by_keyword(pages):
        body += f"<li>{html.escape(keyword, quote=False)}: {', '.join(map(link, those))}</li>\n"
    write(folder / language.tag / "keywords.html",
          page_text("keywords", words["index"], body + "</ul>\n", ""))


def man_source():
    """The page of the console program as a manual page: its sections, after a name."""
    page = next(page for page in read_pages(LANGUAGES[0]) if page.name == "console")
    text = re.sub(r"\[([^]]*)\]\([a-z-]+\.md(?:#[^)]*)?\)", r"\1", page.text)
    intro, *sections = re.split(r"^## ", text.partition("\n")[2], flags=re.MULTILINE)
    named = {section.partition("\n")[0].strip(): section.partition("\n")[2] for section in sections}
    made = "# NAME\n\nzelvreg - finds and repairs dead references in the Windows registry\n\n"
    made += f"# SYNOPSIS\n{named.pop('Synopsis')}\n# DESCRIPTION\n{intro}\n"
    for title, content in named.items():
        made += f"# {title.upper()}\n" + re.sub(r"^###", "##", content, flags=re.MULTILINE)
    return made


def write_man_page(folder):
    text = pandoc(man_source(), "--standalone", "--to=man", "--metadata=title:ZELVREG",
                  "--metadata=section:1", f"--metadata=footer:zelvreg {version()}",
                  "--metadata=header:zelvreg")
    # Which program wrote the file is not part of it.
    write(folder / "zelvreg.1", re.sub(r'^\.\\" Automatically generated.*\n', "", text, flags=re.MULTILINE))
