#!/usr/bin/env python3
"""Checks that includes.txt lists the platform headers that the library includes, and no others."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
INCLUDE = re.compile(r"^\s*#\s*include\s*<([^>]+)>", re.M)
# The C and C++ libraries, POSIX, and the compilers' own vector headers.
COMMON = re.compile(r"^([a-z_0-9]+|(fcntl|pthread|unistd|immintrin|emmintrin|arm_neon)\.h|sys/(mman|stat|types)\.h)$")


def main():
    listed = set((ROOT / "platform/device/includes.txt").read_text().split())
    sources = [path for path in (ROOT / "src").rglob("*") if path.suffix in (".h", ".cpp", ".inc")]
    included = {name for path in sources for name in INCLUDE.findall(path.read_text()) if not COMMON.match(name)}
    for name in sorted(included - listed):
        print(f"included, but not in includes.txt: {name}")
    for name in sorted(listed - included):
        print(f"in includes.txt, but included nowhere: {name}")
    return 1 if included != listed else 0


if __name__ == "__main__":
    sys.exit(main())
