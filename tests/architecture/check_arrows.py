#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks that the rooms of src/ include only rooms below them, and that those below app/ know no
more of Qt than its core.

    check_arrows.py SRC QT-INCLUDE-DIR…    each directory holds the headers that rooms may take
"""
import pathlib
import re
import sys

# A room may include itself and every room of a lower floor, never its neighbours.
FLOORS = [["base"], ["net", "jobs", "launch", "power"], ["crawl"], ["download"], ["download/stream"], ["app"],
          ["terminal", "ui/widgets"], ["ui/dialogs"], ["ui"]]
FLOOR_OF = {room: floor for floor, rooms in enumerate(FLOORS) for room in rooms}
# The program's two faces know nothing of each other.
FACES = ("terminal", "ui")
CORE_FLOORS = FLOOR_OF["app"]  # the floors below this one are zentorin_core

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"(?P<own>[^"]+)"|<(?P<system>[^>]+)>)')


def own_fault(room, header):
    """Why a file of `room` may not include the project's `header`, or None."""
    other = header.rpartition("/")[0]
    if header.endswith(".moc") or (room.startswith("ui") and header.startswith("ui_")):
        return None  # made by moc and uic
    if other not in FLOOR_OF:
        return f'"{header}" is in no room; includes name the room and the file'
    faces = {part for part in (room.partition("/")[0], other.partition("/")[0]) if part in FACES}
    if other != room and (FLOOR_OF[other] >= FLOOR_OF[room] or len(faces) == 2):
        return f"{room}/ may not include {other}/ ({header})"
    return None


def system_fault(room, header, qt_folders):
    """Why a file of `room` may not include the system's `header`, or None."""
    if FLOOR_OF[room] >= CORE_FLOORS or not re.match(r"Q[A-Z]|Qt|qt", header):
        return None
    if header.startswith(("QtCore/", "QCoro/")) or any((folder / header).is_file() for folder in qt_folders):
        return None
    return f"{room}/ may use Qt's core only, not <{header}>"


def faults_in(src, qt_folders):
    for path in sorted(src.glob("*/**/*")):
        room = path.relative_to(src).parent.as_posix()
        if path.suffix not in (".h", ".cpp"):
            continue
        if room not in FLOOR_OF:
            yield f"{path}: {room}/ is no room that this check knows"
            continue
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            if found := INCLUDE.match(line):
                own, system = found["own"], found["system"]
                fault = own_fault(room, own) if own else system_fault(room, system, qt_folders)
                if fault:
                    yield f"{path}:{number}: {fault}"


def main():
    src, *qt_folders = map(pathlib.Path, sys.argv[1:])
    if not any(src.glob("*/*.h")):
        sys.exit(f"{src}: no rooms here")
    faults = list(faults_in(src, qt_folders))
    print("\n".join(faults))
    sys.exit(1 if faults else 0)


main()
