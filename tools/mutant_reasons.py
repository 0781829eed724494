"""docs/mutants.tsv: changes that no test can notice, and why.

Each line has a path, the text of the line in the source, the change, and the reason. It holds for each
place with this text.
"""

from declared_rooms import SOURCES

REASONS = SOURCES.parent / "docs" / "mutants.tsv"


def read_reasons(text, checkout):
    """The reason for each path, text and change; and what is wrong with the table."""
    reasons, wrong = {}, []
    for number, line in enumerate(text.splitlines()[1:], 2):
        parts = line.split("\t")
        if len(parts) != 4 or not all(parts):
            wrong.append(f"line {number} needs a path, a line's text, a change and a reason, with tabs between them")
            continue
        path, stands, change, reason = parts
        source = checkout / path
        if not source.is_file():
            wrong.append(f"line {number}: there is no {path}")
        elif stands not in (each.strip() for each in source.read_text().splitlines()):
            wrong.append(f"line {number}: {path} has no line {stands}")
        reasons[path, stands, change] = reason
    return reasons, wrong


def reason_of(reasons, point, text):
    """The reason for a change on a line with this text, or None."""
    return reasons.get((point.path, text.strip(), point.words()))
