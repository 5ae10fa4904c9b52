#!/usr/bin/env python3
"""Opens gallery windows one at a time and reads them through AT-SPI, as a screen reader does.

Usage: gallery_windows.py GALLERY [ID...]. Without ids, every window the gallery lists
(--list), the toolkit's own dialogs too. Each window must show every object with a role,
every showing object of a kind that a screen reader names by its name, and every showing
object within the window (to 2 px).

Named must be: labels, buttons, check boxes, progress bars, text fields, tables and cells,
images, and the panels that the library draws (its layout-only boxes are left out of the
tree). GTK's own layout containers (fillers, and panels that carry the "toolkit: gtk"
attribute) group without a label of their own, as GTK makes them, and may stay unnamed: a
screen reader passes over them. So may the check
cells of GTK's check lists: a screen reader reads them with the text of their row. So may
the blank cells of the tables the library draws: a screen reader reads them as blank.

The toolkit's own dialogs (file, folder, font and colour choosers; the gallery lists them
with the word "toolkit") are GTK's from top to bottom:
there every object must have a role, but names and places are GTK's business, and what
GTK leaves unnamed is counted and printed, not failed.
"""
import subprocess
import sys
import time

import pyatspi

from atspi_client import bridged_environment, check, entry_frame, extents, finish, inside, walk

NAMED = {
    pyatspi.ROLE_LABEL, pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_TOGGLE_BUTTON, pyatspi.ROLE_RADIO_BUTTON,
    pyatspi.ROLE_CHECK_BOX, pyatspi.ROLE_PROGRESS_BAR, pyatspi.ROLE_TEXT, pyatspi.ROLE_ENTRY,
    pyatspi.ROLE_PASSWORD_TEXT, pyatspi.ROLE_SPIN_BUTTON, pyatspi.ROLE_COMBO_BOX, pyatspi.ROLE_TABLE,
    pyatspi.ROLE_TABLE_CELL, pyatspi.ROLE_TREE_TABLE, pyatspi.ROLE_IMAGE, pyatspi.ROLE_ICON,
    pyatspi.ROLE_PAGE_TAB, pyatspi.ROLE_SLIDER
}


def name_now(node, seconds=2):
    """The node's name, once the program gave it: a window may show while its host is still
    filling it (the gallery waits for sizes), and this client's cache may hold the name from
    before (a screen reader hears the change)."""
    deadline = time.monotonic() + seconds
    while not node.name and time.monotonic() < deadline:
        time.sleep(0.05)
        node.clear_cache()
    return node.name


def from_gtk(node):
    return "toolkit:gtk" in (node.getAttributes() or [])


def settled_extents(frame, seconds=3):
    """The frame's place once it stops changing: a window shows, then its host may still
    size it (a message that it opens, a layout at idle time)."""
    deadline = time.monotonic() + seconds
    box = extents(frame)
    while time.monotonic() < deadline:
        time.sleep(0.2)
        now = extents(frame)
        if now == box:
            break
        box = now
    return box


def gtk_check_cell(node):
    """A check cell of GTK's tree view: made on the fly (transient), toggled."""
    if node.getRole() != pyatspi.ROLE_TABLE_CELL or not node.getState().contains(pyatspi.STATE_TRANSIENT):
        return False
    try:
        action = node.queryAction()
    except NotImplementedError:
        return False
    return any(action.getName(i) == "toggle" for i in range(action.nActions))


def blank_drawn_cell(node):
    """A cell of a table that the library draws (its cells sit in table rows) with nothing in
    it: its name is its text, and a screen reader reads an empty one as blank."""
    if node.getRole() != pyatspi.ROLE_TABLE_CELL or node.name:
        return False
    parent = node.parent
    return parent is not None and parent.getRole() == pyatspi.ROLE_TABLE_ROW


def check_node(entry, node, frame_box):
    role = node.getRole()
    where = "%s: %s %r" % (entry, node.getRoleName(), node.name)
    check(role not in (pyatspi.ROLE_INVALID, pyatspi.ROLE_UNKNOWN), where + " has no role")
    if not node.getState().contains(pyatspi.STATE_SHOWING):
        return
    if role in NAMED and not gtk_check_cell(node) and not blank_drawn_cell(node) or (role == pyatspi.ROLE_PANEL and not from_gtk(node)):
        check(bool(name_now(node)), where + " has no name")
    box = extents(node)
    if box[2] > 0 and box[3] > 0:
        check(inside(box, frame_box), "%s at %s lies outside the window %s" % (where, box, frame_box))


def check_entry(gallery, entry, toolkit):
    process = subprocess.Popen([gallery, "--open", entry], stdout=subprocess.DEVNULL, env=bridged_environment())
    try:
        frame = entry_frame(process.pid)
        check(frame is not None, "%s: no window on the accessibility bus" % entry)
        if frame is None:
            return
        frame_box = settled_extents(frame)
        count = [0]
        unnamed = [0]

        def visit(node):
            count[0] += 1
            check_node(entry, node, frame_box)

        def visit_toolkit_dialog(node):
            count[0] += 1
            check(node.getRole() not in (pyatspi.ROLE_INVALID, pyatspi.ROLE_UNKNOWN),
                  "%s: %s %r has no role" % (entry, node.getRoleName(), node.name))
            unnamed[0] += node.getRole() in NAMED and not node.name

        for node in walk(frame, []):
            (visit_toolkit_dialog if toolkit else visit)(node)
        print("%s: %d objects%s" % (entry, count[0], ", %d left unnamed by GTK" % unnamed[0] if unnamed[0] else ""))
    finally:
        process.terminate()
        process.wait(timeout=20)  # terminated: its exit code says nothing


def entries(gallery):
    """The gallery's entries, each with whether it runs the toolkit's own dialog."""
    listed = subprocess.run([gallery, "--list"], stdout=subprocess.PIPE, text=True, check=True)
    return [(line.split()[0], line.endswith(" toolkit")) for line in listed.stdout.splitlines() if line]


def main(argv):
    # The client brings the accessibility bus up before any program starts: starting both
    # at once on a new bus made the program's GTK fail to start now and then.
    pyatspi.Registry.getDesktop(0).childCount
    began = time.monotonic()
    for entry, toolkit in [(entry, False) for entry in argv[2:]] or entries(argv[1]):
        check_entry(argv[1], entry, toolkit)
    print("checked in %.1f s" % (time.monotonic() - began))
    return finish()


if __name__ == "__main__":
    sys.exit(main(sys.argv))
