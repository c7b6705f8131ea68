"""Finds the checks in the library's sources, and tells which of them no test has failed."""

import argparse
import re
import sys
from pathlib import Path

SOURCE = Path("Source")
# The suites that the library carries use the checks of tests, which they fail by design.
LEFT_OUT = ("TestSuites/",)
MACRO = re.compile(r"\b(TOV_ASSERT|TOV_ASSERT_TEXT|TOV_TELL_TEXT|TOVDebug::Assert)\s*\(")
SPACE = re.compile(r"\s+")


def without_comments(text):
    """Blanks comments and the lines of macros; what is left keeps its place."""
    def blank(found):
        return found.group(1) or re.sub(r"[^\n]", " ", found.group(0))

    text = re.sub(r'("(?:\\.|[^"\\\n])*")|//[^\n]*|/\*.*?\*/', blank, text, flags=re.S)
    return re.sub(r"^[ \t]*#[ \t]*define\b(?:[^\n]*\\\n)*[^\n]*", lambda found: re.sub(r"[^\n]", " ", found.group(0)),
                  text, flags=re.M)


def arguments_at(text, start):
    """The text between the bracket before start and the one that closes it."""
    depth, place, quote = 1, start, False
    while depth:
        letter = text[place]
        if letter == "\\" and quote:
            place += 1
        elif letter == '"':
            quote = not quote
        elif not quote:
            depth += {"(": 1, ")": -1}.get(letter, 0)
        place += 1
    return text[start:place - 1]


def split(arguments):
    """At the commas outside of brackets and strings."""
    parts, depth, quote = [""], 0, False
    for letter in arguments:
        if letter == '"':
            quote = not quote
        elif not quote:
            depth += {"(": 1, "[": 1, "{": 1, ")": -1, "]": -1, "}": -1}.get(letter, 0)
        if letter == "," and depth == 0 and not quote:
            parts.append("")
        else:
            parts[-1] += letter
    return [part.strip() for part in parts]


class Site:
    def __init__(self, path, first, last, text):
        self.path, self.first, self.last, self.text = path, first, last, text
        self.confirmed = False

    def matches(self, line, text):
        """A constant stands for its text, which only the program knows."""
        return self.first <= line <= self.last and (self.text is None or self.text == text)

    def __str__(self):
        return f"{self.path}:{self.first}: {self.text or 'a named text'}"


def text_of(macro, arguments):
    if macro == "TOV_ASSERT":
        return SPACE.sub(" ", arguments).strip()
    part = split(arguments)[0 if macro == "TOVDebug::Assert" else 1]
    if not re.fullmatch(r'(\s*"(?:\\.|[^"\\])*")+', part):
        return None
    return re.sub(r'\\(.)', r'\1', "".join(re.findall(r'"((?:\\.|[^"\\])*)"', part)))


def sites():
    found = []
    for path in sorted(SOURCE.rglob("*")):
        name = path.relative_to(SOURCE).as_posix()
        if path.suffix not in (".h", ".cpp", ".inl") or name.startswith(LEFT_OUT):
            continue
        text = without_comments(path.read_text(encoding="utf-8"))
        for macro in MACRO.finditer(text):
            if text.count('"', text.rfind("\n", 0, macro.start()) + 1, macro.start()) % 2:
                continue  # part of a text
            arguments = arguments_at(text, macro.end())
            if re.match(r"const char\s*\*", arguments):
                continue  # the declaration or definition of the function itself
            first = text.count("\n", 0, macro.start()) + 1
            last = text.count("\n", 0, macro.end() + len(arguments)) + 1
            found.append(Site(name, first, last, text_of(macro.group(1), arguments)))
    return found


def read_record(path):
    """The places and texts that tests confirmed. The file's name says little: shared sources tell their class's name."""
    confirmed = set()
    for line in path.read_text(encoding="utf-8").splitlines():
        file, number, text = line.split("|", 2)
        confirmed.add((Path(file).stem, int(number), text))
    return confirmed


def confirm(all_sites, confirmed):
    for name, line, text in confirmed:
        near = [site for site in all_sites if site.matches(line, text)]
        # Where several files have such a line, the name decides.
        own = [site for site in near if Path(site.path).stem == name]
        for site in own or near:
            site.confirmed = True


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("record", type=Path)
    parser.add_argument("--only", action="append", help="the beginning of the sources that count")
    arguments = parser.parse_args()

    found = sites()
    confirm(found, read_record(arguments.record))
    if arguments.only:
        found = [site for site in found if site.path.startswith(tuple(arguments.only))]
    missed = [site for site in found if not site.confirmed]
    # A text counts where a recorder of a test has heard it. Whether the object is unchanged afterwards is not
    # measured here.
    print(f"figure | checks | checks that a test fails and whose text it hears | {len(found) - len(missed)} of {len(found)} | all | "
          f"{'no' if missed or not found else 'yes'}")
    if missed:
        print("detail | checks | No test fails:")
        print("detail | checks | ")
    for site in missed:
        print(f"detail | checks | - `{site}`")
    return 0


if __name__ == "__main__":
    sys.exit(main())
