"""What the AT-SPI clients of this folder share: starting a program on the accessibility bus,
finding it there, walking its tree, holding extents against drawn rectangles, and counting
the failed checks."""
import os
import queue
import subprocess
import threading
import time

import pyatspi
from gi.repository import Atspi, GLib

ROLES = {
    "label": pyatspi.ROLE_LABEL,
    "button": pyatspi.ROLE_PUSH_BUTTON,
    "gauge": pyatspi.ROLE_PROGRESS_BAR,
    "image": pyatspi.ROLE_IMAGE,
    "table": pyatspi.ROLE_TABLE,
    "header": pyatspi.ROLE_COLUMN_HEADER,
    "cell": pyatspi.ROLE_TABLE_CELL,
    "check": pyatspi.ROLE_CHECK_BOX,
}
TOLERANCE = 2
failures = []


def check(condition, what):
    if not condition:
        failures.append(what)
        print("FAIL: " + what)


def finish():
    """The exit code of the client: 1 when any check failed."""
    print("%d failures" % len(failures))
    return 1 if failures else 0


def bridged_environment():
    # The program must talk to the accessibility bus, whatever the run around it says.
    environment = dict(os.environ)
    environment.pop("NO_AT_BRIDGE", None)
    return environment


def start(command):
    """Starts the program and reads its output lines into a queue (None once it ended)."""
    process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                               env=bridged_environment())
    lines = queue.Queue()

    def read():
        for line in process.stdout:
            lines.put(line.rstrip("\n"))
        lines.put(None)  # the program ended

    threading.Thread(target=read, daemon=True).start()
    return process, lines


def end(process):
    """Closes the program's input, which ends it, and checks that it ended cleanly."""
    process.stdin.close()
    check(process.wait(timeout=20) == 0, "the program ended with %s" % process.returncode)


def wait_line(lines, prefix, seconds=10):
    """The program's next line that starts with prefix, or None."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        try:
            line = lines.get(timeout=deadline - time.monotonic())
        except queue.Empty:
            break
        if line is None:
            break
        if line.startswith(prefix):
            return line
    return None


def poll(found, seconds, step=0.1):
    """The first thing other than None that found() gives within the time, or None."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        thing = found()
        if thing is not None:
            return thing
        time.sleep(step)
    return None


def pump_until(found, seconds=10):
    """Runs this client's main loop, so that events come in, until found() gives something."""
    deadline = time.monotonic() + seconds
    context = GLib.MainContext.default()
    while time.monotonic() < deadline:
        while context.iteration(False):
            pass
        thing = found()
        if thing is not None:
            return thing
        time.sleep(0.01)
    return None


def listen(event_type):
    """Collects the events of the type from now on, into the list it returns with its listener
    (which must be kept alive while it listens)."""
    events = []
    listener = Atspi.EventListener.new(lambda event: events.append(event))
    listener.register(event_type)
    return listener, events


def applications(pid):
    return [app for app in pyatspi.Registry.getDesktop(0) if app is not None and app.get_process_id() == pid]


def find_application(pid, seconds=10):
    return poll(lambda: next(iter(applications(pid)), None), seconds)


def entry_frame(pid, seconds=15):
    """The frame that the gallery opened beside its list, once it shows."""

    def showing():
        for app in applications(pid):
            for frame in app:
                if frame is not None and frame.name != "tamsel3 gallery" and \
                        frame.getState().contains(pyatspi.STATE_SHOWING):
                    return frame
        return None

    return poll(showing, seconds)


def walk(node, found):
    for child in node:
        if child is not None:
            found.append(child)
            walk(child, found)
    return found


def extents(node):
    box = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    return (box.x, box.y, box.width, box.height)


def near(a, b):
    return all(abs(x - y) <= TOLERANCE for x, y in zip(a, b))


def inside(box, window):
    x, y, w, h = box
    return (x >= window[0] - TOLERANCE and y >= window[1] - TOLERANCE and x + w <= window[0] + window[2] + TOLERANCE
            and y + h <= window[1] + window[3] + TOLERANCE)


def find(nodes, kind, box, name):
    """The node of the kind and name (its line breaks read as spaces) drawn at box."""
    for node in nodes:
        if node.getRole() == ROLES[kind] and node.name.replace("\n", " ") == name and near(extents(node), box):
            return node
    return None
