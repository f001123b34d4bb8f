#!/usr/bin/env python3
"""Checks how the shared object is linked: what it exports, what it needs, and how its segments lie.

  check_shared_object.py LIBRARY exported_symbols.txt [--sanitized]
  check_shared_object.py LIBRARY exported_symbols.txt --refresh     takes what it exports as the new list
"""
import pathlib
import re
import subprocess
import sys


def run(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def exported(library):
    """Demangled names; the variants of a constructor count once, as compilers do not agree about them."""
    lines = run("nm", "-DC", "--defined-only", library).splitlines()
    return sorted({re.sub(r"^[0-9a-f]* +\S ", "", line) for line in lines})


def problems(library, wanted, sanitized):
    got = exported(library)
    for name in sorted(set(wanted) - set(got)):
        yield f"not exported any more: {name}"
    for name in sorted(set(got) - set(wanted)):
        yield f"exported, but not in the list: {name}"

    dynamic = run("readelf", "-dW", library)
    if "[libQxEffect.fonteffect.zorvane.so]" not in dynamic:
        yield "has another name"
    if not re.search(r"FLAGS_1.*NODELETE", dynamic):
        yield "can be unloaded: natives that are registered would be gone"
    for runtime in ("libstdc++", "libgcc_s", "libc++"):
        if runtime in dynamic and not sanitized:
            yield f"needs the C++ runtime of the process: {runtime}"

    loads = re.findall(r"^ *LOAD .* (0x[0-9a-f]+)$", run("readelf", "-lW", library), re.M)
    if not loads or any(int(alignment, 16) < 16384 for alignment in loads):
        yield f"segments are not aligned for pages of 16 KB: {loads}"


def main():
    library, list_file = sys.argv[1], pathlib.Path(sys.argv[2])
    if "--refresh" in sys.argv:
        list_file.write_text("\n".join(exported(library)) + "\n")
        return 0
    found = list(problems(library, list_file.read_text().splitlines(), "--sanitized" in sys.argv))
    print("\n".join(found) if found else "shared object: as it should be")
    if found:
        print(f"After a change that is meant: {sys.argv[0]} LIBRARY {list_file} --refresh")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
