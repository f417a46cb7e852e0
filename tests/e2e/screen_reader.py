#!/usr/bin/python3
"""Starts the program and uses it as a screen reader does: over the bus of the assistive technologies alone.

    screen_reader.py PROGRAM FOLDER

Goes through the screens, their list and a dialog by the names of their buttons; every control on show has to have a name. Then a
record is saved, and what the program says of it has to be heard as a notification. Prints what was wrong; the exit status is 1 then.
"""
import subprocess
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402  the version has to be told before

PATIENCE = 60  # seconds
LOOK_AGAIN = 100  # milliseconds
REPLY = 3000  # milliseconds for the program to answer one question; a button that opens a dialog takes them all
APPLICATION = "Sorvanto Control Panel"
CONTROLS = {Atspi.Role.PUSH_BUTTON, Atspi.Role.TOGGLE_BUTTON, Atspi.Role.CHECK_BOX, Atspi.Role.COMBO_BOX, Atspi.Role.TEXT,
            Atspi.Role.PASSWORD_TEXT, Atspi.Role.SPIN_BUTTON, Atspi.Role.TABLE, Atspi.Role.PAGE_TAB, Atspi.Role.MENU_ITEM}
BUTTONS = {Atspi.Role.PUSH_BUTTON, Atspi.Role.TOGGLE_BUTTON, Atspi.Role.CHECK_BOX}
FEWEST = 25  # controls of a screen; with fewer the window was not looked at


class Failure(Exception):
    pass


def children(node):
    for place in range(node.get_child_count()):
        child = node.get_child_at_index(place)
        if child is not None:
            yield child


def on_show(node):
    """All below the node that is on show, from the top."""
    for child in children(node):
        if child.get_state_set().contains(Atspi.StateType.SHOWING):
            yield child
            yield from on_show(child)


def spoken_name(node):
    """Its name, else that of what labels it; an entry of choices has its value for a name."""
    labels = [relation.get_target(0).get_name() for relation in node.get_relation_set()
              if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY]
    if node.get_role() == Atspi.Role.COMBO_BOX:
        return " ".join(labels)
    return node.get_name() or " ".join(labels)


def names_are_told(window, fewest):
    controls = [node for node in on_show(window) if node.get_role() in CONTROLS]
    faults = [f"{node.get_role_name()} in '{node.get_parent().get_name()}'" for node in controls if not spoken_name(node)]
    if faults:
        raise Failure(f"Without a name on '{window.get_name()}': " + "; ".join(faults))
    if len(controls) < fewest:
        raise Failure(f"There are only {len(controls)} controls on '{window.get_name()}'.")
    return True


def check_names(reader, window, fewest):
    reader.until("The look at the names", lambda: names_are_told(window, fewest))


def button(window, name):
    for node in on_show(window):
        if node.get_role() in BUTTONS and node.get_name() == name:
            return node
    return None


def can_press(window, name):
    found = button(window, name)
    return found is not None and found.get_state_set().contains(Atspi.StateType.ENABLED)


def pressing(window, name):
    """The button's actions and the number of the one that presses it."""
    found = button(window, name)
    actions = found.get_action_iface() if found else None
    for number in range(Atspi.Action.get_n_actions(actions) if actions else 0):
        if Atspi.Action.get_action_name(actions, number) in ("Press", "Toggle"):
            return actions, number
    return None


def press(reader, window, name):
    actions, number = reader.until(f"The button '{name}'", lambda: pressing(window, name))
    try:
        Atspi.Action.do_action(actions, number)
    except GLib.Error:
        pass  # the answer comes when the dialog that the button opens is closed


