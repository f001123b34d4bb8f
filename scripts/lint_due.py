"""Names the sources that clang-tidy has to read, each behind the stamp that says it was found clean.

Prints a line "stamp TAB source" for every source of src, platform/portable, tools and java whose stamp is missing. A
stamp is named after all that decides the findings: the checks, the compiler's flags, the source and every file of ours
that it includes, however deep. A source that the build does not know is an error: nothing would read it.
"""
import hashlib
import json
import os
import re
import subprocess
import sys

FOLDERS = ("src", "platform/portable", "tools", "java")
INCLUDE = re.compile(rb'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.MULTILINE)


def files_of_ours():
    for folder in FOLDERS:
        for path, _, names in os.walk(folder):
            yield from (os.path.join(path, name) for name in names)


def main(build):
    contents = {name: open(name, "rb").read() for name in files_of_ours()
                if name.endswith((".cpp", ".h", ".clang-tidy"))}
    by_name = {}
    for name in contents:
        by_name.setdefault(os.path.basename(name), []).append(name)

    def included(name):
        # Whatever ends like the name in the directive may be meant; search paths are not followed.
        for wanted in INCLUDE.findall(contents[name]):
            tail = "/" + re.sub(r"^(\.\.?/)+", "", wanted.decode())
            yield from (n for n in by_name.get(os.path.basename(tail), []) if ("/" + n).endswith(tail))

    def closure(name):
        seen, todo = {name}, [name]
        while todo:
            fresh = set(included(todo.pop())) - seen
            seen |= fresh
            todo.extend(fresh)
        return sorted(seen)

    rules = [subprocess.run(["clang-tidy", "--version"], capture_output=True, check=True).stdout]
    rules += [contents[n] for n in sorted(contents) if n.endswith(".clang-tidy")] + [open(".clang-tidy", "rb").read()]
    with open(os.path.join(build, "compile_commands.json")) as commands:
        flags = {os.path.relpath(entry["file"]): entry["command"] for entry in json.load(commands)}

    unknown = sorted(n for n in contents if n.endswith(".cpp") and n not in flags)
    if unknown:
        sys.exit("lint: the build does not know " + ", ".join(unknown))
    for name in sorted(n for n in contents if n.endswith(".cpp")):
        digest = hashlib.sha256(b"\0".join(rules + [flags[name].encode()]))
        for part in closure(name):
            digest.update(b"\0" + part.encode() + b"\0" + contents[part])
        stamp = os.path.join(build, "clean", digest.hexdigest())
        if not os.path.exists(stamp):
            print(f"{stamp}\t{name}")


main(sys.argv[1])
