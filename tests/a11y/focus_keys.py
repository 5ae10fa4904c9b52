#!/usr/bin/env python3
"""Presses Tab, Shift+Tab, Enter and Space in a test window through the accessibility bus's
key synthesis, as a user at the keyboard does, and hears where the focus goes.

Usage: focus_keys.py PROGRAM (see focus_keys_app.cpp). In each of the two drawn parts, Tab
must announce the first button focused (object:state-changed:focused, by name), Tab again
the second, Shift+Tab the first again; Enter (left) and Space (right) must click the
focused button.
"""
import sys

import pyatspi
from gi.repository import Atspi

from atspi_client import applications, check, end, finish, listen, poll, pump_until, start, wait_line

# Key codes of the X server's default keyboard map under Xvfb.
TAB, SHIFT, RETURN, SPACE = 23, 50, 36, 65


def find_frame(pid, seconds=10):
    return poll(lambda: next((app[0] for app in applications(pid) if app.childCount > 0), None), seconds)


def press(keycode, shift=False):
    if shift:
        Atspi.generate_keyboard_event(SHIFT, None, Atspi.KeySynthType.PRESS)
    Atspi.generate_keyboard_event(keycode, None, Atspi.KeySynthType.PRESSRELEASE)
    if shift:
        Atspi.generate_keyboard_event(SHIFT, None, Atspi.KeySynthType.RELEASE)


def wait_focused(events, seconds=10):
    """The name of the button announced focused next. The window's own widget is announced
    too when it takes the keyboard; that is GTK's part, not looked at here."""

    def focused():
        while events:
            event = events.pop(0)
            if event.detail1 == 1 and event.source is not None and event.source.get_role() == pyatspi.ROLE_PUSH_BUTTON:
                return event.source.get_name()
        return None

    return pump_until(focused, seconds)


def check_side(process, lines, events, side, names, key):
    process.stdin.write("focus %s\n" % side)
    process.stdin.flush()
    check(wait_line(lines, "focused " + side), "the %s part did not get the keyboard" % side)
    del events[:]
    for keys, expected in ((dict(), names[0]), (dict(), names[1]), (dict(shift=True), names[0])):
        press(TAB, **keys)
        heard = wait_focused(events)
        check(heard == expected, "%s: %sTab announced %r focused, not %r" %
              (side, "Shift+" if keys else "", heard, expected))
    press(key)
    check(wait_line(lines, "clicked " + names[0]), "%s: the key did not click %s" % (side, names[0]))


def main(program):
    process, lines = start([program])
    try:
        check(wait_line(lines, "ready", 20), "the program did not start")
        frame = find_frame(process.pid)
        check(frame is not None, "the program is not on the accessibility bus")
        if frame is None:
            return 1
        # Keys go where the pointer is while no window manager gives the focus.
        box = frame.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        Atspi.generate_mouse_event(box.x + box.width // 2, box.y + box.height // 2, "abs")
        listener, events = listen("object:state-changed:focused")
        check_side(process, lines, events, "left", ("Start", "Stop"), RETURN)
        check_side(process, lines, events, "right", ("Back", "Next"), SPACE)
    finally:
        end(process)
    return finish()


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
