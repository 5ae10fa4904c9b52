#!/usr/bin/python3
"""Prints the accessible tree of a running program's windows, as a screen reader sees it.

Usage: tools/a11y_tree.py [NAME_OR_PID]
Lists every application on the AT-SPI bus when no argument is given. Each line shows
an object's role, name, states and screen extents, indented by depth, its value when it
has one and a table's rows and columns. Run it in the same session as the program (the
same accessibility bus), e.g. beside the gallery started under dbus-run-session without NO_AT_BRIDGE:

  dbus-run-session -- sh -c 'build/ci/bin/tamsel3_gallery & sleep 2; tools/a11y_tree.py tamsel3_gallery'
"""
import sys

import pyatspi

STATES = [
    (pyatspi.STATE_VISIBLE, "visible"),
    (pyatspi.STATE_SHOWING, "showing"),
    (pyatspi.STATE_ENABLED, "enabled"),
    (pyatspi.STATE_FOCUSABLE, "focusable"),
    (pyatspi.STATE_FOCUSED, "focused"),
    (pyatspi.STATE_CHECKED, "checked"),
    (pyatspi.STATE_PRESSED, "pressed"),
    (pyatspi.STATE_EXPANDABLE, "expandable"),
    (pyatspi.STATE_EXPANDED, "expanded"),
]


def describe(node):
    states = node.getState()
    words = [name for state, name in STATES if states.contains(state)]
    line = "%s %r [%s]" % (node.getRoleName(), node.name, " ".join(words))
    try:
        box = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        line += " (%d,%d %dx%d)" % (box.x, box.y, box.width, box.height)
    except NotImplementedError:
        pass
    try:
        line += " value=%g" % node.queryValue().currentValue
    except NotImplementedError:
        pass
    try:
        table = node.queryTable()
        line += " table=%dx%d" % (table.nRows, table.nColumns)
    except NotImplementedError:
        pass
    return line


def show(node, depth=0):
    print("  " * depth + describe(node))
    for child in node:
        if child is not None:
            show(child, depth + 1)


def main(argv):
    wanted = argv[1] if len(argv) > 1 else None
    desktop = pyatspi.Registry.getDesktop(0)
    shown = 0
    for app in desktop:
        if app is None:
            continue
        if wanted and wanted not in (app.name, str(app.get_process_id())):
            continue
        print("application %r pid %d" % (app.name, app.get_process_id()))
        show(app, 1)
        shown += 1
    if shown == 0:
        print("no application %s on the accessibility bus" % (wanted or ""), file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
