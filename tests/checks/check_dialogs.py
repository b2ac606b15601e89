#!/usr/bin/env python3
"""Checks that the storm knows each dialog of the program: it opens and leaves those that dialogKinds() names, and of
another it would hear only if a gesture opened it by chance."""

import re
import sys
from pathlib import Path

from faultlist import report

KINDS = "tests/storm/dialogbook.cpp"
# Dialogs that the storm cannot open, and names that look like those of dialogs, each with its reason.
EXCEPTIONS = {
    "VoltageSettingsDialog": "kept in reserve, nothing shows it",
    "samplingRatesDialog": "object name of VX_SamplingRates",
    "filterSpinBox": "a control of a strip",
    "statusBox": "a field of the main window",
}

CLASS = re.compile(r"\bclass\s+(\w+)\s*(?:final\s*)?:\s*([^{;]+)\{")
BASE = re.compile(r"\b(?:public|protected|private)\s+(\w+)")
LIBRARY = re.compile(r"Q\w*(?:Dialog|MessageBox)|QWizard")
NAME = re.compile(r'"(\w*(?:Box|Dialog|Confirmation))"')
BOX = r"(?:Q\w*Dialog|QMessageBox|QErrorMessage|QWizard)"
MADE = re.compile(rf"\bnew\s+{BOX}\b|\bmake_unique<{BOX}>|\b{BOX}\s+\w+\s*[({{;]")
CALLED = re.compile(r"\b(QMessageBox|QFileDialog|QInputDialog|QColorDialog|QFontDialog)::(?!event\b)[a-z]\w*\(")
NAMED = re.compile(r'setObjectName\((?:\w+\("(\w+)"\)|"(\w+)"|[^;]*)\)')
LINES_TO_THE_NAME = 8


def sources(root):
    for path in sorted((root / "src").rglob("*")):
        if path.suffix in (".h", ".cpp"):
            yield path.relative_to(root).as_posix(), path.read_text(encoding="utf-8")


def kinds(root):
    text = (root / KINDS).read_text(encoding="utf-8")
    body = text[text.index("dialogKinds()"):]
    return set(re.findall(r'QStringLiteral\("(\w+)"\)', body[:body.index("return kinds;")]))


def dialog_classes(texts):
    """The class of each dialog of the program's own, with its file."""
    found = {}
    before = -1
    while len(found) != before: # a base may stand in a later file
        before = len(found)
        for name, text in texts:
            for own, bases in CLASS.findall(text):
                if any(LIBRARY.fullmatch(base) or base in found for base in BASE.findall(bases)):
                    found[own] = name
    return found


def boxes(text):
    """Line and object name of each dialog of the library that is made; None without a name, an empty text for one
    that the caller gives."""
    lines = text.splitlines()
    for number, line in enumerate(lines):
        if CALLED.search(line):
            yield number + 1, None
        if MADE.search(line):
            end = number + 1
            while end < len(lines) and end < number + LINES_TO_THE_NAME and not MADE.search(lines[end]):
                end += 1
            named = NAMED.search("\n".join(lines[number:end]))
            yield number + 1, (named.group(1) or named.group(2) or "") if named else None


def faults(root, exceptions=None):
    exceptions = EXCEPTIONS if exceptions is None else exceptions
    texts = list(sources(root))
    classes = dialog_classes(texts)
    known = kinds(root)
    used = set()
    objects = {name.lower() for name in classes} # a dialog's object name is that of its class
    for name, file in sorted(classes.items()):
        used.add(name)
        if name not in known and name not in exceptions:
            yield f"{file}: the storm does not know {name}"
    for file, text in texts:
        names = set(NAME.findall(text))
        for line, name in boxes(text):
            if name is None:
                yield f"{file}:{line}: a box without an object name, so the storm cannot know it"
            elif name:
                names.add(name)
        for name in sorted(names):
            used.add(name)
            if name not in known and name not in exceptions and name.lower() not in objects:
                yield f'{file}: the storm does not know "{name}"'
    for name in sorted(set(exceptions) - used):
        yield f"{name} is an exception, and there is no such dialog"


if __name__ == "__main__":
    sys.exit(report(faults(Path(sys.argv[1]))))
