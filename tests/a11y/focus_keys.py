#!/usr/bin/env python3
"""Presses Tab, Shift+Tab, Enter and Space in a test window through the accessibility bus's
key synthesis, as a user at the keyboard does, and hears where the focus goes.

Usage: focus_keys.py PROGRAM (see focus_keys_app.cpp). In each of the two drawn parts, Tab
must announce the first button focused (object:state-changed:focused, by name), Tab again
the second, Shift+Tab the first again; Enter (left) and Space (right) must click the
focused button.
"""
import os
import queue
import subprocess
import sys
import threading
import time

import pyatspi
from gi.repository import Atspi, GLib

# Key codes of the X server's default keyboard map under Xvfb.
TAB, SHIFT, RETURN, SPACE = 23, 50, 36, 65
failures = []


def check(condition, what):
    if not condition:
        failures.append(what)
        print("FAIL: " + what)


def start(program):
    environment = dict(os.environ)
    environment.pop("NO_AT_BRIDGE", None)
    process = subprocess.Popen([program], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, env=environment)
    lines = queue.Queue()

    def read():
        for line in process.stdout:
            lines.put(line.rstrip("\n"))
        lines.put(None)

    threading.Thread(target=read, daemon=True).start()
    return process, lines


def wait_line(lines, wanted, seconds=10):
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        try:
            line = lines.get(timeout=deadline - time.monotonic())
        except queue.Empty:
            break
        if line is None:
            break
        if line == wanted:
            return True
    return False


def find_frame(pid, seconds=10):
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        for app in pyatspi.Registry.getDesktop(0):
            if app is not None and app.get_process_id() == pid and app.childCount > 0:
                return app[0]
        time.sleep(0.1)
    return None


def press(keycode, shift=False):
    if shift:
        Atspi.generate_keyboard_event(SHIFT, None, Atspi.KeySynthType.PRESS)
    Atspi.generate_keyboard_event(keycode, None, Atspi.KeySynthType.PRESSRELEASE)
    if shift:
        Atspi.generate_keyboard_event(SHIFT, None, Atspi.KeySynthType.RELEASE)


def wait_focused(events, seconds=10):
    """The name of the button announced focused next. The window's own widget is announced
    too when it takes the keyboard; that is GTK's part, not looked at here."""
    deadline = time.monotonic() + seconds
    context = GLib.MainContext.default()
    while time.monotonic() < deadline:
        while context.iteration(False):
            pass
        while events:
            event = events.pop(0)
            if event.detail1 == 1 and event.source is not None and event.source.get_role() == pyatspi.ROLE_PUSH_BUTTON:
                return event.source.get_name()
        time.sleep(0.01)
    return None


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
    process, lines = start(program)
    try:
        check(wait_line(lines, "ready", 20), "the program did not start")
        frame = find_frame(process.pid)
        check(frame is not None, "the program is not on the accessibility bus")
        if frame is None:
            return 1
        # Keys go where the pointer is while no window manager gives the focus.
        box = frame.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        Atspi.generate_mouse_event(box.x + box.width // 2, box.y + box.height // 2, "abs")
        events = []
        listener = Atspi.EventListener.new(lambda event: events.append(event))
        listener.register("object:state-changed:focused")
        check_side(process, lines, events, "left", ("Start", "Stop"), RETURN)
        check_side(process, lines, events, "right", ("Back", "Next"), SPACE)
    finally:
        process.stdin.close()
        check(process.wait(timeout=20) == 0, "the program ended with %s" % process.returncode)
    print("%d failures" % len(failures))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
