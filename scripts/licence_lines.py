#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Puts the line of the licence at the head of each source that has none; with --check it only names those."""
import os
import pathlib
import sys

TOP = pathlib.Path(__file__).resolve().parent.parent
LICENCE = "SPDX-License-Identifier: Apache-2.0"

# How a comment is written, by the end of the name. Translations are none of these: lupdate drops what it did not
# write itself. Neither are data, pictures and documents.
COMMENTS = {
    ".cpp": "// {}", ".h": "// {}",
    ".py": "# {}", ".sh": "# {}", ".awk": "# {}", ".cmake": "# {}", "CMakeLists.txt": "# {}",
    ".cmake.in": "# {}", ".pc.in": "# {}",
    ".ui": "<!-- {} -->", ".qrc": "<!-- {} -->",
    ".man": '.\\" {}', ".8.in": '.\\" {}',
    ".qss": "/* {} */", ".map": "/* {} */",
}
# What has to stay in front of the line.
FIRST = (b"#!", b"<?xml")


def comment_for(path):
    for end, comment in COMMENTS.items():
        if path.name.endswith(end):
            return comment
    with path.open("rb") as file:
        return "# {}" if file.read(2) == b"#!" else None


def sources():
    for folder, folders, names in os.walk(TOP):
        here = pathlib.Path(folder)
        folders[:] = sorted(name for name in folders
                            if name not in (".git", "__pycache__") and not (here / name / "CMakeCache.txt").exists()
                            and here / name != TOP / "build")
        for path in (here / name for name in sorted(names)):
            comment = comment_for(path) if path.is_file() and not path.is_symlink() else None
            if comment:
                yield path, comment.format(LICENCE).encode()


def split(text):
    """What stays in front of the line, and the rest."""
    head = text[:text.find(b"\n") + 1] if text.startswith(FIRST) else b""
    return head, text[len(head):]


def main(arguments):
    if arguments not in ([], ["--check"]):
        sys.exit("usage: licence_lines.py [--check]")
    lacking = 0
    for path, line in sources():
        head, rest = split(path.read_bytes())
        if rest.split(b"\n", 1)[0] == line:
            continue
        lacking += 1
        print(path.relative_to(TOP))
        if not arguments:
            path.write_bytes(head + line + b"\n" + rest)
    if lacking and arguments:
        sys.exit("These have no line of the licence; scripts/licence_lines.py puts it there.")


main(sys.argv[1:])
