#!/usr/bin/env python3
"""Compares the calls of both targets: compare.py LINUX WINDOWS

Differences.md lists what may differ; here stands what exactly each of them looks like. A line that differs in any other way,
and a listed difference that no line shows, is a failure. Prints "name count" for each, and the lines that are not listed."""

import re
import sys


def split(line):
    """Name, arguments and result of a call."""
    head, result = line.rsplit(") = ", 1)
    name, arguments = head.split("(", 1)
    return name, arguments, result


CONVERSION = re.compile(r'%([-+0 #]*)(\d+|\*)?(\.(?:\d+|\*)?)?(?:I64|[hl])?([a-zA-Z])')


def conversion(arguments):
    """Flags, width, precision and letter of the call's first conversion, or None."""
    match = CONVERSION.search(re.match(r'L?"([^"]*)"', arguments)[1].replace("%%", ""))
    return match and (match[1], match[2], match[3], match[4])


INFINITY = re.compile(r"real [7f]ff0{13}")


def printed(name):
    return name.endswith("Printf") or name.endswith(".Format")


def shown_text(result):
    """The text without what pads it: the other target's numbers may be longer."""
    match = re.search(r'"(.*)"', result)
    return match and re.sub(r"\\0000$|\\00$", "", match[1]).rstrip("#")


def exponent(name, arguments, linux, windows):
    """The exponent has three digits instead of two, so that a width has less to fill and a count cuts earlier."""
    if not printed(name) or conversion(arguments)[3] not in "eEgG" or INFINITY.search(arguments):
        return False
    ours, theirs = shown_text(linux), shown_text(windows)

    def plain(text):
        two_digits = re.sub(r"([eE][-+])0(\d\d)(?!\d)", r"\1\2", text).replace(" ", "")
        return re.sub(r"(?<=[^\d.])0+(?=\d)|^0+(?=\d)", "", two_digits)
    if plain(ours) == plain(theirs):
        return True
    if ", count" not in arguments or not windows.startswith("-1 "):
        return False
    # What a count has cut off is the end of the same text.
    if "0" in conversion(arguments)[0] and re.sub("[ 0]", "", theirs).startswith(re.sub("[ 0]", "", ours)):
        return True
    cut = re.sub(r"[eE][-+]?\d*$", "", plain(theirs))
    return plain(ours).startswith(cut) or cut.startswith(re.sub(r"[eE][-+]?\d*$", "", plain(ours)))


def infinity(name, arguments, linux, windows):
    """An infinity: both write 1.#INF and differ in how they round and fill it, and in the exponent."""
    return printed(name) and conversion(arguments)[3] in "eEfgG" and INFINITY.search(arguments) is not None


def negative_precision(name, arguments, linux, windows):
    """A precision in the arguments is negative, which the runtime does not read as none."""
    found = printed(name) and conversion(arguments)
    if not found or found[2] != ".*":
        return False
    numbers = re.sub(r'^L?"[^"]*", ', "", arguments).split(", ")
    return int(numbers[1 if found[1] == "*" else 0]) < 0


def zero_flag(name, arguments, linux, windows):
    """An integer has both the flag 0 and a precision: the runtime fills with zeros, and the library with spaces."""
    found = printed(name) and conversion(arguments)
    if not found or found[3] not in "diouxX" or "0" not in found[0] or not found[2]:
        return False
    ours, theirs = shown_text(linux), shown_text(windows)
    # The sign or the prefix goes to the front, and a count may cut off what follows the fill.
    plain, other = re.sub("[ 0]", "", ours), re.sub("[ 0]", "", theirs)
    return len(ours) == len(theirs) and (plain == other or (linux.startswith("-1 ") and other.startswith(plain)))


def octal_zero(name, arguments, linux, windows):
    """%#.0o of 0 is the digit 0, which the runtime leaves out."""
    found = printed(name) and conversion(arguments)
    return (bool(found) and found[3] == "o" and "#" in found[0] and bool(found[2])
            and re.sub("[ 0]", "", shown_text(linux)) == re.sub("[ 0]", "", shown_text(windows)))


def null_prefix(name, arguments, linux, windows):
    """%#p of a null pointer: the library writes the prefix 0X, and the runtime does not."""
    found = printed(name) and conversion(arguments)
    return bool(found) and found[3] == "p" and "#" in found[0] and "0X0" in linux and "0X" not in windows


def digits_of_scripts(name, arguments, linux, windows):
    """A wide integer with a digit of another script, which the runtime reads as well."""
    return (re.fullmatch(r"W\.(ToLong|ToUlong|String\.As(Int|Uint|Long|Ulong))", name) is not None
            and any(chr(int(unit, 16)).isdecimal() for unit in re.findall(r"\\([0-9a-f]{4})", arguments)))


LISTED = [exponent, infinity, negative_precision, zero_flag, octal_zero, null_prefix, digits_of_scripts]


def main(linux_file, windows_file):
    linux_lines, windows_lines = ([line.rstrip("\r\n") for line in open(name, encoding="ascii", newline="\n")]
                                  for name in (linux_file, windows_file))
    counts = {difference.__name__: 0 for difference in LISTED}
    unlisted = abs(len(linux_lines) - len(windows_lines))
    if unlisted:
        print(f"unlisted: {len(linux_lines)} lines and {len(windows_lines)} lines")
    for ours, theirs in zip(linux_lines, windows_lines):
        if ours == theirs:
            continue
        name, arguments, linux = split(ours)
        other_name, other_arguments, windows = split(theirs)
        listed = None
        if (name, arguments) == (other_name, other_arguments):
            listed = next((d for d in LISTED if d(name, arguments, linux, windows)), None)
        if listed is not None:
            counts[listed.__name__] += 1
        else:
            unlisted += 1
            print(f"unlisted: {ours}\n      and {windows}")
    for name, count in counts.items():
        print(name, count)
    print("calls", len(linux_lines))
    print("unlisted", unlisted)
    return 1 if unlisted or (len(linux_lines) >= 1000000 and 0 in counts.values()) else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
