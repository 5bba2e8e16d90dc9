"""The window program on a desk: what people and assistive programs see and do, and how it ends."""

import subprocess
import tempfile
import unittest

from rig.desk import Desk
from rig.window_peer import GREETING, WindowPeer
from rig.window_program_case import WindowProgramCase


def node(kind, name, *children, **fields):
    return {"kind": kind, "id": name, "children": children, **fields}


def control(kind, name, label, **fields):
    return node(kind, name, label=label, action=f"{name} acted", **fields)


LARGE = control("toggle", "large", "Large icon", isOn=False, help="Makes the icon larger.")
SHOW = control(
    "radioGroup", "show", "Show:", options=["Percentage", "Time remaining"], selection=0,
    equalWidthGroup="labels",
)
TREE = node(
    "tabView", "tabs",
    node("tab", "general", node("form", "form", LARGE, SHOW,
                                control("button", "levels", "Levels…", help="Chooses levels.")),
         label="General", symbol="gearshape"),
    node("tab", "bar", control("toggle", "small", "Small text", isOn=True), label="Menu Bar"),
    width=300,
)
SHEET = node(
    "sheet", "sheet",
    node("horizontalStack", "columns", control("toggle", "level", "20%", isOn=False), width=400),
    control("button", "done", "Done", isDefault=True), action="sheet acted",
)
WARNING = node("alert", "warning", node("text", "message", label="Beware."), label="Hidden",
               action="warning acted")


class TreeTest(WindowProgramCase):
    def open(self, tree=TREE, **options):
        self.start(**options).send("open", window=7, title="Settings", tree=tree)
        return self.seen.find("frame", "Settings")

    def apply(self, *steps):
        self.peer.send("apply", window=7, steps=steps)

    def set(self, before, **fields):
        after = {**before, "children": [], **fields}
        self.apply({"kind": "set", "id": before["id"], "node": after})

    def insert(self, what, parent="form", index=0):
        self.apply({"kind": "insert", "parent": parent, "index": index, "node": what})

    def remove(self, name):
        self.apply({"kind": "remove", "id": name})

    def assert_acted(self, name, value):
        self.assertEqual(
            self.peer.wait_for("acted"),
            {"kind": "acted", "window": 7, "action": f"{name} acted", "id": name, "value": value},
        )

    def key(self, name):
        self.desk.key(name, window="Settings")

    def test_reports_what_is_pressed_and_shows_what_the_tree_says(self):
        self.open()
        for role, name, description in [
            ("check box", "Large icon", "Makes the icon larger."),
            ("push button", "Levels…", "Chooses levels."),
            ("grouping", "Show:", ""),
        ]:
            self.assertEqual(self.seen.find(role, name).description, description)
        # A control, how it is pressed, what is told, and the step that then comes.
        for role, name, acted, step, fields, is_on in [
            ("check box", "Large icon", ("large", 1), LARGE, {"isOn": True}, True),
            ("check box", "Large icon", ("large", 0), LARGE, {"isOn": False}, False),
            ("radio button", "Time remaining", ("show", 1), SHOW, {"selection": 1}, True),
            ("radio button", "Percentage", ("show", 0), SHOW, {"selection": 0}, True),
        ]:
            with self.subTest(name, acted=acted):
                control = self.seen.find(role, name)
                before = control.is_in("checked")
                self.assertTrue(control.press())
                self.assert_acted(*acted)
                self.assert_quiet()
                self.assertEqual(control.is_in("checked"), before)
                self.set(step, **fields)
                self.wait_for_state(role, name, "checked", is_on)
                self.assert_quiet()
        self.press("push button", "Levels…")
        self.assert_acted("levels", 0)
        self.assertFalse(self.seen.find("radio button", "Time remaining").is_in("checked"))

    def test_steps_leave_the_focus_where_it_is(self):
        self.open()
        self.key("Tab")
        self.wait_for_state("check box", "Large icon", "focused")
        self.key("space")
        self.assert_acted("large", 1)
        self.set(LARGE, isOn=True, label="Huge icon")
        self.insert(control("toggle", "first", "First", isOn=False))
        self.set(TREE, width=420)
        self.remove("show")
        self.insert(SHOW, index=1)
        self.seen.find("check box", "First")
        self.wait_for_state("check box", "Huge icon", "focused")
        self.key("space")
        self.assert_acted("large", 0)
        names = [each.name for each in self.seen.find("frame", "Settings").descendants()
                 if each.role in ("check box", "radio button", "push button")]
        expected = ["First", "Percentage", "Time remaining", "Huge icon", "Levels…"]
        self.assertEqual(names[:5], expected)

    def test_sheet(self):
        self.open()
        self.insert(SHEET, index=3)
        self.press("check box", "20%")
        self.assert_acted("level", 1)
        self.seen.find("dialog", "Settings")
        self.wait_for_state("check box", "20%", "focused")
        for key, name in [("Escape", "sheet"), ("Return", "done")]:
            self.key(key)
            self.assert_acted(name, 0)
            self.seen.find("dialog", "Settings")
        self.remove("sheet")
        self.wait_until_gone("dialog", "Settings")
        self.assert_quiet()

    def test_alert(self):
        self.open()
        self.insert(WARNING, index=1)
        self.seen.find("dialog", "Hidden")
        self.seen.find("label", "Beware.")
        for press in (lambda: self.press("push button", "OK"),
                      lambda: self.key("Return"), lambda: self.key("Escape")):
            press()
            self.assert_acted("warning", 0)
        self.remove("warning")
        self.wait_until_gone("dialog", "Hidden")

    def test_closing(self):
        for close, is_told in [
            (lambda: self.key("Escape"), True),
            (lambda: self.key("alt+F4"), True),
            (lambda: self.peer.send("close", window=7), False),
        ]:
            with self.subTest(is_told=is_told):
                self.open()
                close()
                self.wait_until_gone("frame", "Settings")
                if is_told:
                    self.assertEqual(self.peer.wait_for("closed"), {"kind": "closed", "window": 7})
                self.assert_quiet()
                self.peer.send("open", window=8, title="Again", tree=TREE)
                self.seen.find("frame", "Again")
                self.peer.hang_up()
                self.wait_until_gone("frame", "Again")

    def test_what_does_not_fit_is_left_out(self):
        wrong = [
            {"kind": "remove", "id": "nobody"},
            {"kind": "remove", "id": "tabs"},
            {"kind": "replace", "id": "tabs", "node": LARGE},
            {"kind": "insert", "parent": "nobody", "index": 0, "node": LARGE},
            {"kind": "insert", "parent": "form", "index": 9, "node": LARGE},
            {"kind": "set", "id": "large", "node": {**SHOW, "id": "large"}},
            {"kind": "set", "id": "large", "node": {**LARGE, "id": "other"}},
        ]
        begins = "kelvane-windows: left out a change: "
        self.open()
        self.apply(*wrong)
        # Not what a tree should hold, but no reason to end.
        self.insert(node("toggle", "large", node("sheet", "inner"), label="Twice", width=1e300))
        self.insert(node("text", "text", label="In no tab"), parent="tabs", index=0)
        self.insert(control("radioGroup", "radio", "Radio", options=["One"], selection=5))
        self.remove("text")
        for kind in ("apply", "close", "front"):
            self.peer.send(kind, window=99, steps=[])
        for kind, number in (("abortAlert", "alert"), ("closePopover", "popover")):
            self.peer.send(kind, **{number: 99})
        self.seen.find("radio button", "One")
        self.assert_quiet()
        self.peer.hang_up()
        code, said = self.peer.wait_for_end()
        self.assertEqual((code, [line[: len(begins)] for line in said.splitlines()]),
                         (0, [begins] * len(wrong)), said)


