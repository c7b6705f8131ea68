#!/usr/bin/env python3
"""Prints what the sources throw or declare as an exception, and the list of the attack lacks: one line, or nothing.

The list consists of lines "type NAME library" or "type NAME application". A thrown type has to be in it as one that the
library throws; its name may lack the class that it belongs to, as in the sources of that class.
"""

import re
import sys
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[2] / "Source"


def without_comments(text):
    return re.sub(r"//[^\n]*", "", text)


def find_thrown():
    """Names after the word throw; a temporary object is thrown wherever the library throws."""
    names = set()
    for pattern in ("*.h", "*.cpp", "*.inl"):
        for path in SOURCES.rglob(pattern):
            names.update(re.findall(r"\bthrow\s+([A-Za-z_:]+)\s*\(", without_comments(path.read_text(encoding="utf-8"))))
    return names


def find_declared():
    """Exported classes whose names end in Exception, with the class around them."""
    names = set()
    for path in SOURCES.rglob("*.h"):
        scope, around = "", ""
        for line in without_comments(path.read_text(encoding="utf-8")).splitlines():
            if (found := re.match(r"namespace (\w+)", line)):
                scope = found[1] + "::"
            elif (found := re.match(r"(\s*)class TOV_EXPORT (\w+)(?!.*;)", line)):
                name = found[2]
                if found[1]:
                    name = f"{around}::{name}"
                else:
                    around = name
                if name.endswith("Exception"):
                    names.add(scope + name)
    return names


def main():
    listed = [line.split()[1:3] for line in Path(sys.argv[1]).read_text(encoding="utf-8").splitlines()
              if line.startswith("type ")]
    thrown = [name for name, thrower in listed if thrower == "library"]
    missing = [f"{name} (thrown)" for name in find_thrown()
               if not any(other == name or other.endswith(f"::{name}") for other in thrown)]
    missing += [f"{name} (declared)" for name in find_declared() if name not in [name for name, _ in listed]]
    if not find_thrown() or not find_declared():
        missing.append("the sources could not be read")
    if missing:
        print(", ".join(sorted(missing)))


if __name__ == "__main__":
    main()
