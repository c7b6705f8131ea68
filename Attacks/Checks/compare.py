"""Finds the checks in the library's sources, and tells which of them no test has failed, and after which none looks."""

import argparse
import functools
import re
import sys
from pathlib import Path

SOURCE = Path("Source")
# The suites that the library carries use the checks of tests, which they fail by design.
LEFT_OUT = ("TestSuites/",)
MACRO = re.compile(r"\b(TOV_ASSERT|TOV_ASSERT_TEXT|TOV_TELL_TEXT|TOVDebug::Assert)\s*\(")
# How the tests expect a failed check, and anything else.
EXPECTED_CHECK = re.compile(r"\bEXPECT_(?!NO_)[A-Z_]*CHECK[A-Z_]*\(")
QUIET_REFUSAL = re.compile(r"\bFailsACheck\(")
EXPECTATION = re.compile(r"\b(?:EXPECT|ASSERT)_(?![A-Z_]*CHECK)[A-Z_]+\(")
LITERAL = re.compile(r'"(?:\\.|[^"\\])*"')
# Objects, arrays, pointers, texts and numbers, by the prefixes of their names.
VARIABLE = re.compile(r"\b(?:m_)?(?:o|a|p|pp|s|sz|w|b|c|h|n|l|ul|dw)[A-Z]\w*\b(?!\()")
CONSTANT = r"\bconst\s+(?:[\w:<>, ]+?[\s*&]+(?:const\s+)?)?%s\b"
# A call of a constructor, bare or in a lambda, and the end of an object.
MAKES_OR_ENDS = re.compile(r"\s*(?:\[[^\]]*\]\s*\{\s*)?(?:(?:const\s+)?(?:C[A-Z]|[tT])\w+(?:<[^>]*>)?\s*(?:\w+\b\s*)?[({;]|delete\b)")
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
        self.confirmed = self.looked_at = False
        self.tests = set()

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
    """Places and texts of checks with the places of the tests that confirmed them."""
    confirmed = set()
    for line in path.read_text(encoding="utf-8").splitlines():
        file, number, test_file, test_line, text = line.split("|", 4)
        # The file's name says little: shared sources tell their class's name.
        confirmed.add((Path(file).stem, int(number), text, test_file, int(test_line)))
    return confirmed


def confirm(all_sites, confirmed):
    for name, line, text, test_file, test_line in confirmed:
        near = [site for site in all_sites if site.matches(line, text)]
        # Where several files have such a line, the name decides.
        own = [site for site in near if Path(site.path).stem == name]
        for site in own or near:
            site.confirmed = True
            site.tests.add((test_file, test_line))
            site.looked_at = site.looked_at or looks_afterwards(test_file, test_line)


@functools.lru_cache(maxsize=None)
def text_of_test(path):
    return without_comments(Path(path).read_text(encoding="utf-8"))


@functools.lru_cache(maxsize=None)
def looks_afterwards(path, line):
    """Whether the test expects something, after the failed check, of a variable that the refused statement names. There
    is nothing to look at where it names none, or only constants, or where it makes or ends an object."""
    text = text_of_test(path)
    for macro in EXPECTED_CHECK.finditer(text):
        arguments = arguments_at(text, macro.end())
        first = text.count("\n", 0, macro.start()) + 1
        if first <= line <= first + arguments.count("\n"):
            parts = split(arguments)[2 if macro.group().endswith("_AT(") else 0 if "CHARACTER" in macro.group() else 1:]
            return looks_at(text, macro.end() + len(arguments), ",".join(parts))
    # A test that may not allocate makes a recorder first.
    place = len("".join(text.splitlines(keepends=True)[:line]))
    refusal = QUIET_REFUSAL.search(text, place, text.index("\n}", place))
    if refusal:
        arguments = arguments_at(text, refusal.end())
        return looks_at(text, refusal.end() + len(arguments), arguments)
    return looks_at(text, place, text[text.rfind("\n{", 0, place):place])


def looks_at(text, end, statement):
    """Whether an expectation in the rest of the test's body names a variable of the statement."""
    if MAKES_OR_ENDS.match(statement):
        return True
    variables = set(VARIABLE.findall(LITERAL.sub("", statement)))
    changing = {name for name in variables if not re.search(CONSTANT % name, text)}
    rest = text[end:text.index("\n}", end)]
    later = [arguments_at(rest, other.end()) for other in EXPECTATION.finditer(rest)]
    return not changing or any(variables & set(VARIABLE.findall(other)) for other in later)


def tell(name, title, missed, total, listed=None):
    listed = [f"- `{site}`" for site in missed] if listed is None else listed
    print(f"figure | checks | {name} | {total - len(missed)} of {total} | all | {'no' if missed or not total else 'yes'}")
    if listed:
        print(f"detail | checks | {title}")
        print("detail | checks | ")
    for line in listed:
        print(f"detail | checks | {line}")
    if listed:
        print("detail | checks | ")


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
    unseen = [site for site in found if site.confirmed and not site.looked_at]
    tell("checks that a test fails and whose text it hears", "No test fails:", missed, len(found))
    tell("checks after which a test looks at the object", "No test looks at the object after:", missed + unseen, len(found),
         [f"- `{site}` ({', '.join(sorted(f'{file}:{line}' for file, line in site.tests)[:3])})" for site in unseen])
    return 0


if __name__ == "__main__":
    sys.exit(main())
