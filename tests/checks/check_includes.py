#!/usr/bin/env python3
"""Checks the includes of the product's sources: each folder uses only those that stand before it, views do
not reach the protocol engine, and each form is included by exactly one source."""

import re
import sys
from pathlib import Path

from faultlist import report

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
LAYERS = re.compile(r"set\(VX_LAYERS\s+([^)]*)\)")
FOLDER_OF_LAYER = {"base_gui": "base/gui", "records": "protocol/records", "modules_common": "modules/common",
                   "modules_widgets": "modules/widgets", "modules_channels": "modules/channels",
                   "system_rates": "system/rates"}


def layer_folders(root):
    names = LAYERS.search((root / "cmake/Layers.cmake").read_text()).group(1).split()
    return [FOLDER_OF_LAYER.get(name, name) for name in names]


def rank(path, folders):
    """Place in the order of the deepest layer folder that holds the path, or None."""
    held = [folder for folder in folders if path.startswith(folder + "/")]
    return folders.index(max(held, key=len)) if held else None


def faults(root):
    folders = layer_folders(root)
    forms = {}
    for source in sorted((root / "src").rglob("*")):
        if source.suffix not in (".h", ".cpp"):
            continue
        name = source.relative_to(root / "src").as_posix()
        own = rank(name, folders)
        if own is None:
            yield f"{name}: stands in no known folder"
            continue
        for included in INCLUDE.findall(source.read_text(encoding="utf-8")):
            if included.startswith("ui_"):
                forms.setdefault(included, []).append(name)
                continue
            if included.endswith(".moc"):
                continue
            other = rank(included, folders)
            if other is None:
                yield f'{name}: "{included}" is included without its folder'
            elif other > own:
                yield f'{name}: "{included}" stands behind it in the order of the folders'
            if source.stem.endswith("_view") and included.startswith("protocol/"):
                if not included.startswith("protocol/records/"):
                    yield f'{name}: a view must not use "{included}"'
    for form, users in forms.items():
        if len(users) != 1 or not users[0].endswith(".cpp"):
            yield f"{form}: included by {', '.join(users)}; exactly one source may"
    for form in sorted((root / "src/forms").glob("*.ui")):
        if f"ui_{form.stem}.h" not in forms:
            yield f"{form.name}: no source includes it"


if __name__ == "__main__":
    sys.exit(report(faults(Path(sys.argv[1]))))
