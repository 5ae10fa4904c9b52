#!/usr/bin/env python3
"""Reads the in-place log of a test window through AT-SPI, as a screen reader does.

Usage: inplace_log.py PROGRAM. The program prints its drawn elements (see
inplace_log_app.cpp); this client finds each of them in the program's accessible tree
with its role, name, states and extents, reads the gauge's value, and presses Cancel
through its action until the program's worker reports the cancel. Lines said to the
log while the client listens must be announced as live: errors assertive, others polite.
"""
import sys
import time

import pyatspi
from atspi_client import check, end, extents, find, find_application, finish, inside, listen, pump_until, start, \
    wait_line, walk


def read_report(lines):
    elements, window, percent = [], None, None
    while True:
        line = lines.get(timeout=20)
        if line is None:
            raise RuntimeError("the program ended before it was ready")
        if line == "ready":
            return elements, window, percent
        words = line.split(" ", 6)
        if words[0] == "element":
            elements.append((words[1], tuple(int(w) for w in words[2:6]), words[6] if len(words) > 6 else ""))
        elif words[0] == "window":
            window = tuple(int(w) for w in words[1:5])
        elif words[0] == "percent":
            percent = int(words[1])


def check_elements(nodes, elements, window):
    for kind, box, name in elements:
        node = find(nodes, kind, box, name)
        check(node is not None, "no %s %r at %s" % (kind, name, box))
        if node is None:
            continue
        states = node.getState()
        check(states.contains(pyatspi.STATE_VISIBLE) and states.contains(pyatspi.STATE_SHOWING),
              "%s %r not visible and showing" % (kind, name))
        check(inside(extents(node), window), "%s %r outside the window" % (kind, name))
        if kind == "button":
            check(states.contains(pyatspi.STATE_ENABLED) and states.contains(pyatspi.STATE_FOCUSABLE),
                  "button %r not enabled and focusable" % name)
        if kind == "label":
            text = node.queryText()
            check(text.getText(0, -1) == name, "label %r has text %r" % (name, text.getText(0, -1)))


def listen_for_additions():
    """Collects children-changed:add events from now on; registered early, so that the
    program knows of the listener before the lines come."""
    return listen("object:children-changed:add")


def wait_added(events, name, seconds=10, ending=False):
    def added():
        for event in events:
            child = event.any_data
            if child is not None and (child.get_name().endswith(name) if ending else child.get_name() == name):
                return event
        return None

    return pump_until(added, seconds)


def check_live(process, events, severity, text, politeness):
    process.stdin.write("say %s %s\n" % (severity, text))
    process.stdin.flush()
    event = wait_added(events, text)
    check(event is not None, "no addition of %r announced" % text)
    if event is None:
        return None
    line = event.any_data
    check(line.get_role() == pyatspi.ROLE_LABEL, "%r is a %s" % (text, line.get_role_name()))
    attributes = line.get_attributes() or {}
    check(attributes.get("container-live") == politeness and attributes.get("live") == politeness,
          "%r has live attributes %s, not %s" % (text, attributes, politeness))
    return event.source


def check_finished_run(process, events):
    """The message that replaces a finished run is announced, politely."""
    process.stdin.write("finish\n")
    process.stdin.flush()
    event = wait_added(events, "Indexing finished", ending=True)
    check(event is not None, "the end of the run was not announced")
    if event is not None:
        attributes = event.any_data.get_attributes() or {}
        check(attributes.get("live") == "polite", "the end of the run has live attributes %s" % attributes)


def check_many_lines(process, app, box, count=1000):
    """A log of a thousand lines is listed in under a second: the lines in view are the
    log's children, and every line is read through the log's text."""
    for number in range(count):
        process.stdin.write("say info Line %d of the run\n" % number)
    process.stdin.flush()
    last = "Line %d of the run" % (count - 1)
    text = box.queryText()
    deadline = time.monotonic() + 30
    while time.monotonic() < deadline:
        length = text.characterCount
        if text.getText(max(0, length - len(last)), length) == last:
            break
        time.sleep(0.05)
    began = time.monotonic()
    nodes = walk(app, [])
    spent = time.monotonic() - began
    print("listed %d accessible objects of a long log in %.3f s" % (len(nodes), spent))
    check(0 < box.childCount < count, "the log has %d children for %d lines" % (box.childCount, count))
    check(len(nodes) > box.childCount and spent < 1.0, "listing %d objects took %.3f s" % (len(nodes), spent))
    read = set(text.getText(0, -1).split("\n"))
    missing = [n for n in range(count) if "Line %d of the run" % n not in read]
    check(not missing, "%d of %d lines missing from the log's text, the first %s" %
          (len(missing), count, missing[:1]))


def main(program):
    process, lines = start([program])
    try:
        # The client joins the bus once the program is up: starting both at once on a new
        # bus made the program's GTK fail to start now and then.
        elements, window, percent = read_report(lines)
        listener, events = listen_for_additions()
        check(any(kind == "button" and name == "Cancel" for kind, _, name in elements), "no Cancel drawn")
        app = find_application(process.pid)
        check(app is not None, "the program is not on the accessibility bus")
        if app is None:
            return 1
        began = time.monotonic()
        nodes = walk(app, [])
        print("listed %d accessible objects in %.3f s" % (len(nodes), time.monotonic() - began))
        check_elements(nodes, elements, window)
        gauges = [n for n in nodes if n.getRole() == pyatspi.ROLE_PROGRESS_BAR]
        check(len(gauges) == 1, "%d progress bars" % len(gauges))
        if gauges:
            value = gauges[0].queryValue()
            check(round(value.currentValue) == percent, "gauge value %s, shown %s" % (value.currentValue, percent))
            check(value.maximumValue == 100, "gauge maximum %s" % value.maximumValue)
        cancels = [n for n in nodes if n.getRole() == pyatspi.ROLE_PUSH_BUTTON and n.name == "Cancel"]
        check(len(cancels) == 1, "%d Cancel buttons" % len(cancels))
        if cancels:
            action = cancels[0].queryAction()
            check(action.getName(0) == "click", "Cancel's action is %r" % action.getName(0))
            check(action.doAction(0), "Cancel's action refused")
            check(wait_line(lines, "worker saw cancel", 10) is not None, "the worker did not see the cancel")
        check_live(process, events, "error", "Disk full", "assertive")
        box = check_live(process, events, "info", "Symbols ready", "polite")
        logs = [n for n in walk(app, []) if n.getRole() == pyatspi.ROLE_PANEL and n.name == "Messages"]
        check(len(logs) == 1 and (logs[0].get_attributes() or {}).get("container-live") == "polite",
              "the log is not one polite live region named Messages")
        check_finished_run(process, events)
        if box is not None:
            check_many_lines(process, app, box)
    finally:
        end(process)  # its window goes while the bridge is live: it must still end cleanly
    return finish()


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
