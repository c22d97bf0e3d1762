"""Walks Kvo's windows over the accessibility bus. tests/bus/walk starts it."""
import sys
import time
import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib

warnings.simplefilter("ignore", DeprecationWarning)
# An entry that opens a modal window answers only when that is closed.
Atspi.set_timeout(1500, 15000)

NAMED_ROLES = {
    "push button", "toggle button", "check box", "radio button", "text", "combo box",
    "spin button", "slider", "list", "table", "tree table", "tree", "page tab", "menu item",
    "check menu item", "radio menu item", "menu", "progress bar", "chart", "frame", "dialog",
}
begun = time.time()
faults = []
walked = {}


def fail(words):
    print("bus: " + words, file=sys.stderr)
    sys.exit(1)


def wait_for(what, find, seconds=20):
    end = time.time() + seconds
    while time.time() < end:
        try:
            found = find()
        except GLib.Error:
            found = None
        if found:
            return found
        time.sleep(0.1)
    fail(what + " did not come")


def program():
    desktop = Atspi.get_desktop(0)
    for i in range(desktop.get_child_count()):
        child = desktop.get_child_at_index(i)
        if child and "kvo" in (child.get_name() or "").lower():
            return child
    return None


def children(node):
    for i in range(node.get_child_count()):
        child = node.get_child_at_index(i)
        if child:
            yield child


def every(node):
    yield node
    # The cells of a list are as many as the runs, and say their own text.
    if node.get_role_name() in ("table", "tree table", "tree", "list"):
        return
    for child in children(node):
        yield from every(child)


def is_shown(node):
    return node.get_state_set().contains(Atspi.StateType.SHOWING)


def window(title):
    def find():
        for one in children(program()):
            if title in (one.get_name() or "") and is_shown(one):
                return one
        return None

    return wait_for("the window " + title, find)


def named(root, name, role=None):
    def find():
        for node in every(root):
            if node.get_name() == name and role in (None, node.get_role_name()):
                return node
        return None

    return wait_for(name, find)


def press(node):
    try:
        node.get_action_iface().do_action(0)
    except GLib.Error:
        pass  # its window stands


def walk(root, title):
    count = 0
    for node in every(root):
        role = node.get_role_name()
        needs = role in NAMED_ROLES or node.get_state_set().contains(Atspi.StateType.FOCUSABLE)
        if not needs or role in ("separator", "filler", "panel"):
            continue
        # What opens an entry's list is the toolkit's.
        if role in ("text", "list") and node.get_parent().get_role_name() in (
                "combo box", "spin button"):
            continue
        if not is_shown(node) and not role.endswith(("menu item", "menu")):
            continue
        # A border is called as a window is; an entry that is not in use yet stands for nothing.
        if role == "frame" and node.get_parent().get_role_name() != "application":
            continue
        if role == "menu item" and not node.get_name() and not node.get_state_set().contains(
                Atspi.StateType.ENABLED):
            continue
        count += 1
        if not (node.get_name() or "").strip():
            faults.append(f"{title}: a {role} has no name ({node.get_description()})")
    walked[title] = count
    if count < 3:
        faults.append(f"{title}: only {count} things were found")


def heard_after(move):
    """The events that a tool hears of the program when the cursor moves."""
    heard = []
    listener = Atspi.EventListener.new(lambda event: heard.append(event.type))
    kinds = ("object:property-change:accessible-value",
             "object:property-change:accessible-description")
    for kind in kinds:
        listener.register(kind)
    move()
    context = GLib.MainContext.default()
    end = time.time() + 3
    while time.time() < end and not heard:
        context.iteration(False)
        time.sleep(0.01)
    for kind in kinds:
        listener.deregister(kind)
    return heard


wait_for("the program", program)
main = window("DATA ACQUISITION SYSTEM")
walk(main, "main window")
press(named(main, "Open Data File"))
chooser = window("Load Data File")
walk(chooser, "chooser")
press(named(chooser, "Load", "push button"))
graph = window("Data File:")
charts = wait_for(
    "the chart", lambda: [node for node in every(graph) if node.get_role_name() == "chart"])
if len(charts) != 1:
    fail(f"{len(charts)} charts instead of one")
chart = charts[0]
if "Run:" not in chart.get_name():
    faults.append("the chart does not say its run: " + chart.get_name())
walk(graph, "graph")
for name in ("Previous", "Next"):
    named(graph, name, "menu item")
before = chart.get_description()
value = chart.get_value_iface()
heard = heard_after(lambda: value.set_current_value(1.25))
if not heard:
    faults.append("a move of the cursor is not heard")
after = chart.get_description()
if "1.25" not in after or after == before:
    faults.append("at 1.25 s the chart says: " + after)
if abs(value.get_current_value() - 1.25) > 0.001:
    faults.append(f"at 1.25 s its value is {value.get_current_value()}")
boxes = [node.get_name() for node in every(graph)
         if node.get_role_name() == "label" and node.get_name().startswith("Engine ")]
if not any(name.endswith(" rpm") for name in boxes):
    faults.append(f"no box says the engine's rpm: {boxes}")
press(named(graph, "Statistics"))
walk(window("Statistics"), "statistics")

for fault in faults:
    print(fault)
parts = ", ".join(f"{title} {count}" for title, count in walked.items())
print(f"figure: windows over the accessibility bus | {sum(walked.values())} things | "
      f"{len(faults)} faults; {parts} | {time.time() - begun:.0f} s | -")
sys.exit(1 if faults else 0)