class Reader:
    def __init__(self):
        self.heard = []
        self.loop = GLib.MainLoop()
        self.listener = Atspi.EventListener.new(self.hear)
        self.listener.register("object:state-changed:showing")

    def hear(self, event):
        if event.detail1 and event.source.get_role() == Atspi.Role.NOTIFICATION:
            self.heard.append(event.source.get_name())

    def until(self, what, condition):
        """Hears events until the condition gives something. A question that a busy program leaves unanswered, or that meets a
        control just gone, is asked again."""
        end = GLib.get_monotonic_time() + PATIENCE * 1_000_000
        result, trouble, failure = None, None, None

        def look():
            nonlocal result, trouble, failure
            try:
                result = condition()
            except (GLib.Error, Failure) as error:
                trouble = error
            except Exception as error:  # raised in a callback, it would leave the loop running for ever
                failure = error
            if not result and not failure and GLib.get_monotonic_time() < end:
                return True
            self.loop.quit()
            return False

        GLib.timeout_add(LOOK_AGAIN, look)
        self.loop.run()
        if failure:
            raise failure
        if not result:
            raise Failure(f"{what} does not come. Heard: {self.heard}; the last trouble: {trouble}")
        return result


def windows():
    return [window for program in children(Atspi.get_desktop(0)) if program.get_name() == APPLICATION
            for window in children(program)]


def window_called(part):
    """The one with that in its title, once its tools are there."""
    for window in windows():
        if part in window.get_name() and any(node.get_role() in BUTTONS for node in on_show(window)):
            return window
    return None


def box(window, name):
    for node in on_show(window):
        if node.get_role() == Atspi.Role.TEXT and node.get_name() == name:
            return node
    return None


def check_list(reader, window):
    """The list of records comes and goes; the pictures in its filter are buttons with names."""
    showing = reader.until("The look for the list", lambda: ("yes" if box(window, "Filter formulas") else "no")) == "yes"
    if not showing:
        press(reader, window, "Show or hide the list of records")
    filter_box = reader.until("The filter", lambda: box(window, "Filter formulas"))
    check_names(reader, window, FEWEST)
    Atspi.EditableText.set_text_contents(filter_box.get_editable_text_iface(), "magic")
    reader.until("The name of the clear button", lambda: can_press(window, "Clear the box"))
    check_names(reader, window, FEWEST)
    press(reader, window, "Clear the box")
    reader.until("The empty filter", lambda: Atspi.Text.get_character_count(filter_box.get_text_iface()) == 0)
    if not showing:
        press(reader, window, "Show or hide the list of records")
        reader.until("The end of the list", lambda: not box(window, "Filter formulas"))


def use(reader):
    window = reader.until("The window", lambda: window_called(": Formulas"))
    reader.until("The end of the start", lambda: can_press(window, "Edit Record"))
    for screen in ("Current Formula", "Chemicals", "Logs", "Patients", "Formulas"):
        press(reader, window, screen)
        reader.until(screen, lambda wanted=screen: f": {wanted}" in window.get_name())
        check_names(reader, window, FEWEST)
    check_list(reader, window)
    press(reader, window, "Chemicals")
    if reader.until("The tools", lambda: button(window, "Cancel Edit")).get_state_set().contains(Atspi.StateType.ENABLED):
        press(reader, window, "Cancel Edit")
    press(reader, window, "New Lot")
    dialog = reader.until("The dialog", lambda: window_called("New lot of"))
    check_names(reader, dialog, fewest=10)
    press(reader, dialog, "Cancel")
    reader.until("The end of the dialog", lambda: not window_called("New lot of"))
    press(reader, window, "Formulas")
    reader.until("The tool", lambda: can_press(window, "Edit Record"))
    press(reader, window, "Edit Record")
    press(reader, window, "Save Record")
    reader.until("The notification", lambda: any("Saved" in said for said in reader.heard))


def main():
    program, folder = sys.argv[1:]
    Atspi.init()
    Atspi.set_timeout(REPLY, REPLY)
    with subprocess.Popen([program, "--folder", folder]) as process:
        try:
            use(Reader())
        except Failure as failure:
            print(failure, file=sys.stderr)
            return 1
        finally:
            process.kill()  # a database and a mixer of its own: nothing is to be asked at the end
    return 0


if __name__ == "__main__":
    sys.exit(main())
