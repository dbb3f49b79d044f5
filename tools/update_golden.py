#!/usr/bin/env python3
"""Rewrites the golden files from what the tests make now. The difference is reviewed like code.

    tools/update_golden.py [REGEX]

REGEX  runs only the tests whose names match it (default: those with "Golden" in their names). The release preset
must be built.
"""

import os
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent


def main():
    if len(sys.argv) > 2 or (len(sys.argv) == 2 and sys.argv[1].startswith("-")):
        print(__doc__, end="")
        return 2
    selection = sys.argv[1] if len(sys.argv) == 2 else "Golden"
    status = subprocess.run(["ctest", "--preset", "release", "--no-tests=error", "-R", selection], cwd=ROOT,
                            env={**os.environ, "MR_UPDATE_GOLDEN": "1"}).returncode
    subprocess.run(["git", "status", "--short", "tests/golden"], cwd=ROOT)
    return status


if __name__ == "__main__":
    sys.exit(main())
