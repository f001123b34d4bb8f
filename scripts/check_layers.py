#!/usr/bin/env python3
"""Checks that the folders of src/ include each other in one direction only.

base <- pixel <- effect <- text <- bridge, font beside effect. pixel/ and effect/ know no platform header, and a
kernel/ folder knows nothing but plane.h, its siblings and the standard library.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent / "src"
ALLOWED = {
    "base": {"base"},
    "pixel": {"base", "pixel"},
    "effect": {"base", "pixel", "effect"},
    "font": {"base", "font"},
    "text": {"base", "pixel", "effect", "font", "text"},
    "bridge": {"base", "pixel", "effect", "font", "text", "bridge"},
}
STANDARD_ONLY = {"pixel", "effect"}
# base reaches the platform's log and POSIX, nothing else.
BASE_PLATFORM = {"android/log.h", "pthread.h", "unistd.h", "fcntl.h"}
INCLUDE = re.compile(r'^\s*#\s*include\s+([<"])([^>"]+)[>"]')
STANDARD = re.compile(r"^(c?[a-z_]+|emmintrin\.h|immintrin\.h|arm_neon\.h)$")


def problems(path):
    folder = path.relative_to(ROOT).parts[0]
    in_kernel = "kernel" in path.relative_to(ROOT).parts
    for number, line in enumerate(path.read_text().splitlines(), 1):
        match = INCLUDE.match(line)
        if not match:
            continue
        bracket, name = match.groups()
        if bracket == '"':
            target = name.split("/")[0]
            if target not in ALLOWED[folder]:
                yield f"{path}:{number}: {folder}/ must not include {name}"
            elif in_kernel and "/kernel/" not in name and name not in ("pixel/plane.h", "base/cpu.h"):
                yield f"{path}:{number}: a kernel must not include {name}"
        elif folder in STANDARD_ONLY and not STANDARD.match(name):
            yield f"{path}:{number}: {folder}/ uses the standard library only, not <{name}>"
        elif folder == "base" and not STANDARD.match(name) and name not in BASE_PLATFORM:
            yield f"{path}:{number}: base/ must not include <{name}>"


def main():
    found = [p for f in sorted(ROOT.rglob("*")) if f.suffix in (".h", ".cpp", ".inc") for p in problems(f)]
    print("\n".join(found) if found else "layers: every include points down")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
