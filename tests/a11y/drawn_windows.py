#!/usr/bin/env python3
"""Holds the accessible tree of gallery windows against what they draw, as a screen reader
reads it through AT-SPI.

Usage: drawn_windows.py GALLERY ID... Each window is opened with "--open ID --report": the
gallery prints its drawn elements (element_report.h). Each of them must be found in the
window's accessible tree with its role, name and states, its extents within the window and
within 2 px of the drawn rectangle. In a window with ticks in a grid, the client toggles
the first one through its "toggle" action, hears the state change and sees the gallery's
data change in its next report; in the caption panel it presses Next message.
"""
import sys
import time

import pyatspi

from atspi_client import check, entry_frame, extents, find, finish, inside, listen, pump_until, start, walk


def read_report(lines, seconds=20):
    """The elements ((kind, box, checked, name)...) and the window's box of one report."""
    elements, window = [], None
    deadline = time.monotonic() + seconds
    while True:
        line = lines.get(timeout=max(0.1, deadline - time.monotonic()))
        if line is None:
            raise RuntimeError("the gallery ended before its report")
        if line == "ready":
            return elements, window
        words = line.split(" ", 7)
        if words[0] == "element":
            box = tuple(int(w) for w in words[2:6])
            elements.append((words[1], box, words[6], words[7] if len(words) > 7 else ""))
        elif words[0] == "window":
            window = tuple(int(w) for w in words[1:5])


def check_elements(entry, nodes, elements, window):
    for kind, box, flags, name in elements:
        where = "%s: %s %r at %s" % (entry, kind, name, box)
        node = find(nodes, kind, box, name)
        check(node is not None, where + " not found")
        if node is None:
            continue
        states = node.getState()
        check(states.contains(pyatspi.STATE_VISIBLE) and states.contains(pyatspi.STATE_SHOWING),
              where + " not visible and showing")
        check(inside(extents(node), window), where + " outside the window %s" % (window,))
        if kind in ("check", "button"):
            enabled = flags != "disabled"
            check(states.contains(pyatspi.STATE_ENABLED) == enabled, where + " enabled is not %s" % enabled)
            action = node.queryAction()
            check(action.nActions == 1 and action.getName(0) == ("toggle" if kind == "check" else "click"),
                  where + " has not its one action")
        if flags in ("expanded", "collapsed"):
            check(states.contains(pyatspi.STATE_EXPANDABLE), where + " not expandable")
            check(states.contains(pyatspi.STATE_EXPANDED) == (flags == "expanded"), where + " expanded is wrong")
        if kind == "check":
            checked = flags == "checked"
            check(states.contains(pyatspi.STATE_CHECKED) == checked, where + " checked is not %s" % checked)
        if kind in ("cell", "check"):
            cell = node.queryTableCell()
            check(cell.position[0] >= 0 and cell.table is not None, where + " has no place in a table")


def wait_checked_event(events, node, seconds=10):
    return pump_until(lambda: next((event for event in events if event.source == node), None), seconds)


def check_toggle(entry, process, lines, nodes, elements):
    """Toggles the first tick through its action: the object tells, the data follows."""
    ticks = [(i, e) for i, e in enumerate(elements) if e[0] == "check"]
    if not ticks:
        return
    index, (kind, box, flags, name) = ticks[0]
    checked = flags == "checked"
    node = find(nodes, kind, box, name)
    if node is None:
        return
    listener, events = listen("object:state-changed:checked")
    action = node.queryAction()
    check(action.getName(0) == "toggle", "%s: the tick's action is %r" % (entry, action.getName(0)))
    check(action.doAction(0), "%s: the toggle was refused" % entry)
    event = wait_checked_event(events, node)
    check(event is not None and bool(event.detail1) != checked, "%s: no change of the tick heard" % entry)
    check(node.getState().contains(pyatspi.STATE_CHECKED) != checked, "%s: the tick did not change" % entry)
    listener.deregister("object:state-changed:checked")
    process.stdin.write("report\n")
    process.stdin.flush()
    after, _ = read_report(lines)
    check(len(after) == len(elements) and after[index][0] == "check" and (after[index][2] == "checked") != checked,
          "%s: the gallery's data did not change with the toggle" % entry)


def check_next_message(entry, nodes, elements):
    """Presses Next message through its action: the pane beside it shows another message."""
    found = [e for e in elements if e[0] == "button" and e[3] == "Next message" and e[2] != "disabled"]
    node = find(nodes, "button", found[0][1], found[0][3]) if found else None
    if node is None:
        return
    labels = [child for child in node.parent if child is not None and child.getRole() == pyatspi.ROLE_LABEL]
    check(len(labels) == 1, "%s: %d labels beside Next message" % (entry, len(labels)))
    if not labels:
        return
    before = labels[0].name
    check(node.queryAction().doAction(0), "%s: Next message refused" % entry)
    deadline = time.monotonic() + 10
    while labels[0].name == before and time.monotonic() < deadline:
        time.sleep(0.05)
    check(labels[0].name != before, "%s: Next message through its action showed no other message" % entry)


def check_entry(gallery, entry):
    process, lines = start([gallery, "--open", entry, "--report"])
    try:
        elements, window = read_report(lines)
        print("%s: %d drawn elements" % (entry, len(elements)))
        check(len(elements) > 0, "%s: nothing drawn reported" % entry)
        frame = entry_frame(process.pid)
        check(frame is not None, "%s: no window on the accessibility bus" % entry)
        if frame is None:
            return
        nodes = walk(frame, [])
        check_elements(entry, nodes, elements, window)
        check_toggle(entry, process, lines, nodes, elements)
        check_next_message(entry, nodes, elements)
    finally:
        process.terminate()
        process.wait(timeout=20)  # terminated: its exit code says nothing


def main(argv):
    # The client brings the accessibility bus up before any program starts: starting both
    # at once on a new bus made the program's GTK fail to start now and then.
    pyatspi.Registry.getDesktop(0).childCount
    for entry in argv[2:]:
        check_entry(argv[1], entry)
    return finish()


if __name__ == "__main__":
    sys.exit(main(sys.argv))
