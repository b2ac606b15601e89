"""clang-tidy finds nothing in the sources of one folder, those below it left out.

Usage: check_tidy.py <root> <build folder> <folder>

The sources are read as one unit, since nearly all the time goes into the headers that they share. Where that does not
work, because two of them give different things the same name or because there are findings, they are read one by one.
"""
import json
import pathlib
import shlex
import subprocess
import sys
import tempfile


def arguments(build, folder, source):
    """What the compiler gets for the sources of the folder, or for what the build puts them together in: all but its
    own name, its launcher, the output and the source.
    """
    together = f"{pathlib.Path(build).resolve() / folder}/CMakeFiles/"
    commands = json.loads((pathlib.Path(build) / "compile_commands.json").read_text())
    command = next(entry["command"] for entry in commands
                   if entry["file"] == str(source) or entry["file"].startswith(together) and "/Unity/" in entry["file"])
    words = shlex.split(command)
    first = next(i for i, word in enumerate(words) if pathlib.PurePath(word).name.startswith(("c++", "g++", "clang++")))
    kept = []
    rest = iter(words[first + 1:])
    for word in rest:
        if word in ("-o", "-c"):
            next(rest)
        else:
            kept.append(word)
    return kept


def main(root, build, folder):
    root = pathlib.Path(root).resolve()
    sources = sorted(path for path in (root / folder).glob("*.cpp") if not path.name.endswith("_win.cpp"))
    compiler = ["--"] + arguments(build, folder, sources[0])
    tidy = ["clang-tidy", "--quiet", f"--config-file={root / '.clang-tidy'}"]
    with tempfile.TemporaryDirectory() as scratch:
        unit = pathlib.Path(scratch) / "unit.cpp"
        unit.write_text("".join(f'#include "{source}"\n' for source in sources))
        together = subprocess.run(
            tidy + ["--header-filter=(src|sim)/.*", "--checks=-bugprone-suspicious-include", unit] + compiler,
            capture_output=True, check=False)
        if together.returncode == 0:
            return 0
    return subprocess.run(tidy + sources + compiler, cwd=root, check=False).returncode


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
