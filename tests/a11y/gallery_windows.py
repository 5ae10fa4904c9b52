#!/usr/bin/env python3
"""Opens gallery windows one at a time and reads them through AT-SPI, as a screen reader does.

Usage: gallery_windows.py GALLERY ID... Each window must show every object with a role,
every showing label, button and progress bar with a name, and every showing object
within the window (to 2 px).
"""
import os
import subprocess
import sys
import time

import pyatspi

TOLERANCE = 2
NAMED = {pyatspi.ROLE_LABEL, pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_PROGRESS_BAR, pyatspi.ROLE_CHECK_BOX}
failures = []


def check(condition, what):
    if not condition:
        failures.append(what)
        print("FAIL: " + what)


def entry_frame(pid, seconds=15):
    """The frame that the gallery opened beside its list, once it shows."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        for app in pyatspi.Registry.getDesktop(0):
            if app is None or app.get_process_id() != pid:
                continue
            frames = [f for f in app if f is not None and f.name != "tamsel3 gallery"]
            showing = [f for f in frames if f.getState().contains(pyatspi.STATE_SHOWING)]
            if showing:
                return showing[0]
        time.sleep(0.1)
    return None


def extents(node):
    box = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    return (box.x, box.y, box.width, box.height)


def inside(box, frame):
    x, y, w, h = box
    return (x >= frame[0] - TOLERANCE and y >= frame[1] - TOLERANCE and x + w <= frame[0] + frame[2] + TOLERANCE
            and y + h <= frame[1] + frame[3] + TOLERANCE)


def check_node(entry, node, frame_box):
    role = node.getRole()
    where = "%s: %s %r" % (entry, node.getRoleName(), node.name)
    check(role not in (pyatspi.ROLE_INVALID, pyatspi.ROLE_UNKNOWN), where + " has no role")
    if not node.getState().contains(pyatspi.STATE_SHOWING):
        return
    if role in NAMED:
        check(bool(node.name), where + " has no name")
    box = extents(node)
    if box[2] > 0 and box[3] > 0:
        check(inside(box, frame_box), "%s at %s lies outside the window %s" % (where, box, frame_box))


def walk(node, visit):
    for child in node:
        if child is not None:
            visit(child)
            walk(child, visit)


def check_entry(gallery, entry):
    environment = dict(os.environ)
    environment.pop("NO_AT_BRIDGE", None)
    process = subprocess.Popen([gallery, "--open", entry], stdout=subprocess.DEVNULL, env=environment)
    try:
        frame = entry_frame(process.pid)
        check(frame is not None, "%s: no window on the accessibility bus" % entry)
        if frame is None:
            return
        frame_box = extents(frame)
        count = [0]

        def visit(node):
            count[0] += 1
            check_node(entry, node, frame_box)

        walk(frame, visit)
        print("%s: %d objects" % (entry, count[0]))
    finally:
        process.terminate()
        process.wait(timeout=20)  # terminated: its exit code says nothing


def main(argv):
    # The client brings the accessibility bus up before any program starts: starting both
    # at once on a new bus made the program's GTK fail to start now and then.
    pyatspi.Registry.getDesktop(0).childCount
    for entry in argv[2:]:
        check_entry(argv[1], entry)
    print("%d failures" % len(failures))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
