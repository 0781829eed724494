"""The languages of the program, and their texts."""

from .box import CHECKOUT


class Language:
    def __init__(self, name, tag, page, charset=0):
        self.name, self.tag, self.charset = name, tag, charset
        self.is_mirrored = tag == "arabic"
        content = (CHECKOUT / "assets" / "lang" / f"zelvreg-{tag}.lang").read_text(page)
        self.of_key = {}
        for line in content.split("\n"):
            if line.startswith("["):
                section = "" if line == "[Form42]" else line[1:line.index("]")] + "/"
            elif "=" in line:
                key, text = line.split("=", 1)
                self.of_key[section + key] = text.strip()

    def __getitem__(self, key):
        """The text of a key; those of other parts than the main window begin with their name and
        a slash."""
        return self.of_key[key]


# In the order of the picker.
LANGUAGES = [Language(*each) for each in (
    ("English", "english", "cp1252"), ("Deutsch", "german", "cp1252"),
    ("Français", "french", "cp1252"), ("Español", "spanish", "cp1252"),
    ("Português", "portuguese", "cp1252"), ("Polski", "polish", "cp1250", 238),
    ("Italiano", "italian", "cp1252"), ("Nederlands", "dutch", "cp1252"),
    ("Русский", "russian", "cp1251", 204), ("日本語", "japanese", "cp932", 128),
    ("简体中文", "chinese", "cp936", 134), ("العربية", "arabic", "cp1256", 178))]


def language(tag):
    return next(each for each in LANGUAGES if each.tag == tag)
