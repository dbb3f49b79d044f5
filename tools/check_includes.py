#!/usr/bin/env python3
"""Checks that every include of the sources goes in a permitted direction.

    tools/check_includes.py [ROOT]

Prints one line per include that does not, and exits 1 if there is any. ROOT is another checkout (for the checker's
own test). Quoted includes are written from the root of the checkout; what is not ours is written in angle brackets.
"""

import pathlib
import re
import sys

# Folder -> folders it may include besides itself. Includes go downwards only.
ALLOWED = {
    "framework": set(),
    "host": {"framework"},
    "hooks": {"framework"},
    "namer": {"framework", "host"},
    "model": {"framework", "hooks", "namer"},
    "script": {"framework", "hooks", "namer", "model"},
    "controls": {"framework", "host", "hooks", "namer", "model", "script"},
}

# The dispatcher hands messages to factories, which stand above it: it knows them by their interface alone.
KNOTS = {("hooks/mrDispatcher.cpp", "model/mrActionFactory.h")}

# Narrower than its folder, or the knot above would pull all of model/ into hooks/.
ALLOWED_OF_FILE = {"model/mrActionFactory.h": {"framework"}}

# A program sees of the library what a customer sees: the installed headers. The sample host stands for the host's
# own code, which knows nothing of recording.
ALLOWED_OF_APP = {"SampleCad": {"framework", "host"}}

# These see everything: they are in nobody's way.
FREE = {"tests", "bench"}

SUFFIXES = {".h", ".cpp", ".c", ".inl"}
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
INSTALLED = re.compile(r"mr_install_headers\(\s*(\w+)([^)]*)\)")


def installed_headers(root):
    """The public headers, as the CMakeLists.txt of the source folders list them."""
    headers = set()
    for folder in ALLOWED:
        listing = root / folder / "CMakeLists.txt"
        if listing.exists():
            for name, files in INSTALLED.findall(listing.read_text()):
                headers.update(f"{name}/{file}" for file in files.split())
    return headers


def permitted(source, target, public):
    """Whether `source` may include `target`; both are paths from the root."""
    folder, target_folder = source.split("/")[0], target.split("/")[0]
    if folder in FREE or (source, target) in KNOTS:
        return True
    if folder == "apps":
        program = source.split("/")[1]
        if target.startswith(f"apps/{program}/"):
            return True
        if program in ALLOWED_OF_APP:
            return target_folder in ALLOWED_OF_APP[program]
        return target in public
    if source in ALLOWED_OF_FILE:
        return target_folder in ALLOWED_OF_FILE[source]
    return target_folder == folder or target_folder in ALLOWED[folder]


def problem(root, source, bracket, target, public):
    """What is wrong with one include, or None."""
    if bracket == "<":
        # The framework stands in for a library that knows nothing but windows.h and the standard library.
        if source.startswith("framework/") and target.endswith(".h") and target != "windows.h":
            return "framework/ includes the standard library and <windows.h> only"
        if (root / target).exists():
            return "ours is written in quotes"
        return None
    if not (root / target).is_file():
        return "is no file of the checkout: ours is written from the root, everything else in angle brackets"
    if not permitted(source, target, public):
        return "is a direction that is not permitted"
    if source in public and target not in public:
        return "is not installed, but the header that includes it is"
    return None


def check(root):
    """All problems below `root`, one line each."""
    public = installed_headers(root)
    problems = []
    for top in [*ALLOWED, "apps", *sorted(FREE)]:
        for path in sorted((root / top).rglob("*")):
            if path.suffix not in SUFFIXES:
                continue
            source = path.relative_to(root).as_posix()
            for number, line in enumerate(path.read_text(encoding="utf-8", errors="replace").splitlines(), 1):
                include = INCLUDE.match(line)
                wrong = include and problem(root, source, include[1], include[2], public)
                if wrong:
                    problems.append(f"{source}:{number}: {include[2]} {wrong}")
    return problems


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parent.parent).resolve()
    problems = check(root)
    print("\n".join(problems) if problems else "all includes go in a permitted direction")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