class OtherWindowsTest(WindowProgramCase):
    def test_alerts_are_answered(self):
        by_key = lambda key: lambda: self.desk.key(key, window="Kelvane")
        by_press = lambda name: lambda: self.press("push button", name)
        self.start()
        for number, (buttons, press, answer) in enumerate([
            ([], by_key("Return"), 0),
            ([], by_press("OK"), 0),
            (["Quit"], by_key("space"), 0),
            (["Stay", "Go"], by_press("Go"), 1),
            (["Stay", "Go"], by_key("Return"), 0),
            (["Stay", "Go"], by_key("Escape"), 0),
        ]):
            with self.subTest(buttons=buttons, answer=answer):
                self.peer.send("alert", alert=number, title="Beware", message="Really.",
                               buttons=buttons, minimumWidth=370, style="critical")
                self.wait_for_state("push button", (buttons or ["OK"])[0], "focused")
                press()
                self.assertEqual(self.peer.wait_for("answered"),
                                 {"kind": "answered", "alert": number, "button": answer})
                self.wait_until_gone("dialog", "Beware")

    def test_an_aborted_alert_goes_without_an_answer(self):
        self.start().send("alert", alert=1, title="Beware")
        self.seen.find("dialog", "Beware")
        self.peer.send("abortAlert", alert=1)
        self.wait_until_gone("dialog", "Beware")
        self.assert_quiet()

    def test_come_to_the_front(self):
        self.start()
        for number, title in (1, "One"), (2, "Two"):
            self.peer.send("open", window=number, title=title, tree=TREE)
            self.wait_until_active(title)
        self.peer.send("front", window=1, token="")
        self.wait_until_active("One")
        self.peer.send("alert", alert=1, title="Beware")
        self.wait_until_active("Kelvane")
        self.peer.send("front", window=2)
        self.wait_until_active("Two")
        self.assertIn("_NET_WM_STATE_ABOVE", self.desk.x("xprop", "-name", "Kelvane", "_NET_WM_STATE"))
        self.peer.send("activate", token="some-token_TIME0")
        self.wait_until_active("Kelvane")
        self.assert_quiet()

    def test_about(self):
        self.start()
        for version in "1.2.0", "1.3.0":
            self.peer.send("about", name="Kelvane", identifier="org.kelvane.Kelvane",
                           version=version, build="45", copyright="© Somebody")
            self.seen.find("label", f"Version {version} (45)")
        self.assertEqual(len(self.seen.windows()), 1)
        self.desk.key("Escape", window="About Kelvane")
        self.peer.wait_for("aboutClosed")
        self.wait_until_gone("dialog", "About Kelvane")

    def test_popover(self):
        self.start()
        # Where the item is, and a point within the window that belongs to it.
        for number, (x, y, down) in enumerate([(640, 10, 30), (1275, 10, 30), (640, 710, -30)]):
            show = lambda: self.peer.send("popover", popover=number, text="Hello, I'm Kelvane",
                                          maximumTextWidth=1000, inset=15, anchor=[x, y])
            show()
            self.seen.find("tool tip", "Hello, I'm Kelvane")
            self.desk.pointer(min(x, 1240), y + down, 1)
            self.assertEqual(self.peer.wait_for("popoverClosed"),
                             {"kind": "popoverClosed", "popover": number})
            self.wait_until_gone("tool tip", "Hello, I'm Kelvane")
        self.peer.send("popover", popover=8, text="Hello", anchor=[640, 10])
        self.seen.find("tool tip", "Hello")
        self.peer.send("closePopover", popover=8)
        self.wait_until_gone("tool tip", "Hello")
        self.assert_quiet()

    def test_item_where_the_host_counts_in_larger_pixels(self):
        self.start(environment={**self.desk.environment, "GDK_SCALE": "2"})
        self.desk.pointer(640, 10)
        lines = [{"line": 0, "title": "About"}]
        for request in {"kind": "activate"}, {"kind": "menu", "menu": 1, "lines": lines}:
            self.peer.send(**request, anchor=[320, 5])
            self.assertEqual(self.peer.wait_for("itemClicked"),
                             {"kind": "itemClicked", "told": [320, 5], "place": [640, 10]})
        self.peer.send("closeMenu", menu=1)
        self.wait_until_gone("menu", "Kelvane")
        # Which is right already.
        self.peer.send("activate", anchor=[640, 10])
        self.assert_quiet()
        self.desk.pointer(100, 600)
        self.peer.send("popover", popover=1, text="Hello", anchor=[640, 10])
        self.seen.find("tool tip", "Hello")
        self.desk.pointer(640, 70, 1)
        self.peer.wait_for("popoverClosed")


class EndsTest(WindowProgramCase):
    def test_ends_on_what_it_does_not_understand(self):
        for line in ["", "{", "[]", '{"kind":"dance"}', '{"kind":"open","window":"x"}', "\xff",
                     "[" * 100_000, "x" * (1 << 20)]:
            with self.subTest(line[:40]):
                self.start().send_line(line)
                self.assert_failed()
        for protocol in 2, "one":
            with self.subTest(protocol=protocol):
                self.start(greeting={**GREETING, "protocol": protocol})
                self.assert_failed()

    def test_started_by_somebody_else(self):
        program = WindowPeer.program()
        for words in [program], ["bash", "-c", '"$0" 3</dev/null', program]:
            done = subprocess.run(words, env=self.desk.environment, capture_output=True, text=True,
                                  timeout=5)
            self.assertEqual((done.returncode, len(done.stderr.splitlines())), (1, 1), done)

    def test_without_or_after_the_display(self):
        self.start(environment={**self.desk.environment, "DISPLAY": ":4711"})
        self.assert_failed("kelvane-windows: there is no display to show windows on")
        folder = self.enterContext(tempfile.TemporaryDirectory(ignore_cleanup_errors=True))
        with Desk(folder, "none", "none") as desk:
            self.start(environment=desk.environment).send("open", window=7, title="S", tree=TREE)
            self.peer.send("popover", popover=1, text="")
            self.peer.wait_for("popoverRefused")
            desk.processes.kill("display")
            self.assertEqual(self.peer.wait_for_end()[0], 1)

    def assert_failed(self, expected=None):
        code, said = self.peer.wait_for_end()
        lines = said.splitlines()
        self.assertEqual((code, len(lines)), (1, 1), said)
        self.assertTrue(lines[0].startswith("kelvane-windows: "), said)
        if expected:
            self.assertEqual(lines, [expected])


if __name__ == "__main__":
    unittest.main()
